#include "pdu/address.h"

#include "pdu/pdu_text.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr std::size_t kLeastDigits = 4;

/// The place of digit `index` after its octets' first character: the two digits of an octet are swapped.
constexpr std::size_t Swapped(std::size_t index) { return index ^ 1U; }

void Put(std::span<char16_t> text, std::size_t place, char16_t character) {
  if (place < text.size()) text[place] = character;
}

void WriteDigits(std::span<char16_t> text, std::u16string_view number, char16_t filler,
                 std::size_t& position) {
  const std::size_t first = 2 * position;
  for (std::size_t i = 0; i < number.size(); ++i) {
    if (i % 2 == 0) Put(text, first + i, filler);
    Put(text, first + Swapped(i), number[i]);
  }
  position += (number.size() + 1) / 2;
}

}  // namespace

Status ReadAddress(std::uint8_t& toa, std::u16string& number, std::u16string_view text,
                   std::size_t& position) {
  std::uint8_t length = 0;
  if (const Status status = ReadOctet(length, text, position); Failed(status)) return status;
  if (const Status status = ReadOctet(toa, text, position); Failed(status)) return status;
  if (const Status status = ResizeText(number, length); Failed(status)) return status;
  const std::size_t first = 2 * position;
  for (std::size_t i = 0; i < number.size(); ++i) {
    const std::size_t place = first + Swapped(i);
    number[i] = place < text.size() ? text[place] : u'0';
  }
  position += (number.size() + 1) / 2;
  return S_OK;
}

void WriteAddress(std::span<char16_t> text, std::u16string_view number, std::uint8_t toa,
                  std::size_t& position) {
  WriteOctet(text, static_cast<std::uint8_t>(number.size()), position);
  WriteOctet(text, toa, position);
  WriteDigits(text, number, u'0', position);
}

void WriteSmscAddress(std::span<char16_t> text, std::u16string_view number, std::uint8_t toa,
                      std::size_t& position) {
  WriteOctet(text, static_cast<std::uint8_t>((number.size() + 1) / 2 + 1), position);
  WriteOctet(text, toa, position);
  WriteDigits(text, number, u'F', position);
}

std::u16string AddressForDisplay(std::u16string_view number, std::uint8_t toa) {
  constexpr std::uint8_t kTypeOfNumber = 0x70;
  std::u16string shown;
  shown.reserve(number.size() + 1);
  if ((toa & kTypeOfNumber) == 0x10) shown += u'+';
  return shown += number;
}

Status MakeAddress(std::u16string& number, std::uint8_t& toa, std::u16string_view input) {
  std::u16string_view typed = Trim(input);
  const char16_t first = typed.empty() ? u'\0' : typed.front();
  if (first == u'+') {
    toa = kInternationalNumber;
    typed.remove_prefix(1);
  } else if (first == u'0') {
    toa = kNumberWithZero;
  } else if (typed.size() >= kLeastDigits) {
    toa = kOtherNumber;
  } else {
    toa = 0;
    number.clear();
    return E_FAIL;
  }
  return AssignText(number, typed);
}

}  // namespace celldesk
