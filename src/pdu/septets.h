#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace celldesk {

/// Septet packing (GSM 03.38 6.1.2.1) on PDU text: septet k of a field begins at bit 7k of the field's
/// octets, lowest bit first.

/// Septet `k` of the field that begins at octet `start`; octets beyond the end read as 0.
std::uint8_t UnpackSeptet(std::u16string_view text, std::size_t start, std::size_t k);

/// Stores the low 7 bits of `value` as septet `k`. The second octet that a septet may reach into is written
/// only when it is not 0, so a last octet without bits stays as the caller prepared it.
void PackSeptet(std::span<char16_t> text, std::uint8_t value, std::size_t start, std::size_t k);

/// UnpackSeptet for k from 0 to septets.size() - 1.
void UnpackSeptets(std::span<std::uint8_t> septets, std::u16string_view text, std::size_t start);

/// PackSeptet for every one of `septets` in order, into a field that was not written before.
void PackSeptets(std::span<char16_t> text, std::span<const std::uint8_t> septets, std::size_t start);

/// Octets that `count` septets take.
constexpr std::size_t OctetsOfSeptets(std::size_t count) { return (count * 7 + 7) / 8; }

}  // namespace celldesk
