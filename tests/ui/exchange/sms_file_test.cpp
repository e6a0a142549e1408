#include "ui/exchange/exchange_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::u16string_view kPath = u"folder.sms";
constexpr const char* kReceived =
    "+33660334189;Test;23;0;07913366003051F5040B913366304381F900005180719120348004D4F29C0E;\r\n";
constexpr const char* kUnsent = "+420601123456;Hi;16;2;11000C912460102143650000A702C834;\r\n";

/// The window with the Outbox shown.
class SmsExchangeTest : public testing::Test {
 protected:
  SmsExchangeTest() { window_.ShowFolder(kOutboxTab); }

  void Import(const std::string& content) {
    window_.files.files[std::u16string(kPath)] = content;
    window_.file_dialogs.Answer(std::u16string(kPath));
    window_.Command(command::kImport);
  }
  std::string Export() {
    window_.file_dialogs.Answer(std::u16string(kPath));
    window_.Command(command::kExport);
    return window_.files.files[std::u16string(kPath)];
  }
  SmsFolderView& inbox() { return window_.frame().inbox(); }
  SmsFolderView& outbox() { return window_.frame().outbox(); }
  SmsStore& messages() { return inbox().sms().messages(); }
  /// "number|text" of every row.
  static std::vector<std::string> Rows(SmsFolderView& folder) {
    std::vector<std::string> rows;
    std::u16string number, text;
    for (int row = 0; row < folder.list().RowCount(); ++row) {
      const std::size_t record = folder.list().RecordAt(row);
      rows.push_back(Utf8(folder.ColumnText(record, 1, number)) + "|" +
                     Utf8(folder.ColumnText(record, 3, text)));
    }
    return rows;
  }
  /// As the Sms page of the settings saves it.
  void Set(bool report, bool reply_path, std::uint8_t validity) {
    outbox().sms().SetOptions(report, reply_path, false, validity);
  }

  ExchangeWindow window_;
};

TEST_F(SmsExchangeTest, ImportAddsTheMessagesOfAFile) {
  Import("SMSArchive11;Outbox;\r\n" + std::string(kUnsent));
  Import("SMSArchive11;Outbox;\r\n" + std::string(kUnsent) + kUnsent);
  EXPECT_THAT(Rows(outbox()), ElementsAre("+420601123456|Hi", "+420601123456|Hi", "+420601123456|Hi"));
  EXPECT_THAT(window_.TakeAsked(), IsEmpty());
  const FileQuestion& asked = window_.file_dialogs.asked().front();
  EXPECT_EQ(asked.kind, FileDialogKind::kOpen);
  EXPECT_EQ(Utf8(asked.filter), "SMS messages(*.SMS)#*.sms#All files (*.*)#*.*#");
  EXPECT_EQ(Utf8(asked.default_extension), "sms");
}

TEST_F(SmsExchangeTest, ImportTakesAnyFoldersFileAndShowsEachMessageWhereItBelongs) {
  window_.ShowFolder(kInboxTab);
  Import("SMSArchive11;Drafts;\r\n" + std::string(kUnsent) + kReceived);
  EXPECT_THAT(Rows(inbox()), ElementsAre("+33660334189|Test"));
  EXPECT_THAT(Rows(outbox()), ElementsAre("+420601123456|Hi"));
}

TEST_F(SmsExchangeTest, ShortLinesPrepareMessagesToAListOfRecipients) {
  Set(true, false, 173);
  Import("SMSArchive11;Outbox;\r\n// guests\r\n+420601000001;See you at 5;\r\n0602000002;Bring #; cake;\r\n");
  EXPECT_THAT(Rows(outbox()), ElementsAre("+420601000001|See you at 5", "0602000002|Bring ; cake"));
  ASSERT_EQ(messages().count(), 2);
  const SmsMessage& message = messages().At(0);
  EXPECT_EQ(message.flags, 0x1BU);
  EXPECT_EQ(message.first_octet, 0x31U);
  EXPECT_EQ(message.submit.relative_validity, 173);
  EXPECT_EQ(outbox().ItemFont(0), FontRole::kItalic);
  EXPECT_TRUE(outbox().HasUnsavedChanges());
}

TEST_F(SmsExchangeTest, ShortLinesAreSentByTheNextUpload) {
  Import("SMSArchive11;Outbox;\r\n+420601000001;See you;\r\n+420601000002;Bye;\r\n");
  window_.Command(command::kUpload);
  std::vector<std::string> bodies;
  for (const simulator::SentMessage& sent : window_.phone().memory().sent) bodies.push_back(sent.body);
  ASSERT_EQ(bodies.size(), 2U);
  EXPECT_NE(bodies[0].find("0C91246010000010"), std::string::npos) << bodies[0];
  EXPECT_NE(bodies[1].find("0C91246010000020"), std::string::npos) << bodies[1];
}

