#include "ui/file_opening.h"

#include <string>

#include "data/address_book_file.h"
#include "ui/file_errors.h"
#include "ui/main_frame.h"
#include "ui/sms_exchange.h"

namespace celldesk {
namespace {

/// What follows the last dot, in lower case; empty without a dot.
std::u16string ExtensionOf(std::u16string_view command_line) {
  const std::size_t dot = command_line.rfind(u'.');
  std::u16string extension(dot == command_line.npos ? std::u16string_view() : command_line.substr(dot + 1));
  for (char16_t& letter : extension) {
    if (letter >= u'A' && letter <= u'Z') letter = static_cast<char16_t>(letter + (u'a' - u'A'));
  }
  return extension;
}

void ShowFolder(MainFrame& frame, const FolderView& folder) {
  for (int page = 0; page < frame.pages().PageCount(); ++page) {
    if (frame.pages().PageAt(page) == &folder) frame.pages().Select(page);
  }
}

AddressBookTarget BookNamed(MainFrame& frame, std::u16string_view memory) {
  for (AddressBookView* view : {&frame.sim_view(), &frame.phone_view()}) {
    if (view->book().memory().name != memory) continue;
    ShowFolder(frame, *view);
    view->MarkChanged();
    return {&view->book(), view};
  }
  return {};
}

SmsTarget FolderNamed(MainFrame& frame, std::u16string_view name) {
  for (SmsFolderView* view : {&frame.inbox(), &frame.outbox()}) {
    if (view->title() != name) continue;
    ShowFolder(frame, *view);
    return {&view->sms().messages(), view};
  }
  return {};
}

}  // namespace

void OpenFile(MainFrame& frame, FileSystem& files, std::u16string_view command_line) {
  const std::u16string extension = ExtensionOf(command_line);
  Status status = S_OK;
  if (extension == u"adr") {
    status = ReadAddressBookFile(files, command_line,
                                 [&frame](std::u16string_view memory) { return BookNamed(frame, memory); });
  } else if (extension == u"sms") {
    status = ReadSmsFile(files, command_line, SendingSettings(frame.inbox().sms()),
                         [&frame](std::u16string_view folder) { return FolderNamed(frame, folder); });
  }
  TellFileError(frame, status, command_line);
}

}  // namespace celldesk
