#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/registry.h"

namespace celldesk {

/// Where the program keeps its settings.
inline constexpr std::u16string_view kSettingsPath = u"\\Software\\Corvane\\CellDesk";

/// A registry in memory. Keys that are open stay usable after the registry is gone or the key is deleted; a
/// write through a deleted key fails.
class FakeRegistry : public Registry {
 public:
  FakeRegistry();
  ~FakeRegistry() override;

  std::unique_ptr<RegistryKey> Create(RegistryRoot root, std::u16string_view path,
                                      KeyDisposition& disposition, SystemError& error) override;
  std::unique_ptr<RegistryKey> Open(RegistryRoot root, std::u16string_view path, SystemError& error) override;
  SystemError Delete(RegistryRoot root, std::u16string_view path) override;

  /// From now on `allowed` more writes succeed, then every one fails with access denied. Writes are: making a
  /// key, setting or deleting a value, deleting a key.
  void FailWritesAfter(int allowed);
  void FailAllWrites() { FailWritesAfter(0); }
  void AllowWrites();
  /// Writes that succeeded so far.
  int write_count() const;

  /// Short ways in and out for tests, under the current user's `path`. The Put operations ignore the failure
  /// injection and do not count as writes.
  void PutString(std::u16string_view name, std::u16string_view text,
                 std::u16string_view path = kSettingsPath);
  void PutNumber(std::u16string_view name, std::uint32_t number, std::u16string_view path = kSettingsPath);
  void PutBinary(std::u16string_view name, std::span<const std::uint8_t> bytes,
                 std::u16string_view path = kSettingsPath);
  /// The value when it is there and of that type.
  std::optional<std::u16string> StringAt(std::u16string_view name,
                                         std::u16string_view path = kSettingsPath) const;
  std::optional<std::uint32_t> NumberAt(std::u16string_view name,
                                        std::u16string_view path = kSettingsPath) const;
  std::optional<std::vector<std::uint8_t>> BinaryAt(std::u16string_view name,
                                                    std::u16string_view path = kSettingsPath) const;

 private:
  struct Node;
  struct Gate;
  class Key;

  Node& RootNode(RegistryRoot root) const;
  static std::shared_ptr<Node> Find(Node& root, std::u16string_view path);
  void Put(std::u16string_view path, std::u16string_view name, RegistryData data);
  std::optional<RegistryData> At(std::u16string_view path, std::u16string_view name) const;

  std::shared_ptr<Gate> gate_;
  std::shared_ptr<Node> roots_[3];
};

}  // namespace celldesk
