#include "ui/port_dialog.h"

#include <array>

#include "link/port_settings.h"
#include "ui/resources/resources.h"
#include "ui/settings_choices.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr int kTemplate = 224;
constexpr int kTitleText = 400;

template <std::size_t kCount>
void Fill(Dialog& dialog, int id, const std::array<PortChoice, kCount>& table, std::uint32_t value) {
  std::vector<SettingsChoice> choices;
  for (const PortChoice& choice : table) choices.push_back({std::u16string(choice.text), choice.value});
  FillChoices(dialog, id, choices, value, Format(u"%u", {value}));
}

}  // namespace

PortDialog::PortDialog(std::u16string_view port, const LineParameters& parameters)
    : Dialog(kTemplate), port_(port), parameters_(parameters) {}

bool PortDialog::OnInitDialog(int /*focus*/, LongParameter /*parameter*/) {
  SetTitle(Format(LoadString(kTitleText), {port_}));
  UpdateData(false);
  FocusControl(kSpeed);
  return false;
}

bool PortDialog::UpdateData(bool save) {
  const auto parity = static_cast<std::uint32_t>(parameters_.parity);
  const auto stop_bits = static_cast<std::uint32_t>(parameters_.stop_bits);
  const auto flow = static_cast<std::uint32_t>(FlowControlOf(parameters_));
  if (save) {
    parameters_.baud_rate = ChosenValue(*this, kSpeed, parameters_.baud_rate);
    parameters_.byte_size = static_cast<std::uint8_t>(ChosenValue(*this, kDataBits, parameters_.byte_size));
    parameters_.parity = static_cast<Parity>(ChosenValue(*this, kParity, parity));
    parameters_.stop_bits = static_cast<StopBits>(ChosenValue(*this, kStopBits, stop_bits));
    SetFlowControl(parameters_, static_cast<FlowControl>(ChosenValue(*this, kFlowControl, flow)));
    return true;
  }
  Fill(*this, kSpeed, kSpeedChoices, parameters_.baud_rate);
  Fill(*this, kDataBits, kDataBitsChoices, parameters_.byte_size);
  Fill(*this, kParity, kParityChoices, parity);
  Fill(*this, kStopBits, kStopBitsChoices, stop_bits);
  Fill(*this, kFlowControl, kFlowControlChoices, flow);
  return true;
}

}  // namespace celldesk
