#include "simulator/tpdu.h"

#include <algorithm>

#include "simulator/ascii.h"
#include "simulator/character_set.h"

namespace celldesk::simulator {
namespace {

constexpr std::string_view kDigits = "0123456789*#abc";
constexpr int kNumberTypeMask = 0x70;
constexpr int kInternationalBits = 0x10;
constexpr int kAlphanumericBits = 0x50;
constexpr int kHeaderIndicator = 0x40;
constexpr int kReplyPath = 0x80;
constexpr int kMostOctets = 140;

std::string PackDigits(std::string_view digits) {
  std::string octets;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const auto low = kDigits.find(digits[i]);
    const auto high = i + 1 < digits.size() ? kDigits.find(digits[i + 1]) : 15;
    octets += static_cast<char>((high & 15) << 4 | (low & 15));
  }
  return octets;
}

std::string UnpackDigits(std::string_view octets, std::size_t count) {
  std::string digits;
  for (std::size_t i = 0; i < count; ++i) {
    const auto octet = static_cast<unsigned char>(octets[i / 2]);
    const unsigned nibble = i % 2 == 0 ? octet & 15 : octet >> 4;
    if (nibble < kDigits.size()) digits += kDigits[nibble];
  }
  return digits;
}

/// Takes fields off octets; once something is missing everything after it is empty.
class OctetReader {
 public:
  explicit OctetReader(std::string_view octets) : rest_(octets) {}

  int Octet() {
    const std::string octet = Octets(1);
    return octet.empty() ? 0 : static_cast<unsigned char>(octet[0]);
  }

  std::string Octets(std::size_t count) {
    if (rest_.size() < count) failed_ = true;
    if (failed_) return {};
    std::string octets(rest_.substr(0, count));
    rest_.remove_prefix(count);
    return octets;
  }

  PduAddress Address() {
    const auto count = static_cast<std::size_t>(Octet());
    PduAddress address;
    address.type = Octet();
    const std::string octets = Octets((count + 1) / 2);
    if (failed_ || count > 20) {
      failed_ = true;
      return address;
    }
    const bool alphanumeric = (address.type & kNumberTypeMask) == kAlphanumericBits;
    address.digits = alphanumeric ? octets : UnpackDigits(octets, count);
    return address;
  }

  bool failed() const { return failed_; }
  bool at_end() const { return rest_.empty(); }

 private:
  std::string_view rest_;
  bool failed_ = false;
};

TpduKind KindOf(int first_octet, bool from_phone) {
  const int type = first_octet & 3;
  if (from_phone) return type == 2 ? TpduKind::kCommand : TpduKind::kSubmit;
  return type == 2 ? TpduKind::kStatusReport : TpduKind::kDeliver;
}

std::size_t ValidityOctets(int first_octet) {
  switch (first_octet >> 3 & 3) {
    case 0:
      return 0;
    case 2:
      return 1;
    default:
      return 7;
  }
}

void ReadUserData(OctetReader& reader, Tpdu& tpdu) {
  tpdu.user_data_length = reader.Octet();
  const std::size_t octets = UserDataOctets(tpdu.coding, tpdu.user_data_length);
  if (octets <= kMostOctets) tpdu.user_data = reader.Octets(octets);
}

void ReadBody(OctetReader& reader, Tpdu& tpdu) {
  if (tpdu.kind != TpduKind::kDeliver) tpdu.reference = reader.Octet();
  tpdu.address = reader.Address();
  if (tpdu.kind == TpduKind::kStatusReport) {
    tpdu.timestamp = reader.Octets(7);
    tpdu.discharge = reader.Octets(7);
    tpdu.status = reader.Octet();
    return;
  }
  tpdu.protocol = reader.Octet();
  tpdu.coding = reader.Octet();
  if (tpdu.kind == TpduKind::kDeliver) tpdu.timestamp = reader.Octets(7);
  if (tpdu.kind == TpduKind::kSubmit) tpdu.validity = reader.Octets(ValidityOctets(tpdu.first_octet));
  ReadUserData(reader, tpdu);
}

std::string WriteAddress(const PduAddress& address) {
  const bool alphanumeric = (address.type & kNumberTypeMask) == kAlphanumericBits;
  const std::size_t count = alphanumeric ? address.digits.size() * 2 : address.digits.size();
  std::string octets{static_cast<char>(count), static_cast<char>(address.type)};
  return octets + (alphanumeric ? address.digits : PackDigits(address.digits));
}

std::size_t HeaderOctets(const Tpdu& tpdu) {
  const bool present = (tpdu.first_octet & kHeaderIndicator) != 0 && !tpdu.user_data.empty();
  if (!present) return 0;
  return std::min(tpdu.user_data.size(),
                  static_cast<std::size_t>(static_cast<unsigned char>(tpdu.user_data[0])) + 1);
}

}  // namespace

std::string PduAddress::Text() const {
  if ((type & kNumberTypeMask) == kAlphanumericBits) {
    std::string septets = UnpackSeptets(digits, digits.size() * 8 / 7);
    while (septets.ends_with('\0')) septets.pop_back();
    return ToUtf8(FromSeptets(septets));
  }
  const bool international = (type & kNumberTypeMask) == kInternationalBits;
  return (international ? "+" : "") + digits;
}

