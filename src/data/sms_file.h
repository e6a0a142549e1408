#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

#include "data/row_observer.h"
#include "data/sms_store.h"
#include "pdu/sms_message.h"
#include "pdu/text_source.h"
#include "platform/file.h"
#include "util/field_text.h"
#include "util/status.h"

namespace celldesk {

/// The messages that a message file is added to, and the list that shows its folder. Both are borrowed for
/// the reading; null messages read nothing.
struct SmsTarget {
  SmsStore* messages = nullptr;
  RowObserver* observer = nullptr;
};

/// Gives the target for the folder named in the file. A reading into one chosen view ignores the name.
using ChooseSmsFolder = std::function<SmsTarget(std::u16string_view folder)>;

/// The sending settings that a line without a PDU gets.
struct SmsFileSettings {
  bool delivery_report = false;
  bool reply_path = false;
  std::uint8_t validity = 0;  ///< relative validity period
};

/// Writes `messages`, which belong to the folder of this name, to a ".sms" file, replacing an existing one.
/// `texts` gives the sentences for status reports. Fails with the system's error code as a status; what was
/// written before stays.
Status WriteSmsFile(FileSystem& files, std::u16string_view path, std::u16string_view folder,
                    std::span<const SmsMessage* const> messages, TextSource texts);

/// Appends the messages of a ".sms" file to the target. A line of address and text alone becomes a new
/// message to be sent. E_INVALIDARG for a file of another kind, E_OUTOFMEMORY when the store is full or
/// memory is short, otherwise the system's error code as a status.
Status ReadSmsFile(FileSystem& files, std::u16string_view path, const SmsFileSettings& settings,
                   const ChooseSmsFolder& choose);

/// The same from the bytes of a file.
Status ReadMessages(FieldBytes bytes, const SmsFileSettings& settings, const ChooseSmsFolder& choose);

}  // namespace celldesk
