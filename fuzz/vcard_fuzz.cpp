// Input: the bytes of a vCard file. Property: whatever the bytes, reading ends and gives the same each time;
// every vCard and every text was in the file; a text is one line and not empty; and a contact that is written
// and read again has the texts that it had.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/property.h"
#include "platform/vdir/vcard_reader.h"
#include "platform/vdir/vcard_writer.h"

namespace {

using namespace celldesk;

constexpr std::size_t kShortestVcard = sizeof("BEGIN:VCARD\nEND:VCARD") - 1;

std::vector<ContactRecord> Read(std::string_view bytes) {
  std::vector<ContactRecord> contacts;
  VcardReader reader(bytes);
  while (auto contact = reader.Next()) contacts.push_back(std::move(*contact));
  return contacts;
}

std::u16string TextOf(const ContactRecord& contact, ContactPropertyId id) {
  for (const ContactProperty& property : contact)
    if (property.id == id) return *property.text;
  return {};
}

void CheckTexts(const ContactRecord& contact, std::size_t size) {
  for (const ContactProperty& property : contact) {
    HOLDS(property.text && !property.text->empty());
    HOLDS(property.text->size() <= size);
    for (const char16_t character : *property.text) HOLDS(character >= u' ' && character != 0x7F);
  }
}

/// A vCard must have a formatted name: one that had none comes back with one.
void CheckRoundTrip(const ContactRecord& contact) {
  HOLDS(CanWriteVcard(contact));
  const auto again = Read(WriteVcard(contact, "uid"));
  HOLDS(again.size() == 1);
  for (const ContactPropertyId id :
       {kContactSurname, kContactSecondName, kContactGivenName, kContactMobileNumber, kContactBusinessNumber,
        kContactHomeNumber, kContactCompany})
    HOLDS(TextOf(again[0], id) == TextOf(contact, id));
  const std::u16string file_as = TextOf(contact, kContactFileAs);
  HOLDS(file_as.empty() || TextOf(again[0], kContactFileAs) == file_as);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto contacts = Read(bytes);
  HOLDS(contacts.size() * kShortestVcard <= size);
  HOLDS(Read(bytes) == contacts);
  for (const ContactRecord& contact : contacts) {
    CheckTexts(contact, size);
    CheckRoundTrip(contact);
  }
  return 0;
}
