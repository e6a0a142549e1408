#include "ui/general_page.h"

#include <algorithm>
#include <tuple>

#include "link/phone_link.h"
#include "link/port_settings.h"
#include "platform/port_obstacle.h"
#include "ui/port_dialog.h"
#include "ui/questions.h"
#include "ui/resources/resources.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr int kTemplate = 221;
constexpr int kFollowEvery = 1000;  // milliseconds

constexpr int kNoPermissionText = 401, kNoPermissionGroupText = 402, kHeldText = 403, kHeldByText = 404,
              kGoneText = 405, kReadyText = 406, kConnectedText = 407, kRefusedText = 408, kNoPortText = 409;

auto Shown(const PortInfo& port) { return std::tie(port.name, port.display_text, port.device); }

bool SameShown(const PortInfo& one, const PortInfo& other) { return Shown(one) == Shown(other); }

template <typename Ports>
auto FindPort(Ports& ports, std::u16string_view name) {
  return std::find_if(ports.begin(), ports.end(), [&](const PortInfo& port) { return port.name == name; });
}

}  // namespace

GeneralPage::GeneralPage(Settings& settings, const ProgramServices& services)
    : SettingsPageDialog(kTemplate, SettingsPage::kGeneral, settings), services_(services) {}

bool GeneralPage::OnInitDialog(int /*focus*/, LongParameter /*parameter*/) {
  StartTimer(kFollowTimer, kFollowEvery);
  return true;
}

bool GeneralPage::UpdateData(bool save) {
  if (save) {
    settings().port = selected_;
    settings().use_adapter = IsChecked(kAdapter);
    return true;
  }
  selected_ = settings().port;
  uses_open_port_ = services_.link.IsOpen() && services_.link.port_name() == selected_;
  SetChecked(kAdapter, settings().use_adapter);
  ListPorts();
  ShowPortState();
  return true;
}

void GeneralPage::OnTimer(int /*timer_id*/) {
  ListPorts();
  ShowPortState();
}

// A list that is the same is left alone: the user may have it open.
void GeneralPage::ListPorts() {
  std::vector<PortInfo> ports = services_.port_list.ActivePorts();
  const bool is_missing = !selected_.empty() && FindPort(ports, selected_) == ports.end();
  if (is_missing) {
    const auto before = FindPort(listed_, selected_);
    ports.insert(ports.begin(), before != listed_.end() ? *before : PortInfo{selected_, selected_, {}, {}});
  }
  missing_ = is_missing ? 1 : 0;
  if (ChoiceCount(kPort) > 0 && std::ranges::equal(ports, listed_, SameShown)) return;
  listed_ = std::move(ports);
  ClearChoices(kPort);
  for (std::size_t i = 0; i < listed_.size(); ++i)
    AddChoice(kPort, listed_[i].display_text, static_cast<LongParameter>(i));
  const auto selected = FindPort(listed_, selected_);
  SelectChoice(kPort, selected == listed_.end() ? -1 : static_cast<int>(selected - listed_.begin()));
}

void GeneralPage::ShowPortState() {
  const std::u16string state = PortState();
  if (state != Text(kPortState)) SetText(kPortState, state);
  Enable(kPortSettings, !selected_.empty());
}

std::u16string GeneralPage::PortState() const {
  if (selected_.empty()) return LoadString(kNoPortText);
  const auto port = FindPort(listed_, selected_);
  if (missing_ > 0 || port == listed_.end()) return Format(LoadString(kGoneText), {selected_});
  if (services_.link.IsOpen() && services_.link.port_name() == selected_)
    return Format(LoadString(kConnectedText), {port->device, selected_});
  return DescribeObstacle(*port);
}

std::u16string GeneralPage::DescribeObstacle(const PortInfo& port) const {
  const PortObstacle obstacle = services_.port_inspector.DescribeHolder(port.device);
  switch (obstacle.kind) {
    case PortObstacle::Kind::kGone:
      return Format(LoadString(kGoneText), {port.name});
    case PortObstacle::Kind::kNoPermission:
      return obstacle.group.empty()
                 ? Format(LoadString(kNoPermissionText), {port.device})
                 : Format(LoadString(kNoPermissionGroupText), {port.device, obstacle.group});
    case PortObstacle::Kind::kHeld:
      return obstacle.process.empty()
                 ? Format(LoadString(kHeldText), {port.device})
                 : Format(LoadString(kHeldByText), {port.device, obstacle.process, obstacle.process_id});
    case PortObstacle::Kind::kNone:
      break;
  }
  return Format(LoadString(kReadyText), {port.device, port.name});
}

// A change of the selected port forgets the open one for the rest of the dialog.
MessageResult GeneralPage::OnNotify(int control_id, const Notification& notification) {
  if (control_id != kPort || notification.code != NotifyCode::kChanged) return 0;
  const int chosen = SelectedChoice(kPort);
  if (chosen < 0) return 0;
  const PortInfo& port = listed_[static_cast<std::size_t>(ChoiceData(kPort, chosen))];
  if (port.name == selected_) return 0;
  selected_ = port.name;
  uses_open_port_ = false;
  ListPorts();
  ShowPortState();
  return 0;
}

void GeneralPage::OnCommand(int command, LongParameter /*parameter*/) {
  if (command == kPortSettings) EditPort();
}

SerialPort* GeneralPage::LivePort() const { return uses_open_port_ ? services_.link.port() : nullptr; }

LineParameters GeneralPage::PresentParameters() const {
  const SerialPort* port = LivePort();
  if (const auto live = port == nullptr ? std::nullopt : port->Parameters()) return *live;
  return LoadLineParameters(services_.registry, selected_).value_or(LineParameters());
}

// A failed write to the settings is not reported; a port that refuses its parameters is.
void GeneralPage::EditPort() {
  PortDialog dialog(selected_, PresentParameters());
  if (dialog.RunModal(this) != kIdOk) return;
  static_cast<void>(StoreLineParameters(services_.registry, selected_, dialog.parameters()));
  SerialPort* port = LivePort();
  if (port != nullptr && Failed(port->SetParameters(dialog.parameters())))
    Tell(*this, Format(LoadString(kRefusedText), {selected_}), BoxIcon::kStop);
}

}  // namespace celldesk
