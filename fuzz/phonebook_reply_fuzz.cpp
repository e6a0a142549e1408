// Input: octet 0 where the reads of the line end, then the phone's replies, separated by octets 255, to the
// questions for a phonebook and to its reading. Property: the book never outgrows its limit; every entry in
// it came in a "+CPBR:" line and lies where its own index says; none within the phone's range counts as
// changed here; a number of the international type begins with "+"; nothing but questions is sent; the book
// is the same however the replies are cut.

#include <cstdint>

#include "fuzz/fed_session.h"
#include "fuzz/property.h"
#include "services/phonebook_transfer.h"
#include "util/number_text.h"

namespace {

using namespace celldesk;

constexpr int kLargestRange = 500;  // a larger one makes a run slow and tells nothing new

struct Outcome {
  Status queried = S_OK;
  Status read = S_OK;
  std::size_t writes = 0;
  std::string sent;
};

Outcome ReadInto(AddressBook& book, std::uint8_t cuts, const std::vector<std::u16string>& answers) {
  FedSession session(cuts, answers);
  Outcome outcome;
  outcome.queried = QueryPhonebook(session.engine, book);
  if (book.memory().Capacity() <= kLargestRange) {
    outcome.read = ReadPhonebook(session.engine, book, nullptr);
  }
  outcome.writes = session.writes();
  outcome.sent = session.sent();
  return outcome;
}

void CheckEntries(AddressBook& book, std::size_t entry_lines) {
  std::size_t occupied = 0;
  HOLDS(book.count() <= AddressBook::kLimit);
  for (int position = 0; position < book.count(); ++position) {
    const AddressEntry& entry = book.At(position);
    if (!entry.is_occupied()) continue;
    ++occupied;
    // Beyond the range that the phone told, the book grows by slots that the phone does not have.
    HOLDS(!entry.is_modified() || position >= book.memory().Capacity());
    HOLDS(book.memory().PositionOf(ParseDecimal(entry.id)) == position);
    HOLDS(entry.number_type != AddressEntry::kInternational || entry.number.view().starts_with(u'+'));
  }
  HOLDS(occupied <= entry_lines);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto answers = AnswersOf(data + 1, size - 1);
  AddressBook book(u"SM", (data[0] & 1) != 0);
  const Outcome outcome = ReadInto(book, data[0], answers);
  HOLDS(outcome.queried == S_OK || outcome.queried == E_FAIL || outcome.queried == E_NOTIMPL);
  HOLDS(outcome.read == S_OK || outcome.read == E_FAIL || outcome.read == E_NOTIMPL);
  HOLDS(outcome.sent.find("AT+CPBW") == std::string::npos);
  CheckEntries(book, CountLines(answers, u"+CPBR:"));

  AddressBook uncut(u"SM", (data[0] & 1) != 0);
  const Outcome again = ReadInto(uncut, 0, answers);
  HOLDS(outcome.queried == again.queried && outcome.read == again.read && outcome.sent == again.sent);
  HOLDS(book.count() == uncut.count() && book.loaded() == uncut.loaded());
  for (int position = 0; position < book.count(); ++position) {
    HOLDS(book.At(position).id == uncut.At(position).id);
    HOLDS(book.At(position).name == uncut.At(position).name);
    HOLDS(book.At(position).number == uncut.At(position).number);
    HOLDS(book.At(position).flags == uncut.At(position).flags);
  }
  return 0;
}
