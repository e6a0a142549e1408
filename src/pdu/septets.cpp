#include "pdu/septets.h"

#include "pdu/pdu_text.h"

namespace celldesk {
namespace {

// Eight septets fill seven octets, so groups of this size begin at whole octets.
constexpr std::size_t kGroupSeptets = 8;
constexpr std::size_t kGroupOctets = 7;

/// The seven octets from `index` on as one number, the first octet lowest; the digits must be there.
std::uint64_t ReadGroup(std::u16string_view text, std::size_t index) {
  std::uint64_t bits = 0;
  for (std::size_t i = kGroupOctets; i-- > 0;) bits = (bits << 8) | ReadOctetAt(text, index + i);
  return bits;
}

}  // namespace

std::uint8_t UnpackSeptet(std::u16string_view text, std::size_t start, std::size_t k) {
  const std::size_t octet = start + 7 * k / 8;
  const unsigned shift = 7 * k % 8;
  const unsigned pair = ReadOctetAt(text, octet) | (ReadOctetAt(text, octet + 1) << 8);
  return static_cast<std::uint8_t>((pair >> shift) & 0x7F);
}

void PackSeptet(std::span<char16_t> text, std::uint8_t value, std::size_t start, std::size_t k) {
  const std::size_t octet = start + 7 * k / 8;
  const unsigned shift = 7 * k % 8;
  const std::u16string_view written(text.data(), text.size());
  unsigned pair = ReadOctetAt(written, octet) | (ReadOctetAt(written, octet + 1) << 8);
  pair = (pair & ~(0x7FU << shift)) | ((value & 0x7FU) << shift);
  WriteOctetAt(text, static_cast<std::uint8_t>(pair), octet);
  if (pair > 0xFF) WriteOctetAt(text, static_cast<std::uint8_t>(pair >> 8), octet + 1);
}

void UnpackSeptets(std::span<std::uint8_t> septets, std::u16string_view text, std::size_t start) {
  std::size_t k = 0;
  for (; k + kGroupSeptets <= septets.size(); k += kGroupSeptets, start += kGroupOctets) {
    std::uint64_t bits = ReadGroup(text, start);
    for (std::size_t i = 0; i < kGroupSeptets; ++i, bits >>= 7) septets[k + i] = bits & 0x7F;
  }
  for (std::size_t i = 0; k + i < septets.size(); ++i) septets[k + i] = UnpackSeptet(text, start, i);
}

void PackSeptets(std::span<char16_t> text, std::span<const std::uint8_t> septets, std::size_t start) {
  std::size_t k = 0;
  for (; k + kGroupSeptets <= septets.size(); k += kGroupSeptets) {
    std::uint64_t bits = 0;
    for (std::size_t i = kGroupSeptets; i-- > 0;) bits = (bits << 7) | (septets[k + i] & 0x7FU);
    for (std::size_t i = 0; i < kGroupOctets; ++i, bits >>= 8) {
      WriteOctet(text, static_cast<std::uint8_t>(bits), start);
    }
  }
  for (std::size_t i = 0; k + i < septets.size(); ++i) PackSeptet(text, septets[k + i], start, i);
}

}  // namespace celldesk
