#include "tour.h"
#include "ui/commands.h"
#include "ui/framework/message_box.h"
#include "ui/sms_folder_view.h"

namespace celldesk {
namespace {

constexpr int kInboxTab = 2, kOutboxTab = 3;
constexpr int kNumberColumn = 1, kBodyColumn = 3;

// Controls of the viewer and the editor.
constexpr int kFrom = 1002, kRecipient = 1001, kBrowse = 1002, kBody = 1003, kReading = 1005,
              kReportCheck = 1016, kSaveTo = 1053;

constexpr std::u16string_view kOwnNumber = u"+447700900123";
constexpr std::u16string_view kNote = u"Note to self: buy milk @ the corner";

std::u16string Cell(SmsFolderView& folder, int row, int column) {
  std::u16string buffer;
  return std::u16string(folder.ColumnText(folder.list().RecordAt(row), column, buffer));
}

int RowOfText(SmsFolderView& folder, std::u16string_view start) {
  for (int row = 0; row < folder.list().RowCount(); ++row) {
    if (Cell(folder, row, kBodyColumn).starts_with(start)) return row;
  }
  return -1;
}

std::uint32_t FlagsOf(SmsFolderView& folder, std::u16string_view text) {
  const int row = RowOfText(folder, text);
  return row < 0 ? 0 : folder.MessageAt(row).flags;
}

int CountOfText(SmsFolderView& folder, std::u16string_view start) {
  int count = 0;
  for (int row = 0; row < folder.list().RowCount(); ++row) {
    if (Cell(folder, row, kBodyColumn).starts_with(start)) ++count;
  }
  return count;
}

bool LoadsBothFolders(Tour& tour) {
  tour.ShowFolder(kInboxTab);
  tour.Click(command::kLoadData);
  tour.Picture("inbox");
  const bool received = RowOfText(tour.frame().inbox(), u"Good morning! Coffee at ten?") >= 0;
  tour.ShowFolder(kOutboxTab);
  tour.Picture("outbox");
  return received && RowOfText(tour.frame().outbox(), u"Train is late, start without me.") >= 0;
}

// An unread message is shown, then the report behind it.
bool ReadsMessages(Tour& tour) {
  tour.ShowFolder(kInboxTab);
  SmsFolderView& inbox = tour.frame().inbox();
  const int row = RowOfText(inbox, u"Gr\u00FC\u00DFe");
  bool text = false, report = false;
  tour.InNextDialog([&](Dialog& dialog) {
    tour.Picture("viewer");
    text = dialog.Text(kBody) == u"Gr\u00FC\u00DFe aus K\u00F6ln, bis sp\u00E4ter" &&
           dialog.Text(kFrom) == u"Dieter J\u00E4ger";
    tour.ClickIn(dialog, command::kNext);
    tour.Picture("viewer_report");
    report = dialog.Text(kBody).starts_with(u"Message delivery SUCCESS");
    tour.ClickIn(dialog, kIdOk);
  });
  tour.DoubleClickRow(inbox.list(), row);
  return text && report && (FlagsOf(inbox, u"Gr\u00FC\u00DFe") & kMessageNotOpened) == 0;
}

bool RepliesFromTheViewer(Tour& tour) {
  SmsFolderView& inbox = tour.frame().inbox();
  bool addressed = false;
  tour.InNextDialog([&](Dialog& viewer) {
    tour.InNextDialog([&](Dialog& editor) {
      addressed = editor.Text(kRecipient) == u"Anna Whitfield" &&
                  editor.Text(kBody) == u"Good morning! Coffee at ten?";
      tour.TypeIn(editor, kBody, u" Yes!");
      tour.Picture("editor_reply");
      tour.ClickIn(editor, command::kSend);
    });
    tour.ClickIn(viewer, command::kReply);
  });
  tour.DoubleClickRow(inbox.list(), RowOfText(inbox, u"Good morning!"));
  tour.ShowFolder(kOutboxTab);
  tour.Picture("outbox_reply");
  return addressed && (FlagsOf(tour.frame().outbox(), u"Good morning!") & kMessageToSend) != 0;
}

// A new message is in no phone: it goes at once, after a question.
bool DeletesTheReply(Tour& tour) {
  SmsFolderView& outbox = tour.frame().outbox();
  tour.ClickRow(outbox.list(), RowOfText(outbox, u"Good morning!"));
  tour.ExpectBox("You requested to delete 1 new items.", kAnswerYes, "question_delete_new");
  tour.Click(command::kDelete);
  return tour.BoxesCame() && RowOfText(outbox, u"Good morning!") < 0;
}

bool ChoosesARecipient(Tour& tour) {
  bool chosen = false;
  tour.InNextDialog([&](Dialog& editor) {
    tour.InNextDialog([&](Dialog& chooser) {
      tour.Picture("chooser");
      tour.ClickIn(chooser, kIdOk);
    });
    tour.ClickIn(editor, kBrowse);
    chosen = editor.Text(kRecipient) == u"Anna Whitfield";
    tour.TypeIn(editor, kBody, u"Price: 5 [EUR]");
    tour.Picture("editor_chosen");
    chosen = chosen && editor.Text(kReading).starts_with(u"Arrives as:");
    tour.ClickIn(editor, kIdCancel);
  });
  tour.Click(command::kNew);
  return chosen;
}

bool WritesToItself(Tour& tour) {
  tour.InNextDialog([&](Dialog& editor) {
    tour.TypeIn(editor, kRecipient, kOwnNumber);
    tour.TypeIn(editor, kBody, kNote);
    tour.ClickIn(editor, kReportCheck);
    tour.Picture("editor_new");
    tour.ClickIn(editor, command::kSend);
  });
  tour.Click(command::kNew);
  tour.Picture("outbox_to_send");
  return (FlagsOf(tour.frame().outbox(), kNote) & kMessageToSend) != 0;
}

bool ComesBack(Tour& tour) {
  SmsFolderView& inbox = tour.frame().inbox();
  tour.ShowFolder(kInboxTab);
  const int reports = CountOfText(inbox, u"Message delivery");
  tour.Click(command::kUpload);
  tour.Picture("inbox_loopback");
  const int row = RowOfText(inbox, kNote);
  return row >= 0 && Cell(inbox, row, kNumberColumn) == kOwnNumber &&
         CountOfText(inbox, u"Message delivery") == reports + 1 && !inbox.HasUnsavedChanges();
}

bool MarksAndUnmarks(Tour& tour) {
  SmsFolderView& inbox = tour.frame().inbox();
  tour.ClickRow(inbox.list(), RowOfText(inbox, kNote));
  tour.Click(command::kDelete);
  tour.Picture("inbox_marked");
  const bool marked = (FlagsOf(inbox, kNote) & kMessageToDelete) != 0;
  tour.Click(command::kDelete);
  return marked && (FlagsOf(inbox, kNote) & kMessageToDelete) == 0;
}

bool DeletesInThePhone(Tour& tour) {
  SmsFolderView& inbox = tour.frame().inbox();
  const int rows = inbox.list().RowCount();
  tour.ClickRow(inbox.list(), RowOfText(inbox, kNote));
  tour.Click(command::kDelete);
  tour.Click(command::kUpload);
  return inbox.list().RowCount() == rows - 1 && RowOfText(inbox, kNote) < 0;
}

// A stored message is changed and stored in the phone's own memory; it is not sent.
bool StoresInThePhone(Tour& tour) {
  constexpr std::u16string_view kBirthday = u"Happy birthday!";
  tour.ShowFolder(kOutboxTab);
  SmsFolderView& outbox = tour.frame().outbox();
  const int rows = outbox.list().RowCount();
  tour.InNextDialog([&](Dialog& editor) {
    tour.PickIn(editor, kSaveTo, 2);
    tour.Picture("editor_save_to");
    tour.ClickIn(editor, command::kSave);
  });
  tour.DoubleClickRow(outbox.list(), RowOfText(outbox, kBirthday));
  tour.Picture("outbox_to_store");
  tour.Click(command::kUpload);
  tour.Picture("outbox_stored");
  const int row = outbox.list().RowCount() - 1;
  return outbox.list().RowCount() == rows + 1 && Cell(outbox, row, 0) == u"ME" &&
         Cell(outbox, row, kBodyColumn).starts_with(kBirthday);
}

bool ShowsNumbers(Tour& tour) {
  SmsFolderView& outbox = tour.frame().outbox();
  const auto names = [&outbox] { return Cell(outbox, RowOfText(outbox, u"Train is late"), kNumberColumn); };
  const bool on = names() == u"Ben Okafor";
  tour.Choose(command::kShowNames);
  tour.Picture("outbox_numbers");
  const bool off = names() == u"+447700900102";
  tour.Choose(command::kShowNames);
  return on && off;
}

}  // namespace

void TourMessages(Tour& tour) {
  tour.Step("Load Data shows the messages in Inbox and Outbox", [&] { return LoadsBothFolders(tour); });
  tour.Step("A message is read, and the delivery report behind it", [&] { return ReadsMessages(tour); });
  tour.Step("Reply writes to its sender", [&] { return RepliesFromTheViewer(tour); });
  tour.Step("The reply, not sent yet, is deleted after a question", [&] { return DeletesTheReply(tour); });
  tour.Step("A recipient is chosen from the address books", [&] { return ChoosesARecipient(tour); });
  tour.Step("A message to the phone's own number is written", [&] { return WritesToItself(tour); });
  tour.Step("Upload sends it, and it comes back with its report", [&] { return ComesBack(tour); });
  tour.Step("Delete marks a message, Delete again takes the mark off", [&] { return MarksAndUnmarks(tour); });
  tour.Step("A marked message leaves the phone with the upload", [&] { return DeletesInThePhone(tour); });
  tour.Step("A message is stored in the phone's memory", [&] { return StoresInThePhone(tour); });
  tour.Step("Show Names turns names into numbers and back", [&] { return ShowsNumbers(tour); });
}

}  // namespace celldesk
