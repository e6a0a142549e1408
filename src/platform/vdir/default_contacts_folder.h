#pragma once

#include <string>

namespace celldesk {

/// The contacts folder of a user who has chosen none: the first of "contacts" in the user's data folder
/// ($XDG_DATA_HOME, else ~/.local/share) and "~/.contacts" that holds vCards, itself or in a sub-folder
/// (synchronisers keep one for each collection; the first by name). Without vCards anywhere it is "contacts"
/// in the data folder, which is made for the user alone when it is absent. Empty when there is no home or the
/// folder cannot be made.
std::u16string DefaultContactsFolder();

}  // namespace celldesk
