#include "ui/sms_exchange.h"

#include <string>
#include <vector>

#include "ui/commands.h"
#include "ui/file_errors.h"
#include "ui/framework/file_dialog.h"
#include "ui/resources/resources.h"
#include "ui/sms_folder_view.h"

namespace celldesk {
namespace {

constexpr std::u16string_view kExtension = u"sms";

FileQuestion QuestionFor(FileDialogKind kind) {
  return {kind, LoadString(text::kMessageFilter), std::u16string(kExtension)};
}

}  // namespace

void ImportMessages(Window& owner, FileSystem& files, SmsFolderView& view) {
  const auto path = ChooseFile(&owner, QuestionFor(FileDialogKind::kOpen));
  if (!path) return;
  const Status status =
      ReadSmsFile(files, *path, SendingSettings(view.sms()), [&view](std::u16string_view /*folder*/) {
        return SmsTarget{&view.sms().messages(), &view};
      });
  TellFileError(owner, status, *path);
}

void ExportMessages(Window& owner, FileSystem& files, SmsFolderView& view) {
  const auto path = ChooseFile(&owner, QuestionFor(FileDialogKind::kSave));
  if (!path) return;
  TellFileError(owner, WriteSmsFile(files, *path, view.title(), MessagesOf(view), LoadString), *path);
}

std::vector<const SmsMessage*> MessagesOf(const SmsFolderView& view) {
  const SmsStore& store = view.sms().messages();
  std::vector<const SmsMessage*> messages;
  for (int position = 0; position < store.count(); ++position) {
    if (BelongsTo(view.folder(), store.At(position))) messages.push_back(&store.At(position));
  }
  return messages;
}

SmsFileSettings SendingSettings(const SmsService& sms) {
  return {sms.delivery_report(), sms.reply_path(), sms.validity()};
}

}  // namespace celldesk
