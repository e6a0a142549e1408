#include "config/settings_key.h"

#include <gtest/gtest.h>

#include "support/fake_registry.h"
#include "support/registry_data.h"

namespace celldesk {
namespace {

constexpr RegistryRoot kUser = RegistryRoot::kCurrentUser;

TEST(SettingsKey, CreateMakesTheKeyOnceAndOpensItThen) {
  FakeRegistry registry;
  SettingsKey key(registry);
  EXPECT_FALSE(key.is_open());
  EXPECT_EQ(key.Create(kUser, u"\\Software\\Test"), kErrorSuccess);
  EXPECT_TRUE(key.is_open());
  EXPECT_EQ(key.disposition(), KeyDisposition::kCreated);
  EXPECT_EQ(key.path(), u"\\Software\\Test");
  EXPECT_EQ(key.Create(kUser, u"\\Software\\Test"), kErrorSuccess);
  EXPECT_EQ(key.disposition(), KeyDisposition::kOpened);
  EXPECT_EQ(key.status(), kErrorSuccess);
}

TEST(SettingsKey, OpenNeverMakesAKey) {
  FakeRegistry registry;
  SettingsKey key(registry);
  EXPECT_EQ(key.Open(kUser, u"\\Software\\Test"), kErrorFileNotFound);
  EXPECT_FALSE(key.is_open());
  EXPECT_EQ(key.status(), kErrorFileNotFound);
  EXPECT_EQ(SettingsKey(registry).Create(kUser, u"\\Software\\Test"), kErrorSuccess);
  EXPECT_EQ(key.Open(kUser, u"\\Software\\Test"), kErrorSuccess);
  EXPECT_TRUE(key.is_open());
}

TEST(SettingsKey, ClosesTheOldKeyWhenTheNewOneCannotBeOpened) {
  FakeRegistry registry;
  SettingsKey key(registry);
  EXPECT_EQ(key.Create(kUser, u"\\Software\\Test"), kErrorSuccess);
  EXPECT_EQ(key.Open(kUser, u"\\Software\\Other"), kErrorFileNotFound);
  EXPECT_FALSE(key.is_open());
}

class SettingsValueTest : public testing::Test {
 protected:
  SettingsValueTest() { EXPECT_EQ(key_.Create(kUser, kSettingsPath), kErrorSuccess); }

