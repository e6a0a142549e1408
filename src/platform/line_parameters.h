#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace celldesk {

enum class Parity : std::uint8_t { kNone, kOdd, kEven, kMark, kSpace };
enum class StopBits : std::uint8_t { kOne, kOnePointFive, kTwo };
/// Control of the DTR or the RTS line.
enum class LineControl : std::uint8_t { kDisable, kEnable, kHandshake, kToggle };

/// Parameters of a serial line, and their 28-byte form as settings keep them: the `DCB` layout,
/// little-endian.
struct LineParameters {
  static constexpr std::size_t kSize = 28;
  using Bytes = std::array<std::uint8_t, kSize>;

  /// Bits of `flags`; DTR control stands in bits 4-5, RTS control in bits 12-13.
  static constexpr std::uint32_t kBinary = 0x0001, kParityCheck = 0x0002, kOutxCtsFlow = 0x0004,
                                 kOutxDsrFlow = 0x0008, kOutX = 0x0100, kInX = 0x0200;

  std::uint32_t baud_rate = 9600;
  std::uint32_t flags = kBinary | (2U << 4) | (2U << 12);
  std::uint16_t reserved = 0;
  std::uint16_t xon_limit = 512;
  std::uint16_t xoff_limit = 128;
  std::uint8_t byte_size = 8;
  Parity parity = Parity::kNone;
  StopBits stop_bits = StopBits::kOne;
  std::uint8_t xon_char = 17;
  std::uint8_t xoff_char = 19;
  std::uint8_t error_char = 13;
  std::uint8_t eof_char = 13;
  std::uint8_t event_char = 13;
  std::uint16_t reserved1 = 0;

  LineControl dtr_control() const { return static_cast<LineControl>((flags >> 4) & 3); }
  LineControl rts_control() const { return static_cast<LineControl>((flags >> 12) & 3); }
  void set_dtr_control(LineControl control) {
    flags = (flags & ~0x30U) | (static_cast<std::uint32_t>(control) << 4);
  }
  void set_rts_control(LineControl control) {
    flags = (flags & ~0x3000U) | (static_cast<std::uint32_t>(control) << 12);
  }

  Bytes ToBytes() const;
  /// Takes the fields as they stand; a block shorter than 28 bytes leaves the fields beyond it at their
  /// defaults.
  static LineParameters FromBytes(std::span<const std::uint8_t> bytes);

  friend bool operator==(const LineParameters&, const LineParameters&) = default;
};

}  // namespace celldesk
