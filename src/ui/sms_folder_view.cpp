#include "ui/sms_folder_view.h"

#include "config/settings_store.h"
#include "ui/commands.h"

namespace celldesk {
namespace {

constexpr FolderTraits kInbox{186, text::kInboxToolTips, text::kInboxColumns, SettingsStore::kInboxColumns};
constexpr FolderTraits kOutbox{196, text::kOutboxToolTips, text::kOutboxColumns,
                               SettingsStore::kOutboxColumns};

}  // namespace

SmsFolderView::SmsFolderView(FrameServices& frame, const ProgramServices& services, Folder folder,
                             std::u16string_view title)
    : FolderView(frame, services, folder == Folder::kInbox ? kInbox : kOutbox, title) {}

bool SmsFolderView::IsCommandDisabled(int /*command*/, std::size_t /*selection_count*/) { return true; }

}  // namespace celldesk