TEST_F(SmsExchangeTest, AFileOfAnotherKindImportsNothing) {
  for (const char* content :
       {"", "AddrArchive10;SM;1;2;\r\n", "SMSArchive12;Outbox;\r\n+420601000001;x;\r\n"}) {
    Import(content);
    EXPECT_THAT(window_.LastBox(), IsErrorBox("Invalid file format."));
  }
  EXPECT_EQ(messages().count(), 0);
}

TEST_F(SmsExchangeTest, AFileThatCannotBeReadIsTold) {
  window_.file_dialogs.Answer(u"none.sms");
  window_.Command(command::kImport);
  EXPECT_THAT(window_.LastBox(), IsFileError("none.sms", "The file does not exist."));
}

TEST_F(SmsExchangeTest, ACancelledFileDialogDoesNothing) {
  Import("SMSArchive11;Outbox;\r\n" + std::string(kUnsent));
  const auto before = window_.files.files;
  window_.Command(command::kImport);
  window_.Command(command::kExport);
  EXPECT_EQ(window_.file_dialogs.asked().size(), 3U);
  EXPECT_EQ(window_.files.files, before);
  EXPECT_EQ(messages().count(), 1);
  EXPECT_THAT(window_.TakeAsked(), IsEmpty());
}

TEST_F(SmsExchangeTest, ExportWritesTheFoldersMessages) {
  Import("SMSArchive11;Outbox;\r\n" + std::string(kUnsent) + kReceived + kUnsent);
  EXPECT_EQ(Export(), "SMSArchive11;Outbox;\r\n" + std::string(kUnsent) + kUnsent);
  window_.ShowFolder(kInboxTab);
  EXPECT_EQ(Export(), "SMSArchive11;Inbox;\r\n" + std::string(kReceived));
  const FileQuestion& asked = window_.file_dialogs.asked().back();
  EXPECT_EQ(asked.kind, FileDialogKind::kSave);
  EXPECT_EQ(Utf8(asked.filter), "SMS messages(*.SMS)#*.sms#All files (*.*)#*.*#");
  EXPECT_EQ(Utf8(asked.default_extension), "sms");
}

TEST_F(SmsExchangeTest, ExportLeavesOutWhatWasDeleted) {
  Import("SMSArchive11;Outbox;\r\n" + std::string(kUnsent) + "+420601000001;x;\r\n");
  outbox().list().Select(0, true);
  window_.CommandAnswering(command::kDelete, kAnswerYes);
  EXPECT_THAT(Rows(outbox()), ElementsAre("+420601000001|x"));
  EXPECT_EQ(Export().find("Hi"), std::string::npos);
}

TEST_F(SmsExchangeTest, AMessageThatWasNeverSentComesBack) {
  Set(false, true, 11);
  Import("SMSArchive11;Outbox;\r\n+420601000001;See you at 5;\r\n");
  const std::string exported = Export();
  messages().Clear();
  outbox().list().Clear();
  Import(exported);
  EXPECT_THAT(Rows(outbox()), ElementsAre("+420601000001|See you at 5"));
  EXPECT_EQ(messages().At(0).first_octet, 0x91U);
  EXPECT_EQ(messages().At(0).submit.relative_validity, 11);
  EXPECT_EQ(Export(), exported);
}

TEST_F(SmsExchangeTest, AMessageTooLongToSendComesBackToo) {
  const std::string text(200, 'x');
  Import("SMSArchive11;Outbox;\r\n+420601000001;" + text + ";\r\n");
  const std::string exported = Export();
  messages().Clear();
  outbox().list().Clear();
  Import(exported);
  EXPECT_THAT(Rows(outbox()), ElementsAre("+420601000001|" + text));
  EXPECT_EQ(Export(), exported);
}

TEST_F(SmsExchangeTest, AFullDiskIsToldAndTheProgramGoesOn) {
  Import("SMSArchive11;Outbox;\r\n" + std::string(kUnsent));
  window_.files.write_error = kErrorDiskFull;
  Export();
  EXPECT_THAT(window_.LastBox(), IsFileError("folder.sms", "The disk is full. The file is not complete."));
  window_.files.write_error = kErrorSuccess;
  EXPECT_EQ(Export(), "SMSArchive11;Outbox;\r\n" + std::string(kUnsent));
}

TEST_F(SmsExchangeTest, IsThereWithoutAPhone) {
  window_.Command(command::kDisconnect);
  for (const int folder : {kInboxTab, kOutboxTab}) {
    window_.ShowFolder(folder);
    EXPECT_TRUE(window_.IsEnabled(command::kImport));
    EXPECT_TRUE(window_.IsEnabled(command::kExport));
  }
}

}  // namespace
}  // namespace celldesk
