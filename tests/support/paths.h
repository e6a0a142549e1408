#pragma once

#include <string>

namespace celldesk {

/// The folder of the built programs (celldesk-phone, celldesk-pdu, ...).
std::string ProgramFolder();

/// The project's own folder, where its documents and resources lie.
std::string SourceFolder();

}  // namespace celldesk
