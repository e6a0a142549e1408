#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "link/port_settings.h"
#include "ui/commands.h"
#include "ui/port_dialog.h"
#include "ui/settings_dialog.h"
#include "ui/user_actions.h"
#include "ui/window_session.h"

namespace celldesk {

/// Pages by the place of their tabs.
inline constexpr int kGeneralTab = 0, kOperatorTab = 1, kSmsTab = 2;

/// The started window on a machine with two ports: "COM1:" is "Data cable" on /dev/ttyUSB0, "COM2:" is
/// "Modem board" on /dev/ttyAMA0. The stored centre is +447700900000.
class SettingsWindow : public WindowSession {
 public:
  using Work = std::function<void(SettingsDialog& dialog)>;

  SettingsWindow();

  /// Gives the command Settings, works the dialog and ends it by a click on OK or Cancel. The test fails when
  /// no dialog opens.
  void EditAndConfirm(const Work& work) { Edit(work, kIdOk); }
  void EditAndCancel(const Work& work) { Edit(work, kIdCancel); }
  /// Opens the dialog to look at it only.
  void Look(const Work& work) { Edit(work, kIdCancel); }
  /// The same for the port dialog, by the button of the page.
  void EditPort(SettingsDialog& settings, const std::function<void(PortDialog& dialog)>& work,
                int end = kIdOk);

  /// What the settings key holds.
  Settings Stored() { return SettingsStore(registry).Load(); }
  void Store(const Settings& settings) { SettingsStore(registry).Save(settings); }
  /// The parameters of the port that the link has open.
  LineParameters OpenParameters() { return *application->link().port()->Parameters(); }

 private:
  void Edit(const Work& work, int end);
};

/// Opens a choice list and takes the entry with this text.
void Pick(Dialog& dialog, int id, const std::string& text);
/// The texts of a choice list.
std::vector<std::string> Choices(const Dialog& dialog, int id);
std::string TextOf(const Dialog& dialog, int id);
/// Opens the operator page and picks country and operator.
void PickOperator(SettingsDialog& dialog, const std::string& country, const std::string& name);
/// Clicks a check box or radio button.
void ClickSwitch(Dialog& dialog, int id);
/// Replaces what is typed into an editable choice list.
void TypeIntoList(Dialog& dialog, int id, const QString& text);

}  // namespace celldesk
