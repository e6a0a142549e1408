#include "data/entry_order.h"

#include <gtest/gtest.h>

#include "support/fake_locale.h"

namespace celldesk {
namespace {

/// Sorts without regard to case, unlike the order of the code units.
class CaselessLocale : public FakeLocale {
 public:
  int Compare(std::u16string_view left, std::u16string_view right) const override {
    return Lower(left).compare(Lower(right));
  }

 private:
  static std::u16string Lower(std::u16string_view text) {
    std::u16string lower(text);
    for (char16_t& c : lower) {
      if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c + 32);
    }
    return lower;
  }
};

AddressEntry Entry(std::u16string_view id, std::u16string_view name, std::u16string_view number) {
  AddressEntry entry;
  entry.id = id;
  entry.name = name;
  entry.number = number;
  return entry;
}

TEST(CompareEntries, ComparesIdsByTheirDecimalValues) {
  const CaselessLocale locale;
  const auto order = [&](std::u16string_view left, std::u16string_view right, bool descending) {
    return CompareEntries(Entry(left, u"", u""), Entry(right, u"", u""), AddressColumn::kId, descending,
                          locale);
  };
  EXPECT_LT(order(u"9", u"10", false), 0);
  EXPECT_GT(order(u"10", u"9", false), 0);
  EXPECT_EQ(order(u"010", u"10", false), 0);
  EXPECT_GT(order(u"9", u"10", true), 0);
  EXPECT_LT(order(u"", u"1", false), 0);
  EXPECT_LT(order(u"-2147483648", u"2147483647", false), 0);
}

TEST(CompareEntries, ComparesNamesAndNumbersAsTheUserSorts) {
  const CaselessLocale locale;
  const AddressEntry anna = Entry(u"2", u"anna", u"B");
  const AddressEntry bob = Entry(u"1", u"BOB", u"a");
  EXPECT_LT(CompareEntries(anna, bob, AddressColumn::kName, false, locale), 0);
  EXPECT_GT(CompareEntries(anna, bob, AddressColumn::kName, true, locale), 0);
  EXPECT_GT(CompareEntries(anna, bob, AddressColumn::kNumber, false, locale), 0);
  EXPECT_EQ(CompareEntries(anna, anna, AddressColumn::kNumber, true, locale), 0);
}

}  // namespace
}  // namespace celldesk
