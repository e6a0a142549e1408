#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/window/book_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kChangedQuestion =
    "Address book was changed. Downloadig new data from mobile phone will delete the changes. To save the "
    "changes, cancel this action and export the Address book to the file.\r\rDo you want to continue?";

TEST(AddressLoad, DoesNothingWhileNotConnected) {
  WindowSession session(ThreeEntries());
  ASSERT_TRUE(session.Start());
  ASSERT_FALSE(Failed(session.sim().book().Resize(2)));
  session.Command(command::kLoadData);
  EXPECT_THAT(session.phone().received_lines(), IsEmpty());
  EXPECT_THAT(session.TakeAsked(), IsEmpty());
  EXPECT_EQ(session.sim().book().count(), 2);
}

TEST(AddressLoad, DetectsAsksSelectsAndReadsInBlocksOfTwenty) {
  BookWindow window(PhoneWith({{1, "1", u"A"}, {21, "2", u"B"}, {41, "3", u"C"}}, 42));
  window.TakePhoneLines();
  window.Command(command::kLoadData);
  EXPECT_THAT(window.TakePhoneLines(),
              ElementsAre("ATZE0V1", "AT+CPBS=?", "AT+CPBS=\"SM\"", "AT+CPBR=?", "AT+CPBS=\"SM\"",
                          "AT+CPBR=1,20", "AT+CPBR=21,40", "AT+CPBR=41,42"));
  EXPECT_THAT(window.SimRows(), ElementsAre("1|A|1", "21|B|2", "41|C|3"));
  EXPECT_EQ(window.sim().book().count(), 42);
  EXPECT_FALSE(window.sim().book().IsModified());
  EXPECT_TRUE(window.sim().book().loaded());
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(AddressLoad, ReadsThePhonesOwnMemoryInTheSecondFolder) {
  BookWindow window(PhoneWith({{1, "1", u"A"}}, 5, {{2, "22", u"Zoe"}}, 7));
  ClickTab(window.frame(), 1);
  window.Load();
  EXPECT_THAT(WindowSession::Rows(window.phone_book()), ElementsAre("2|Zoe|22"));
  EXPECT_EQ(window.phone_book().book().count(), 7);
  EXPECT_EQ(window.sim().book().count(), 0);
}

TEST(AddressLoad, AsksBeforeChangesAreLost) {
  BookWindow window(ThreeEntries());
  window.Load();
  window.SimEntry(0).flags |= AddressEntry::kModified;
  window.CommandAnswering(command::kLoadData, kAnswerNo);
  EXPECT_THAT(window.LastBox(), IsQuestion(kChangedQuestion, BoxIcon::kInformation, false));
  EXPECT_THAT(window.TakePhoneLines(), IsEmpty());
  EXPECT_TRUE(window.sim().book().IsModified());
  window.CommandAnswering(command::kLoadData, kAnswerYes);
  EXPECT_FALSE(window.sim().book().IsModified());
  EXPECT_THAT(window.SimRows(), ElementsAre("1|Anna|+447700900101", "2|Bert|112", "4|Carl|0044"));
}

TEST(AddressLoad, ReplacesWhatWasThere) {
  BookWindow window(ThreeEntries());
  window.Load();
  window.phone().memory().FindPhonebook("SM")->entries.erase(1);
  window.phone().memory().FindPhonebook("SM")->last = 3;
  window.Load();
  EXPECT_THAT(window.SimRows(), ElementsAre("2|Bert|112"));
  EXPECT_EQ(window.sim().book().count(), 3);
}

TEST(AddressLoad, PutsThePlusBeforeAnInternationalNumber) {
  BookWindow window(PhoneWith({{1, "+447700900101", u"Anna"}, {2, "447700900102", u"Bert"}}, 4),
                    *simulator::MakeProfile("no-plus"));
  window.Load();
  EXPECT_THAT(window.SimRows(), ElementsAre("1|Anna|+447700900101", "2|Bert|447700900102"));
}

TEST(AddressLoad, NeverReadsAMemoryOfOneSlot) {
  BookWindow window(PhoneWith({{1, "1", u"A"}}, 1));
  window.Load();
  EXPECT_THAT(window.SimRows(), IsEmpty());
  EXPECT_EQ(window.sim().book().count(), 1);
  EXPECT_TRUE(window.sim().book().loaded());
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(AddressLoad, TellsThatThePhoneHasNoSuchMemory) {
  BookWindow window({}, *simulator::MakeProfile("no-me"));
  ClickTab(window.frame(), 1);
  window.Load();
  EXPECT_THAT(window.LastBox(), IsErrorBox("Address book of type 'ME' is not implemented on your phone."));
  EXPECT_TRUE(window.frame().IsConnected());
}

TEST(AddressLoad, ShowsThePhonesLastLineWhenItFails) {
  BookWindow window(ThreeEntries());
  ASSERT_TRUE(window.phone().AddFault("AT+CPBR=1:error"));
  window.Load();
  EXPECT_THAT(window.LastBox(), IsCommunicationError("ERROR"));
  EXPECT_TRUE(window.frame().IsConnected());
}

TEST(AddressLoad, TellsThatThePhoneDoesNotAnswer) {
  BookWindow window(ThreeEntries());
  ASSERT_TRUE(window.phone().AddFault("*:silence"));
  window.Load();
  EXPECT_THAT(window.LastBox(), IsCommunicationError("The phone does not answer."));
}

TEST(AddressLoad, KeepsTheBookWhenThePhoneIsNotThere) {
  BookWindow window(ThreeEntries());
  window.Load();
  ASSERT_TRUE(window.phone().AddFault("*:silence"));
  window.Command(command::kLoadData);
  EXPECT_EQ(window.sim().list().RowCount(), 3);
  EXPECT_FALSE(window.sim().book().IsModified());
}

TEST(AddressLoad, SaysUntilTheNextOneThatRowsMayBeMissing) {
  BookWindow window(ThreeEntries(25));
  ASSERT_TRUE(window.phone().AddFault("AT+CPBR=1,:silence"));
  window.Load();
  EXPECT_THAT(window.TakeAsked(), IsEmpty()) << "the last block was read";
  EXPECT_TRUE(window.sim().MayLackRows());
  window.phone().ClearFaults();
  window.Load();
  EXPECT_FALSE(window.sim().MayLackRows());
}

TEST(AddressLoad, RowsOfAnotherSourceLackNone) {
  BookWindow window(ThreeEntries(25));
  ASSERT_TRUE(window.phone().AddFault("AT+CPBR=1,:silence"));
  window.Load();
  window.sim().EmptyBook();
  EXPECT_FALSE(window.sim().MayLackRows());
}

TEST(AddressLoad, ShowsTheWaitCursorAndSaysWhatItReads) {
  BookWindow window(ThreeEntries());
  std::vector<std::string> seen;
  window.waiter.Post(window.waiter.now(), [&] {
    EXPECT_TRUE(window.frame().IsBusy());
    seen.push_back(Utf8(window.frame().StatusText()));
  });
  window.Load();
  EXPECT_THAT(seen, ElementsAre("Reading Address-SIM... 0"));
  EXPECT_FALSE(window.frame().IsBusy());
  EXPECT_EQ(Utf8(window.frame().StatusText()), "Connected to COM1:");
}

}  // namespace
}  // namespace celldesk
