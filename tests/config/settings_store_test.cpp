#include "config/settings_store.h"

#include <gtest/gtest.h>

#include "support/fake_registry.h"

namespace celldesk {
namespace {

Settings Everything() {
  Settings settings;
  settings.port = u"COM4:";
  settings.use_adapter = true;
  settings.centre = u"+420601123456";
  settings.operator_name = u"Connect";
  settings.country = u"Austria";
  settings.delivery_report = true;
  settings.reply_path = true;
  settings.validity = 173;
  return settings;
}

TEST(SettingsStore, LivesUnderTheProgramsKey) { EXPECT_EQ(SettingsStore::kPath, kSettingsPath); }

TEST(Settings, DifferInEachValue) {
  const Settings settings;
  for (auto text : {&Settings::port, &Settings::centre, &Settings::operator_name, &Settings::country}) {
    Settings other;
    EXPECT_EQ(other, settings);
    (other.*text) = u"other";
    EXPECT_NE(other, settings);
  }
  for (auto flag : {&Settings::use_adapter, &Settings::delivery_report, &Settings::reply_path}) {
    Settings other;
    (other.*flag) = true;
    EXPECT_NE(other, settings);
  }
  Settings other;
  other.validity = 1;
  EXPECT_NE(other, settings);
}

TEST(SettingsStore, GivesTheDefaultsOfAFreshSystem) {
  FakeRegistry registry;
  const Settings settings = SettingsStore(registry).Load();
  EXPECT_EQ(settings.port, u"COM1:");
  EXPECT_FALSE(settings.use_adapter);
  EXPECT_EQ(settings.centre, u"");
  EXPECT_EQ(settings.operator_name, u"");
  EXPECT_EQ(settings.country, u"");
  EXPECT_FALSE(settings.delivery_report);
  EXPECT_FALSE(settings.reply_path);
  EXPECT_EQ(settings.validity, 197U);
}

TEST(SettingsStore, SavesEveryValueUnderItsNameAndType) {
  FakeRegistry registry;
  SettingsStore(registry).Save(Everything());
  EXPECT_EQ(registry.StringAt(u"Port"), u"COM4:");
  EXPECT_EQ(registry.NumberAt(u"DI27"), 1U);
  EXPECT_EQ(registry.StringAt(u"SMSC"), u"+420601123456");
  EXPECT_EQ(registry.StringAt(u"Operator"), u"Connect");
  EXPECT_EQ(registry.StringAt(u"Country"), u"Austria");
  EXPECT_EQ(registry.NumberAt(u"DeliveryReport"), 1U);
  EXPECT_EQ(registry.NumberAt(u"ReplyPath"), 1U);
  EXPECT_EQ(registry.NumberAt(u"Validity"), 173U);
}

TEST(SettingsStore, LoadsWhatItSaved) {
  FakeRegistry registry;
  const SettingsStore store(registry);
  store.Save(Everything());
  EXPECT_EQ(store.Load(), Everything());
  store.Save(Settings{});
  EXPECT_EQ(store.Load(), Settings{});
}

TEST(SettingsStore, ReadsAnAdapterValueOf2AsOnAndWritesItBackAs1) {
  FakeRegistry registry;
  registry.PutNumber(u"DI27", 2);
  const SettingsStore store(registry);
  EXPECT_TRUE(store.Load().use_adapter);
  store.Save(store.Load());
  EXPECT_EQ(registry.NumberAt(u"DI27"), 1U);
}

TEST(SettingsStore, TakesPortNamesOfAtMostFiveCharacters) {
  FakeRegistry registry;
  registry.PutString(u"Port", u"COM9:");
  EXPECT_EQ(SettingsStore(registry).Load().port, u"COM9:");
  registry.PutString(u"Port", u"COM10:");
  EXPECT_EQ(SettingsStore(registry).Load().port, u"COM1:");
  registry.PutString(u"Port", u"");
  EXPECT_EQ(SettingsStore(registry).Load().port, u"");
}

TEST(SettingsStore, GivesTheDefaultForAValueOfAnotherType) {
  FakeRegistry registry;
  registry.PutNumber(u"Port", 1);
  registry.PutString(u"DI27", u"1");
  registry.PutNumber(u"SMSC", 420);
  registry.PutBinary(u"DeliveryReport", std::vector<std::uint8_t>{1, 0, 0, 0});
  registry.PutString(u"Validity", u"173");
  EXPECT_EQ(SettingsStore(registry).Load(), Settings{});
}

TEST(SettingsStore, KeepsAValidityThatNoListOffers) {
  FakeRegistry registry;
  registry.PutNumber(u"Validity", 0);
  EXPECT_EQ(SettingsStore(registry).Load().validity, 0U);
  registry.PutNumber(u"Validity", 0xFFFFFFFF);
  EXPECT_EQ(SettingsStore(registry).Load().validity, 0xFFFFFFFFU);
}

TEST(SettingsStore, LoadsAndSavesOnePageAlone) {
  FakeRegistry registry;
  SettingsKey key(registry);
  ASSERT_EQ(key.Create(RegistryRoot::kCurrentUser, SettingsStore::kPath), kErrorSuccess);
  SettingsStore::SavePage(SettingsPage::kOperator, key, Everything());
  EXPECT_EQ(registry.StringAt(u"SMSC"), u"+420601123456");
  EXPECT_EQ(registry.StringAt(u"Port"), std::nullopt);
  EXPECT_EQ(registry.NumberAt(u"Validity"), std::nullopt);

  Settings loaded = Everything();
  loaded.centre.clear();
  SettingsStore::LoadPage(SettingsPage::kOperator, key, loaded);
  EXPECT_EQ(loaded, Everything());
  SettingsStore::LoadPage(SettingsPage::kSms, key, loaded);
  EXPECT_EQ(loaded.validity, 197U);
  EXPECT_EQ(loaded.port, u"COM4:");
}

/// Saves `settings` page by page, as the dialog does that showed `before`.
void SaveChanges(FakeRegistry& registry, Settings& settings, const Settings& before) {
  SettingsKey key(registry);
  ASSERT_EQ(key.Create(RegistryRoot::kCurrentUser, SettingsStore::kPath), kErrorSuccess);
  for (const auto page : {SettingsPage::kGeneral, SettingsPage::kOperator, SettingsPage::kSms})
    SettingsStore::SaveChanges(page, key, settings, before);
}

TEST(SettingsStore, SavingChangesLeavesWhatAnotherWindowStoredAndTakesItOver) {
  FakeRegistry registry;
  const Settings before;
  const SettingsStore store(registry);
  store.Save(Everything());  // the other window, of each value
  Settings settings = before;
  SaveChanges(registry, settings, before);
  EXPECT_EQ(settings, Everything());
  EXPECT_EQ(store.Load(), Everything());
}

TEST(SettingsStore, SavingChangesWritesEachThatIsOne) {
  FakeRegistry registry;
  const SettingsStore store(registry);
  const Settings before;
  store.Save(before);
  Settings settings = Everything();
  SaveChanges(registry, settings, before);
  EXPECT_EQ(settings, Everything());
  EXPECT_EQ(store.Load(), Everything());
}

TEST(SettingsStore, SavingChangesWritesWhatIsNotStored) {
  FakeRegistry registry;
  Settings settings = Everything();
  SaveChanges(registry, settings, Everything());
  EXPECT_EQ(settings, Everything());
  EXPECT_EQ(SettingsStore(registry).Load(), Everything());
}

TEST(SettingsStore, SavingChangesReplacesWhatCannotBeRead) {
  FakeRegistry registry;
  registry.PutString(u"Port", u"COM10:");
  registry.PutNumber(u"DI27", 2);
  registry.PutNumber(u"SMSC", 420);
  registry.PutString(u"Country", std::u16string(600, u'x'));
  registry.PutString(u"ReplyPath", u"yes");
  registry.PutBinary(u"Validity", std::vector<std::uint8_t>{1});
  const SettingsStore store(registry);
  Settings settings = store.Load();
  SaveChanges(registry, settings, store.Load());
  EXPECT_EQ(registry.StringAt(u"Port"), u"COM1:");
  EXPECT_EQ(registry.NumberAt(u"DI27"), 1U);
  EXPECT_EQ(registry.StringAt(u"SMSC"), u"");
  EXPECT_EQ(registry.StringAt(u"Country"), u"");
  EXPECT_EQ(registry.NumberAt(u"ReplyPath"), 0U);
  EXPECT_EQ(registry.NumberAt(u"Validity"), 197U);
}

TEST(SettingsStore, MakesItsKeyWithTheFirstWriteAndNotByReading) {
  FakeRegistry registry;
  const SettingsStore store(registry);
  SettingsKey key(registry);
  EXPECT_EQ(store.Load(), Settings{});
  EXPECT_TRUE(store.LoadColumnWidths(SettingsStore::kAddressColumns, 3).empty());
  EXPECT_EQ(key.Open(RegistryRoot::kCurrentUser, SettingsStore::kPath), kErrorFileNotFound);
  store.SaveColumnWidths(SettingsStore::kAddressColumns, {1, 2, 3});
  EXPECT_EQ(key.Open(RegistryRoot::kCurrentUser, SettingsStore::kPath), kErrorSuccess);
}

TEST(SettingsStore, GivesDefaultsWhereTheKeyCannotBeMade) {
  FakeRegistry registry;
  registry.FailAllWrites();
  const SettingsStore store(registry);
  store.Save(Everything());
  EXPECT_EQ(store.Load(), Settings{});
}

TEST(SettingsStore, AFailedWriteLeavesTheOtherValues) {
  FakeRegistry registry;
  const SettingsStore store(registry);
  store.Save(Settings{});
  registry.FailWritesAfter(2);
  store.Save(Everything());
  EXPECT_EQ(store.Load().port, u"COM4:");
  EXPECT_TRUE(store.Load().use_adapter);
  EXPECT_EQ(store.Load().centre, u"");
}

TEST(SettingsStore, KeepsColumnWidthsAsSixteenBitNumbers) {
  FakeRegistry registry;
  const SettingsStore store(registry);
  store.SaveColumnWidths(SettingsStore::kInboxColumns, {30, 120, 256, 65535});
  EXPECT_EQ(registry.BinaryAt(u"InboxCols"), (std::vector<std::uint8_t>{30, 0, 120, 0, 0, 1, 255, 255}));
  EXPECT_EQ(store.LoadColumnWidths(SettingsStore::kInboxColumns, 4),
            (std::vector<std::uint16_t>{30, 120, 256, 65535}));
}

TEST(SettingsStore, IgnoresColumnWidthsOfAnotherCount) {
  FakeRegistry registry;
  const SettingsStore store(registry);
  EXPECT_TRUE(store.LoadColumnWidths(SettingsStore::kAddressColumns, 3).empty());
  store.SaveColumnWidths(SettingsStore::kAddressColumns, {1, 2, 3});
  EXPECT_TRUE(store.LoadColumnWidths(SettingsStore::kAddressColumns, 2).empty());
  EXPECT_TRUE(store.LoadColumnWidths(SettingsStore::kAddressColumns, 4).empty());
  EXPECT_EQ(store.LoadColumnWidths(SettingsStore::kAddressColumns, 3).size(), 3U);
  registry.PutBinary(u"AddressCols", std::vector<std::uint8_t>{1, 0, 2, 0, 3});
  EXPECT_TRUE(store.LoadColumnWidths(SettingsStore::kAddressColumns, 3).empty());
  registry.PutString(u"AddressCols", u"ab");
  EXPECT_TRUE(store.LoadColumnWidths(SettingsStore::kAddressColumns, 3).empty());
}

}  // namespace
}  // namespace celldesk
