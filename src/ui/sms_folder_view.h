#pragma once

#include "ui/folder_view.h"

namespace celldesk {

/// The Inbox or the Outbox.
class SmsFolderView : public FolderView {
 public:
  enum class Folder { kInbox, kOutbox };

  SmsFolderView(FrameServices& frame, const ProgramServices& services, Folder folder,
                std::u16string_view title);

  bool IsCommandDisabled(int command, std::size_t selection_count) override;
};

}  // namespace celldesk
