#include "ui/sms_editor_state.h"

#include <gmock/gmock.h>

#include "pdu/validity.h"
#include "services/sms_service.h"
#include "support/fake_locale.h"
#include "support/scripted_session.h"
#include "ui/commands.h"
#include "ui/sms/sample_messages.h"
#include "ui/window_session.h"

namespace celldesk {
namespace {

using Validity = SmsEditorState::Validity;

struct SmsEditorStateTest : testing::Test {
  SmsEditorStateTest() {
    sim.At(0).name = u"Anna";
    sim.At(0).number = u"+447700900101";
    sim.At(0).flags = AddressEntry::kOccupied;
  }
  void Fill(const SmsMessage& message, bool can_save = true) { state.Fill(message, books, can_save); }
  std::uint8_t PresetFor(std::uint8_t value) {
    SmsMessage message = OutgoingRecord(u"0123", u"");
    message.first_octet = 0x11;
    message.submit.relative_validity = value;
    Fill(message);
    return kValidityPresets[static_cast<std::size_t>(state.relative_choice)].value;
  }
  int SaveToFor(std::int16_t memory, int before, bool can_save = true) {
    SmsMessage message = OutgoingRecord(u"0123", u"");
    message.memory = memory;
    state.save_to = before;
    Fill(message, can_save);
    return state.save_to;
  }

