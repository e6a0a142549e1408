#pragma once

#include <string_view>

namespace celldesk {

class FileSystem;
class MainFrame;

/// Opens the file that the program was started with: ".adr" as an address book, ".sms" as messages (in any
/// letter case), nothing for any other name. The memory or folder that the file names takes it in and is
/// shown; a file that names none changes nothing. What goes wrong is told over the frame, which is on screen.
void OpenFile(MainFrame& frame, FileSystem& files, std::u16string_view command_line);

}  // namespace celldesk
