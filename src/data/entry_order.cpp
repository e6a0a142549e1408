#include "data/entry_order.h"

#include <algorithm>

#include "util/number_text.h"

namespace celldesk {
namespace {

constexpr std::uint32_t kSignBit = 0x80000000;  // turned over, negative numbers stand below the others

int CompareAscending(const AddressEntry& left, const AddressEntry& right, AddressColumn column,
                     const Locale& locale) {
  if (column != AddressColumn::kId) return locale.Compare(EntryText(left, column), EntryText(right, column));
  const int left_id = ParseDecimal(left.id);
  const int right_id = ParseDecimal(right.id);
  return (left_id > right_id) - (left_id < right_id);
}

}  // namespace

std::u16string_view EntryText(const AddressEntry& entry, AddressColumn column) {
  switch (column) {
    case AddressColumn::kId:
      return entry.id;
    case AddressColumn::kName:
      return entry.name;
    case AddressColumn::kNumber:
      return entry.number;
  }
  return {};
}

int CompareEntries(const AddressEntry& left, const AddressEntry& right, AddressColumn column, bool descending,
                   const Locale& locale) {
  const int order = CompareAscending(left, right, column, locale);
  return descending ? -order : order;
}

std::vector<std::uint32_t> EntryPlaces(std::span<const AddressEntry* const> entries, AddressColumn column,
                                       const Locale& locale) {
  if (column != AddressColumn::kId) {
    return locale.Ranks(entries.size(),
                        [&](std::size_t i, std::u16string&) { return EntryText(*entries[i], column); });
  }
  std::vector<std::uint32_t> places(entries.size());
  std::transform(entries.begin(), entries.end(), places.begin(), [](const AddressEntry* entry) {
    return static_cast<std::uint32_t>(ParseDecimal(entry->id)) ^ kSignBit;
  });
  return places;
}

}  // namespace celldesk
