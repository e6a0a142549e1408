#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace celldesk::simulator {

/// How strings are written on the line (GSM 07.07, +CSCS).
enum class CharacterSet { kGsm, kUcs2, kHex, kIra };

std::optional<CharacterSet> ParseCharacterSet(std::string_view name);
std::string_view CharacterSetName(CharacterSet set);

/// The bytes that stand for `text` on the line. A character the set lacks becomes '?'.
std::string ToLine(CharacterSet set, std::u16string_view text);

/// The text of bytes from the line; nothing for hexadecimal that is none. The default alphabet has seven
/// bits: an eighth is dropped.
std::optional<std::u16string> FromLine(CharacterSet set, std::string_view bytes);

/// Default alphabet of GSM 03.38 with its extension table, one septet a byte.
std::string ToSeptets(std::u16string_view text);
std::u16string FromSeptets(std::string_view septets);

/// Septets packed into octets (GSM 03.38 6.1.2.1.1), beginning at bit `fill` of the first octet.
std::string PackSeptets(std::string_view septets);
std::string UnpackSeptets(std::string_view octets, std::size_t count, std::size_t fill = 0);

/// UCS2, most significant octet first.
std::string ToUcs2(std::u16string_view text);
std::u16string FromUcs2(std::string_view octets);

std::string ToUtf8(std::u16string_view text);
std::u16string FromUtf8(std::string_view bytes);

}  // namespace celldesk::simulator
