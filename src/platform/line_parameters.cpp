#include "platform/line_parameters.h"

namespace celldesk {
namespace {

class ByteWriter {
 public:
  explicit ByteWriter(std::span<std::uint8_t> bytes) : bytes_(bytes) {}
  void Put(std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i) bytes_[position_++] = static_cast<std::uint8_t>(value >> (8 * i));
  }

 private:
  std::span<std::uint8_t> bytes_;
  std::size_t position_ = 0;
};

class ByteReader {
 public:
  explicit ByteReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
  template <typename T>
  void Get(T& value, std::size_t size) {
    if (position_ + size > bytes_.size()) return;
    std::uint32_t read = 0;
    for (std::size_t i = 0; i < size; ++i)
      read |= static_cast<std::uint32_t>(bytes_[position_ + i]) << (8 * i);
    position_ += size;
    value = static_cast<T>(read);
  }

 private:
  std::span<const std::uint8_t> bytes_;
  std::size_t position_ = 0;
};

}  // namespace

LineParameters::Bytes LineParameters::ToBytes() const {
  Bytes bytes{};
  ByteWriter writer(bytes);
  writer.Put(kSize, 4);
  writer.Put(baud_rate, 4);
  writer.Put(flags, 4);
  writer.Put(reserved, 2);
  writer.Put(xon_limit, 2);
  writer.Put(xoff_limit, 2);
  writer.Put(byte_size, 1);
  writer.Put(static_cast<std::uint8_t>(parity), 1);
  writer.Put(static_cast<std::uint8_t>(stop_bits), 1);
  writer.Put(xon_char, 1);
  writer.Put(xoff_char, 1);
  writer.Put(error_char, 1);
  writer.Put(eof_char, 1);
  writer.Put(event_char, 1);
  writer.Put(reserved1, 2);
  return bytes;
}

LineParameters LineParameters::FromBytes(std::span<const std::uint8_t> bytes) {
  LineParameters parameters;
  ByteReader reader(bytes);
  std::uint32_t length = 0;
  reader.Get(length, 4);
  reader.Get(parameters.baud_rate, 4);
  reader.Get(parameters.flags, 4);
  reader.Get(parameters.reserved, 2);
  reader.Get(parameters.xon_limit, 2);
  reader.Get(parameters.xoff_limit, 2);
  reader.Get(parameters.byte_size, 1);
  reader.Get(parameters.parity, 1);
  reader.Get(parameters.stop_bits, 1);
  reader.Get(parameters.xon_char, 1);
  reader.Get(parameters.xoff_char, 1);
  reader.Get(parameters.error_char, 1);
  reader.Get(parameters.eof_char, 1);
  reader.Get(parameters.event_char, 1);
  reader.Get(parameters.reserved1, 2);
  return parameters;
}

}  // namespace celldesk
