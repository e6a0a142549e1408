#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "util/status.h"

namespace celldesk {

/// Type-of-address octets (GSM 03.40 9.1.2.5) that the program produces.
inline constexpr std::uint8_t kInternationalNumber = 0x91;
inline constexpr std::uint8_t kNumberWithZero = 0x81;
inline constexpr std::uint8_t kOtherNumber = 0x85;

/// Reads an address field (GSM 03.40 9.1.2.5) at octet `position` and advances past it. `number` receives the
/// characters as they stand, without "+"; characters beyond the end read as "0". E_FAIL when the field is
/// missing, E_OUTOFMEMORY.
Status ReadAddress(std::uint8_t& toa, std::u16string& number, std::u16string_view text,
                   std::size_t& position);

/// Writes an address field and advances. The filler of an odd number of digits is "0", which the phones
/// accept and read back the same; it is not the "F" of the service-centre address.
void WriteAddress(std::span<char16_t> text, std::u16string_view number, std::uint8_t toa,
                  std::size_t& position);

/// Writes a service-centre address field (GSM 04.11 8.2.5.2): length in octets with the TOA, the TOA, the
/// digits with filler "F". `text` is NUL-filled by the caller; its content ends at the first NUL.
void WriteSmscAddress(std::span<char16_t> text, std::u16string_view number, std::uint8_t toa,
                      std::size_t& position);

/// Octets that WriteAddress takes for a number of `digits` characters.
constexpr std::size_t AddressOctets(std::size_t digits) { return 2 + (digits + 1) / 2; }

/// `number` with "+" in front when the type of number in `toa` is international.
std::u16string AddressForDisplay(std::u16string_view number, std::uint8_t toa);

/// Turns `input` as a user typed it into the number and TOA that a message stores. E_FAIL, number emptied and
/// TOA 0, for fewer than four characters that begin with neither "+" nor "0"; E_OUTOFMEMORY.
Status MakeAddress(std::u16string& number, std::uint8_t& toa, std::u16string_view input);

}  // namespace celldesk
