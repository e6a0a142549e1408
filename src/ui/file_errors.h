#pragma once

#include <string>
#include <string_view>

#include "util/status.h"

namespace celldesk {

class Window;

/// What a failure of the file system means, as a sentence for the user.
std::u16string FileErrorText(Status status);

/// After an import or export of the file at `path`: tells over `owner` what went wrong, a file of another
/// kind under the program's caption, anything else under "Communication error". Success says nothing.
void TellFileError(Window& owner, Status status, std::u16string_view path);

}  // namespace celldesk
