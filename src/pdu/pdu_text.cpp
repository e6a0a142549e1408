#include "pdu/pdu_text.h"

#include <exception>

namespace celldesk {

Status ReadOctet(std::uint8_t& octet, std::u16string_view text, std::size_t& position) {
  if (RemainingMeasure(text, position) <= 1) return E_FAIL;
  octet = ReadOctetAt(text, position++);
  return S_OK;
}

void WriteOctetAt(std::span<char16_t> text, std::uint8_t octet, std::size_t index) {
  if (index >= text.size() / 2) return;
  text[2 * index] = HexDigit(octet >> 4);
  text[2 * index + 1] = HexDigit(octet & 0x0F);
}

void WriteOctet(std::span<char16_t> text, std::uint8_t octet, std::size_t& position) {
  WriteOctetAt(text, octet, position++);
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

}  // namespace celldesk