  FakeRegistry registry_;
  SettingsKey key_{registry_};
};

TEST_F(SettingsValueTest, ExistsOnlyOnceItIsThere) {
  SettingsValue value = key_.Value(u"Name");
  EXPECT_EQ(value.name(), u"Name");
  EXPECT_FALSE(value.Exists());
  EXPECT_EQ(value.status(), kErrorFileNotFound);
  registry_.PutNumber(u"Name", 1);
  EXPECT_TRUE(value.Exists());
  EXPECT_EQ(value.status(), kErrorSuccess);
}

TEST_F(SettingsValueTest, NumbersComeBackAsTheyWereSet) {
  for (const std::uint32_t number : {0U, 1U, 0x12345678U, 0x80000000U, 0xFFFFFFFFU}) {
    EXPECT_EQ(key_.Value(u"N").SetNumber(number), kErrorSuccess);
    EXPECT_EQ(key_.Value(u"N").GetNumber(7), number);
    EXPECT_EQ(registry_.NumberAt(u"N"), number);
  }
}

TEST_F(SettingsValueTest, NumbersOfAnotherTypeOrSizeReadAsTheDefault) {
  EXPECT_EQ(key_.Value(u"N").GetNumber(7), 7U);
  registry_.PutString(u"N", u"1");
  EXPECT_EQ(key_.Value(u"N").GetNumber(7), 7U);
  registry_.PutBinary(u"N", std::vector<std::uint8_t>{1, 0, 0, 0});
  EXPECT_EQ(key_.Value(u"N").GetNumber(7), 7U);
  SystemError error{};
  const auto key = registry_.Open(kUser, kSettingsPath, error);
  for (const std::size_t size : {0, 3, 5}) {
    EXPECT_EQ(key->Set(u"N", {RegistryType::kNumber, std::vector<std::uint8_t>(size)}), kErrorSuccess);
    EXPECT_EQ(key_.Value(u"N").GetNumber(7), 7U);
  }
}

TEST_F(SettingsValueTest, FlagsAreOnWheneverTheNumberIsNotZero) {
  EXPECT_FALSE(key_.Value(u"F").GetFlag());
  registry_.PutNumber(u"F", 2);
  EXPECT_TRUE(key_.Value(u"F").GetFlag());
  EXPECT_EQ(key_.Value(u"F").SetFlag(true), kErrorSuccess);
  EXPECT_EQ(registry_.NumberAt(u"F"), 1U);
  EXPECT_EQ(key_.Value(u"F").SetFlag(false), kErrorSuccess);
  EXPECT_EQ(registry_.NumberAt(u"F"), 0U);
  EXPECT_FALSE(key_.Value(u"F").GetFlag());
}

TEST_F(SettingsValueTest, StringsAreStoredWithTheirTerminatingZero) {
  EXPECT_EQ(key_.Value(u"S").SetString(u"a\u010d"), kErrorSuccess);
  SystemError error{};
  EXPECT_EQ(registry_.Open(kUser, kSettingsPath, error)->Query(u"S"), StringData(u"a\u010d"));
  EXPECT_EQ(key_.Value(u"S").GetString(u"default"), u"a\u010d");
  EXPECT_EQ(key_.Value(u"S").SetString(u""), kErrorSuccess);
  EXPECT_EQ(key_.Value(u"S").GetString(u"default"), u"");
}

TEST_F(SettingsValueTest, StringsLongerThanTheMaximumReadAsTheDefault) {
  registry_.PutString(u"S", u"COM1:");
  EXPECT_EQ(key_.Value(u"S").GetString(u"default", 6), u"COM1:");
  registry_.PutString(u"S", u"COM10:");
  SettingsValue value = key_.Value(u"S");
  EXPECT_EQ(value.GetString(u"default", 6), u"default");
  EXPECT_EQ(value.status(), kErrorMoreData);
  registry_.PutString(u"S", std::u16string(511, u'x'));
  EXPECT_EQ(key_.Value(u"S").GetString().size(), 511U);
  registry_.PutString(u"S", std::u16string(512, u'x'));
  EXPECT_EQ(key_.Value(u"S").GetString(), u"");
}

TEST_F(SettingsValueTest, StringsOfAnotherTypeReadAsTheDefault) {
  EXPECT_EQ(key_.Value(u"S").GetString(u"default"), u"default");
  registry_.PutNumber(u"S", 65);
  EXPECT_EQ(key_.Value(u"S").GetString(u"default"), u"default");
}

TEST_F(SettingsValueTest, StringsEndAtTheFirstZeroOrWithTheirBytes) {
  SystemError error{};
  const auto key = registry_.Open(kUser, kSettingsPath, error);
  EXPECT_EQ(key->Set(u"S", {RegistryType::kString, {'a', 0, 'b', 0, 'c'}}), kErrorSuccess);
  EXPECT_EQ(key_.Value(u"S").GetString(u"default"), u"ab");
  EXPECT_EQ(key->Set(u"S", {RegistryType::kString, {'a', 0, 0, 0, 'c', 0}}), kErrorSuccess);
  EXPECT_EQ(key_.Value(u"S").GetString(u"default"), u"a");
  EXPECT_EQ(key->Set(u"S", {RegistryType::kString, {}}), kErrorSuccess);
  EXPECT_EQ(key_.Value(u"S").GetString(u"default"), u"");
}

TEST_F(SettingsValueTest, BinariesAreReadUpToTheSizeOfTheBuffer) {
  std::vector<std::uint8_t> data{9};
  SettingsValue value = key_.Value(u"B");
  EXPECT_EQ(value.GetBinary(data, 4), kErrorFileNotFound);
  EXPECT_TRUE(data.empty());
  EXPECT_EQ(value.SetBinary({1, 2, 3, 4}), kErrorSuccess);
  EXPECT_EQ(value.GetBinary(data, 4), kErrorSuccess);
  EXPECT_EQ(data, (std::vector<std::uint8_t>{1, 2, 3, 4}));
  EXPECT_EQ(value.GetBinary(data, 28), kErrorSuccess);
  EXPECT_EQ(data.size(), 4U);
  EXPECT_EQ(value.GetBinary(data, 3), kErrorMoreData);
  EXPECT_TRUE(data.empty());
  EXPECT_EQ(value.status(), kErrorMoreData);
}

TEST_F(SettingsValueTest, BinariesOfAnotherTypeAreNotRead) {
  registry_.PutNumber(u"B", 1);
  std::vector<std::uint8_t> data;
  EXPECT_EQ(key_.Value(u"B").GetBinary(data, 28), kErrorFileNotFound);
}

TEST_F(SettingsValueTest, CopyToKeepsTypeAndData) {
  SettingsKey target(registry_);
  EXPECT_EQ(target.Create(kUser, u"\\Software\\Copy"), kErrorSuccess);
  EXPECT_EQ(key_.Value(u"V").CopyTo(target), kErrorFileNotFound);
  registry_.PutBinary(u"V", std::vector<std::uint8_t>{1, 2, 3});
  EXPECT_EQ(key_.Value(u"V").CopyTo(target), kErrorSuccess);
  EXPECT_EQ(registry_.BinaryAt(u"V", u"\\Software\\Copy"), (std::vector<std::uint8_t>{1, 2, 3}));
  registry_.PutString(u"V", u"text");
  EXPECT_EQ(key_.Value(u"V").CopyTo(target), kErrorSuccess);
  EXPECT_EQ(registry_.StringAt(u"V", u"\\Software\\Copy"), u"text");
}

TEST_F(SettingsValueTest, AFailedWriteGivesTheCodeOfTheRegistry) {
  SettingsKey target(registry_);
  EXPECT_EQ(target.Create(kUser, u"\\Software\\Copy"), kErrorSuccess);
  registry_.PutNumber(u"N", 5);
  registry_.FailAllWrites();
  SettingsValue value = key_.Value(u"N");
  EXPECT_EQ(value.SetNumber(6), kErrorAccessDenied);
  EXPECT_EQ(value.status(), kErrorAccessDenied);
  EXPECT_EQ(value.CopyTo(target), kErrorAccessDenied);
  EXPECT_EQ(value.GetNumber(0), 5U);
}

TEST_F(SettingsValueTest, AClosedKeyReadsAsEmptyAndTakesNoWrites) {
  SettingsKey closed(registry_);
  SettingsValue value = closed.Value(u"N");
  std::vector<std::uint8_t> data;
  EXPECT_FALSE(value.Exists());
  EXPECT_EQ(value.GetNumber(7), 7U);
  EXPECT_EQ(value.GetString(u"d"), u"d");
  EXPECT_EQ(value.GetBinary(data, 1), kErrorFileNotFound);
  EXPECT_EQ(value.SetNumber(1), kErrorInvalidHandle);
  EXPECT_EQ(value.CopyTo(key_), kErrorFileNotFound);
  registry_.PutNumber(u"N", 1);
  EXPECT_EQ(key_.Value(u"N").CopyTo(closed), kErrorInvalidHandle);
}

}  // namespace
}  // namespace celldesk
