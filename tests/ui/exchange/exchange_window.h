#pragma once

#include <string>
#include <utility>
#include <vector>

#include "data/contacts_exchange.h"
#include "support/registry_data.h"
#include "ui/window/book_window.h"

namespace celldesk {

/// The option dialog's list.
inline constexpr int kChoiceList = 1001;

/// Places in the lists of choices.
namespace import_choice {
inline constexpr int kLoadFile = 0, kAddFile = 1, kImportContacts = 2, kAddContacts = 3, kImportBook = 4,
                     kAddBook = 5;
}
namespace export_choice {
inline constexpr int kFile = 0, kContacts = 1, kBook = 2;
}

/// An error of the file system: the file, then a sentence.
MATCHER_P2(IsFileError, path, sentence, "") {
  return Utf8(arg.text) == std::string(path) + "\r" + sentence && arg.icon == BoxIcon::kInformation &&
         arg.buttons == BoxButtons::kOk && arg.caption == kCommunicationCaption;
}

/// The window without a phone in reach of any command: what import and export do does not need one.
class ExchangeWindow : public BookWindow {
 public:
  explicit ExchangeWindow(simulator::PhoneMemory memory = {}) : BookWindow(std::move(memory)) {}

  /// Gives the command and works the option dialog; the test fails when none opens. A dialog that is left
  /// open is cancelled.
  void InOptions(int command, const std::function<void(Dialog& dialog)>& work) {
    bool opened = false;
    InNextDialog([&](Dialog& dialog) {
      opened = true;
      work(dialog);
      if (dialog.IsVisible()) dialog.EndDialog(kIdCancel);
    });
    Command(command);
    Dialog::SetModalHook({});
    EXPECT_TRUE(opened) << "no options were offered";
  }
  /// Gives the command and picks a choice.
  void Choose(int command, int choice) {
    InOptions(command, [choice](Dialog& dialog) {
      ClickRow(dialog.List(kChoiceList), choice);
      ClickDialogButton(dialog, kIdOk);
    });
  }
  void Import(int choice) { Choose(command::kImport, choice); }
  void Export(int choice) { Choose(command::kExport, choice); }
  /// The same with a file.
  void ImportFile(int choice, std::u16string_view path) {
    file_dialogs.Answer(std::u16string(path));
    Import(choice);
  }
  void ExportFile(std::u16string_view path) {
    file_dialogs.Answer(std::u16string(path));
    Export(export_choice::kFile);
  }

  static std::vector<std::string> Choices(Dialog& dialog) {
    std::vector<std::string> texts;
    std::u16string buffer;
    ListView& list = dialog.List(kChoiceList);
    for (int row = 0; row < list.RowCount(); ++row)
      texts.push_back(Utf8(dialog.ColumnText(list.RecordAt(row), 0, buffer)));
    return texts;
  }
  std::vector<std::string> PhoneRows() { return Rows(phone_book()); }
  std::vector<std::uint32_t> SimFlags() {
    std::vector<std::uint32_t> flags;
    for (const AddressEntry& entry : sim().book().entries()) flags.push_back(entry.flags);
    return flags;
  }

  /// Makes an empty contacts database and gives it.
  FakeContactsDatabase::Records& MakeContacts() {
    EXPECT_EQ(OfferContactsDatabase(registry, [] { return std::u16string(u"contacts"); }), S_OK);
    return contacts.databases[u"contacts"];
  }
};

}  // namespace celldesk
