#include "data/sms_store.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace celldesk {
namespace {

SmsMessage& Add(SmsStore& store, std::uint32_t flags) {
  SmsMessage& message = store.At(store.Append());
  message.flags = flags;
  return message;
}

TEST(SmsStore, AppendsClearedRecordsThatAreNotInUse) {
  SmsStore store;
  EXPECT_EQ(store.count(), 0);
  EXPECT_EQ(store.Append(), 0);
  EXPECT_EQ(store.Append(), 1);
  EXPECT_EQ(store.count(), 2);
  EXPECT_EQ(store.At(1).flags, 0U);
  EXPECT_EQ(store.At(1).memory, -1);
}

TEST(SmsStore, TakesARecordMadeBefore) {
  SmsStore store;
  store.Append();
  auto made = std::make_unique<SmsMessage>();
  made->text = u"made before";
  const SmsMessage* const address = made.get();
  EXPECT_EQ(store.Append(std::move(made)), 1);
  EXPECT_EQ(&store.At(1), address);
  EXPECT_EQ(store.At(1).text, u"made before");
}

TEST(SmsStore, CopiesARecordMadeBeforeIntoTheLastOneWhenItCannotGrow) {
  SmsStore store;
  for (int i = 0; i < SmsStore::kLimit; ++i) store.Append();
  const SmsMessage* const last = &store.At(SmsStore::kLimit - 1);
  auto made = std::make_unique<SmsMessage>();
  made->text = u"made before";
  EXPECT_EQ(store.Append(std::move(made)), SmsStore::kLimit - 1);
  EXPECT_EQ(&store.At(SmsStore::kLimit - 1), last);
  EXPECT_EQ(last->text, u"made before");
}

TEST(SmsStore, KeepsTheAddressOfARecordWhileItGrows) {
  SmsStore store;
  const SmsMessage* first = &store.At(store.Append());
  for (int i = 0; i < 1000; ++i) store.Append();
  EXPECT_EQ(&store.At(0), first);
}

TEST(SmsStore, ReusesTheLastRecordWhenItCannotGrow) {
  SmsStore store;
  for (int i = 0; i < SmsStore::kLimit; ++i) Add(store, kMessageInUse);
  EXPECT_EQ(store.FirstFree(), -1);
  EXPECT_EQ(store.Append(), SmsStore::kLimit - 1);
  EXPECT_EQ(store.count(), SmsStore::kLimit);
  EXPECT_EQ(store.At(SmsStore::kLimit - 1).flags, 0U);
  EXPECT_EQ(store.FirstFree(), SmsStore::kLimit - 1);
}

TEST(SmsStore, ARemovedRecordLeavesTheOthersInTheirPlaces) {
  SmsStore store;
  Add(store, kMessageInUse).text = u"a";
  Add(store, kMessageInUse).text = u"b";
  Add(store, kMessageInUse).text = u"c";
  store.Remove(1);
  EXPECT_EQ(store.count(), 3);
  EXPECT_EQ(store.At(1).flags, 0U);
  EXPECT_EQ(store.At(2).text, u"c");
}

TEST(SmsStore, FirstFreeIsARecordNotInUseOrTheEnd) {
  SmsStore store;
  EXPECT_EQ(store.FirstFree(), 0);
  Add(store, kMessageInUse | kMessageChanged);
  EXPECT_EQ(store.FirstFree(), 1);
  Add(store, kMessageChanged);
  Add(store, kMessageInUse);
  EXPECT_EQ(store.FirstFree(), 1);
}

TEST(SmsStore, MakesARecordAtAFreePosition) {
  SmsStore store;
  store.MakeAt(store.FirstFree()).flags = kMessageInUse;
  EXPECT_EQ(store.count(), 1);
  Add(store, 0).text = u"left over";
  SmsMessage& made = store.MakeAt(store.FirstFree());
  EXPECT_EQ(&made, &store.At(1));
  EXPECT_EQ(made.text, u"");
  EXPECT_EQ(store.count(), 2);
}

TEST(SmsStore, ClearDestroysEveryRecord) {
  SmsStore store;
  Add(store, kMessageInUse);
  store.Clear();
  EXPECT_EQ(store.count(), 0);
}

TEST(SmsStore, IsChangedWhenAnyMessageIs) {
  SmsStore store;
  EXPECT_FALSE(store.IsChanged());
  Add(store, kMessageInUse);
  EXPECT_FALSE(store.IsChanged());
  Add(store, kMessageInUse | kMessageChanged);
  EXPECT_TRUE(store.IsChanged());
}

TEST(SmsStore, NewReferenceFollowsTheHighestInUse) {
  SmsStore store;
  EXPECT_EQ(store.NewReference(), 1);
  SmsMessage& stored = Add(store, kMessageInUse);
  stored.storage_status = kStoredUnsent;
  stored.first_octet = 0x11;
  stored.submit.reference = 41;
  SmsMessage& report = Add(store, kMessageInUse);
  report.first_octet = 0x02;
  report.report.reference = 40;
  EXPECT_EQ(store.NewReference(), 42);
  stored.submit.reference = 255;
  EXPECT_EQ(store.NewReference(), 0);
  stored.flags = 0;
  EXPECT_EQ(store.NewReference(), 41);
}

TEST(SmsStore, CountsWhatWaitsToBeStoredInAMemory) {
  SmsStore store;
  Add(store, kMessageInUse | kMessageToStore).memory = 0;
  Add(store, kMessageInUse | kMessageToStore).memory = 1;
  Add(store, kMessageInUse).memory = 0;
  EXPECT_EQ(store.CountToStore(0), 1);
  EXPECT_EQ(store.CountToStore(1), 1);
  EXPECT_EQ(store.CountToStore(2), 0);
}

}  // namespace
}  // namespace celldesk
