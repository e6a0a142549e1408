#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/contacts_fixture.h"
#include "platform/vdir/vcard_writer.h"
#include "platform/vdir/vcards.h"
#include "support/document_examples.h"

namespace celldesk {
namespace {

std::vector<std::string> Examples() { return DocumentExamples("vcard.md"); }

class VcardDocument : public ContactsFixture {};

TEST_F(VcardDocument, TheExportExampleIsWhatIsWritten) {
  const auto examples = Examples();
  ASSERT_EQ(examples.size(), 2U);
  Fill(book_, 0, u"Smith; J", u"+420603123456");
  Export();
  ASSERT_EQ(records().size(), 1U);
  EXPECT_EQ(WriteVcard(records()[0], "0f5d1f0e-7f0a-4c0e-9d0b-0123456789ab"), examples[0]);
}

TEST_F(VcardDocument, TheImportExampleComesInAsItSays) {
  const auto contacts = ReadVcards(Examples().at(1));
  ASSERT_EQ(contacts.size(), 1U);
  AddContact(contacts[0]);
  Import();
  EXPECT_EQ(book_.At(0).name, u"Li Acme");
  EXPECT_EQ(book_.At(0).number, u"0123");
}

}  // namespace
}  // namespace celldesk
