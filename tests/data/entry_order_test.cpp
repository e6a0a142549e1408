#include "data/entry_order.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

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

// Ids as phones and files have them: equal ones, negative ones, none, no number, more than 32 bits.
std::vector<AddressEntry> RandomEntries(std::size_t count) {
  std::mt19937 random(11);
  const std::vector<std::u16string> ids = {u"",  u"0",          u"7",           u"007",        u"-3",
                                           u"x", u"2147483647", u"-2147483648", u"99999999999"};
  const std::vector<std::u16string> texts = {u"", u"Anna", u"anna", u"ANNA", u"Bert", u"+49", u"112", u" "};
  std::vector<AddressEntry> entries;
  for (std::size_t i = 0; i < count; ++i) {
    entries.push_back(
        Entry(ids[random() % ids.size()], texts[random() % texts.size()], texts[random() % texts.size()]));
  }
  return entries;
}

TEST(EntryText, IsTheColumnsOwn) {
  const AddressEntry entry = Entry(u"7", u"Anna", u"112");
  EXPECT_EQ(EntryText(entry, AddressColumn::kId), u"7");
  EXPECT_EQ(EntryText(entry, AddressColumn::kName), u"Anna");
  EXPECT_EQ(EntryText(entry, AddressColumn::kNumber), u"112");
}

TEST(EntryPlaces, AreTheOrderOfCompareEntries) {
  const CaselessLocale locale;
  const std::vector<AddressEntry> entries = RandomEntries(80);
  std::vector<const AddressEntry*> pointers;
  for (const AddressEntry& entry : entries) pointers.push_back(&entry);
  for (const AddressColumn column : {AddressColumn::kId, AddressColumn::kName, AddressColumn::kNumber}) {
    const std::vector<std::uint32_t> places = EntryPlaces(pointers, column, locale);
    ASSERT_EQ(places.size(), entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
      for (std::size_t k = 0; k < entries.size(); ++k) {
        const int order = CompareEntries(entries[i], entries[k], column, false, locale);
        ASSERT_EQ(places[i] < places[k], order < 0) << i << " and " << k;
        ASSERT_EQ(places[i] == places[k], order == 0) << i << " and " << k;
      }
    }
  }
}

TEST(EntryPlaces, NeighboursAreInTheirOrder) {
  const AddressEntry two = Entry(u"2", u"", u""), three = Entry(u"3", u"", u"");
  const std::vector<std::uint32_t> places =
      EntryPlaces(std::vector<const AddressEntry*>{&two, &three}, AddressColumn::kId, CaselessLocale());
  EXPECT_LT(places[0], places[1]);
}

TEST(EntryPlaces, NoEntriesHaveNone) {
  EXPECT_TRUE(EntryPlaces({}, AddressColumn::kName, CaselessLocale()).empty());
  EXPECT_TRUE(EntryPlaces({}, AddressColumn::kId, CaselessLocale()).empty());
}

}  // namespace
}  // namespace celldesk
