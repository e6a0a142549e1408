#include <cstdio>
#include <optional>
#include <string>

#include "benchmarks.h"
#include "data/address_book_file.h"
#include "file_floor.h"
#include "measure.h"
#include "memory.h"
#include "platform/posix/posix_file.h"
#include "scratch.h"
#include "util/text.h"

namespace celldesk::bench {
namespace {

// Two books together, because one holds 65536 entries at most.
constexpr int kBooks = 2;
constexpr int kEntries = 50000;
constexpr double kReadBudget = 3, kWriteBudget = 2;
constexpr double kMilliseconds = 1e3;
constexpr double kMegabyte = 1e6;

std::u16string PathOf(int book) {
  return FromUtf8(Scratch::Path("book" + std::to_string(book) + ".adr").string());
}

void FillBook(AddressBook& book) {
  static_cast<void>(book.Resize(kEntries));
  book.memory().last = kEntries;
  for (int i = 0; i < kEntries; ++i) {
    AddressEntry& entry = book.At(i);
    entry.id = WidenAscii(std::to_string(i + 1));
    entry.name =
        (i % 4 == 0 ? u"Zofia W\u00F3jcik-" : u"Anna Whitfield ") + WidenAscii(std::to_string(i % 997));
    entry.number = u"+447700" + WidenAscii(std::to_string(900000 + i));
    entry.flags = AddressEntry::kOccupied;
  }
}

void ReadBook(FileSystem& files, int n, AddressBook& book) {
  const Status status = ReadAddressBookFile(files, PathOf(n), [&](std::u16string_view) {
    return AddressBookTarget{&book, nullptr};
  });
  if (Failed(status) || book.count() != kEntries) std::fputs("An address book was not read whole.\n", stderr);
}

/// Seconds for both books; that they are destroyed afterwards does not count.
double TimeReading(FileSystem& files) {
  MakeRoom();
  AddressBook sim(u"SM", false), phone(u"ME", false);
  return TimeOf([&] {
    ReadBook(files, 0, sim);
    ReadBook(files, 1, phone);
  });
}

/// Seconds for the characters of both files.
double TimeConverting(FileSystem& files) {
  MakeRoom();
  std::optional<Characters> sim, phone;
  return TimeOf([&] {
    sim.emplace(files, PathOf(0));
    phone.emplace(files, PathOf(1));
  });
}

void AddReading(Figures& figures, FileSystem& files, const Options& options, Room room) {
  SetRoom(room);
  const Sample read = Repeat(options.runs, [&] { return TimeReading(files); });
  const Sample floor = Repeat(options.runs, [&] { return TimeConverting(files); });
  const double least = floor.median * kMilliseconds;
  figures.push_back({"read 100000 entries" + NameOf(room), read.median * kMilliseconds, "ms", least,
                     kReadBudget * least, read.spread});
}

/// The most memory while one book is read, against what the book keeps.
void AddMemory(Figures& figures, FileSystem& files) {
  AddressBook book(u"SM", false);
  const std::size_t before = HeapInUse();
  const std::size_t peak = PeakGrowth([&] { ReadBook(files, 0, book); });
  const double kept = static_cast<double>(HeapInUse() - before) / kMegabyte;
  figures.push_back(
      {"read 50000 entries: peak memory", static_cast<double>(peak) / kMegabyte, "MB", kept, {}, 0});
}

void AddWriting(Figures& figures, FileSystem& files, const AddressBook& book, const Options& options) {
  const Characters text(files, PathOf(0));
  const Sample write = Repeat(options.runs, [&] {
    return TimeOf([&] {
      for (int n = 0; n < kBooks; ++n) static_cast<void>(WriteAddressBookFile(files, PathOf(n), book));
    });
  });
  const Sample floor = Repeat(options.runs, [&] {
    return TimeOf([&] {
      for (int n = 0; n < kBooks; ++n)
        static_cast<void>(ConvertAndWrite(files, PathOf(kBooks + n), text.view()));
    });
  });
  const double least = floor.median * kMilliseconds;
  figures.push_back({"write 100000 entries", write.median * kMilliseconds, "ms", least, kWriteBudget * least,
                     write.spread});
}

}  // namespace

void MeasureAddressBookFile(Figures& figures, const Options& options) {
  PosixFileSystem files;
  AddressBook book(u"SM", false);
  FillBook(book);
  for (int n = 0; n < kBooks; ++n) {
    if (Failed(WriteAddressBookFile(files, PathOf(n), book))) std::fputs("A file was not written.\n", stderr);
  }
  AddReading(figures, files, options, Room::kUsed);
  AddReading(figures, files, options, Room::kNew);
  AddMemory(figures, files);
  AddWriting(figures, files, book, options);
}

}  // namespace celldesk::bench
