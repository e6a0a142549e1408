#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "util/status.h"

namespace celldesk {

/// PDU text is a PDU in hexadecimal: octet i stands at characters 2i (high nibble) and 2i + 1 (low nibble),
/// upper-case digits. Positions count octets. Malformed digits are misread, never reported. Octets beyond the
/// end read as 0; writes beyond the end of the text that the caller prepared are dropped.

/// 0 for NUL; meaningful for "0"-"9" and "A"-"F" only (lower case gives wrong values).
constexpr std::uint8_t HexDigitValue(char16_t digit) {
  if (digit == u'\0') return 0;
  return static_cast<std::uint8_t>(digit - (digit < u':' ? 0x30 : 0x37));
}

/// "0"-"9" and "A"-"F" for 0 to 15.
constexpr char16_t HexDigit(std::uint8_t value) {
  return static_cast<char16_t>(value + (value < 10 ? 0x30 : 0x37));
}

/// Octet `index`, or 0 when it does not lie wholly inside `text`.
inline std::uint8_t ReadOctetAt(std::u16string_view text, std::size_t index) {
  if (index >= text.size() / 2) return 0;
  return static_cast<std::uint8_t>((HexDigitValue(text[2 * index]) << 4) |
                                   HexDigitValue(text[2 * index + 1]));
}

/// Characters of `text` less octets of `position`, the measure that missing fields are detected by.
constexpr std::ptrdiff_t RemainingMeasure(std::u16string_view text, std::size_t position) {
  return static_cast<std::ptrdiff_t>(text.size()) - static_cast<std::ptrdiff_t>(position);
}

/// Reads the octet at `position` and advances. E_FAIL, nothing changed, when the characters of `text` less
/// the octets of `position` are 1 or less: characters are compared with octets on purpose, so a read a little
/// beyond the end succeeds and gives 0.
inline Status ReadOctet(std::uint8_t& octet, std::u16string_view text, std::size_t& position) {
  if (RemainingMeasure(text, position) <= 1) return E_FAIL;
  octet = ReadOctetAt(text, position++);
  return S_OK;
}

/// Writes one octet, two digits.
inline void WriteOctetAt(std::span<char16_t> text, std::uint8_t octet, std::size_t index) {
  if (index >= text.size() / 2) return;
  text[2 * index] = HexDigit(octet >> 4);
  text[2 * index + 1] = HexDigit(octet & 0x0F);
}

/// Writes one octet and advances `position`.
inline void WriteOctet(std::span<char16_t> text, std::uint8_t octet, std::size_t& position) {
  WriteOctetAt(text, octet, position++);
}

/// ReadOctetAt for octets.size() octets from `index` on.
void ReadOctets(std::span<std::uint8_t> octets, std::u16string_view text, std::size_t index);

/// WriteOctetAt for every one of `octets` from `index` on.
void WriteOctets(std::span<char16_t> text, std::span<const std::uint8_t> octets, std::size_t index);

/// Two decimal digits of octet `index`, units first (semi-octets, GSM 03.40 9.1.2.3).
std::uint8_t ReadBcdAt(std::u16string_view text, std::size_t index);
/// Writes `value` as two decimal digits, units first; meaningful below 100.
void WriteBcdAt(std::span<char16_t> text, std::uint8_t value, std::size_t index);

/// Gives `text` a length of `size`; E_OUTOFMEMORY, nothing changed, when that cannot be had.
Status ResizeText(std::u16string& text, std::size_t size);

/// Makes `text` a copy of `value`, which may be part of it; E_OUTOFMEMORY, nothing changed, as above.
Status AssignText(std::u16string& text, std::u16string_view value);

}  // namespace celldesk
