#include "ui/sms_editor_state.h"

#include <algorithm>

#include "pdu/address.h"
#include "pdu/validity.h"
#include "platform/locale.h"
#include "services/sms_service.h"
#include "ui/commands.h"

namespace celldesk {
namespace {

constexpr std::uint32_t kValidityBits = 0x18, kRelativeBits = 0x10, kAbsoluteBits = 0x18;

// An address field holds semi-octets: digits, at most 20 (GSM 03.40 9.1.2.3).
constexpr std::size_t kMostDigits = 20;

bool CanBeSentTo(std::u16string_view number) {
  return !number.empty() && number.size() <= kMostDigits &&
         std::all_of(number.begin(), number.end(), [](char16_t c) { return c >= u'0' && c <= u'9'; });
}

int PresetOf(std::uint8_t value) {
  const auto found = std::find_if(kValidityPresets.begin(), kValidityPresets.end(),
                                  [value](const ValidityPreset& preset) { return preset.value == value; });
  return static_cast<int>(found - kValidityPresets.begin());
}

void Set(std::uint32_t& octet, std::uint32_t bits, bool on) { octet = on ? octet | bits : octet & ~bits; }

}  // namespace

void SmsEditorState::Start(const SmsService& settings, const Locale& locale) {
  validity = Validity::kRelative;
  relative_choice = PresetOf(SnapValidity(settings.validity()));
  reply_path = settings.reply_path();
  delivery_report = settings.delivery_report();
  absolute.SetNow(locale, true);
  absolute.AddDays(1);
  absolute.fields.second = 0;
  absolute.fields.milliseconds = 0;
}

void SmsEditorState::Fill(const SmsDraft& draft) {
  number = draft.number;
  name = draft.name;
  text = draft.text;
}

void SmsEditorState::Fill(const SmsMessage& message, const AddressBooks& books, bool can_save) {
  marked = (message.flags & kMessageToDelete) != 0;
  number = AddressForDisplay(message.submit.number, message.submit.toa);
  name = books.NameOf(number);
  text = message.text;
  FillValidity(message);
  delivery_report = (message.first_octet & kStatusReportRequest) != 0;
  reply_path = (message.first_octet & kReplyPath) != 0;
  if (message.memory < 0 || !can_save)
    save_to = kDoNotSave;
  else if (message.memory == 0)
    save_to = kSaveToSim;
  else if (message.memory == 2)
    save_to = kSaveToPhone;
}

void SmsEditorState::FillValidity(const SmsMessage& message) {
  switch (ValidityFormatOf(message.first_octet)) {
    case ValidityFormat::kNone:
      validity = Validity::kNone;
      break;
    case ValidityFormat::kRelative:
      validity = Validity::kRelative;
      relative_choice = PresetOf(SnapValidity(message.submit.relative_validity));
      break;
    case ValidityFormat::kAbsolute:
      validity = Validity::kAbsolute;
      absolute = message.submit.absolute_validity;
      break;
    case ValidityFormat::kEnhanced:
      break;
  }
}

Status SmsEditorState::WriteInto(SmsMessage& message) const {
  std::u16string digits;
  std::uint8_t toa = 0;
  if (Failed(MakeAddress(digits, toa, number)) || !CanBeSentTo(digits)) return E_FAIL;
  message.submit.number = digits;
  message.submit.toa = toa;
  message.text = text;
  Set(message.first_octet, kValidityBits, false);
  if (validity == Validity::kAbsolute) {
    Set(message.first_octet, kAbsoluteBits, true);
    message.submit.absolute_validity = absolute;
  } else if (validity == Validity::kRelative) {
    Set(message.first_octet, kRelativeBits, true);
    message.submit.relative_validity = kValidityPresets[static_cast<std::size_t>(relative_choice)].value;
  }
  Set(message.first_octet, kStatusReportRequest, delivery_report);
  Set(message.first_octet, kReplyPath, reply_path);
  return S_OK;
}

std::uint32_t FlagsAfter(int command, std::uint32_t flags, bool save) {
  constexpr std::uint32_t kChangedHere = kMessageInUse | kMessageChanged | kMessageNew;
  if (command == command::kSend) return kChangedHere | kMessageToSend | (save ? kMessageToStore : 0);
  return command == command::kSave ? kChangedHere | kMessageToStore : flags;
}

}  // namespace celldesk
