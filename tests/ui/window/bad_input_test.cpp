#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/settings_store.h"
#include "ui/window/book_window.h"

namespace celldesk {
namespace {

using testing::AnyOf;
using testing::ElementsAre;
using testing::IsEmpty;

simulator::PhoneMemory WithRange(const std::string& range) {
  simulator::PhoneMemory memory = ThreeEntries();
  memory.FindPhonebook("SM")->range_text = range;
  return memory;
}

TEST(BadInput, AMemoryThatClaimsMillionsOfSlotsIsNotLoaded) {
  BookWindow window(WithRange("(1-99999999)"));
  ASSERT_TRUE(window.frame().IsConnected());
  window.Load();
  EXPECT_THAT(window.LastBox(), IsCommunicationError("There is not enough room for so many entries."));
  EXPECT_EQ(window.sim().list().RowCount(), 0);
  EXPECT_LT(window.sim().book().count(), AddressBook::kLimit);
  window.Command(command::kNew);
  EXPECT_THAT(window.LastBox(), IsCommunicationError("There is not enough room for so many entries."));
  window.CommandAnswering(command::kUpload, kAnswerYes);
  EXPECT_THAT(window.TakeWrites(), IsEmpty());
  EXPECT_FALSE(window.frame().IsBusy());
}

TEST(BadInput, ARangeThatEndsBeforeItBeginsHoldsNothing) {
  for (const char* range :
       {"(5-1)", "(1-1)", "()", "(-)", "(abc-def)", "nonsense", "1-250", "(2147483647--5)"}) {
    SCOPED_TRACE(range);
    BookWindow window(WithRange(range));
    EXPECT_TRUE(window.frame().IsConnected());
    window.Load();
    EXPECT_THAT(window.TakeAsked(), IsEmpty());
    EXPECT_EQ(window.sim().list().RowCount(), 0);
    EXPECT_TRUE(window.sim().MayLackRows()) << "nothing was read";
    EXPECT_EQ(window.sim().book().count() > 1, false);
    window.CommandAnswering(command::kUpload, kAnswerYes);
    EXPECT_EQ(window.PhoneEntries("SM").size(), 3u) << "nothing is erased";
  }
}

TEST(BadInput, TheSmallestRangeThatIsReadLacksNothing) {
  BookWindow window(WithRange("(1-2)"));
  window.Load();
  EXPECT_GT(window.sim().list().RowCount(), 0);
  EXPECT_FALSE(window.sim().MayLackRows());
}

TEST(BadInput, ExtremeRangesNeitherOverflowNorFreeze) {
  for (const char* range : {"(-2147483648-2147483647)", "(2147483646-2147483647)", "(4294967296-4294967300)",
                            "(1-65535)", "(0-1)"}) {
    SCOPED_TRACE(range);
    BookWindow window(WithRange(range));
    window.Load();
    window.TakeAsked();
    window.InNextDialog([](Dialog& dialog) { dialog.EndDialog(kIdCancel); });
    window.Command(command::kNew);
    EXPECT_TRUE(window.frame().IsAttached());
    EXPECT_FALSE(window.frame().IsBusy());
  }
}

TEST(BadInput, EveryHabitOfThePhonesLoadsOrTellsWhy) {
  for (const simulator::ProfileInfo& profile : simulator::Profiles()) {
    SCOPED_TRACE(profile.name);
    BookWindow window(ThreeEntries(250), *simulator::MakeProfile(profile.name));
    ASSERT_TRUE(window.frame().IsConnected());
    window.Load();
    EXPECT_THAT(window.TakeAsked(), IsEmpty());
    const bool no_range =
        profile.name == "empty-lists" || profile.name == "bad-range" || profile.name == "one-slot";
    EXPECT_EQ(window.sim().list().RowCount(), no_range ? 0 : 3);
  }
}

TEST(BadInput, OddTextsReachThePhoneOrAreRefusedByIt) {
  const std::u16string names[] = {u"Quote \" inside", u"\u0416\u03A9\u20AC", std::u16string(1000, u'x'),
                                  u"a,b,c", u"line\nend"};
  for (const std::u16string& name : names) {
    SCOPED_TRACE(Utf8(name).substr(0, 20));
    BookWindow window(ThreeEntries());
    window.Load();
    window.SimEntry(0).name = name;
    window.SimEntry(0).flags |= AddressEntry::kModified;
    window.Command(command::kUpload);
    EXPECT_FALSE(window.frame().IsBusy());
    const bool refused = !window.TakeAsked().empty();
    EXPECT_EQ(window.SimEntry(0).is_modified(), refused) << "what was not taken waits for the next upload";
    EXPECT_EQ(window.SimEntry(0).name, name);
    EXPECT_EQ(window.phone().memory().FindPhonebook("SM")->entries.size(), 3u);
  }
}

TEST(BadInput, ACommandLongerThanTheBufferIsNeverSent) {
  BookWindow window(ThreeEntries());
  window.Load();
  window.SimEntry(0).name = std::u16string(1000, u'x');
  window.SimEntry(0).flags |= AddressEntry::kModified;
  window.Command(command::kUpload);
  EXPECT_THAT(window.TakeWrites(), IsEmpty());
  EXPECT_EQ(window.LastBox().caption, kCommunicationCaption);
}

TEST(BadInput, OddTextsOfThePhoneAreShownAndEditedAsTheyAre) {
  const std::u16string name = u"<b>&amp;</b>";
  BookWindow window(PhoneWith({{1, "112", name}}, 5));
  window.Load();
  EXPECT_THAT(window.SimRows(), ElementsAre("1|<b>&amp;</b>|112"));
  ClickRow(window.sim().list(), 0);
  window.InNextDialog([&](Dialog& dialog) {
    EXPECT_EQ(dialog.Text(edit_dialog::kName), name);
    ClickDialogButton(dialog, kIdOk);
  });
  window.Command(command::kOpen);
  EXPECT_FALSE(window.sim().book().IsModified());
  window.CommandAnswering(command::kDelete, kAnswerNo);
  EXPECT_EQ(window.TakeAsked(),
            std::vector<std::string>{"Do you really want to delete address '<b>&amp;</b>'?"});
}

TEST(BadInput, NamesWithPercentSignsAreOnlyText) {
  BookWindow window(PhoneWith({{1, "112", u"%s%i%n 100%"}}, 5));
  window.Load();
  ClickRow(window.sim().list(), 0);
  window.CommandAnswering(command::kDelete, kAnswerNo);
  EXPECT_THAT(window.TakeAsked(), ElementsAre("Do you really want to delete address '%s%i%n 100%'?"));
  window.SimEntry(0).flags |= AddressEntry::kModified;
  window.Command(command::kUpload);
  EXPECT_THAT(window.TakeWrites(), ElementsAre(R"(AT+CPBW=1,"112",129,"%s%i%n 100%")"));
}

TEST(BadInput, AGarbageRegistryStillOpensTheWindow) {
  const std::vector<std::uint8_t> garbage = {0xFF, 0x00, 0x13, 0x37, 0xFF, 0xFF};
  WindowSession session;
  for (const std::u16string_view name :
       {u"Port", u"DI27", u"SMSC", u"Operator", u"Country", u"DeliveryReport", u"ReplyPath", u"Validity",
        u"COM1:", u"InboxCols", u"OutboxCols"})
    session.registry.PutBinary(name, garbage);
  session.registry.PutBinary(u"AddressCols", garbage);
  ASSERT_TRUE(session.Start());
  for (const int folder : {1, 2, 3, 0}) session.ShowFolder(folder);
  for (const std::uint16_t width : session.sim().list().Widths()) EXPECT_GT(width, 0) << "no column is lost";
  session.Command(command::kConnect);
  EXPECT_THAT(session.TakeAsked(), ElementsAre(AnyOf("Bad SMS centre format.\rYou can change it in Settings.",
                                                     testing::StartsWith("Cannot open communication port"))));
}

TEST(BadInput, WidthsOfZeroAndOfAllBitsLeaveTheColumnsUsable) {
  WindowSession session;
  session.registry.PutBinary(u"AddressCols", std::vector<std::uint8_t>{0, 0, 0xFF, 0xFF, 1, 0});
  ASSERT_TRUE(session.Start());
  for (const std::uint16_t width : session.sim().list().Widths()) EXPECT_GE(width, 1);
  ClickTab(session.frame(), 1);
  EXPECT_TRUE(session.registry.BinaryAt(u"AddressCols").has_value());
}

TEST(BadInput, ARegistryThatTakesNothingStopsNobody) {
  WindowSession session(ThreeEntries());
  session.registry.FailAllWrites();
  ASSERT_TRUE(session.Start());
  session.Command(command::kConnect);
  session.Command(command::kLoadData);
  EXPECT_EQ(session.sim().list().RowCount(), 3);
  ClickTab(session.frame(), 1);
  EXPECT_EQ(session.frame().pages().Current(), 1);
  EXPECT_THAT(session.TakeAsked(), IsEmpty());
}

}  // namespace
}  // namespace celldesk
