#pragma once

#include <cstdint>

namespace celldesk {

/// Code page windows-1250, the encoding of the program's files. The euro sign (byte 0x80) is not part of it
/// here.

/// The character of a byte; an undefined byte gives the character of the same value.
char16_t FromWindows1250(std::uint8_t byte);

/// The byte of a character; one that the code page does not have gives its low 8 bits.
std::uint8_t ToWindows1250(char16_t character);

}  // namespace celldesk
