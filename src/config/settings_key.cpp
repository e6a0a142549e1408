#include "config/settings_key.h"

#include <optional>
#include <utility>

namespace celldesk {
namespace {

constexpr std::size_t kNumberSize = 4;

std::uint32_t NumberOf(const std::vector<std::uint8_t>& bytes) {
  return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

/// The characters up to the first zero; an odd last byte is left out.
std::u16string TextOf(const std::vector<std::uint8_t>& bytes) {
  std::u16string text;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto character = static_cast<char16_t>(bytes[i] | bytes[i + 1] << 8);
    if (character == 0) break;
    text += character;
  }
  return text;
}

void Append(std::vector<std::uint8_t>& bytes, char16_t character) {
  bytes.push_back(static_cast<std::uint8_t>(character & 0xFF));
  bytes.push_back(static_cast<std::uint8_t>(character >> 8));
}

}  // namespace

SystemError SettingsKey::Create(RegistryRoot root, std::u16string_view path) {
  path_ = path;
  status_ = kErrorSuccess;
  key_ = registry_.Create(root, path, disposition_, status_);
  return status_;
}

SystemError SettingsKey::Open(RegistryRoot root, std::u16string_view path) {
  path_ = path;
  status_ = kErrorSuccess;
  disposition_ = KeyDisposition::kOpened;
  key_ = registry_.Open(root, path, status_);
  return status_;
}

SettingsValue SettingsKey::Value(std::u16string_view name) const { return {key_.get(), name}; }

bool SettingsValue::Exists() {
  const bool exists = key_ != nullptr && key_->Query(name_).has_value();
  status_ = exists ? kErrorSuccess : kErrorFileNotFound;
  return exists;
}

std::uint32_t SettingsValue::GetNumber(std::uint32_t default_number) {
  const RegistryData data = Read(RegistryType::kNumber);
  if (status_ == kErrorSuccess && data.bytes.size() != kNumberSize) status_ = kErrorMoreData;
  return status_ == kErrorSuccess ? NumberOf(data.bytes) : default_number;
}

bool SettingsValue::GetFlag() { return GetNumber(0) != 0; }

std::u16string SettingsValue::GetString(std::u16string_view default_text, std::size_t maximum) {
  const RegistryData data = Read(RegistryType::kString);
  if (status_ == kErrorSuccess && data.bytes.size() / 2 > maximum) status_ = kErrorMoreData;
  return status_ == kErrorSuccess ? TextOf(data.bytes) : std::u16string(default_text);
}

SystemError SettingsValue::GetBinary(std::vector<std::uint8_t>& data, std::size_t maximum) {
  data = Read(RegistryType::kBinary).bytes;
  if (data.size() > maximum) {
    data.clear();
    status_ = kErrorMoreData;
  }
  return status_;
}

SystemError SettingsValue::SetNumber(std::uint32_t number) {
  RegistryData data{RegistryType::kNumber, {}};
  Append(data.bytes, static_cast<char16_t>(number & 0xFFFF));
  Append(data.bytes, static_cast<char16_t>(number >> 16));
  return Write(data);
}

SystemError SettingsValue::SetString(std::u16string_view text) {
  RegistryData data{RegistryType::kString, {}};
  for (const char16_t character : text) Append(data.bytes, character);
  Append(data.bytes, 0);
  return Write(data);
}

SystemError SettingsValue::SetBinary(std::vector<std::uint8_t> data) {
  return Write({RegistryType::kBinary, std::move(data)});
}

SystemError SettingsValue::CopyTo(const SettingsKey& target) {
  const std::optional<RegistryData> data = key_ != nullptr ? key_->Query(name_) : std::nullopt;
  if (!data) return status_ = kErrorFileNotFound;
  return status_ = target.Value(name_).Write(*data);
}

RegistryData SettingsValue::Read(RegistryType type) {
  std::optional<RegistryData> data = key_ != nullptr ? key_->Query(name_) : std::nullopt;
  const bool found = data && data->type == type;
  status_ = found ? kErrorSuccess : kErrorFileNotFound;
  return found ? *std::move(data) : RegistryData{type, {}};
}

SystemError SettingsValue::Write(const RegistryData& data) {
  return status_ = key_ != nullptr ? key_->Set(name_, data) : kErrorInvalidHandle;
}

}  // namespace celldesk
