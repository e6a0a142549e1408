#include "pdu/pdu_text.h"

#include <algorithm>
#include <array>
#include <exception>

namespace celldesk {
namespace {

// HexDigitValue of the digits that there are in a PDU, and of their 8-bit neighbours.
constexpr auto kDigitValues = [] {
  std::array<std::uint8_t, 256> table{};
  for (std::size_t digit = 0; digit < table.size(); ++digit) {
    table[digit] = HexDigitValue(static_cast<char16_t>(digit));
  }
  return table;
}();

std::uint8_t DigitValue(char16_t digit) {
  return digit < kDigitValues.size() ? kDigitValues[digit] : HexDigitValue(digit);
}

}  // namespace

void ReadOctets(std::span<std::uint8_t> octets, std::u16string_view text, std::size_t index) {
  const std::u16string_view rest = text.substr(std::min(2 * index, text.size()));
  const std::size_t there = std::min(octets.size(), rest.size() / 2);
  for (std::size_t i = 0; i < there; ++i) {
    octets[i] = static_cast<std::uint8_t>((DigitValue(rest[2 * i]) << 4) | DigitValue(rest[2 * i + 1]));
  }
  std::fill(octets.begin() + static_cast<std::ptrdiff_t>(there), octets.end(), std::uint8_t{0});
}

void WriteOctets(std::span<char16_t> text, std::span<const std::uint8_t> octets, std::size_t index) {
  const std::span<char16_t> rest = text.subspan(std::min(2 * index, text.size()));
  const std::size_t room = std::min(octets.size(), rest.size() / 2);
  for (std::size_t i = 0; i < room; ++i) {
    rest[2 * i] = HexDigit(octets[i] >> 4);
    rest[2 * i + 1] = HexDigit(octets[i] & 0x0F);
  }
}

std::uint8_t ReadBcdAt(std::u16string_view text, std::size_t index) {
  if (index >= text.size() / 2) return 0;
  return static_cast<std::uint8_t>(HexDigitValue(text[2 * index]) + 10 * HexDigitValue(text[2 * index + 1]));
}

void WriteBcdAt(std::span<char16_t> text, std::uint8_t value, std::size_t index) {
  if (index >= text.size() / 2) return;
  text[2 * index] = HexDigit(value % 10);
  text[2 * index + 1] = HexDigit(value / 10);
}

Status ResizeText(std::u16string& text, std::size_t size) {
  try {
    text.resize(size);
  } catch (const std::exception&) {
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

Status AssignText(std::u16string& text, std::u16string_view value) {
  try {
    text.assign(value);
  } catch (const std::exception&) {
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

}  // namespace celldesk