PduAddress MakeAddress(std::string_view number) {
  PduAddress address;
  if (number.starts_with('+')) address.type = 145;
  for (const char byte : number) {
    if (kDigits.find(byte) != kDigits.npos) address.digits += byte;
  }
  return address;
}

Coding CodingOf(int scheme) {
  const bool general = (scheme & 0xC0) == 0;
  if (general && (scheme & 0x0C) == 0x08) return Coding::kUcs2;
  if (general && (scheme & 0x0C) == 0x04) return Coding::kOctets;
  if ((scheme & 0xF0) == 0xE0) return Coding::kUcs2;
  return (scheme & 0xF4) == 0xF4 ? Coding::kOctets : Coding::kSeptets;
}

std::size_t UserDataOctets(int scheme, int length) {
  const auto units = static_cast<std::size_t>(length);
  return CodingOf(scheme) == Coding::kSeptets ? (units * 7 + 7) / 8 : units;
}

std::optional<Tpdu> ParseTpdu(std::string_view octets, bool from_phone) {
  OctetReader reader(octets);
  Tpdu tpdu;
  tpdu.first_octet = reader.Octet();
  if ((tpdu.first_octet & 3) == 3 || (from_phone && (tpdu.first_octet & 3) == 0)) return std::nullopt;
  if (!from_phone && (tpdu.first_octet & 3) == 1) return std::nullopt;
  tpdu.kind = KindOf(tpdu.first_octet, from_phone);
  if (tpdu.kind == TpduKind::kCommand) return reader.failed() ? std::nullopt : std::optional(tpdu);
  ReadBody(reader, tpdu);
  const bool complete = tpdu.user_data.size() == UserDataOctets(tpdu.coding, tpdu.user_data_length);
  if (reader.failed() || !complete) return std::nullopt;
  // A report may go on with optional fields; nothing else has room behind its last field.
  if (!reader.at_end() && tpdu.kind != TpduKind::kStatusReport) return std::nullopt;
  return tpdu;
}

std::string WriteTpdu(const Tpdu& tpdu) {
  std::string octets{static_cast<char>(tpdu.first_octet)};
  if (tpdu.kind != TpduKind::kDeliver) octets += static_cast<char>(tpdu.reference);
  octets += WriteAddress(tpdu.address);
  if (tpdu.kind == TpduKind::kStatusReport) {
    return octets + tpdu.timestamp + tpdu.discharge + static_cast<char>(tpdu.status);
  }
  octets += {static_cast<char>(tpdu.protocol), static_cast<char>(tpdu.coding)};
  octets += tpdu.timestamp + tpdu.validity;
  return octets + static_cast<char>(tpdu.user_data_length) + tpdu.user_data;
}

std::string WriteCentre(std::string_view number) {
  const PduAddress address = MakeAddress(number);
  if (address.digits.empty()) return {'\0'};
  const std::string digits = PackDigits(address.digits);
  return std::string{static_cast<char>(digits.size() + 1), static_cast<char>(address.type)} + digits;
}

std::size_t CentreSize(std::string_view octets) {
  return octets.empty() ? 0 : static_cast<std::size_t>(static_cast<unsigned char>(octets[0])) + 1;
}

Tpdu DeliverOf(const Tpdu& submit, std::string_view originator, PhoneSeconds now) {
  constexpr int kNoMoreMessages = 4;
  Tpdu deliver = submit;
  deliver.kind = TpduKind::kDeliver;
  deliver.first_octet = kNoMoreMessages | (submit.first_octet & (kHeaderIndicator | kReplyPath));
  deliver.address = MakeAddress(originator);
  deliver.validity.clear();
  deliver.timestamp = TimestampOctets(now);
  return deliver;
}

Tpdu ReportOf(const Tpdu& submit, int reference, PhoneSeconds now) {
  Tpdu report;
  report.kind = TpduKind::kStatusReport;
  report.first_octet = 6;
  report.reference = reference;
  report.address = submit.address;
  report.timestamp = TimestampOctets(now);
  report.discharge = report.timestamp;
  return report;
}

std::u16string TextOf(const Tpdu& tpdu) {
  const std::size_t header = HeaderOctets(tpdu);
  const std::string_view octets = tpdu.user_data;
  if (CodingOf(tpdu.coding) == Coding::kUcs2) return FromUcs2(octets.substr(header));
  if (CodingOf(tpdu.coding) == Coding::kOctets) return FromUtf8(ToHex(octets.substr(header)));
  const std::size_t header_septets = (header * 8 + 6) / 7;
  const auto count = static_cast<std::size_t>(tpdu.user_data_length);
  if (count <= header_septets) return {};
  return FromSeptets(UnpackSeptets(octets, count - header_septets, header_septets * 7));
}

void SetText(Tpdu& tpdu, std::u16string_view text) {
  if (CodingOf(tpdu.coding) == Coding::kSeptets) {
    const std::string septets = ToSeptets(text);
    tpdu.user_data = PackSeptets(septets);
    tpdu.user_data_length = static_cast<int>(septets.size());
    return;
  }
  tpdu.user_data = ToUcs2(text);
  tpdu.user_data_length = static_cast<int>(tpdu.user_data.size());
}

}  // namespace celldesk::simulator
