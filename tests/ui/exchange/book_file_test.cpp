#include "ui/exchange/exchange_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kQuestion =
    "Address book was changed. Downloadig new data from mobile phone will delete the changes. To save the "
    "changes, cancel this action and export the Address book to the file.\r\rDo you want to continue?";
constexpr std::u16string_view kPath = u"book.adr";

TEST(BookImport, OffersFilesContactsAndThePartnersBook) {
  ExchangeWindow window;
  window.InOptions(command::kImport, [](Dialog& dialog) {
    EXPECT_THAT(
        ExchangeWindow::Choices(dialog),
        ElementsAre("Load from file", "Add from file", "Import from Contacts Database",
                    "Add from Contacts Database", "Import from phone book 'ME'", "Add from phone book 'ME'"));
  });
  window.ShowFolder(kPhoneTab);
  window.InOptions(command::kImport, [](Dialog& dialog) {
    EXPECT_EQ(ExchangeWindow::Choices(dialog).back(), "Add from phone book 'SM'");
  });
}

TEST(BookExport, OffersAFileContactsAndThePartnersBook) {
  ExchangeWindow window;
  window.InOptions(command::kExport, [](Dialog& dialog) {
    EXPECT_EQ(Utf8(dialog.Title()), "Choose export/import type:");
    EXPECT_THAT(ExchangeWindow::Choices(dialog),
                ElementsAre("Save to file", "Save to Contacts Database", "Add to phone book 'ME'"));
  });
  window.ShowFolder(kPhoneTab);
  window.InOptions(command::kExport, [](Dialog& dialog) {
    EXPECT_EQ(ExchangeWindow::Choices(dialog).back(), "Add to phone book 'SM'");
  });
}

TEST(BookImport, AsksAboutChangesBeforeItOffersAnything) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  window.InOptions(command::kImport, [&](Dialog&) { EXPECT_THAT(window.TakeAsked(), IsEmpty()); });
  window.SimEntry(0).flags |= AddressEntry::kModified;
  window.InNextDialog([](Dialog& dialog) {
    ADD_FAILURE() << "No stops";
    dialog.EndDialog(kIdCancel);
  });
  window.CommandAnswering(command::kImport, kAnswerNo);
  EXPECT_THAT(window.LastBox(), IsQuestion(kQuestion, BoxIcon::kWarning, false));
  EXPECT_EQ(window.boxes.asked().size(), 1U);
  window.boxes.Answer(kAnswerYes);
  window.InOptions(command::kImport,
                   [&](Dialog&) { EXPECT_THAT(window.TakeAsked(), ElementsAre(kQuestion, kQuestion)); });
  EXPECT_EQ(window.SimRows().size(), 3U);
}

TEST(BookExport, AsksNothing) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  window.SimEntry(0).flags |= AddressEntry::kModified;
  window.ExportFile(kPath);
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(BookImport, LoadReplacesTheBookByTheFile) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  window.files.files[std::u16string(kPath)] = "AddrArchive10;ME;1;9;\r\n2;Dora;+420;\r\n7;Eva#;;5;\r\n";
  window.ImportFile(import_choice::kLoadFile, kPath);
  EXPECT_THAT(window.SimRows(), ElementsAre("2|Dora|+420", "7|Eva;|5"));
  EXPECT_EQ(window.sim().book().memory().last, 9);
  EXPECT_THAT(window.SimFlags(), ElementsAre(0, 3, 0, 0, 0, 2, 3));
  EXPECT_TRUE(window.sim().HasUnsavedChanges());
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
  ASSERT_EQ(window.file_dialogs.asked().size(), 1U);
  const FileQuestion& asked = window.file_dialogs.asked().front();
  EXPECT_EQ(asked.kind, FileDialogKind::kOpen);
  EXPECT_EQ(Utf8(asked.filter), "Address book (*.ADR)#*.adr#All files (*.*)#*.*#");
  EXPECT_EQ(Utf8(asked.default_extension), "adr");
}

TEST(BookImport, AddKeepsTheBookAndFillsFreeSlots) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  window.files.files[std::u16string(kPath)] =
      "AddrArchive10;SM;1;5;\r\n1;Dora;+420;\r\n5;Eva;5;\r\n0;Fritz;6;\r\n";
  window.ImportFile(import_choice::kAddFile, kPath);
  EXPECT_THAT(window.SimRows(), ElementsAre("1|Anna|+447700900101", "2|Bert|112", "4|Carl|0044",
                                            "3|Dora|+420", "5|Eva|5", "6|Fritz|6"));
  EXPECT_THAT(window.SimFlags(), ElementsAre(1, 1, 3, 1, 3, 3));
}

