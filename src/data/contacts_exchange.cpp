#include "data/contacts_exchange.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

#include "data/diacritics.h"
#include "util/number_text.h"

namespace celldesk {
namespace {

constexpr int kRepaintEvery = 6;
constexpr std::size_t kShortName = 5;    // a name below this is completed with the company
constexpr std::size_t kLeastNumber = 4;  // a number below this is none
constexpr std::size_t kFirstNumber = 3;  // of the requested properties
constexpr std::size_t kCompany = 6;
constexpr std::array<ContactPropertyId, 7> kRequested = {
    kContactSurname,        kContactSecondName, kContactGivenName, kContactMobileNumber,
    kContactBusinessNumber, kContactHomeNumber, kContactCompany};

std::u16string TextOf(const RegistryData& data) {
  std::u16string text;
  for (std::size_t at = 0; at + 1 < data.bytes.size(); at += 2) {
    const auto unit = static_cast<char16_t>(data.bytes[at] | (data.bytes[at + 1] << 8));
    if (unit == 0) break;
    text.push_back(unit);
  }
  return text;
}

RegistryData StringOf(std::u16string_view text) {
  RegistryData data{RegistryType::kString, {}};
  for (const char16_t unit : std::u16string(text) + u'\0') {
    data.bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
    data.bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
  }
  return data;
}

std::unique_ptr<ContactsTable> OpenTable(Registry& registry, ContactsDatabase& database) {
  const std::u16string name = ContactsDatabaseName(registry);
  return name.empty() ? nullptr : database.Open(name);
}

/// The progress window while an exchange runs, and the repainting of the list along with it.
class ProgressRun {
 public:
  ProgressRun(const ContactsExchangeView& view, ContactsTransfer transfer, int highest) : view_(view) {
    view_.progress.OpenProgress(transfer, 0, highest);
  }
  ~ProgressRun() { view_.progress.CloseProgress(); }
  ProgressRun(const ProgressRun&) = delete;
  ProgressRun& operator=(const ProgressRun&) = delete;

  void Step() {
    view_.progress.AdvanceProgress();
    if (++steps_ % kRepaintEvery == 0) view_.list.Repaint();
  }

 private:
  const ContactsExchangeView& view_;
  int steps_ = 0;
};

Status AppendEntry(ContactsTable& table, const AddressEntry& entry) {
  const std::u16string name(entry.name);
  const std::array<ContactProperty, 3> properties = {{{kContactSurname, name},
                                                      {kContactMobileNumber, std::u16string(entry.number)},
                                                      {kContactFileAs, name}}};
  return table.Append(properties);
}

/// `record` holds the properties of kRequested, in that order.
std::u16string NameOf(const ContactRecord& record) {
  std::u16string name;
  for (std::size_t part = 0; part < kFirstNumber; ++part) {
    if (record[part].text) name += *record[part].text + u' ';
  }
  if (name.size() < kShortName) name += record[kCompany].text.value_or(u"");
  return WithoutDiacritics(std::move(name));
}

/// The first number that is there; the others do not count, however short it is.
std::u16string NumberOf(const ContactRecord& record) {
  std::u16string number;
  for (std::size_t part = kFirstNumber; part < kCompany && number.empty(); ++part) {
    number = record[part].text.value_or(u"");
  }
  std::erase_if(number, [](char16_t c) { return c == u' ' || c == u'(' || c == u')'; });
  return number;
}

/// Takes the contact into the cleared `entry`; false when it has no usable number.
bool TakeContact(AddressEntry& entry, int position, const ContactRecord& record) {
  const std::u16string number = NumberOf(record);
  if (number.size() < kLeastNumber) return false;
  entry.id = DecimalText(position);
  entry.name = NameOf(record);
  entry.number = number;
  entry.flags = AddressEntry::kOccupied | AddressEntry::kModified;
  return true;
}

}  // namespace

std::u16string ContactsDatabaseName(Registry& registry) {
  SystemError error = kErrorSuccess;
  const auto key = registry.Open(RegistryRoot::kLocalMachine, kContactsDatabaseKey, error);
  const auto value = key ? key->Query(kContactsDatabaseValue) : std::nullopt;
  return value && value->type == RegistryType::kString ? TextOf(*value) : std::u16string();
}

Status OfferContactsDatabase(Registry& registry, const std::function<std::u16string()>& make_name) {
  KeyDisposition disposition{};
  SystemError error = kErrorSuccess;
  const auto key = registry.Create(RegistryRoot::kLocalMachine, kContactsDatabaseKey, disposition, error);
  if (!key) return StatusFromSystemError(error);
  if (key->Query(kContactsDatabaseValue)) return S_OK;
  const std::u16string name = make_name();
  if (name.empty()) return S_OK;
  return StatusFromSystemError(key->Set(kContactsDatabaseValue, StringOf(name)));
}

void ExportToContacts(Registry& registry, ContactsDatabase& database, const AddressBook& book,
                      ContactsExchangeView view) {
  const auto table = OpenTable(registry, database);
  if (!table) return;
  ProgressRun progress(view, ContactsTransfer::kExport, book.count() - 1);
  for (const AddressEntry& entry : book.entries()) {
    if (entry.is_occupied() && Failed(AppendEntry(*table, entry))) return;
    progress.Step();
  }
}

void ImportFromContacts(Registry& registry, ContactsDatabase& database, AddressBook& book,
                        ContactsExchangeView view) {
  const auto table = OpenTable(registry, database);
  const auto count = table ? table->Count() : std::nullopt;
  if (!count) return;
  ProgressRun progress(view, ContactsTransfer::kImport, *count);
  int position = 0;
  while (const auto record = table->ReadNext(kRequested)) {
    position = book.FirstFree(position);
    if (Failed(book.Reach(position))) return;
    book.At(position).Clear();
    if (!TakeContact(book.At(position), position, *record)) continue;
    view.list.RowRead(position);
    progress.Step();
  }
}

}  // namespace celldesk
