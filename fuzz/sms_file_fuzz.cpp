// Input: the bytes of a message file. Property: reading ends with a known status and makes no more messages
// than the file has lines, each in use and with no more text than a message or twice the file. Messages whose
// fields do not break their lines are as many when they are written and read again, those that decode are the
// same, and from the second time on the file comes back byte for byte.

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "data/sms_file.h"
#include "fuzz/memory_file.h"
#include "fuzz/property.h"

namespace {

using namespace celldesk;

constexpr SmsFileSettings kSettings{true, false, 173};
constexpr std::size_t kLongestText = 255;  // of a PDU

std::u16string Sentence(int number) { return number == 124 ? u"%#2x %s; #%s" : u"%s"; }

Status Read(const std::string& file, SmsStore& store) {
  MemoryFile files;
  files.content = file;
  return ReadSmsFile(files, u"", kSettings, [&store](std::u16string_view /*folder*/) {
    return SmsTarget{&store, nullptr};
  });
}

std::string Written(const SmsStore& store) {
  std::vector<const SmsMessage*> messages;
  for (int position = 0; position < store.count(); ++position) messages.push_back(&store.At(position));
  MemoryFile files;
  HOLDS(WriteSmsFile(files, u"", u"Outbox", messages, Sentence) == S_OK);
  return files.content;
}

void CheckStore(const SmsStore& store, const std::string& file) {
  const auto lines = std::count(file.begin(), file.end(), '\n');
  HOLDS(store.count() <= lines + 1);
  std::size_t pdus = 0;
  for (int position = 0; position < store.count(); ++position) {
    const SmsMessage& message = store.At(position);
    HOLDS((message.flags & kMessageInUse) != 0);
    HOLDS(message.text.size() <= std::max(2 * file.size(), kLongestText));
    pdus += message.pdu_text.size();
  }
  HOLDS(pdus <= 2 * file.size());  // a bare line feed is read as two characters
}

constexpr std::u16string_view kDigits = u"0123456789ABCDEFabcdef";

/// A message whose fields do not break its line. An address that begins a comment or ends the file comes only
/// from a PDU of other characters or from a line with an address that no phone has.
bool IsALine(const SmsMessage& message) {
  const bool is_pdu = message.pdu_text.find_first_not_of(kDigits) == std::u16string::npos;
  const std::u16string& number = message.submit.number;
  const bool is_address = !number.starts_with(u'@') && !number.starts_with(u'/');
  return is_pdu && is_address && !message.text.starts_with(u"\r\n");
}

/// A message whose PDU says all there is.
bool IsWhole(const SmsMessage& message) {
  SmsMessage copy;
  copy.storage_status = message.storage_status;
  copy.tpdu_length = message.tpdu_length;
  copy.pdu_text = message.pdu_text;
  const bool decoded = !message.pdu_text.empty() && message.tpdu_length != 0 && !Failed(copy.Decode());
  return decoded && message.type() != SmsType::kStatusReport;
}

template <typename Property>
bool All(const SmsStore& store, Property property) {
  for (int position = 0; position < store.count(); ++position) {
    if (!property(store.At(position))) return false;
  }
  return true;
}

void CheckSame(const SmsStore& left, const SmsStore& right) {
  for (int position = 0; position < left.count(); ++position) {
    const SmsMessage& one = left.At(position);
    const SmsMessage& other = right.At(position);
    HOLDS(one.pdu_text == other.pdu_text && one.tpdu_length == other.tpdu_length);
    HOLDS(one.storage_status == other.storage_status && one.flags == other.flags);
    HOLDS(one.text == other.text && one.first_octet == other.first_octet);
    if (one.type() == SmsType::kSubmit) HOLDS(one.submit.number == other.submit.number);
    if (one.type() == SmsType::kDeliver) HOLDS(one.deliver.number == other.deliver.number);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string file(data, data + size);
  SmsStore store;
  const Status status = Read(file, store);
  HOLDS(status == S_OK || status == E_INVALIDARG || status == E_OUTOFMEMORY);
  HOLDS(status != E_INVALIDARG || store.count() == 0);
  CheckStore(store, file);
  const std::string first = Written(store);
  SmsStore again;
  HOLDS(Read(first, again) == S_OK);
  CheckStore(again, first);
  if (!All(store, IsALine)) return 0;
  HOLDS(again.count() == store.count());
  if (All(store, IsWhole)) CheckSame(store, again);
  SmsStore third;
  const std::string second = Written(again);
  HOLDS(Read(second, third) == S_OK);
  HOLDS(Written(third) == second);
  return 0;
}
