#include "celldesk_pdu_encode.h"

#include <charconv>
#include <cstdint>
#include <iostream>
#include <optional>
#include <string_view>

#include "celldesk_pdu_print.h"
#include "pdu/address.h"
#include "util/number_text.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr std::uint32_t kSubmitOctet = 0x01;
constexpr std::uint32_t kRelativeValidity = 0x10;
constexpr std::uint32_t kAbsoluteValidity = 0x18;
constexpr std::size_t kCentreCharacters = 20;
constexpr std::size_t kCentreDigits = 16;

/// What the command line asks for, and the first thing that is wrong with it.
struct Request {
  SmsMessage message;
  std::u16string centre;
  std::string error;
  bool has_destination = false;
  bool has_text = false;
};

std::optional<std::uint8_t> Octet(std::string_view text) {
  std::uint8_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

/// "YYYY-MM-DD HH:MM:SS" of a day that exists.
std::optional<DateTime> Moment(std::u16string_view text) {
  constexpr std::u16string_view kPattern = u"0000-00-00 00:00:00";
  if (text.size() != kPattern.size()) return std::nullopt;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool digit = text[i] >= u'0' && text[i] <= u'9';
    if (kPattern[i] == u'0' ? !digit : text[i] != kPattern[i]) return std::nullopt;
  }
  const auto field = [text](std::size_t first, std::size_t count) {
    return static_cast<std::uint16_t>(ParseDecimal(text.substr(first, count)));
  };
  const CalendarTime fields{field(0, 4),  field(5, 2),  0, field(8, 2), field(11, 2),
                            field(14, 2), field(17, 2), 0};
  if (!ToFileTime(fields)) return std::nullopt;
  return DateTime(fields, true);
}

void SetDestination(Request& request, const std::string& value) {
  const Status status =
      MakeAddress(request.message.submit.number, request.message.submit.toa, FromUtf8(value));
  if (Failed(status)) request.error = "no number that can be dialled: " + value;
  request.has_destination = true;
}

void SetText(Request& request, const std::string& value) {
  request.message.text = FromUtf8(value);
  request.has_text = true;
}

void SetCentre(Request& request, const std::string& value) {
  std::uint8_t toa = 0;
  std::u16string number;
  const Status status = MakeAddress(number, toa, FromUtf8(value));
  if (Failed(status) || number.size() > kCentreDigits) {
    request.error = "no service centre number of at most 16 digits: " + value;
    return;
  }
  request.centre.assign(kCentreCharacters, u'\0');
  std::size_t position = 0;
  WriteSmscAddress(request.centre, number, toa, position);
  request.centre.resize(request.centre.find_last_not_of(u'\0') + 1);
}

void SetOctet(Request& request, const std::string& value, std::uint8_t& field) {
  const auto octet = Octet(value);
  if (!octet) request.error = "no number from 0 to 255: " + value;
  field = octet.value_or(0);
}

void SetValidityFormat(Request& request, std::uint32_t format) {
  if ((request.message.first_octet & kAbsoluteValidity) != 0) request.error = "give one validity, not two";
  request.message.first_octet |= format;
}

void SetRelative(Request& request, const std::string& value) {
  SetOctet(request, value, request.message.submit.relative_validity);
  SetValidityFormat(request, kRelativeValidity);
}

void SetUntil(Request& request, const std::string& value) {
  const auto moment = Moment(FromUtf8(value));
  if (!moment) request.error = "no time like YYYY-MM-DD HH:MM:SS: " + value;
  request.message.submit.absolute_validity = moment.value_or(DateTime());
  SetValidityFormat(request, kAbsoluteValidity);
}

void SetReference(Request& request, const std::string& value) {
  SetOctet(request, value, request.message.submit.reference);
}

struct Option {
  std::string_view name;
  void (*set)(Request& request, const std::string& value);
};

constexpr Option kOptions[] = {{"--to", SetDestination},    {"--text", SetText},
                               {"--centre", SetCentre},     {"--until", SetUntil},
                               {"--relative", SetRelative}, {"--reference", SetReference}};

struct Flag {
  std::string_view name;
  std::uint32_t bit;
};

constexpr Flag kFlags[] = {{"--report", kStatusReportRequest}, {"--reply-path", kReplyPath}};

/// Takes the argument at `position` and its value, if it has one; false when it is not known or incomplete.
bool TakeArgument(Request& request, const std::vector<std::string>& arguments, std::size_t& position) {
  const std::string& name = arguments[position++];
  for (const Flag& flag : kFlags) {
    if (flag.name != name) continue;
    request.message.first_octet |= flag.bit;
    return true;
  }
  for (const Option& option : kOptions) {
    if (option.name != name || position == arguments.size()) continue;
    option.set(request, arguments[position++]);
    return true;
  }
  return false;
}

Request ReadRequest(const std::vector<std::string>& arguments) {
  Request request;
  request.message.storage_status = kStoredUnsent;
  request.message.first_octet = kSubmitOctet;
  for (std::size_t position = 0; position < arguments.size() && request.error.empty();) {
    const std::string& name = arguments[position];
    if (!TakeArgument(request, arguments, position)) request.error = "unknown or incomplete option: " + name;
  }
  if (request.error.empty() && !(request.has_destination && request.has_text)) {
    request.error = "encode needs --to NUMBER and --text TEXT";
  }
  return request;
}

}  // namespace

int RunEncode(const std::vector<std::string>& arguments) {
  Request request = ReadRequest(arguments);
  if (request.error.empty()) {
    const Status status = request.message.Encode();
    if (Failed(status)) request.error = "the message is too long to encode: " + StatusCode(status);
  }
  if (!request.error.empty()) {
    std::cerr << "celldesk-pdu: " << request.error << '\n';
    return 1;
  }
  const std::u16string& pdu = request.message.pdu_text;
  std::cout << ToUtf8(request.centre + pdu) << ' ' << pdu.size() / 2 << '\n';
  return 0;
}

}  // namespace celldesk
