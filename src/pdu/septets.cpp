#include "pdu/septets.h"

#include <algorithm>
#include <array>
#include <utility>

#include "pdu/pdu_text.h"

namespace celldesk {
namespace {

// Eight septets fill seven octets, so blocks of this size begin at whole octets.
constexpr std::size_t kBlockSeptets = 64;
constexpr std::size_t kBlockOctets = 56;

/// The octet, counted from the field's first, that septet `k` begins in.
constexpr std::size_t FirstOctet(std::size_t k) { return 7 * k / 8; }

// Written without loops, so that the compiler sees whole words.

/// Eight septets of seven octets; `octets` has one octet more than they take.
template <std::size_t... I>
void UnpackGroup(std::uint8_t* septets, const std::uint8_t* octets, std::index_sequence<I...> /*eight*/) {
  const std::uint64_t bits = ((std::uint64_t{octets[I]} << (8 * I)) | ...);
  ((septets[I] = (bits >> (7 * I)) & 0x7F), ...);
}

template <std::size_t... I>
void PackGroup(std::uint8_t* octets, const std::uint8_t* septets, std::index_sequence<I...> /*eight*/) {
  const std::uint64_t bits = (((septets[I] & std::uint64_t{0x7F}) << (7 * I)) | ...);
  ((octets[I] = static_cast<std::uint8_t>(bits >> (8 * I))), ...);
}

using Eight = std::make_index_sequence<8>;

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
    for (std::size_t k = 0; k < count; k += 8) UnpackGroup(&block[k], &octets[OctetsOfSeptets(k)], Eight());
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
    for (std::size_t k = 0; k < count; k += 8) PackGroup(&octets[OctetsOfSeptets(k)], &block[k], Eight());
    std::size_t used = OctetsOfSeptets(count);
    if (octets[used - 1] == 0 && FirstOctet(count - 1) != used - 1) --used;
    WriteOctets(text, std::span(octets).first(used), start);
    septets = septets.subspan(count);
  }
}

}  // namespace celldesk
