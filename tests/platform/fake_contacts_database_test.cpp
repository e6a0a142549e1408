#include "support/fake_contacts_database.h"

#include "platform/contacts_database_contract.h"

namespace celldesk {
namespace {

class MemoryContacts {
 public:
  MemoryContacts() { database_.databases[u"contacts"]; }
  ContactsDatabase& database() { return database_; }
  std::u16string name() const { return u"contacts"; }
  std::u16string missing_name() const { return u"others"; }

 private:
  FakeContactsDatabase database_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, ContactsDatabaseContract, MemoryContacts);

class FakeContactsDatabaseTest : public testing::Test {
 protected:
  static inline const ContactRecord kSmith = {{kContactSurname, u"Smith"}};
  static constexpr std::array<ContactPropertyId, 1> kSurname = {kContactSurname};

  FakeContactsDatabaseTest() { database_.databases[u"contacts"] = {kSmith, kSmith}; }

  FakeContactsDatabase database_;
};

TEST_F(FakeContactsDatabaseTest, FailsAtTheStepThatWasNamed) {
  const auto table = database_.Open(u"contacts");
  database_.appendable = 1;
  EXPECT_EQ(table->Append(kSmith), S_OK);
  EXPECT_EQ(table->Append(kSmith), E_FAIL);
  database_.readable = 1;
  EXPECT_EQ(table->ReadNext(kSurname), kSmith);
  EXPECT_EQ(table->ReadNext(kSurname), std::nullopt);
  database_.can_count = false;
  EXPECT_EQ(table->Count(), std::nullopt);
  database_.can_open = false;
  EXPECT_EQ(database_.Open(u"contacts"), nullptr);
}

TEST_F(FakeContactsDatabaseTest, KnowsWhatIsOpenAndWhatWasAskedFor) {
  {
    const auto table = database_.Open(u"contacts");
    EXPECT_EQ(database_.open_tables, 1);
    (void)table->ReadNext(kSurname);
  }
  EXPECT_EQ(database_.open_tables, 0);
  EXPECT_EQ(database_.opened, 1);
  EXPECT_THAT(database_.requests, testing::ElementsAre(testing::ElementsAre(kContactSurname)));
}

}  // namespace
}  // namespace celldesk
