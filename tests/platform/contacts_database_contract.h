#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/contacts_database.h"

namespace celldesk {

/// What every back end of ContactsDatabase promises. `Store` gives one with an empty database:
/// `ContactsDatabase& database()`, its name `std::u16string name()` and another that is not there,
/// `std::u16string missing_name()`.
template <typename Store>
class ContactsDatabaseContract : public testing::Test {
 protected:
  static constexpr std::array<ContactPropertyId, 8> kAll = {
      kContactSurname,        kContactSecondName, kContactGivenName, kContactMobileNumber,
      kContactBusinessNumber, kContactHomeNumber, kContactCompany,   kContactFileAs};

  std::unique_ptr<ContactsTable> Open() {
    auto table = store_.database().Open(store_.name());
    EXPECT_NE(table, nullptr);
    return table;
  }
  void Append(const ContactRecord& record) { EXPECT_EQ(Open()->Append(record), S_OK); }
  /// The requested properties of every record there is.
  std::vector<ContactRecord> ReadAll(std::vector<ContactPropertyId> requested) {
    std::vector<ContactRecord> records;
    const auto table = Open();
    while (auto record = table->ReadNext(requested)) records.push_back(std::move(*record));
    return records;
  }
  static ContactRecord Person(std::u16string surname, std::u16string mobile) {
    return {{kContactSurname, surname}, {kContactMobileNumber, mobile}, {kContactFileAs, surname}};
  }

