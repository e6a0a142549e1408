#include "data/entry_order.h"

#include "util/number_text.h"

namespace celldesk {
namespace {

int CompareAscending(const AddressEntry& left, const AddressEntry& right, AddressColumn column,
                     const Locale& locale) {
  if (column == AddressColumn::kName) return locale.Compare(left.name, right.name);
  if (column == AddressColumn::kNumber) return locale.Compare(left.number, right.number);
  const int left_id = ParseDecimal(left.id);
  const int right_id = ParseDecimal(right.id);
  return (left_id > right_id) - (left_id < right_id);
}

}  // namespace

int CompareEntries(const AddressEntry& left, const AddressEntry& right, AddressColumn column, bool descending,
                   const Locale& locale) {
  const int order = CompareAscending(left, right, column, locale);
  return descending ? -order : order;
}

}  // namespace celldesk