TEST(BookImport, ACancelledFileDialogChangesNothingAndSaysNothing) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  for (const int choice : {import_choice::kLoadFile, import_choice::kAddFile}) window.Import(choice);
  EXPECT_EQ(window.file_dialogs.asked().size(), 2U);
  EXPECT_EQ(window.SimRows().size(), 3U);
  EXPECT_FALSE(window.sim().HasUnsavedChanges());
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(BookImport, AFileOfAnotherKindChangesNothing) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  for (const char* content :
       {"", "SMSArchive11;Inbox;\r\n", "\xFF\xFE", "AddrArchive11;SM;1;2;\r\n1;A;1;\r\n"}) {
    window.files.files[std::u16string(kPath)] = content;
    window.ImportFile(import_choice::kLoadFile, kPath);
    EXPECT_THAT(window.LastBox(), IsErrorBox("Invalid file format."));
  }
  EXPECT_EQ(window.SimRows().size(), 3U);
  EXPECT_FALSE(window.sim().HasUnsavedChanges());
}

TEST(BookImport, AFileThatCannotBeReadChangesNothing) {
  struct Case {
    SystemError code;
    const char* sentence;
  };
  ExchangeWindow window(ThreeEntries());
  window.Load();
  window.files.files[std::u16string(kPath)] = "AddrArchive10;SM;1;5;\r\n";
  for (const auto& [code, sentence] :
       {Case{kErrorFileNotFound, "The file does not exist."},
        Case{kErrorPathNotFound, "The folder does not exist."},
        Case{kErrorTooManyOpenFiles, "Too many files are open."},
        Case{kErrorAccessDenied, "You may not use this file, or it is not an ordinary file."},
        Case{kErrorNotEnoughMemory, "There is not enough memory for this file."},
        Case{kErrorReadFault, "The file cannot be read whole. Perhaps another program changes it."},
        Case{kErrorFileTooLarge, "The file is too large."},
        Case{kErrorInvalidName, "This is not a valid file name."},
        Case{kErrorGeneralFailure, "The file cannot be used (system error 31)."}}) {
    window.files.open_error = code;
    window.ImportFile(import_choice::kLoadFile, kPath);
    EXPECT_THAT(window.LastBox(), IsFileError("book.adr", sentence));
  }
  EXPECT_EQ(window.SimRows().size(), 3U);
  EXPECT_FALSE(window.sim().HasUnsavedChanges());
}

TEST(BookImport, AFileWithoutEntriesStillChangesTheBook) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  window.files.files[std::u16string(kPath)] = "AddrArchive10;SM;1;5;\r\n";
  window.ImportFile(import_choice::kLoadFile, kPath);
  EXPECT_THAT(window.SimRows(), IsEmpty());
  EXPECT_FALSE(window.sim().book().IsModified());
  EXPECT_TRUE(window.sim().HasUnsavedChanges());
  window.InOptions(command::kImport, [](Dialog&) {});
  EXPECT_THAT(window.TakeAsked(), IsEmpty()) << "no entry is modified";
  window.Load();
  EXPECT_EQ(window.SimRows().size(), 3U);
  EXPECT_FALSE(window.sim().HasUnsavedChanges());
}

TEST(BookImport, AnUploadOfEverythingEndsTheChange) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  window.files.files[std::u16string(kPath)] = "AddrArchive10;SM;1;5;\r\n3;Dora;+420;\r\n";
  window.ImportFile(import_choice::kAddFile, kPath);
  window.SelectRows(window.sim(), {0});
  window.Command(command::kUploadSelected);
  EXPECT_TRUE(window.sim().HasUnsavedChanges());
  window.Command(command::kUpload);
  EXPECT_FALSE(window.sim().HasUnsavedChanges());
  EXPECT_THAT(window.PhoneEntries("SM"),
              ElementsAre("1|Anna|+447700900101", "2|Bert|112", "3|Dora|+420", "4|Carl|0044"));
}

TEST(BookImport, StopsWithAMessageWhenTheBookIsFull) {
  ExchangeWindow window;
  ASSERT_EQ(window.sim().book().Resize(AddressBook::kLimit), S_OK);
  window.sim().book().MarkAll(AddressEntry::kOccupied);
  window.files.files[std::u16string(kPath)] = "AddrArchive10;SM;1;5;\r\n3;Dora;+420;\r\n";
  window.ImportFile(import_choice::kAddFile, kPath);
  EXPECT_THAT(window.LastBox(), IsFileError("book.adr", "There is not enough room for so many entries."));
}