  AddressBook sim{u"SM", true};
  AddressBook phone{u"ME", false};
  AddressBooks books{sim, phone};
  SmsEditorState state;
};

TEST_F(SmsEditorStateTest, TakesRecipientTextAndBitsOfARecord) {
  SmsMessage message = OutgoingRecord(u"+447700900101", u"Hello");
  message.first_octet = 0x01 | 0x20;
  message.flags |= kMessageToDelete;
  Fill(message);
  EXPECT_EQ(state.number, u"+447700900101");
  EXPECT_EQ(state.name, u"Anna");
  EXPECT_EQ(state.text, u"Hello");
  EXPECT_TRUE(state.marked);
  EXPECT_TRUE(state.delivery_report);
  EXPECT_FALSE(state.reply_path);
  message = OutgoingRecord(u"0123", u"");
  message.first_octet = 0x81;
  Fill(message);
  EXPECT_EQ(state.name, u"");
  EXPECT_FALSE(state.marked);
  EXPECT_FALSE(state.delivery_report);
  EXPECT_TRUE(state.reply_path);
}

TEST_F(SmsEditorStateTest, TakesTheValidityByItsFormat) {
  SmsMessage message = OutgoingRecord(u"0123", u"");
  state.validity = Validity::kRelative;
  Fill(message);
  EXPECT_EQ(state.validity, Validity::kNone);
  message.first_octet = 0x11;
  Fill(message);
  EXPECT_EQ(state.validity, Validity::kRelative);
  message.first_octet = 0x19;
  message.submit.absolute_validity = DateTime(CalendarTime{2026, 1, 0, 4, 9, 5, 7, 0}, true);
  Fill(message);
  EXPECT_EQ(state.validity, Validity::kAbsolute);
  EXPECT_EQ(state.absolute.fields, message.submit.absolute_validity.fields);
}

TEST_F(SmsEditorStateTest, TheEnhancedFormatLeavesTheValidityAsItWas) {
  SmsMessage message = OutgoingRecord(u"0123", u"");
  message.first_octet = 0x09;
  for (const Validity before : {Validity::kNone, Validity::kRelative, Validity::kAbsolute}) {
    state.validity = before;
    Fill(message);
    EXPECT_EQ(state.validity, before);
  }
}

TEST_F(SmsEditorStateTest, SnapsARelativeValidityToTheNearestPreset) {
  EXPECT_EQ(PresetFor(0), 11);
  EXPECT_EQ(PresetFor(10), 11);
  EXPECT_EQ(PresetFor(12), 11);
  EXPECT_EQ(PresetFor(76), 11);
  EXPECT_EQ(PresetFor(77), 143);
  EXPECT_EQ(PresetFor(100), 143);
  EXPECT_EQ(PresetFor(155), 167);
  EXPECT_EQ(PresetFor(169), 167);
  EXPECT_EQ(PresetFor(170), 173);
  EXPECT_EQ(PresetFor(213), 173);
  EXPECT_EQ(PresetFor(214), 255);
  EXPECT_EQ(PresetFor(255), 255);
}

TEST_F(SmsEditorStateTest, MapsTheMemoryToTheSaveToChoiceInItsOwnWay) {
  EXPECT_EQ(SaveToFor(-1, 2), SmsEditorState::kDoNotSave);
  EXPECT_EQ(SaveToFor(0, 0), SmsEditorState::kSaveToSim);
  EXPECT_EQ(SaveToFor(2, 0), SmsEditorState::kSaveToPhone);
  EXPECT_EQ(SaveToFor(0, 2, false), SmsEditorState::kDoNotSave);
}

TEST_F(SmsEditorStateTest, MemoryOneLeavesTheSaveToChoiceAsItWas) {
  for (const int before : {0, 1, 2}) EXPECT_EQ(SaveToFor(1, before), before);
}

TEST_F(SmsEditorStateTest, MapsTheSaveToChoiceBackToTheMemoryIndex) {
  state.save_to = SmsEditorState::kDoNotSave;
  EXPECT_EQ(state.StorageIndex(), -1);
  state.save_to = SmsEditorState::kSaveToSim;
  EXPECT_EQ(state.StorageIndex(), 0);
  state.save_to = SmsEditorState::kSaveToPhone;
  EXPECT_EQ(state.StorageIndex(), 1);
}

TEST_F(SmsEditorStateTest, WritesNumberAndText) {
  SmsMessage message;
  state.number = u" +447700900101 ";
  state.text = u"Hello";
  ASSERT_EQ(state.WriteInto(message), S_OK);
  EXPECT_EQ(message.submit.number, u"447700900101");
  EXPECT_EQ(message.submit.toa, 0x91);
  EXPECT_EQ(message.text, u"Hello");
}

TEST_F(SmsEditorStateTest, WritesTheValidityBits) {
  SmsMessage message;
  state.number = u"0123";
  message.first_octet = 0xFF;
  ASSERT_EQ(state.WriteInto(message), S_OK);
  EXPECT_EQ(message.first_octet, 0xFFU & ~0x18U & ~0x20U & ~0x80U);
  state.validity = Validity::kRelative;
  state.relative_choice = 3;
  message.first_octet = 0x08;
  ASSERT_EQ(state.WriteInto(message), S_OK);
  EXPECT_EQ(message.first_octet, 0x10U);
  EXPECT_EQ(message.submit.relative_validity, 173);
  state.validity = Validity::kAbsolute;
  state.absolute = DateTime(CalendarTime{2026, 1, 0, 4, 9, 5, 7, 0}, true);
  ASSERT_EQ(state.WriteInto(message), S_OK);
  EXPECT_EQ(message.first_octet, 0x18U);
  EXPECT_EQ(message.submit.absolute_validity.fields, state.absolute.fields);
}

TEST_F(SmsEditorStateTest, WritesReportRequestAndReplyPath) {
  SmsMessage message;
  state.number = u"0123";
  for (const bool report : {false, true}) {
    for (const bool path : {false, true}) {
      state.delivery_report = report;
      state.reply_path = path;
      ASSERT_EQ(state.WriteInto(message), S_OK);
      EXPECT_EQ(message.first_octet, (report ? 0x20U : 0U) | (path ? 0x80U : 0U));
    }
  }
}

TEST_F(SmsEditorStateTest, ANumberThatCannotBeSentToLeavesTheRecordAsItWas) {
  const std::vector<std::u16string> bad = {u"",       u"123",
                                           u"+",      u"0770-900",
                                           u"Anna",   u"+44 12",
                                           u"*100#",  std::u16string(21, u'0'),
                                           u"+4412a", u"\uFF11\uFF12\uFF13\uFF14"};
  for (const std::u16string& number : bad) {
    SmsMessage message = OutgoingRecord(u"0999", u"before");
    state.number = number;
    state.text = u"after";
    EXPECT_EQ(state.WriteInto(message), E_FAIL) << Utf8(number);
    EXPECT_EQ(message.submit.number, u"0999");
    EXPECT_EQ(message.text, u"before");
  }
}

TEST_F(SmsEditorStateTest, TakesTheLongestNumberThatAnAddressHolds) {
  SmsMessage message;
  state.number = u"+" + std::u16string(20, u'1');
  EXPECT_EQ(state.WriteInto(message), S_OK);
}

TEST_F(SmsEditorStateTest, StartsWithTheSettingsAndTomorrow) {
  ScriptedSession session("");
  SmsService service(session.engine);
  service.SetOptions(true, false, false, 197);
  FakeLocale locale;
  state.Start(service, locale);
  EXPECT_EQ(state.validity, Validity::kRelative);
  EXPECT_EQ(kValidityPresets[static_cast<std::size_t>(state.relative_choice)].value, 173);
  EXPECT_TRUE(state.delivery_report);
  EXPECT_FALSE(state.reply_path);
  EXPECT_EQ(state.absolute.fields, (CalendarTime{2003, 3, 4, 6, 9, 5, 0, 0}));
  EXPECT_TRUE(state.absolute.is_set());
}

TEST(FlagsAfter, GivesTheFlagWordOfEachEnding) {
  EXPECT_EQ(FlagsAfter(command::kSend, 1, false), 27U);
  EXPECT_EQ(FlagsAfter(command::kSend, 1, true), 155U);
  EXPECT_EQ(FlagsAfter(command::kSave, 1, true), 147U);
  EXPECT_EQ(FlagsAfter(1, 0x21, true), 0x21U);
  EXPECT_EQ(FlagsAfter(1, 27, false), 27U);
}

}  // namespace
}  // namespace celldesk
