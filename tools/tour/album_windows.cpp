#include <QMenu>
#include <QMenuBar>

#include "album.h"
#include "ui/commands.h"
#include "ui/framework/message_box.h"
#include "ui/framework/progress_dialog.h"
#include "ui/framework/qt/native.h"
#include "ui/general_page.h"
#include "ui/resources/resources.h"
#include "ui/settings_dialog.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr int kSimTab = 0, kInboxTab = 2, kOutboxTab = 3;

// Controls of the editor.
constexpr int kRecipient = 1001, kBrowse = 1002, kBody = 1003, kRelativeValidity = 1011;

void TakeMenu(Album& album, const char* name, int popup) {
  album.Add(name, [&] {
    const QMenuBar* bar = WidgetOf(&album.tour().frame())->findChild<QMenuBar*>();
    QAction* title = bar->actions().at(popup);
    album.tour().frame().Surface().QueryState();
    title->menu()->popup(bar->mapToGlobal(bar->actionGeometry(title).bottomLeft()));
    album.Take(*title->menu());
    title->menu()->close();
  });
}

void ShowSettingsPage(Tour& tour, int page) {
  for (int i = 0; i < page; ++i) tour.PressKey(Qt::Key_PageDown, Qt::ControlModifier);
}

}  // namespace

void Album::TakeMenus() {
  tour_.ShowFolder(kSimTab);
  TakeMenu(*this, "menu_address", 0);
  TakeMenu(*this, "menu_services", 1);
  tour_.ShowFolder(kInboxTab);
  TakeMenu(*this, "menu_sms", 0);
}

void Album::TakeBookDialogs() {
  tour_.ShowFolder(kSimTab);
  tour_.ClickRow(tour_.frame().sim_view().list(), 1);
  AddDialog("edit_item", command::kOpen);
  AddDialog("new_item", command::kNew);
  AddDialog("import_choices", command::kImport);
  AddDialog("export_choices", command::kExport);
  AddDialog("about", command::kAbout);
  AddToolkitWindow("file_save", [&] {
    tour_.InNextDialog([&](Dialog& dialog) { tour_.ClickIn(dialog, kIdOk); });
    tour_.Choose(command::kExport);
  });
  AddToolkitWindow("file_open", [&] {
    tour_.InNextDialog([&](Dialog& dialog) { tour_.ClickIn(dialog, kIdOk); });
    tour_.Choose(command::kImport);
  });
  Add("progress", [&] {
    ProgressDialog progress;
    progress.Create(&tour_.frame());
    progress.SetCaption(LoadString(text::kExportingBook));
    progress.SetLine(Format(LoadString(text::kProgress), {10, 250}));
    progress.SetRange(0, 250);
    progress.SetPosition(10);
    Take(*WidgetOf(&progress));
    progress.Close();
  });
}

void Album::TakeMessageDialogs() {
  tour_.ShowFolder(kInboxTab);
  tour_.ClickRow(tour_.frame().inbox().list(), 0);
  AddDialog("viewer", command::kOpen);
  AddDialog("viewer_report", command::kOpen, [&](Dialog& dialog) {
    for (int i = 0; i < 20 && dialog.Text(kBody).find(u"delivery") == std::u16string::npos; ++i) {
      tour_.ClickIn(dialog, command::kNext);
    }
  });
  tour_.ShowFolder(kOutboxTab);
  AddDialog("editor_new", command::kNew);
  AddDialog("editor_written", command::kNew, [&](Dialog& dialog) {
    tour_.TypeIn(dialog, kRecipient, u"+447700900123");
    dialog.SetText(kBody, u"The price is 5 [EUR]; gr\u00FC\u00DFe aus K\u00F6ln, dobr\u00FD den");
    tour_.TypeIn(dialog, kBody, u".");
    tour_.ClickIn(dialog, kRelativeValidity);
  });
  AddDialog("chooser", command::kNew, [&](Dialog& dialog) {
    tour_.InNextDialog([&](Dialog& chooser) {
      Take();
      tour_.ClickIn(chooser, kIdCancel);
    });
    tour_.ClickIn(dialog, kBrowse);
  });
  tour_.ClickRow(tour_.frame().outbox().list(), 0);
  AddDialog("editor_stored", command::kOpen);
}

void Album::TakeSettings() {
  AddDialog("settings_general", command::kSettings);
  AddDialog("settings_operator", command::kSettings, [&](Dialog&) { ShowSettingsPage(tour_, 1); });
  AddDialog("settings_sms", command::kSettings, [&](Dialog&) { ShowSettingsPage(tour_, 2); });
  AddDialog("port", command::kSettings, [&](Dialog& dialog) {
    tour_.InNextDialog([&](Dialog& port) {
      Take();
      tour_.ClickIn(port, kIdCancel);
    });
    tour_.ClickIn(dynamic_cast<SettingsDialog&>(dialog).general(), GeneralPage::kPortSettings);
  });
}

// Each kind of box, with the longest text that comes in it.
void Album::TakeBoxes() {
  const auto box = [&](const char* name, const std::u16string& text, BoxButtons buttons, BoxIcon icon) {
    AddToolkitWindow(name, [&] { ShowMessageBox(&tour_.frame(), {text, {}, buttons, icon, false}); });
  };
  constexpr std::u16string_view kPath = u"/home/user/Documents/Address books/Friends and neighbours.adr";
  box("box_told", LoadString(text::kHelpMissing), BoxButtons::kOk, BoxIcon::kInformation);
  box("box_file_error", LoadString(text::kFileDenied) + u"\r\r" + std::u16string(kPath), BoxButtons::kOk,
      BoxIcon::kInformation);
  box("box_stop", LoadString(text::kNoSpace), BoxButtons::kOk, BoxIcon::kStop);
  box("box_question", Format(LoadString(text::kDeleteAddress), {u"Carla Jim\u00E9nez"}), BoxButtons::kYesNo,
      BoxIcon::kQuestion);
  box("box_long_question", LoadString(text::kBookChanged), BoxButtons::kYesNo, BoxIcon::kWarning);
  box("box_grave_question", Format(LoadString(text::kTooManyItems), {250, 100, 100}), BoxButtons::kYesNo,
      BoxIcon::kStop);
  box("box_retry",
      Format(LoadString(text::kSendError), {u"Meet me at the station", u"+447700900123", u"+CMS ERROR: 331"}),
      BoxButtons::kYesNoCancel, BoxIcon::kInformation);
}

}  // namespace celldesk
