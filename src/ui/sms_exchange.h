#pragma once

#include <vector>

#include "data/sms_file.h"

namespace celldesk {

class SmsFolderView;
class SmsService;
class Window;

/// Import and Export of an SMS folder: from and to files. What goes wrong is told over `owner`.

/// Asks for a file and adds its messages to both folders' model; those of two fields become messages to send,
/// by the present settings.
void ImportMessages(Window& owner, FileSystem& files, SmsFolderView& view);
/// Asks for a file and writes the folder's messages to it.
void ExportMessages(Window& owner, FileSystem& files, SmsFolderView& view);

/// The messages that the folder shows, in their order; borrowed from the model.
std::vector<const SmsMessage*> MessagesOf(const SmsFolderView& view);

/// What a new message of a file takes from the present settings.
SmsFileSettings SendingSettings(const SmsService& sms);

}  // namespace celldesk
