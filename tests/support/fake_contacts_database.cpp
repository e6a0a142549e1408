#include "support/fake_contacts_database.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace celldesk {
namespace {

constexpr std::array<ContactPropertyId, 8> kKnown = {
    kContactSurname,        kContactSecondName, kContactGivenName, kContactMobileNumber,
    kContactBusinessNumber, kContactHomeNumber, kContactCompany,   kContactFileAs};

bool IsKnown(const ContactProperty& property) {
  return std::find(kKnown.begin(), kKnown.end(), property.id) != kKnown.end();
}

class FakeContactsTable : public ContactsTable {
 public:
  FakeContactsTable(FakeContactsDatabase& database, FakeContactsDatabase::Records& records)
      : database_(database), records_(records), present_(records) {
    ++database_.open_tables;
  }
  ~FakeContactsTable() override { --database_.open_tables; }
  FakeContactsTable(const FakeContactsTable&) = delete;
  FakeContactsTable& operator=(const FakeContactsTable&) = delete;

  std::optional<int> Count() override {
    if (!database_.can_count) return std::nullopt;
    return static_cast<int>(present_.size());
  }

  std::optional<ContactRecord> ReadNext(std::span<const ContactPropertyId> requested) override {
    database_.requests.emplace_back(requested.begin(), requested.end());
    const bool readable = !database_.readable || static_cast<int>(next_) < *database_.readable;
    if (!readable || next_ == present_.size()) return std::nullopt;
    ContactRecord record;
    for (const ContactPropertyId id : requested) record.push_back({id, TextOf(present_[next_], id)});
    ++next_;
    return record;
  }

  Status Append(std::span<const ContactProperty> properties) override {
    if (!std::all_of(properties.begin(), properties.end(), IsKnown)) return E_INVALIDARG;
    if (database_.appendable && (*database_.appendable)-- <= 0) return E_FAIL;
    records_.emplace_back(properties.begin(), properties.end());
    return S_OK;
  }

 private:
  static std::optional<std::u16string> TextOf(const ContactRecord& record, ContactPropertyId id) {
    const auto found = std::find_if(record.begin(), record.end(),
                                    [id](const ContactProperty& property) { return property.id == id; });
    return found == record.end() ? std::nullopt : found->text;
  }

  FakeContactsDatabase& database_;
  FakeContactsDatabase::Records& records_;
  const FakeContactsDatabase::Records present_;
  std::size_t next_ = 0;
};

}  // namespace

std::unique_ptr<ContactsTable> FakeContactsDatabase::Open(std::u16string_view name) {
  const auto found = databases.find(name);
  if (!can_open || found == databases.end()) return nullptr;
  ++opened;
  return std::make_unique<FakeContactsTable>(*this, found->second);
}

}  // namespace celldesk
