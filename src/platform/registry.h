#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/system_error.h"

namespace celldesk {

enum class RegistryRoot { kClassesRoot, kCurrentUser, kLocalMachine };
enum class RegistryType : std::uint32_t { kString = 1, kBinary = 3, kNumber = 4 };
enum class KeyDisposition : std::uint32_t { kCreated = 1, kOpened = 2 };

/// A value's type and data: strings as UTF-16 little-endian with their terminating zero, numbers as four
/// bytes little-endian.
struct RegistryData {
  RegistryType type = RegistryType::kString;
  std::vector<std::uint8_t> bytes;

  friend bool operator==(const RegistryData&, const RegistryData&) = default;
};

/// Counts of a key's content.
struct RegistryCounts {
  std::size_t subkeys = 0;
  std::size_t values = 0;
};

/// An open key. Names are compared without regard to ASCII case; the empty name is the key's default value.
/// A write is in the store when the call returns. Interface thread only.
class RegistryKey {
 public:
  virtual ~RegistryKey() = default;
  /// The value as the store holds it now; none when it is absent.
  virtual std::optional<RegistryData> Query(std::u16string_view name) const = 0;
  virtual SystemError Set(std::u16string_view name, const RegistryData& data) = 0;
  virtual SystemError DeleteValue(std::u16string_view name) = 0;
  virtual std::vector<std::u16string> SubkeyNames() const = 0;
  virtual std::vector<std::u16string> ValueNames() const = 0;
  virtual RegistryCounts Counts() const = 0;
};

/// The per-user store of named values in a tree of keys. Paths are separated by "\"; a leading one is
/// allowed. Several processes may use one store at once: a write never undoes another process's write to
/// another value.
class Registry {
 public:
  virtual ~Registry() = default;
  /// Opens the key, with every missing key on the way to it made; null with `error` set when that fails.
  virtual std::unique_ptr<RegistryKey> Create(RegistryRoot root, std::u16string_view path,
                                              KeyDisposition& disposition, SystemError& error) = 0;
  /// Opens an existing key; null with `error` set otherwise.
  virtual std::unique_ptr<RegistryKey> Open(RegistryRoot root, std::u16string_view path,
                                            SystemError& error) = 0;
  /// Deletes the key with everything under it.
  virtual SystemError Delete(RegistryRoot root, std::u16string_view path) = 0;
};

}  // namespace celldesk
