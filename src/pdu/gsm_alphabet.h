#pragma once

#include <cstddef>
#include <cstdint>

namespace celldesk {

/// The GSM default alphabet (GSM 03.38 6.2.1), with one deviation: code 0x1B is an ordinary character, the
/// superscript one U+00B9. There is no escape mechanism and no extension table.

/// The 7-bit code of `character`; a character outside the alphabet gives the low 8 bits of its code.
std::uint8_t WideToGsm(char16_t character);

/// The character of a code below 0x80; a byte of 0x80 or more is never looked up and gives 0xFF00 plus
/// itself.
char16_t GsmToWide(std::uint8_t code);

/// Converts exactly `count` characters; NUL is a character like any other and no terminator is added.
void WideToGsmBytes(std::uint8_t* destination, const char16_t* source, std::size_t count);

/// Converts exactly `count` bytes; no terminator is added.
void GsmBytesToWide(char16_t* destination, const std::uint8_t* source, std::size_t count);

}  // namespace celldesk
