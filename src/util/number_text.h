#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "util/inline_text.h"

namespace celldesk {

/// A file or memory size: "1023 byte", "1,50 kB", "2,86 MB". The fraction is computed in unsigned 32 bits and
/// wraps for 42,949,673 bytes and more.
std::u16string SizeText(std::uint32_t bytes);

/// `value` with a fixed point; the integer part is truncated, the fraction rounded, independently.
std::u16string NumberText(double value, int decimals);

/// Turns every "," in `text` itself into "." and reads a floating-point number from its start (0 when none).
double ParseNumber(std::u16string& text);

/// Hexadecimal digits of either case from the first character to the last; other characters give meaningless
/// values without an error. Empty text gives 0.
std::uint32_t ParseHex(std::u16string_view text);

/// Lower-case hexadecimal without leading zeros.
std::u16string HexText(std::uint32_t value);

/// Leading white space, an optional sign, then decimal digits up to the first other character; 0 when there
/// are none. Values beyond 32 bits are held at the limits.
std::int32_t ParseDecimal(std::u16string_view text);
std::int32_t ParseDecimal(std::string_view text);

/// As ParseDecimal from text[position]; advances `position` past what was read (unchanged when no digit was
/// there).
std::int32_t ParseDecimalAt(std::u16string_view text, std::size_t& position);

/// `value` in decimal.
std::u16string DecimalText(std::int32_t value);
/// How many characters that are, and the same into room for exactly as many; their number again.
std::size_t DecimalLength(std::int32_t value);
std::size_t WriteDecimal(std::int32_t value, std::span<char16_t> text);
/// The same into `text`.
template <std::size_t kInline>
void TakeDecimal(std::int32_t value, InlineText<kInline>& text) {
  const std::size_t length = DecimalLength(value);
  text.Overwrite(length, [=](char16_t* characters) { return WriteDecimal(value, {characters, length}); });
}

}  // namespace celldesk
