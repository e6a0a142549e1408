#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "data/book_fixture.h"
#include "data/contacts_exchange.h"
#include "support/fake_contacts_database.h"
#include "support/fake_registry.h"
#include "support/registry_data.h"

namespace celldesk {

/// Remembers what list and progress window were told, in one sequence: "open export 0 2", "step", "repaint",
/// "row 0", "close".
class ExchangeLog : public RowObserver, public ContactsProgress {
 public:
  void RowRead(int position) override { events.push_back("row " + std::to_string(position)); }
  void Repaint() override { events.push_back("repaint"); }
  void OpenProgress(ContactsTransfer transfer, int lowest, int highest) override {
    events.push_back(std::string("open ") + (transfer == ContactsTransfer::kExport ? "export " : "import ") +
                     std::to_string(lowest) + " " + std::to_string(highest));
  }
  void AdvanceProgress() override { events.push_back("step"); }
  void CloseProgress() override { events.push_back("close"); }

  ContactsExchangeView view() { return {*this, *this}; }

  std::vector<std::string> events;
};

/// A registry that names the database "contacts", which is there and empty, and a book for the exchange.
class ContactsFixture : public testing::Test {
 protected:
  ContactsFixture() {
    Name(StringData(u"contacts"));
    database_.databases[u"contacts"];
  }

  void Name(const RegistryData& data) {
    KeyDisposition disposition{};
    SystemError error = kErrorSuccess;
    const auto key =
        registry_.Create(RegistryRoot::kLocalMachine, u"\\Explorer\\Database", disposition, error);
    EXPECT_EQ(key->Set(u"ContactsDatabase", data), kErrorSuccess);
  }
  void Forget() {
    EXPECT_EQ(registry_.Delete(RegistryRoot::kLocalMachine, u"\\Explorer\\Database"), kErrorSuccess);
  }
  FakeContactsDatabase::Records& records() { return database_.databases[u"contacts"]; }
  void AddContact(ContactRecord contact) { records().push_back(std::move(contact)); }

  void Export() { ExportToContacts(registry_, database_, book_, log_.view()); }
  void Import() { ImportFromContacts(registry_, database_, book_, log_.view()); }

  FakeRegistry registry_;
  FakeContactsDatabase database_;
  AddressBook book_ = LoadedBook(3);
  ExchangeLog log_;
};

inline ContactRecord Person(std::u16string_view surname, std::u16string_view mobile) {
  return {{kContactSurname, std::u16string(surname)}, {kContactMobileNumber, std::u16string(mobile)}};
}

}  // namespace celldesk
