#pragma once

#include <string>
#include <string_view>

namespace celldesk {

/// How `text` will read at the other end: packed into septets and unpacked again, so that characters outside
/// the GSM alphabet come out as what they are sent as. The same text when it holds none.
std::u16string TextAsReceived(std::u16string_view text);

/// The quiet line under the editor's text: nothing when the text arrives as it is, otherwise what arrives, on
/// one line; of a text that changes late only what surrounds the first change.
std::u16string ReadingHint(std::u16string_view text);

}  // namespace celldesk
