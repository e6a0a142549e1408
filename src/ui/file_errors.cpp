#include "ui/file_errors.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/system_error.h"
#include "ui/commands.h"
#include "ui/questions.h"
#include "ui/resources/resources.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr std::uint32_t kSystemCode = 0xFFFF;

constexpr std::pair<SystemError, int> kSentences[] = {
    {kErrorFileNotFound, text::kFileMissing},      {kErrorPathNotFound, text::kFolderMissing},
    {kErrorTooManyOpenFiles, text::kTooManyFiles}, {kErrorAccessDenied, text::kFileDenied},
    {kErrorNotEnoughMemory, text::kFileMemory},    {kErrorWriteFault, text::kFileNotWritten},
    {kErrorReadFault, text::kFileNotRead},         {kErrorDiskFull, text::kDiskFull},
    {kErrorInvalidName, text::kBadFileName},       {kErrorFileTooLarge, text::kFileTooLarge},
};

}  // namespace

std::u16string FileErrorText(Status status) {
  if (status == E_OUTOFMEMORY) return LoadString(text::kNoMemory);
  const SystemError code = static_cast<std::uint32_t>(status) & kSystemCode;
  const auto* const found = std::find_if(std::begin(kSentences), std::end(kSentences),
                                         [code](const auto& sentence) { return sentence.first == code; });
  if (found != std::end(kSentences)) return LoadString(found->second);
  return Format(LoadString(text::kSystemError), {static_cast<int>(code)});
}

void TellFileError(Window& owner, Status status, std::u16string_view path) {
  if (!Failed(status)) return;
  if (status == E_INVALIDARG) return Tell(owner, LoadString(text::kBadFile), BoxIcon::kStop);
  const std::u16string file = path.empty() ? std::u16string() : std::u16string(path) + u'\r';
  const std::u16string text = file + FileErrorText(status);
  ShowMessageBox(
      &owner, {text, LoadString(text::kCommunicationError), BoxButtons::kOk, BoxIcon::kInformation, false});
}

}  // namespace celldesk
