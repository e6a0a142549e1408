#include "services/phonebook_transfer.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "services/reply_field.h"
#include "util/number_text.h"

namespace celldesk {
namespace {

constexpr int kBlock = 20;
constexpr int kRepaintEvery = 10;

void TakeCapacity(const ResponseLine& line, PhonebookMemory& memory) {
  const std::u16string_view range = ReplyField(line, 0);
  memory.first = ParseDecimal(RangeBound(range, false));
  memory.last = ParseDecimal(RangeBound(range, true));
  memory.number_length = ParseDecimal(ReplyField(line, 1));
  memory.name_length = ParseDecimal(ReplyField(line, 2));
}

Status QuerySupported(AtEngine& engine, PhonebookMemory& memory) {
  memory.supported.clear();
  // A command that cannot be sent shows as the time-out of its answer.
  static_cast<void>(engine.Send(u"AT+CPBS=?\r\n"));
  ResponseLine& line = engine.response();
  for (;;) {
    const Status status = engine.WaitLine(line, timing::kReply);
    if (Failed(status)) return memory.ignore_select_errors ? S_OK : status;
    if (IsOk(line) || IsError(line)) return S_OK;
    if (StartsWith(line, u"+CPBS:")) memory.supported = Trim(line.rest());
  }
}

Status QueryCapacity(AtEngine& engine, PhonebookMemory& memory) {
  static_cast<void>(engine.Send(u"AT+CPBR=?\r\n"));
  ResponseLine& line = engine.response();
  for (;;) {
    const Status status = engine.WaitLine(line, timing::kReply);
    if (Failed(status) || IsOk(line)) return status;
    if (IsError(line)) return E_FAIL;
    if (StartsWith(line, u"+CPBR:")) TakeCapacity(line, memory);
  }
}

Status WaitSelection(AtEngine& engine) {
  ResponseLine& line = engine.response();
  for (;;) {
    const Status status = engine.WaitLine(line, timing::kReply);
    if (Failed(status)) return status;
    if (IsOk(line) || IsError(line)) {
      return Failed(engine.LastAnswer(line, IsOk(line) ? S_OK : E_FAIL)) ? E_NOTIMPL : S_OK;
    }
  }
}

/// The position that the "+CPBR:" line filled; none for an index that no book can have.
std::optional<int> TakeEntry(const ResponseLine& line, AddressBook& book) {
  const std::u16string_view index = ReplyField(line, 0);
  const int position = book.memory().PositionOf(ParseDecimal(index));
  if (Failed(book.Reach(position))) return std::nullopt;
  AddressEntry& entry = book.At(position);
  entry.id = index;
  entry.number_type = ParseDecimal(ReplyField(line, 2));
  const std::u16string number(ReplyField(line, 1));
  const bool lacks_plus = entry.number_type == AddressEntry::kInternational && !number.starts_with(u'+');
  entry.number = lacks_plus ? u'+' + number : number;
  entry.name = ReplyField(line, 3);
  entry.flags |= AddressEntry::kOccupied;
  return position;
}

void Tell(PhonebookObserver* observer, int position, int count) {
  if (observer == nullptr) return;
  observer->RowRead(position);
  if (count % kRepaintEvery == 0) observer->Repaint();
}

Status ReadBlock(AtEngine& engine, AddressBook& book, PhonebookObserver* observer) {
  ResponseLine& line = engine.response();
  int count = 0;
  for (;;) {
    const Status status = engine.WaitLine(line, timing::kPhonebookRead);
    if (Failed(status) || IsOk(line)) return status;
    if (IsError(line)) return E_FAIL;
    if (!StartsWith(line, u"+CPBR:")) continue;
    const std::optional<int> position = TakeEntry(line, book);
    if (position) Tell(observer, *position, ++count);
  }
}

Status RequestBlock(AtEngine& engine, const PhonebookMemory& memory, std::int64_t start) {
  const std::int64_t end = std::min<std::int64_t>(start + kBlock - 1, memory.last);
  return engine.Send(u"AT+CPBR=%i,%i\r\n", {static_cast<int>(start), static_cast<int>(end)});
}

Status SendEntry(AtEngine& engine, const AddressBook& book, int position, const AddressEntry& entry) {
  if (!entry.is_occupied()) return engine.Send(u"AT+CPBW=%i\r", {book.memory().IndexAt(position)});
  const bool international = entry.number.view().find(u'+') != std::u16string::npos;
  const int type = international ? AddressEntry::kInternational : AddressEntry::kOtherNumber;
  return engine.Send(u"AT+CPBW=%s,\"%s\",%i,\"%s\"\r",
                     {entry.id.view(), entry.number.view(), type, entry.name.view()});
}

Status WriteEntry(AtEngine& engine, AddressBook& book, int position) {
  const AddressEntry& entry = book.At(position);
  if (!entry.is_modified()) return S_OK;
  const Status sent = SendEntry(engine, book, position, entry);
  if (Failed(sent)) return sent;
  // The book is looked at anew after the wait, during which the interface lives on.
  const Status status = engine.WaitFinal(engine.response(), timing::kReply);
  if (!Failed(status)) book.At(position).flags &= ~AddressEntry::kModified;
  return status;
}

void ShowProgress(PhonebookObserver* observer, int current, int total) {
  if (observer == nullptr) return;
  observer->ShowProgress(current, total);
  observer->SetProgressPosition(current);
}

Status WriteAll(AtEngine& engine, AddressBook& book, PhonebookObserver* observer) {
  Status status = S_OK;
  for (int position = 0; position < book.count() && !Failed(status); ++position) {
    ShowProgress(observer, book.memory().IndexAt(position), book.memory().Capacity());
    status = WriteEntry(engine, book, position);
  }
  return status;
}

Status WriteSelection(AtEngine& engine, AddressBook& book, PhonebookObserver* observer,
                      std::span<const int> selection) {
  Status status = S_OK;
  int current = 0;
  for (const int position : selection) {
    ShowProgress(observer, ++current, static_cast<int>(selection.size()));
    if (position < 0 || position >= book.count()) continue;
    status = WriteEntry(engine, book, position);
    if (Failed(status)) break;
  }
  return status;
}

}  // namespace

Status QueryPhonebook(AtEngine& engine, AddressBook& book) {
  Status status = QuerySupported(engine, book.memory());
  if (!Failed(status)) status = SelectPhonebook(engine, book);
  if (Failed(status)) return status;
  engine.waiter().Pause(timing::kBeforeQuery);
  return QueryCapacity(engine, book.memory());
}

Status SelectPhonebook(AtEngine& engine, const AddressBook& book) {
  Status status = engine.Send(u"AT+CPBS=\"%s\"\r\n", {book.memory().name});
  if (!Failed(status)) status = WaitSelection(engine);
  return book.memory().ignore_select_errors ? S_OK : status;
}

Status ReadPhonebook(AtEngine& engine, AddressBook& book, PhonebookObserver* observer) {
  Status status = SelectPhonebook(engine, book);
  if (!Failed(status)) status = book.Resize(book.memory().Capacity());
  if (Failed(status)) return status;
  book.ClearAll();
  engine.FlushLines();
  for (std::int64_t start = book.memory().first; start < book.memory().last; start += kBlock) {
    status = RequestBlock(engine, book.memory(), start);
    if (Failed(status)) return status;
    status = ReadBlock(engine, book, observer);
  }
  book.set_loaded(true);
  return status;
}

Status WritePhonebook(AtEngine& engine, AddressBook& book, PhonebookObserver* observer,
                      std::optional<std::span<const int>> selection) {
  const Status status = SelectPhonebook(engine, book);
  if (Failed(status)) return status;
  engine.FlushLines();
  if (observer != nullptr) observer->SetProgressRange(1, book.memory().Capacity());
  return selection ? WriteSelection(engine, book, observer, *selection) : WriteAll(engine, book, observer);
}

}  // namespace celldesk
