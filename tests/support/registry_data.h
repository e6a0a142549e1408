#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/registry.h"

namespace celldesk {

/// Registry values as callers of the platform write them.
inline RegistryData StringData(std::u16string_view text) {
  RegistryData data{RegistryType::kString, {}};
  for (char16_t unit : text) {
    data.bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
    data.bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
  }
  data.bytes.insert(data.bytes.end(), {0, 0});
  return data;
}

inline RegistryData NumberData(std::uint32_t number) {
  RegistryData data{RegistryType::kNumber, {}};
  for (int shift = 0; shift < 32; shift += 8)
    data.bytes.push_back(static_cast<std::uint8_t>(number >> shift));
  return data;
}

inline RegistryData BinaryData(std::span<const std::uint8_t> bytes) {
  return {RegistryType::kBinary, {bytes.begin(), bytes.end()}};
}

}  // namespace celldesk
