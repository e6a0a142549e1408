#include "link/port_settings.h"

namespace celldesk {

std::optional<LineParameters> LoadLineParameters(Registry& registry, std::u16string_view port) {
  SystemError error = kErrorSuccess;
  const auto key = registry.Open(RegistryRoot::kCurrentUser, kPortSettingsKey, error);
  if (!key) return std::nullopt;
  const auto value = key->Query(port);
  if (!value || value->type != RegistryType::kBinary || value->bytes.size() != LineParameters::kSize)
    return std::nullopt;
  return LineParameters::FromBytes(value->bytes);
}

Status StoreLineParameters(Registry& registry, std::u16string_view port, const LineParameters& parameters) {
  KeyDisposition disposition{};
  SystemError error = kErrorSuccess;
  const auto key = registry.Create(RegistryRoot::kCurrentUser, kPortSettingsKey, disposition, error);
  if (!key) return StatusFromSystemError(error);
  const auto bytes = parameters.ToBytes();
  return StatusFromSystemError(key->Set(port, {RegistryType::kBinary, {bytes.begin(), bytes.end()}}));
}

FlowControl FlowControlOf(const LineParameters& parameters) {
  if ((parameters.flags & (LineParameters::kOutX | LineParameters::kInX)) != 0) return FlowControl::kXonXoff;
  return parameters.rts_control() != LineControl::kDisable ? FlowControl::kHardware : FlowControl::kNone;
}

void SetFlowControl(LineParameters& parameters, FlowControl flow) {
  constexpr std::uint32_t kSoftware = LineParameters::kOutX | LineParameters::kInX;
  if (FlowControlOf(parameters) == flow) return;
  parameters.flags &= ~(kSoftware | LineParameters::kOutxCtsFlow);
  parameters.set_rts_control(LineControl::kDisable);
  if (flow == FlowControl::kXonXoff) {
    parameters.flags |= kSoftware;
    parameters.set_rts_control(LineControl::kEnable);
  }
  if (flow == FlowControl::kHardware) {
    parameters.flags |= LineParameters::kOutxCtsFlow;
    parameters.set_rts_control(LineControl::kHandshake);
  }
}

}  // namespace celldesk
