#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/line_parameters.h"
#include "platform/registry.h"
#include "util/status.h"

namespace celldesk {

/// The current user's key that holds one binary value of line parameters per port, named after the port.
inline constexpr std::u16string_view kPortSettingsKey = u"\\Software\\Corvane\\CellDesk";

/// The parameters stored for `port` ("COM1:"); none when there are none or the value is not a whole block.
std::optional<LineParameters> LoadLineParameters(Registry& registry, std::u16string_view port);
/// Stores the parameters under the port's name; the system error as a status when that fails.
Status StoreLineParameters(Registry& registry, std::u16string_view port, const LineParameters& parameters);

/// One line of a choice list: the text shown and the value kept.
struct PortChoice {
  std::u16string_view text;
  std::uint32_t value;
};

inline constexpr std::array<PortChoice, 7> kSpeedChoices{{{u"2400", 2400},
                                                          {u"4800", 4800},
                                                          {u"9600", 9600},
                                                          {u"19200", 19200},
                                                          {u"38400", 38400},
                                                          {u"57600", 57600},
                                                          {u"115200", 115200}}};
inline constexpr std::array<PortChoice, 2> kDataBitsChoices{{{u"7", 7}, {u"8", 8}}};
inline constexpr std::array<PortChoice, 5> kParityChoices{
    {{u"none", 0}, {u"odd", 1}, {u"even", 2}, {u"mark", 3}, {u"space", 4}}};
inline constexpr std::array<PortChoice, 3> kStopBitsChoices{{{u"1", 0}, {u"1.5", 1}, {u"2", 2}}};

enum class FlowControl : std::uint32_t { kXonXoff, kHardware, kNone };
inline constexpr std::array<PortChoice, 3> kFlowControlChoices{
    {{u"Xon/Xoff", 0}, {u"Hardware", 1}, {u"None", 2}}};

/// Xon/Xoff when either software flow flag is set, else hardware when the RTS control is not 0, else none.
FlowControl FlowControlOf(const LineParameters& parameters);
/// Sets the flags so that FlowControlOf gives `flow`. Parameters that give it already stay as they are.
void SetFlowControl(LineParameters& parameters, FlowControl flow);

}  // namespace celldesk
