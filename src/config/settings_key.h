#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/registry.h"
#include "util/object.h"

namespace celldesk {

class SettingsValue;

/// One key of the registry, closed with the object. Interface thread only.
class SettingsKey : public Object {
 public:
  /// The registry is borrowed for the object's life.
  explicit SettingsKey(Registry& registry) : registry_(registry) {}

  /// Opens the key, made when it is absent. The key opened before is closed, whatever the result.
  SystemError Create(RegistryRoot root, std::u16string_view path);
  /// Opens an existing key.
  SystemError Open(RegistryRoot root, std::u16string_view path);

  bool is_open() const { return key_ != nullptr; }
  /// The code of the last Create or Open.
  SystemError status() const { return status_; }
  /// Whether the last Create made the key.
  KeyDisposition disposition() const { return disposition_; }
  const std::u16string& path() const { return path_; }

  /// The value `name` of this key; borrows the key. On a closed key it reads as absent and takes no writes.
  SettingsValue Value(std::u16string_view name) const;

 private:
  Registry& registry_;
  std::unique_ptr<RegistryKey> key_;
  SystemError status_ = kErrorInvalidHandle;
  KeyDisposition disposition_ = KeyDisposition::kOpened;
  std::u16string path_;
};

/// One named value of a key. A value that is absent, of another type or of another size reads as the default.
class SettingsValue {
 public:
  /// Longest string, with its terminating zero, that is read where no maximum is given.
  static constexpr std::size_t kMaximumString = 512;

  /// `key` is borrowed and may be null.
  SettingsValue(RegistryKey* key, std::u16string_view name) : key_(key), name_(name) {}

  const std::u16string& name() const { return name_; }
  /// The code of the last operation.
  SystemError status() const { return status_; }

  bool Exists();
  std::uint32_t GetNumber(std::uint32_t default_number);
  /// On when the number is not 0; off by default.
  bool GetFlag();
  /// `maximum` counts characters with the terminating zero; a longer string reads as the default.
  std::u16string GetString(std::u16string_view default_text = {}, std::size_t maximum = kMaximumString);
  /// Reads a binary value of at most `maximum` bytes into `data`, which is empty after a failure.
  SystemError GetBinary(std::vector<std::uint8_t>& data, std::size_t maximum);

  SystemError SetNumber(std::uint32_t number);
  /// Stored as 0 or 1.
  SystemError SetFlag(bool on) { return SetNumber(on ? 1 : 0); }
  /// Stored with its terminating zero.
  SystemError SetString(std::u16string_view text);
  SystemError SetBinary(std::vector<std::uint8_t> data);
  /// Writes type and data under the same name into `target`.
  SystemError CopyTo(const SettingsKey& target);

 private:
  RegistryData Read(RegistryType type);
  SystemError Write(const RegistryData& data);

  RegistryKey* key_;
  std::u16string name_;
  SystemError status_ = kErrorSuccess;
};

}  // namespace celldesk
