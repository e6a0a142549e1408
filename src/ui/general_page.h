#pragma once

#include <string>
#include <vector>

#include "platform/line_parameters.h"
#include "platform/port_list.h"
#include "ui/program_services.h"
#include "ui/settings_page_dialog.h"

namespace celldesk {

class SerialPort;

/// The page "General": the port, what stands in its way, its line parameters, and the adapter. The list
/// follows ports that come and go; a selected port that is not there stays in it.
class GeneralPage : public SettingsPageDialog {
 public:
  static constexpr int kPort = 1020, kPortState = 1021, kPortSettings = 1022, kAdapter = 1023;
  /// The timer that follows the ports while the page lives.
  static constexpr int kFollowTimer = 1;

  GeneralPage(Settings& settings, const ProgramServices& services);

  bool OnInitDialog(int focus, LongParameter parameter) override;
  void OnTimer(int timer_id) override;
  MessageResult OnNotify(int control_id, const Notification& notification) override;
  void OnCommand(int command, LongParameter parameter) override;
  bool UpdateData(bool save) override;

 private:
  void ListPorts();
  void ShowPortState();
  std::u16string PortState() const;
  std::u16string DescribeObstacle(const PortInfo& port) const;
  SerialPort* LivePort() const;
  LineParameters PresentParameters() const;
  void EditPort();

  ProgramServices services_;
  /// The active ports; before them the selected one when it is not among them.
  std::vector<PortInfo> listed_;
  std::size_t missing_ = 0;  ///< how many of listed_ are not there: 0 or 1
  std::u16string selected_;
  bool uses_open_port_ = false;
};

}  // namespace celldesk
