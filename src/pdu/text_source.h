#pragma once

#include <string>

namespace celldesk {

/// Gives the user-visible text of this number (the string resources, for one); empty when there is none.
using TextSource = std::u16string (*)(int number);

}  // namespace celldesk
