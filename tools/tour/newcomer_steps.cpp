#include "tour.h"
#include "ui/commands.h"
#include "ui/framework/qt/list_table.h"
#include "ui/framework/qt/native.h"
#include "ui/general_page.h"
#include "ui/operator_page.h"
#include "ui/resources/resources.h"
#include "ui/settings_dialog.h"
#include "ui/sms_folder_view.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr int kInboxTab = 2;
constexpr int kNameColumn = 1, kBodyColumn = 3;

// Controls of the entry's dialog, the settings, the viewer and the editor.
constexpr int kName = 1001, kPort = 1020, kPortState = 1021, kCentre = 1037, kBody = 1003, kRecipient = 1001;

std::u16string EmptyTextOf(FolderView& folder) {
  return folder.list().native()->table->empty_text().toStdU16String();
}

std::u16string NameAt(Tour& tour, int row) {
  AddressBookView& view = tour.frame().sim_view();
  std::u16string buffer;
  if (row < 0) return buffer;
  return std::u16string(view.ColumnText(view.list().RecordAt(row), kNameColumn, buffer));
}

bool SeesWhatToDoFirst(Tour& tour) {
  tour.Picture("address_sim_empty");
  return EmptyTextOf(tour.frame().current_folder()) == LoadString(text::kEmptyConnect) &&
         tour.frame().StatusText() == LoadString(text::kNotConnected);
}

bool SeesThePortInTheSettings(Tour& tour) {
  bool port = false, centre = false;
  tour.InNextDialog([&](Dialog& dialog) {
    auto& settings = dynamic_cast<SettingsDialog&>(dialog);
    port = settings.general().Text(kPort).find(u"Simulated phone") != std::u16string::npos &&
           settings.general().Text(kPortState).find(u"is free") != std::u16string::npos;
    tour.Picture("settings_general");
    tour.PressKey(Qt::Key_PageDown, Qt::ControlModifier);
    centre = settings.operators().Text(kCentre).starts_with(u"+");
    tour.Picture("settings_operator");
    tour.PressKey(Qt::Key_PageDown, Qt::ControlModifier);
    tour.Picture("settings_sms");
    tour.PressKey(Qt::Key_Escape);
  });
  tour.Choose(command::kSettings);
  return port && centre;
}

bool Connects(Tour& tour) {
  tour.Choose(command::kConnect);
  tour.Picture("address_sim_connected");
  return tour.frame().StatusText() == Format(LoadString(text::kConnectedTo), {u"COM1:"}) &&
         EmptyTextOf(tour.frame().current_folder()) == LoadString(text::kEmptyLoad);
}

bool LoadsTheBook(Tour& tour) {
  tour.Choose(command::kLoadData);
  return tour.frame().sim_view().list().RowCount() == 12;
}

bool FindsAPersonByTyping(Tour& tour) {
  ListView& list = tour.frame().sim_view().list();
  tour.ClickRow(list, 0);
  tour.PressKey(Qt::Key_C);
  tour.PressKey(Qt::Key_A);
  return list.SelectedCount() == 1 && NameAt(tour, list.FocusedRow()) == u"Carla Jim\u00E9nez";
}

// Gives the entry that has the focus another name; the phone is not asked.
bool Renames(Tour& tour, std::u16string_view name) {
  AddressBookView& view = tour.frame().sim_view();
  const std::string before = tour.PhoneState();
  tour.InNextDialog([&](Dialog& dialog) {
    dialog.SetText(kName, name);
    tour.PressKey(Qt::Key_Return);
  });
  tour.PressKey(Qt::Key_Return);
  tour.Picture("address_sim_edited");
  const int row = view.list().FocusedRow();
  return NameAt(tour, row) == name && view.ItemImage(view.list().RecordAt(row)) == 1 &&
         tour.PhoneState() == before;
}

bool UploadsTheName(Tour& tour, const char* name) {
  tour.Choose(command::kUpload);
  return !tour.frame().sim_view().HasUnsavedChanges() &&
         tour.WaitUntil([&] { return tour.PhoneState().find(name) != std::string::npos; });
}

bool LoadsTheMessages(Tour& tour) {
  tour.ShowFolder(kInboxTab);
  tour.Picture("inbox_empty");
  const bool told = EmptyTextOf(tour.frame().inbox()) == LoadString(text::kEmptyLoadMessages);
  tour.Choose(command::kLoadData);
  return told && tour.frame().inbox().list().RowCount() > 0;
}

bool ReadsAndAnswers(Tour& tour) {
  bool read = false, addressed = false;
  tour.InNextDialog([&](Dialog& viewer) {
    read = !viewer.Text(kBody).empty();
    tour.InNextDialog([&](Dialog& editor) {
      addressed = !editor.Text(kRecipient).empty();
      tour.PressKey(Qt::Key_Escape);
    });
    tour.PressKey(Qt::Key_R, Qt::ControlModifier);
  });
  tour.PressKey(Qt::Key_Home);
  tour.PressKey(Qt::Key_Return);
  return read && addressed;
}

}  // namespace

void TourNewcomer(Tour& tour) {
  tour.Step("Newcomer: the empty window says what to do", [&] { return SeesWhatToDoFirst(tour); });
  tour.Step("Newcomer: the settings name the phone, the port's state and the centre",
            [&] { return SeesThePortInTheSettings(tour); });
  tour.Step("Newcomer: after Connect the status line names the port, the list the next step",
            [&] { return Connects(tour); });
  tour.Step("Newcomer: Load Data shows twelve entries", [&] { return LoadsTheBook(tour); });
  tour.Step("Newcomer: typed letters find a person", [&] { return FindsAPersonByTyping(tour); });
  tour.Step("Newcomer: Enter edits, a pencil marks the change, the phone is not touched",
            [&] { return Renames(tour, u"Carla at work"); });
  tour.Step("Newcomer: Upload writes the new name into the phone",
            [&] { return UploadsTheName(tour, "Carla at work"); });
  tour.Step("Newcomer: the old name comes back the same way", [&] {
    return Renames(tour, u"Carla Jim\u00E9nez") && UploadsTheName(tour, "Carla Jim\303\251nez");
  });
  tour.Step("Newcomer: the Inbox says what to do, and Load Data does it",
            [&] { return LoadsTheMessages(tour); });
  tour.Step("Newcomer: Enter reads a message, Ctrl+R answers it", [&] { return ReadsAndAnswers(tour); });
  tour.Step("Newcomer: Disconnect, and the status line says so", [&] {
    tour.ShowFolder(0);
    tour.Choose(command::kDisconnect);
    return tour.frame().StatusText() == LoadString(text::kNotConnected);
  });
}

}  // namespace celldesk
