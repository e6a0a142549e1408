#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "pdu/sms_message.h"
#include "ui/address_books.h"

namespace celldesk {

class Locale;
class SmsService;

/// What a new message starts with.
struct SmsDraft {
  std::u16string number;
  std::u16string name;  ///< the address book's name for it; empty when there is none
  std::u16string text;
};

/// What the message editor holds between its fields and a record.
struct SmsEditorState {
  enum class Validity : char { kNone = 'N', kRelative = 'R', kAbsolute = 'A' };

  /// Choices of the "Save to:" list.
  static constexpr int kDoNotSave = 0, kSaveToSim = 1, kSaveToPhone = 2;

  std::u16string number;  ///< as typed or chosen
  std::u16string name;    ///< goes with the number; empty when there is none
  std::u16string text;
  Validity validity = Validity::kNone;
  int relative_choice = 0;  ///< index into kValidityPresets
  DateTime absolute;
  bool reply_path = false;
  bool delivery_report = false;
  int save_to = kDoNotSave;
  bool marked = false;  ///< for deletion

  /// Takes the sending settings, and tomorrow as the absolute time.
  void Start(const SmsService& settings, const Locale& locale);
  void Fill(const SmsDraft& draft);
  /// Takes a record's fields. Without a choice of memory nothing is saved; memory 1 leaves the choice as it
  /// was, and the enhanced validity format leaves the validity.
  void Fill(const SmsMessage& message, const AddressBooks& books, bool can_save);

  /// The record's number, text, validity and the bits of its first octet. E_FAIL, and the record as it was,
  /// for a number that cannot be sent to.
  Status WriteInto(SmsMessage& message) const;
  /// The memory index that the choice stands for: -1, 0 or 1. The way back (Fill) is another one.
  std::int16_t StorageIndex() const { return static_cast<std::int16_t>(save_to - 1); }

 private:
  void FillValidity(const SmsMessage& message);
};

/// The flag word of a message that the editor was left with by `command`; `flags` are those it had.
std::uint32_t FlagsAfter(int command, std::uint32_t flags, bool save);

}  // namespace celldesk
