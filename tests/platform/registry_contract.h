#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/registry.h"
#include "support/registry_data.h"

namespace celldesk {

/// What every back end of Registry promises. `Store` gives an empty one: `Registry& registry()`.
template <typename Store>
class RegistryContract : public testing::Test {
 protected:
  static constexpr RegistryRoot kUser = RegistryRoot::kCurrentUser;

  std::unique_ptr<RegistryKey> Make(std::u16string_view path, RegistryRoot root = kUser) {
    KeyDisposition disposition;
    SystemError error = kErrorSuccess;
    auto key = store_.registry().Create(root, path, disposition, error);
    EXPECT_EQ(error, kErrorSuccess);
    return key;
  }
  KeyDisposition DispositionOf(std::u16string_view path) {
    KeyDisposition disposition{};
    SystemError error = kErrorAccessDenied;
    EXPECT_NE(store_.registry().Create(kUser, path, disposition, error), nullptr);
    EXPECT_EQ(error, kErrorSuccess);
    return disposition;
  }
  std::unique_ptr<RegistryKey> Find(std::u16string_view path, RegistryRoot root = kUser) {
    SystemError error = kErrorSuccess;
    auto key = store_.registry().Open(root, path, error);
    EXPECT_EQ(error, key ? kErrorSuccess : kErrorFileNotFound);
    return key;
  }
  SystemError Delete(std::u16string_view path) { return store_.registry().Delete(kUser, path); }

