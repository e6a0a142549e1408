#include "support/paths.h"

namespace celldesk {

std::string ProgramFolder() { return CELLDESK_BIN_DIR; }

std::string SourceFolder() { return CELLDESK_SOURCE_DIR; }

}  // namespace celldesk
