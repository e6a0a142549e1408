#include "pdu/septets.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "pdu/pdu_text.h"

namespace celldesk {
namespace {

// Eight septets fill seven octets, so blocks of this size begin at whole octets.
constexpr std::size_t kBlockSeptets = 64;
constexpr std::size_t kBlockOctets = 56;

/// The octet, counted from the field's first, that septet `k` begins in.
constexpr std::size_t FirstOctet(std::size_t k) { return 7 * k / 8; }

/// Eight octets as a number, the first one lowest, and back.
std::uint64_t Load(const std::uint8_t* octets) {
  std::uint64_t bits = 0;
  if constexpr (std::endian::native == std::endian::little) {
    std::memcpy(&bits, octets, sizeof bits);
  } else {
    for (std::size_t i = 0; i < 8; ++i) bits |= std::uint64_t{octets[i]} << (8 * i);
  }
  return bits;
}

void Store(std::uint8_t* octets, std::uint64_t bits) {
  if constexpr (std::endian::native == std::endian::little) {
    std::memcpy(octets, &bits, sizeof bits);
  } else {
    for (std::size_t i = 0; i < 8; ++i) octets[i] = static_cast<std::uint8_t>(bits >> (8 * i));
  }
}

/// Eight septets of seven octets, each to a byte of its own: halves, quarters and eighths are moved apart.
constexpr std::uint64_t SpreadSeptets(std::uint64_t bits) {
  bits &= 0x00FFFFFFFFFFFFFF;
  bits = (bits & 0x000000000FFFFFFF) | ((bits & 0x00FFFFFFF0000000) << 4);
  bits = (bits & 0x00003FFF00003FFF) | ((bits & 0x0FFFC0000FFFC000) << 2);
  return (bits & 0x007F007F007F007F) | ((bits & 0x3F803F803F803F80) << 1);
}

constexpr std::uint64_t JoinSeptets(std::uint64_t bits) {
  bits &= 0x7F7F7F7F7F7F7F7F;
  bits = (bits & 0x007F007F007F007F) | ((bits & 0x7F007F007F007F00) >> 1);
  bits = (bits & 0x00003FFF00003FFF) | ((bits & 0x3FFF00003FFF0000) >> 2);
  return (bits & 0x000000000FFFFFFF) | ((bits & 0x0FFFFFFF00000000) >> 4);
}

}  // namespace

std::uint8_t UnpackSeptet(std::u16string_view text, std::size_t start, std::size_t k) {
  const std::size_t octet = start + FirstOctet(k);
  const unsigned shift = 7 * k % 8;
  const unsigned pair = ReadOctetAt(text, octet) | (ReadOctetAt(text, octet + 1) << 8);
  return static_cast<std::uint8_t>((pair >> shift) & 0x7F);
}

void PackSeptet(std::span<char16_t> text, std::uint8_t value, std::size_t start, std::size_t k) {
  const std::size_t octet = start + FirstOctet(k);
  const unsigned shift = 7 * k % 8;
  const std::u16string_view written(text.data(), text.size());
  unsigned pair = ReadOctetAt(written, octet) | (ReadOctetAt(written, octet + 1) << 8);
  pair = (pair & ~(0x7FU << shift)) | ((value & 0x7FU) << shift);
  WriteOctetAt(text, static_cast<std::uint8_t>(pair), octet);
  if (pair > 0xFF) WriteOctetAt(text, static_cast<std::uint8_t>(pair >> 8), octet + 1);
}

void UnpackSeptets(std::span<std::uint8_t> septets, std::u16string_view text, std::size_t start) {
  std::array<std::uint8_t, kBlockOctets + 1> octets{};
  std::array<std::uint8_t, kBlockSeptets> block;
  for (; !septets.empty(); start += kBlockOctets) {
    const std::size_t count = std::min(septets.size(), kBlockSeptets);
    ReadOctets(std::span(octets).first(OctetsOfSeptets(count)), text, start);
    for (std::size_t k = 0; k < count; k += 8)
      Store(&block[k], SpreadSeptets(Load(&octets[OctetsOfSeptets(k)])));
    std::copy_n(block.begin(), count, septets.begin());
    septets = septets.subspan(count);
  }
}

void PackSeptets(std::span<char16_t> text, std::span<const std::uint8_t> septets, std::size_t start) {
  std::array<std::uint8_t, kBlockOctets + 1> octets;
  std::array<std::uint8_t, kBlockSeptets> block;
  for (; !septets.empty(); start += kBlockOctets) {
    const std::size_t count = std::min(septets.size(), kBlockSeptets);
    std::fill(std::copy_n(septets.begin(), count, block.begin()), block.end(), std::uint8_t{0});
    for (std::size_t k = 0; k < count; k += 8)
      Store(&octets[OctetsOfSeptets(k)], JoinSeptets(Load(&block[k])));
    std::size_t used = OctetsOfSeptets(count);
    if (octets[used - 1] == 0 && FirstOctet(count - 1) != used - 1) --used;
    WriteOctets(text, std::span(octets).first(used), start);
    septets = septets.subspan(count);
  }
}

}  // namespace celldesk