  Store store_;
};

TYPED_TEST_SUITE_P(RegistryContract);

TYPED_TEST_P(RegistryContract, AFreshStoreHasRootsAndNothingElse) {
  EXPECT_EQ(this->Find(u"\\Software\\Corvane\\CellDesk"), nullptr);
  const auto root = this->Find(u"\\");
  ASSERT_NE(root, nullptr);
  EXPECT_EQ(root->Counts().subkeys, 0U);
  EXPECT_EQ(root->Counts().values, 0U);
}

TYPED_TEST_P(RegistryContract, CreateTellsWhetherTheKeyIsNew) {
  EXPECT_EQ(this->DispositionOf(u"\\Software\\Corvane\\CellDesk"), KeyDisposition::kCreated);
  EXPECT_EQ(this->DispositionOf(u"\\Software\\Corvane\\CellDesk"), KeyDisposition::kOpened);
  EXPECT_EQ(this->DispositionOf(u"Software\\Corvane"), KeyDisposition::kOpened);
  EXPECT_EQ(this->DispositionOf(u"Software\\Other"), KeyDisposition::kCreated);
}

TYPED_TEST_P(RegistryContract, AKeyWithoutValuesIsThere) {
  (void)this->Make(u"Empty\\Inner");
  EXPECT_NE(this->Find(u"Empty\\Inner"), nullptr);
  EXPECT_NE(this->Find(u"\\Empty"), nullptr);
  EXPECT_EQ(this->Find(u"Empty\\Other"), nullptr);
  EXPECT_EQ(this->Find(u"Inner"), nullptr);
}

TYPED_TEST_P(RegistryContract, EveryTypeOfValueComesBackAsItWas) {
  const auto key = this->Make(u"Types");
  const std::vector<std::u16string> texts = {
      u"",           u"COM1:",         u" blanks ",         u"tab\t, line\r\n, \\ and \"quotes\"",
      u"a=b;c#d",    u"\u0158e\u010D", u"\U0001F4F1 phone", std::u16string(u"zero\0inside", 11),
      u"\xD83D one", u"\x1\x7F\uFFFD", u"[section]",        u"80;\"Jm\u00E9no\";120"};
  for (const std::u16string& text : texts) {
    ASSERT_EQ(key->Set(u"text", StringData(text)), kErrorSuccess);
    EXPECT_EQ(key->Query(u"text"), StringData(text));
  }
  for (std::uint32_t number : {0U, 1U, 197U, 0x80000000U, 0xFFFFFFFFU}) {
    ASSERT_EQ(key->Set(u"number", NumberData(number)), kErrorSuccess);
    EXPECT_EQ(key->Query(u"number"), NumberData(number));
  }
  std::vector<std::uint8_t> bytes;
  EXPECT_EQ(key->Set(u"none", BinaryData(bytes)), kErrorSuccess);
  for (unsigned i = 0; i < 256; ++i) bytes.push_back(static_cast<std::uint8_t>(i));
  EXPECT_EQ(key->Set(u"all", BinaryData(bytes)), kErrorSuccess);
  EXPECT_EQ(key->Query(u"none"), BinaryData({}));
  EXPECT_EQ(key->Query(u"all"), BinaryData(bytes));
}

TYPED_TEST_P(RegistryContract, DataThatIsNotOfItsTypesFormIsKeptToo) {
  const auto key = this->Make(u"Odd");
  const std::vector<RegistryData> odd = {{RegistryType::kString, {}},
                                         {RegistryType::kString, {65, 0}},
                                         {RegistryType::kString, {65, 0, 0}},
                                         {RegistryType::kNumber, {}},
                                         {RegistryType::kNumber, {1, 2, 3, 4, 5}}};
  for (const RegistryData& data : odd) {
    ASSERT_EQ(key->Set(u"odd", data), kErrorSuccess);
    EXPECT_EQ(key->Query(u"odd"), data);
  }
}

TYPED_TEST_P(RegistryContract, AValueOfAMegabyteIsKept) {
  const auto key = this->Make(u"Large");
  std::vector<std::uint8_t> bytes(1 << 20);
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(i * 7 + (i >> 8));
  const std::u16string text(1 << 19, u'\u017E');
  ASSERT_EQ(key->Set(u"bytes", BinaryData(bytes)), kErrorSuccess);
  ASSERT_EQ(key->Set(u"text", StringData(text)), kErrorSuccess);
  EXPECT_TRUE(key->Query(u"bytes") == BinaryData(bytes));
  EXPECT_TRUE(key->Query(u"text") == StringData(text));
}

TYPED_TEST_P(RegistryContract, ASetReplacesTypeAndData) {
  const auto key = this->Make(u"K");
  ASSERT_EQ(key->Set(u"Port", StringData(u"COM1:")), kErrorSuccess);
  ASSERT_EQ(key->Set(u"Port", NumberData(5)), kErrorSuccess);
  EXPECT_EQ(key->Query(u"Port"), NumberData(5));
  EXPECT_EQ(key->Counts().values, 1U);
}

TYPED_TEST_P(RegistryContract, NamesAreComparedWithoutCase) {
  const auto key = this->Make(u"\\Software\\Corvane");
  ASSERT_EQ(key->Set(u"DI27", NumberData(1)), kErrorSuccess);
  ASSERT_EQ(key->Set(u"di27", NumberData(2)), kErrorSuccess);
  EXPECT_EQ(key->Query(u"Di27"), NumberData(2));
  EXPECT_THAT(key->ValueNames(), testing::ElementsAre(u"DI27"));
  EXPECT_EQ(this->DispositionOf(u"SOFTWARE\\corvane"), KeyDisposition::kOpened);
  EXPECT_EQ(this->Find(u"software\\CORVANE")->Query(u"DI27"), NumberData(2));
}

TYPED_TEST_P(RegistryContract, NamesMayHoldWhatAFileWouldTakeForItsOwn) {
  const auto key = this->Make(u"Names\\a/b=c]\\[x] # ; @");
  std::vector<std::u16string> names = {
      u"", u"@", u"COM1:", u"a=b", u"[x]", u"#x", u";x", u" x ", u"a b", u"a\nb", u"\u0159e/\u010D", u"a\\b"};
  for (const std::u16string& name : names)
    ASSERT_EQ(key->Set(name, StringData(u"is " + name)), kErrorSuccess);
  for (const std::u16string& name : names) EXPECT_EQ(key->Query(name), StringData(u"is " + name));
  EXPECT_THAT(key->ValueNames(), testing::UnorderedElementsAreArray(names));
  EXPECT_THAT(this->Find(u"Names\\a/b=c]")->SubkeyNames(), testing::ElementsAre(u"[x] # ; @"));
}

TYPED_TEST_P(RegistryContract, RootsAreStoresOfTheirOwn) {
  const auto user = this->Make(u"K");
  const auto machine = this->Make(u"K", RegistryRoot::kLocalMachine);
  const auto classes = this->Make(u".adr", RegistryRoot::kClassesRoot);
  ASSERT_EQ(user->Set(u"v", NumberData(1)), kErrorSuccess);
  ASSERT_EQ(machine->Set(u"v", NumberData(2)), kErrorSuccess);
  EXPECT_EQ(user->Query(u"v"), NumberData(1));
  EXPECT_EQ(machine->Query(u"v"), NumberData(2));
  EXPECT_EQ(classes->Query(u"v"), std::nullopt);
  EXPECT_EQ(this->Find(u".adr"), nullptr);
}

TYPED_TEST_P(RegistryContract, ADeletedValueIsGoneAndOthersStay) {
  const auto key = this->Make(u"K");
  ASSERT_EQ(key->Set(u"a", NumberData(1)), kErrorSuccess);
  ASSERT_EQ(key->Set(u"b", NumberData(2)), kErrorSuccess);
  EXPECT_EQ(key->DeleteValue(u"A"), kErrorSuccess);
  EXPECT_EQ(key->DeleteValue(u"a"), kErrorFileNotFound);
  EXPECT_EQ(key->Query(u"a"), std::nullopt);
  EXPECT_EQ(key->Query(u"b"), NumberData(2));
}

TYPED_TEST_P(RegistryContract, DeletingAKeyTakesAllUnderItAndNothingBesides) {
  const auto upper = this->Make(u"A\\B");
  const auto key = this->Make(u"A\\B\\C"), inner = this->Make(u"A\\B\\C\\D"),
             beside = this->Make(u"A\\B\\CC");
  ASSERT_EQ(key->Set(u"v", NumberData(1)), kErrorSuccess);
  ASSERT_EQ(beside->Set(u"v", NumberData(2)), kErrorSuccess);
  EXPECT_EQ(this->Delete(u"\\a\\b\\c"), kErrorSuccess);
  EXPECT_EQ(this->Delete(u"A\\B\\C"), kErrorFileNotFound);
  EXPECT_EQ(this->Find(u"A\\B\\C"), nullptr);
  EXPECT_EQ(this->Find(u"A\\B\\C\\D"), nullptr);
  EXPECT_EQ(beside->Query(u"v"), NumberData(2));
  EXPECT_EQ(upper->Counts().subkeys, 1U);
}

TYPED_TEST_P(RegistryContract, DeletingTheOnlyKeyOfAnotherLeavesThatOne) {
  (void)this->Make(u"A\\B\\C");
  EXPECT_EQ(this->Delete(u"A\\B\\C"), kErrorSuccess);
  EXPECT_NE(this->Find(u"A\\B"), nullptr);
  EXPECT_NE(this->Find(u"A"), nullptr);
}

TYPED_TEST_P(RegistryContract, ARootCannotBeDeleted) {
  (void)this->Make(u"A");
  EXPECT_NE(this->Delete(u"\\"), kErrorSuccess);
  EXPECT_NE(this->Find(u"A"), nullptr);
}

TYPED_TEST_P(RegistryContract, AKeyThatWasDeletedReadsEmptyAndTakesNoWrites) {
  const auto key = this->Make(u"K");
  ASSERT_EQ(key->Set(u"v", NumberData(1)), kErrorSuccess);
  ASSERT_EQ(this->Delete(u"K"), kErrorSuccess);
  EXPECT_EQ(key->Query(u"v"), std::nullopt);
  EXPECT_NE(key->Set(u"v", NumberData(2)), kErrorSuccess);
  EXPECT_NE(key->DeleteValue(u"v"), kErrorSuccess);
  EXPECT_EQ(this->Find(u"K"), nullptr);
}

TYPED_TEST_P(RegistryContract, EnumerationGivesEveryNameOnceAndCountsAgree) {
  const auto key = this->Make(u"Drivers\\Active");
  std::vector<std::u16string> names;
  for (char16_t c = u'a'; c <= u'j'; ++c) {
    names.emplace_back(1, c);
    (void)this->Make(u"Drivers\\Active\\" + names.back() + u"\\Inner");
    ASSERT_EQ(key->Set(names.back(), NumberData(c)), kErrorSuccess);
  }
  EXPECT_THAT(key->SubkeyNames(), testing::UnorderedElementsAreArray(names));
  EXPECT_THAT(key->ValueNames(), testing::UnorderedElementsAreArray(names));
  EXPECT_EQ(key->Counts().subkeys, 10U);
  EXPECT_EQ(key->Counts().values, 10U);
}

TYPED_TEST_P(RegistryContract, TwoKeysOnOnePathSeeEachOthersWrites) {
  const auto first = this->Make(u"K"), second = this->Make(u"\\K\\");
  for (std::uint32_t i = 0; i < 20; ++i) {
    ASSERT_EQ(first->Set(u"first", NumberData(i)), kErrorSuccess);
    ASSERT_EQ(second->Set(u"second", NumberData(i)), kErrorSuccess);
    ASSERT_EQ(second->Query(u"first"), NumberData(i));
    ASSERT_EQ(first->Query(u"second"), NumberData(i));
  }
}

REGISTER_TYPED_TEST_SUITE_P(RegistryContract, AFreshStoreHasRootsAndNothingElse,
                            CreateTellsWhetherTheKeyIsNew, AKeyWithoutValuesIsThere,
                            EveryTypeOfValueComesBackAsItWas, DataThatIsNotOfItsTypesFormIsKeptToo,
                            AValueOfAMegabyteIsKept, ASetReplacesTypeAndData, NamesAreComparedWithoutCase,
                            NamesMayHoldWhatAFileWouldTakeForItsOwn, RootsAreStoresOfTheirOwn,
                            ADeletedValueIsGoneAndOthersStay, DeletingAKeyTakesAllUnderItAndNothingBesides,
                            DeletingTheOnlyKeyOfAnotherLeavesThatOne, ARootCannotBeDeleted,
                            AKeyThatWasDeletedReadsEmptyAndTakesNoWrites,
                            EnumerationGivesEveryNameOnceAndCountsAgree, TwoKeysOnOnePathSeeEachOthersWrites);

}  // namespace celldesk
