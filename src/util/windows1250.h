#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace celldesk {

/// Code page windows-1250, the encoding of the program's files. The euro sign (byte 0x80) is not part of it
/// here.

/// One more than the last character of the code page.
inline constexpr std::size_t kWindows1250End = 0x2123;

/// The tables behind the two operations.
extern const std::array<char16_t, 256> kCharacterOfByte;
extern const std::array<std::uint8_t, kWindows1250End> kByteOfCharacter;

/// The character of a byte; an undefined byte gives the character of the same value.
inline char16_t FromWindows1250(std::uint8_t byte) { return kCharacterOfByte[byte]; }

/// True when no byte is in the upper half of the code page.
bool IsAscii(std::span<const std::uint8_t> bytes);

/// The characters of bytes; `characters` has room for as many. Runs of ASCII are widened eight at a time.
void WidenWindows1250(std::span<const std::uint8_t> bytes, char16_t* characters);

/// The byte of a character; one that the code page does not have gives its low 8 bits.
inline std::uint8_t ToWindows1250(char16_t character) {
  return character < kWindows1250End ? kByteOfCharacter[character] : static_cast<std::uint8_t>(character);
}

}  // namespace celldesk
