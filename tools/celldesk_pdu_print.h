#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

#include "pdu/sms_message.h"

namespace celldesk {

/// A decoded message as the tool shows it: the fields of whichever type it has, the others empty or 0. Times
/// are "YYYY-MM-DD HH:MM:SS", empty when not set.
struct PduRecord {
  std::string_view type;
  std::u16string number;
  std::uint32_t toa = 0;
  std::string timestamp;
  std::string discharge;
  std::string absolute;
  std::uint32_t validity_format = 0;
  std::uint32_t validity = 0;
  std::uint32_t reference = 0;
  std::uint32_t pid = 0;
  std::uint32_t dcs = 0;
  std::uint32_t status = 0;
  std::u16string text;
  Status result = S_OK;
};

/// The record of `message`, whose Decode answered `result`.
PduRecord RecordOf(const SmsMessage& message, Status result);

/// One JSON object and a line end.
void PrintJson(std::ostream& out, const PduRecord& record);

/// One "name value" line for each field that the type has.
void PrintText(std::ostream& out, const PduRecord& record);

/// "0x80004005".
std::string StatusCode(Status status);

/// `text` in UTF-8 as a JSON string with its quotes; control characters are escaped, lone surrogates
/// replaced.
std::string Quoted(std::u16string_view text);

}  // namespace celldesk