  Store store_;
};

TYPED_TEST_SUITE_P(ContactsDatabaseContract);

TYPED_TEST_P(ContactsDatabaseContract, ADatabaseThatIsNotThereCannotBeOpened) {
  EXPECT_EQ(this->store_.database().Open(this->store_.missing_name()), nullptr);
  EXPECT_EQ(this->store_.database().Open(u""), nullptr);
}

TYPED_TEST_P(ContactsDatabaseContract, AnEmptyDatabaseHasNoRecords) {
  const auto table = this->Open();
  EXPECT_EQ(table->Count(), 0);
  EXPECT_EQ(table->ReadNext(this->kAll), std::nullopt);
}

TYPED_TEST_P(ContactsDatabaseContract, WhatWasAppendedIsCountedAndReadOnce) {
  this->Append(this->Person(u"Smith", u"5551234"));
  this->Append(this->Person(u"Jones", u"+420603"));
  this->Append(this->Person(u"Brown", u"112"));
  EXPECT_EQ(this->Open()->Count(), 3);
  const auto records = this->ReadAll({kContactSurname, kContactMobileNumber});
  EXPECT_THAT(records, testing::UnorderedElementsAre(
                           ContactRecord{{kContactSurname, u"Smith"}, {kContactMobileNumber, u"5551234"}},
                           ContactRecord{{kContactSurname, u"Jones"}, {kContactMobileNumber, u"+420603"}},
                           ContactRecord{{kContactSurname, u"Brown"}, {kContactMobileNumber, u"112"}}));
}

TYPED_TEST_P(ContactsDatabaseContract, RecordsComeInTheSameOrderEachTime) {
  for (char16_t letter = u'A'; letter <= u'Z'; ++letter) this->Append(this->Person({letter}, u"5551234"));
  const auto records = this->ReadAll({kContactSurname});
  EXPECT_EQ(records.size(), 26U);
  EXPECT_EQ(this->ReadAll({kContactSurname}), records);
}

TYPED_TEST_P(ContactsDatabaseContract, PropertiesComeInTheOrderOfTheRequest) {
  this->Append(this->Person(u"Smith", u"5551234"));
  EXPECT_THAT(this->ReadAll({kContactMobileNumber, kContactHomeNumber, kContactSurname}),
              testing::ElementsAre(ContactRecord{{kContactMobileNumber, u"5551234"},
                                                 {kContactHomeNumber, std::nullopt},
                                                 {kContactSurname, u"Smith"}}));
  EXPECT_THAT(this->ReadAll({}), testing::ElementsAre(ContactRecord{}));
}

TYPED_TEST_P(ContactsDatabaseContract, APropertyThatNobodyKnowsIsNotFound) {
  this->Append(this->Person(u"Smith", u"5551234"));
  EXPECT_THAT(this->ReadAll({0x3A0D001F}), testing::ElementsAre(ContactRecord{{0x3A0D001F, std::nullopt}}));
}

TYPED_TEST_P(ContactsDatabaseContract, EveryPropertyIsKept) {
  ContactRecord record;
  for (const ContactPropertyId id : this->kAll)
    record.push_back({id, std::u16string(record.size() + 1, u'x')});
  this->Append(record);
  EXPECT_THAT(this->ReadAll({this->kAll.begin(), this->kAll.end()}), testing::ElementsAre(record));
}

TYPED_TEST_P(ContactsDatabaseContract, APropertyWithoutTextIsLeftOut) {
  this->Append({{kContactSurname, u"Smith"}, {kContactMobileNumber, std::nullopt}});
  EXPECT_THAT(
      this->ReadAll({kContactSurname, kContactMobileNumber}),
      testing::ElementsAre(ContactRecord{{kContactSurname, u"Smith"}, {kContactMobileNumber, std::nullopt}}));
}

TYPED_TEST_P(ContactsDatabaseContract, TextsOfAnyKindAreKept) {
  const std::vector<std::u16string> texts = {u"Smith; Jones, Brown: \"and\" co",
                                             u"back\\slash \\n \\; \\",
                                             u"\u0158e\u0159icha \u4E2D\u6587",
                                             u"\U0001F4F1 phone",
                                             u" blanks ",
                                             u"=41 =0D=0A",
                                             u"BEGIN:VCARD",
                                             std::u16string(2000, u'\u017E'),
                                             std::u16string(5000, u'x')};
  for (const std::u16string& text : texts) {
    this->Append({{kContactSurname, text}, {kContactCompany, text}, {kContactHomeNumber, text}});
  }
  const auto records = this->ReadAll({kContactSurname, kContactCompany, kContactHomeNumber});
  EXPECT_EQ(records.size(), texts.size());
  for (const std::u16string& text : texts) {
    const ContactRecord expected = {
        {kContactSurname, text}, {kContactCompany, text}, {kContactHomeNumber, text}};
    EXPECT_TRUE(std::find(records.begin(), records.end(), expected) != records.end());
  }
}

TYPED_TEST_P(ContactsDatabaseContract, AnUnknownPropertyCannotBeAppended) {
  EXPECT_EQ(this->Open()->Append(ContactRecord{{kContactSurname, u"Smith"}, {0x3A0D001F, u"x"}}),
            E_INVALIDARG);
  EXPECT_EQ(this->Open()->Count(), 0);
}

TYPED_TEST_P(ContactsDatabaseContract, EqualRecordsStandBesideEachOther) {
  this->Append(this->Person(u"Smith", u"5551234"));
  this->Append(this->Person(u"Smith", u"5551234"));
  EXPECT_EQ(this->ReadAll({kContactSurname}).size(), 2U);
}

TYPED_TEST_P(ContactsDatabaseContract, AnOpenTableHoldsTheRecordsOfItsOpening) {
  this->Append(this->Person(u"Smith", u"5551234"));
  const auto table = this->Open();
  EXPECT_EQ(table->Append(this->Person(u"Jones", u"5551234")), S_OK);
  this->Append(this->Person(u"Brown", u"5551234"));
  EXPECT_EQ(table->Count(), 1);
  const std::array<ContactPropertyId, 1> surname = {kContactSurname};
  EXPECT_EQ(table->ReadNext(surname), (ContactRecord{{kContactSurname, u"Smith"}}));
  EXPECT_EQ(table->ReadNext(surname), std::nullopt);
  EXPECT_EQ(table->ReadNext(surname), std::nullopt) << "the end stays the end";
  EXPECT_EQ(this->Open()->Count(), 3);
}

TYPED_TEST_P(ContactsDatabaseContract, TwoTablesReadOnTheirOwn) {
  this->Append(this->Person(u"Smith", u"5551234"));
  this->Append(this->Person(u"Jones", u"5551234"));
  const auto one = this->Open(), other = this->Open();
  const auto first = one->ReadNext(this->kAll);
  EXPECT_NE(first, std::nullopt);
  EXPECT_EQ(other->ReadNext(this->kAll), first);
  EXPECT_EQ(other->ReadNext(this->kAll), one->ReadNext(this->kAll));
}

REGISTER_TYPED_TEST_SUITE_P(ContactsDatabaseContract, ADatabaseThatIsNotThereCannotBeOpened,
                            AnEmptyDatabaseHasNoRecords, WhatWasAppendedIsCountedAndReadOnce,
                            RecordsComeInTheSameOrderEachTime, PropertiesComeInTheOrderOfTheRequest,
                            APropertyThatNobodyKnowsIsNotFound, EveryPropertyIsKept,
                            APropertyWithoutTextIsLeftOut, TextsOfAnyKindAreKept,
                            AnUnknownPropertyCannotBeAppended, EqualRecordsStandBesideEachOther,
                            AnOpenTableHoldsTheRecordsOfItsOpening, TwoTablesReadOnTheirOwn);

}  // namespace celldesk
