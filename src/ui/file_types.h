#pragma once

namespace celldesk {

class Registry;
class Shell;

/// Tells the shell that the program opens its address book and message files, with their icons. Writes
/// nothing where the program's package does that, or where the program's own path cannot be found.
void RegisterFileTypes(Registry& registry, const Shell& shell);

}  // namespace celldesk
