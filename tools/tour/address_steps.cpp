#include "tour.h"
#include "ui/commands.h"
#include "ui/framework/message_box.h"

namespace celldesk {
namespace {

constexpr int kName = 1001, kNumber = 1002;

int RowOfName(AddressBookView& view, std::u16string_view name) {
  std::u16string buffer;
  for (int row = 0; row < view.list().RowCount(); ++row) {
    if (view.ColumnText(view.list().RecordAt(row), 1, buffer) == name) return row;
  }
  return -1;
}

void SelectRow(AddressBookView& view, int row) {
  view.list().ClearSelection();
  view.list().Select(row, true);
  view.list().SetFocusedRow(row);
}

bool AddEntry(Tour& tour, std::u16string_view name, std::u16string_view number) {
  tour.InNextDialog([&](Dialog& dialog) {
    dialog.SetText(kName, name);
    dialog.SetText(kNumber, number);
    tour.Picture("edit_item");
    dialog.Dispatch(Message::kCommand, kIdOk, 0);
  });
  tour.Click(command::kNew);
  return RowOfName(tour.frame().sim_view(), name) >= 0;
}

bool DeleteEntry(Tour& tour, std::u16string_view name) {
  AddressBookView& view = tour.frame().sim_view();
  const int rows = view.list().RowCount();
  SelectRow(view, RowOfName(view, name));
  tour.ExpectBox("Do you really want to delete address", kAnswerYes, "question");
  tour.Click(command::kDelete);
  return tour.BoxesCame() && view.list().RowCount() == rows - 1 && RowOfName(view, name) < 0;
}

bool SameAfterReload(Tour& tour) {
  AddressBookView& view = tour.frame().sim_view();
  tour.Click(command::kLoadData);
  return RowOfName(view, u"Tour Guide") >= 0 && !view.HasUnsavedChanges();
}

}  // namespace

void TourAddressBooks(Tour& tour) {
  tour.Step("Connect finds the phone", [&] {
    tour.Click(command::kConnection);
    return tour.frame().IsConnected();
  });
  tour.Step("Load Data shows the SIM's address book", [&] {
    tour.Click(command::kLoadData);
    tour.Picture("address_sim");
    return tour.frame().sim_view().list().RowCount() >= 10;
  });
  tour.Step("A click on the header sorts by name", [&] {
    ListView& list = tour.frame().sim_view().list();
    list.OnHeaderClick(1);
    tour.Picture("address_sim_sorted");
    return list.sort_column() == 1;
  });
  tour.Step("Load Data shows the phone's own address book", [&] {
    tour.ShowFolder(1);
    tour.Click(command::kLoadData);
    tour.Picture("address_mt");
    return tour.frame().phone_view().list().RowCount() >= 10;
  });
  tour.Step("A new entry is added locally", [&] {
    tour.ShowFolder(0);
    const std::string before = tour.PhoneState();
    return AddEntry(tour, u"Tour Guide", u"+447700900555") && tour.PhoneState() == before;
  });
  tour.Step("Upload writes it into the phone", [&] {
    tour.Click(command::kUpload);
    return tour.WaitUntil([&] { return tour.PhoneState().find("Tour Guide") != std::string::npos; });
  });
  tour.Step("A fresh download brings it back", [&] { return SameAfterReload(tour); });
  tour.Step("A deleted entry leaves the phone with the next upload", [&] {
    if (!DeleteEntry(tour, u"Tour Guide")) return false;
    tour.Click(command::kUpload);
    return tour.WaitUntil([&] { return tour.PhoneState().find("Tour Guide") == std::string::npos; });
  });
}

}  // namespace celldesk
