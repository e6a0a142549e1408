#include "ui/framework/row_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>

#include "ui/framework/sort_key.h"
#include "ui/framework/window.h"

namespace celldesk {
namespace {

/// Owns records of a group and a value; those without a value sort last in their group.
class Owner : public Window {
 public:
  struct Record {
    std::uint64_t group;
    std::optional<std::uint64_t> value;
  };

  explicit Owner(std::vector<Record> records) : records_(std::move(records)) {}

  int Compare(std::size_t record1, std::size_t record2) override {
    ++compared;
    const Record &left = records_[record1], &right = records_[record2];
    if (left.group != right.group) return left.group < right.group ? -1 : 1;
    if (!left.value || !right.value) return 0;
    return (*left.value > *right.value) - (*left.value < *right.value);
  }
  bool SortsLast(std::size_t record) override { return !records_[record].value; }
  std::vector<std::uint64_t> SortKeys(std::span<const std::uint32_t> records, bool descending) override {
    std::vector<std::uint64_t> keys;
    if (!has_keys) return keys;
    for (const std::uint32_t record : records) {
      const Record& one = records_[record];
      keys.push_back(SortKey{one.value.value_or(5), one.group, !one.value}.Packed(descending));
    }
    return keys;
  }

  bool has_keys = true;
  int compared = 0;

 private:
  std::vector<Record> records_;
};

std::vector<Owner::Record> RandomRecords(std::size_t count) {
  std::mt19937 random(3);
  std::vector<Owner::Record> records(count);
  for (Owner::Record& record : records) {
    record.group = random() % 4;
    record.value = random() % 8;
    if (random() % 5 == 0) record.value = SortKey::kLargestValue;
    if (random() % 4 == 0) record.value.reset();
  }
  return records;
}

/// The numbers below `count`, shuffled.
std::vector<std::uint32_t> RandomRows(std::uint32_t count) {
  std::vector<std::uint32_t> rows(count);
  for (std::uint32_t i = 0; i < count; ++i) rows[i] = i;
  std::shuffle(rows.begin(), rows.end(), std::mt19937(5));
  return rows;
}

TEST(RowOrder, IsTheSameByKeysAsByCompare) {
  for (const std::uint32_t count : {0U, 1U, 2U, 7U, 500U}) {
    Owner owner(RandomRecords(count));
    const std::vector<std::uint32_t> rows = RandomRows(count);
    for (const bool descending : {false, true}) {
      EXPECT_EQ(RowsInOrder(owner, rows, descending), RowsByCompare(owner, rows, descending));
    }
  }
}

TEST(RowOrder, LooksAtEachRecordOnceWhereThereAreKeys) {
  Owner owner(RandomRecords(500));
  static_cast<void>(RowsInOrder(owner, RandomRows(500), false));
  EXPECT_EQ(owner.compared, 0);
}

TEST(RowOrder, GoesByCompareWhereThereAreNoKeys) {
  Owner owner(RandomRecords(500));
  owner.has_keys = false;
  const std::vector<std::uint32_t> rows = RandomRows(500);
  EXPECT_EQ(RowsInOrder(owner, rows, true), RowsByCompare(owner, rows, true));
  EXPECT_GT(owner.compared, 0);
}

TEST(RowOrder, EqualRowsKeepTheOrderTheyHave) {
  Owner owner(std::vector<Owner::Record>(50, {0, 7}));
  const std::vector<std::uint32_t> rows = RandomRows(50);
  EXPECT_EQ(RowsInOrder(owner, rows, false), rows);
  EXPECT_EQ(RowsInOrder(owner, rows, true), rows);
}

TEST(SortKey, ARecordWithoutAKeyComesBehindAllOthers) {
  const SortKey largest{SortKey::kLargestValue, SortKey::kLargestGroup, false};
  EXPECT_LT(largest.Packed(false), SortKey::kNone);
  EXPECT_LT((SortKey{0, SortKey::kLargestGroup, true}.Packed(false)), SortKey::kNone);
  EXPECT_LT((SortKey{0, 0, true}.Packed(true)), SortKey::kNone);
}

TEST(SortKey, PacksPlacesInBothDirections) {
  const std::vector<std::uint32_t> places = {0, 4000000000U, 1};
  const std::vector<std::uint64_t> up = PackedKeys(places, false), down = PackedKeys(places, true);
  EXPECT_LT(up[0], up[2]);
  EXPECT_LT(up[2], up[1]);
  EXPECT_GT(down[0], down[2]);
  EXPECT_GT(down[2], down[1]);
}

}  // namespace
}  // namespace celldesk
