#include "data/address_book_file.h"

#include <algorithm>
#include <new>
#include <optional>
#include <string>

#include "data/diacritics.h"
#include "data/record_file.h"
#include "util/number_text.h"
#include "util/windows1250.h"

namespace celldesk {
namespace {

constexpr std::u16string_view kMagic = u"AddrArchive10";
constexpr std::size_t kShortestLine = 4;  // two fields that are empty, and its end

/// Puts the entries of a file into the free slots of a book.
class EntryReader {
 public:
  explicit EntryReader(const AddressBookTarget& target) : book_(*target.book), observer_(target.observer) {}

  /// The range of the memory, which also tells how many entries there are at most.
  void ReadRange(FieldReader& fields, std::size_t file_size) {
    if (const auto first = fields.Next()) book_.memory().first = ParseDecimal(*first);
    if (const auto last = fields.Next()) book_.memory().last = ParseDecimal(*last);
    const std::size_t lines = std::min<std::size_t>(file_size / kShortestLine, AddressBook::kLimit);
    book_.Reserve(std::min(book_.memory().Capacity(), static_cast<int>(lines)));
  }

  Status ReadEntry(FieldReader& fields) {
    const auto id = fields.NextBytes();
    const auto name = id ? fields.NextBytes() : std::nullopt;
    if (!name) return S_OK;  // a line without a name holds no entry
    const auto number = fields.NextBytes();
    const int position = Choose(fields.Number(*id));
    const Status status = book_.Reach(position);
    if (Failed(status)) return status;
    Fill(position, fields, *name, number.value_or(FieldBytes()));
    return S_OK;
  }

 private:
  int Choose(int index) {
    const int position = book_.memory().PositionOf(index);
    const bool usable = position >= 0 && position < AddressBook::kLimit;
    const bool taken = position < book_.count() && book_.At(position).is_occupied();
    if (usable && !taken) return position;
    first_free_ = book_.FirstFree(first_free_);
    return first_free_;
  }

  void Fill(int position, const FieldReader& fields, FieldBytes name, FieldBytes number) {
    AddressEntry& entry = book_.At(position);
    TakeDecimal(book_.memory().IndexAt(position), entry.id);
    entry.name.Overwrite(name.size(), [&](char16_t* text) {
      const std::size_t length = fields.Write(name, text);
      if (!IsAscii(name)) DropDiacritics({text, length});
      return length;
    });
    fields.Take(number, entry.number);
    entry.flags |= AddressEntry::kOccupied | AddressEntry::kModified;
    if (observer_ != nullptr) observer_->RowRead(position);
  }

  AddressBook& book_;
  RowObserver* observer_;
  int first_free_ = 0;  // no slot before this one is free
};

}  // namespace

Status WriteAddressBookFile(FileSystem& files, std::u16string_view path, const AddressBook& book) {
  RecordWriter writer(files);
  Status status = writer.Create(path);
  if (Failed(status)) return status;
  const PhonebookMemory& memory = book.memory();
  status = writer.Field(kMagic).Field(memory.name).Number(memory.first).Number(memory.last).EndRecord();
  for (const AddressEntry& entry : book.entries()) {
    if (Failed(status)) break;
    if (!entry.is_occupied()) continue;
    status = writer.Field(entry.id).Field(entry.name).Field(entry.number).EndRecord();
  }
  return writer.Close();
}

Status ReadAddressBookFile(FileSystem& files, std::u16string_view path, const ChooseAddressBook& choose) {
  RecordFile file;
  const Status status = file.Open(files, path);
  return Failed(status) ? status : ReadAddressBook(file.bytes(), choose);
}

Status ReadAddressBook(FieldBytes bytes, const ChooseAddressBook& choose) try {
  FieldReader fields(bytes);
  if (fields.Next() != kMagic) return E_INVALIDARG;
  const AddressBookTarget target = choose(fields.Next().value_or(u""));
  if (target.book == nullptr) return S_OK;
  EntryReader reader(target);
  reader.ReadRange(fields, bytes.size());
  Status status = S_OK;
  while (!Failed(status) && fields.NextLine()) status = reader.ReadEntry(fields);
  return status;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

}  // namespace celldesk
