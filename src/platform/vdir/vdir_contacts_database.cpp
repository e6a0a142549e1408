#include "platform/vdir/vdir_contacts_database.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "platform/vdir/random_uid.h"
#include "platform/vdir/vcard_folder.h"
#include "platform/vdir/vcard_reader.h"
#include "platform/vdir/vcard_writer.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr int kUidAttempts = 3;

std::optional<std::u16string> TextOf(const ContactRecord& contact, ContactPropertyId id) {
  const auto found =
      std::find_if(contact.begin(), contact.end(), [id](const auto& property) { return property.id == id; });
  return found == contact.end() ? std::nullopt : found->text;
}

ContactRecord Select(const ContactRecord& contact, std::span<const ContactPropertyId> requested) {
  ContactRecord record;
  record.reserve(requested.size());
  for (const ContactPropertyId id : requested) record.push_back({id, TextOf(contact, id)});
  return record;
}

/// A folder with the names of the vCards that were in it when it was opened. One file at a time is in memory.
class VdirTable : public ContactsTable {
 public:
  VdirTable(FileSystem& files, FileAdder& adder, const VdirContactsDatabase::MakeUid& make_uid,
            std::filesystem::path folder, std::vector<std::string> names)
      : files_(files),
        adder_(adder),
        make_uid_(make_uid),
        folder_(std::move(folder)),
        names_(std::move(names)) {}

  std::optional<int> Count() override { return static_cast<int>(names_.size()); }

  std::optional<ContactRecord> ReadNext(std::span<const ContactPropertyId> requested) override try {
    for (;;) {
      if (const auto contact = reader_ ? reader_->Next() : std::nullopt) return Select(*contact, requested);
      if (next_ == names_.size()) return std::nullopt;
      OpenFile(names_[next_++]);
    }
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }

  Status Append(std::span<const ContactProperty> properties) override {
    if (!CanWriteVcard(properties)) return E_INVALIDARG;
    SystemError error = kErrorFileExists;
    for (int attempt = 0; attempt < kUidAttempts && error == kErrorFileExists; ++attempt) {
      const std::string uid = make_uid_();
      if (uid.empty()) return E_FAIL;
      error = adder_.Add(PathOf(uid + kVcardExtension), WriteVcard(properties, uid));
    }
    return StatusFromSystemError(error);
  }

 private:
  std::u16string PathOf(const std::string& name) const { return FromUtf8((folder_ / name).string()); }

  /// A file that has gone, or that cannot be read, holds no contact.
  void OpenFile(const std::string& name) {
    SystemError error = kErrorSuccess;
    reader_.reset();
    file_ = files_.Map(PathOf(name), error);
    if (!file_) return;
    const auto bytes = file_->bytes();
    reader_.emplace(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
  }

  FileSystem& files_;
  FileAdder& adder_;
  const VdirContactsDatabase::MakeUid make_uid_;
  const std::filesystem::path folder_;
  const std::vector<std::string> names_;
  std::size_t next_ = 0;
  std::unique_ptr<MappedFile> file_;
  std::optional<VcardReader> reader_;  // of the content of file_
};

}  // namespace

VdirContactsDatabase::VdirContactsDatabase(FileSystem& files, FileAdder& adder)
    : VdirContactsDatabase(files, adder, RandomUid) {}

VdirContactsDatabase::VdirContactsDatabase(FileSystem& files, FileAdder& adder, MakeUid make_uid)
    : files_(files), adder_(adder), make_uid_(std::move(make_uid)) {}

std::unique_ptr<ContactsTable> VdirContactsDatabase::Open(std::u16string_view name) {
  std::filesystem::path folder(ToUtf8(name));
  auto names = VcardFileNames(folder);
  if (!names) return nullptr;
  return std::make_unique<VdirTable>(files_, adder_, make_uid_, std::move(folder), std::move(*names));
}

}  // namespace celldesk
