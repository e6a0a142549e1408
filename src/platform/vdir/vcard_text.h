#pragma once

#include <string>
#include <string_view>

#include "platform/vdir/vcard_parameters.h"

namespace celldesk {

/// Cuts the component before the next unescaped ";" off a raw value.
std::string_view TakeComponent(std::string_view& value);

/// The text of a raw value or component: quoted-printable and the character set resolved, then the escapes.
/// It is one line: control characters, line ends among them, become blanks. UTF-8 is assumed, and Latin-1
/// where it is not; CHARSET may say windows-1250 or ISO-8859-1. Empty for base64.
std::u16string DecodeVcardText(std::string_view raw, const VcardParameters& parameters);

/// The number of a "tel:" URI (RFC 3966), without its visual separators and parameters.
std::u16string DecodeTelUri(std::string_view uri);
bool IsTelUri(std::string_view value);

}  // namespace celldesk