TEST(BookExport, WritesTheBookToAFile) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  window.ExportFile(kPath);
  EXPECT_EQ(window.files.files[std::u16string(kPath)],
            "AddrArchive10;SM;1;5;\r\n1;Anna;+447700900101;\r\n2;Bert;112;\r\n4;Carl;0044;\r\n");
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
  const FileQuestion& asked = window.file_dialogs.asked().front();
  EXPECT_EQ(asked.kind, FileDialogKind::kSave);
  EXPECT_EQ(Utf8(asked.filter), "Address book (*.ADR)#*.adr#All files (*.*)#*.*#");
  EXPECT_EQ(Utf8(asked.default_extension), "adr");
}

TEST(BookExport, ACancelledFileDialogWritesNothing) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  const auto before = window.files.files;
  window.Export(export_choice::kFile);
  EXPECT_EQ(window.file_dialogs.asked().size(), 1U);
  EXPECT_EQ(window.files.files, before);
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(BookExport, AFullDiskIsToldAndTheProgramGoesOn) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  window.files.write_error = kErrorDiskFull;
  window.ExportFile(kPath);
  EXPECT_THAT(window.LastBox(), IsFileError("book.adr", "The disk is full. The file is not complete."));
  EXPECT_EQ(window.files.open_files, 0);
  window.files.write_error = kErrorSuccess;
  window.ExportFile(kPath);
  EXPECT_TRUE(window.files.files[std::u16string(kPath)].ends_with("4;Carl;0044;\r\n"));
  EXPECT_EQ(window.boxes.asked().size(), 1U);
}

TEST(BookExport, AFileThatCannotBeMadeIsTold) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  window.files.open_error = kErrorAccessDenied;
  window.ExportFile(u"/etc/book.adr");
  EXPECT_THAT(window.LastBox(),
              IsFileError("/etc/book.adr", "You may not use this file, or it is not an ordinary file."));
  window.files.open_error = kErrorSuccess;
  window.files.close_error = kErrorWriteFault;
  window.ExportFile(kPath);
  EXPECT_THAT(window.LastBox(), IsFileError("book.adr", "The file cannot be written."));
}

TEST(BookFile, BringsTheBookBack) {
  ExchangeWindow window(PhoneWith({{1, "+420", u"A#B;C"}, {3, "0", u""}, {50, "*21#", u"\u00FC;"}}));
  window.Load();
  const std::vector<std::string> rows = window.SimRows();
  window.ExportFile(kPath);
  window.ImportFile(import_choice::kLoadFile, kPath);
  EXPECT_EQ(window.SimRows(), rows);
}

TEST(BookExchange, TakesTheKeysOfTheMenu) {
  ExchangeWindow window;
  int opened = 0;
  for (const Qt::Key key : {Qt::Key_I, Qt::Key_E}) {
    window.InNextDialog([&](Dialog& dialog) {
      ++opened;
      EXPECT_EQ(ExchangeWindow::Choices(dialog).size(), key == Qt::Key_I ? 6U : 3U);
      dialog.EndDialog(kIdCancel);
    });
    PressKey(window.sim().list(), key, Qt::ControlModifier);
  }
  EXPECT_EQ(opened, 2);
}

TEST(BookExchange, IsThereWithoutAPhoneButNotDuringItemAssignment) {
  ExchangeWindow window(ThreeEntries());
  window.Load();
  for (const int command : {command::kImport, command::kExport}) EXPECT_TRUE(window.IsEnabled(command));
  window.Command(command::kDisconnect);
  for (const int command : {command::kImport, command::kExport}) EXPECT_TRUE(window.IsEnabled(command));
  window.Command(command::kItemAssignment);
  for (const int command : {command::kImport, command::kExport}) {
    EXPECT_FALSE(window.IsEnabled(command));
    window.InNextDialog([](Dialog& dialog) {
      ADD_FAILURE() << "ids are put aside";
      dialog.EndDialog(kIdCancel);
    });
    window.Command(command);
    Dialog::SetModalHook({});
  }
  window.CommandAnswering(command::kItemAssignment, kAnswerNo);
  EXPECT_TRUE(window.IsEnabled(command::kImport));
}

TEST(BookExchange, TheMenuItemOpensTheOptions) {
  ExchangeWindow window;
  bool opened = false;
  window.InNextDialog([&](Dialog& dialog) {
    opened = true;
    dialog.EndDialog(kIdCancel);
  });
  PickMenuItem(window.frame(), command::kImport);
  EXPECT_TRUE(opened);
}

}  // namespace
}  // namespace celldesk
