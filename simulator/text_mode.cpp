#include "simulator/text_mode.h"

#include <array>

#include "simulator/ascii.h"
#include "simulator/loopback_network.h"

namespace celldesk::simulator {
namespace {

constexpr int kMostUserDataOctets = 140;
constexpr int kRelativeValidity = 0x10;
constexpr int kValidityBits = 0x18;

std::string NumberText(const Phone& phone, const Tpdu& tpdu) {
  return Quoted(phone.LineNumber(tpdu.address.Text()));
}

std::string AlphaOf(const Phone& phone, const Tpdu& tpdu) {
  const std::string name = AlphaText(phone, tpdu.address.Text());
  return name.empty() ? name : Quoted(name);
}

std::string BodyText(const Phone& phone, const Tpdu& tpdu) {
  if (CodingOf(tpdu.coding) == Coding::kSeptets) return phone.Line(TextOf(tpdu));
  return ToHex(tpdu.user_data);
}

/// ",<mr>,<ra>,<tora>,<scts>,<dt>,<st>" of a status report.
std::string ReportFields(const Phone& phone, const Tpdu& tpdu) {
  return ',' + std::to_string(tpdu.first_octet) + ',' + std::to_string(tpdu.reference) + ',' +
         NumberText(phone, tpdu) + ',' + std::to_string(tpdu.address.type) + ',' +
         Quoted(TimestampText(tpdu.timestamp)) + ',' + Quoted(TimestampText(tpdu.discharge)) + ',' +
         std::to_string(tpdu.status);
}

/// ",<oa/da>,<alpha>[,<scts>]" of a message.
std::string MessageFields(const Phone& phone, const Tpdu& tpdu) {
  std::string fields = ',' + NumberText(phone, tpdu) + ',' + AlphaOf(phone, tpdu);
  if (tpdu.kind == TpduKind::kDeliver) fields += ',' + Quoted(TimestampText(tpdu.timestamp));
  return fields;
}

/// ",<toa>,<fo>,<pid>,<dcs>,<sca>,<tosca>,<length>", shown when +CSDH asks for it.
std::string HeaderFields(const Phone& phone, const Tpdu& tpdu) {
  if (!phone.session.show_text_header) return {};
  std::string fields = ',' + std::to_string(tpdu.address.type) + ',' + std::to_string(tpdu.first_octet) +
                       ',' + std::to_string(tpdu.protocol) + ',' + std::to_string(tpdu.coding);
  if (tpdu.kind == TpduKind::kSubmit) fields += ',' + std::to_string(phone.session.text.validity);
  return fields + ',' + Quoted(phone.LineNumber(phone.memory.centre)) + ',' +
         std::to_string(MakeAddress(phone.memory.centre).type) + ',' + std::to_string(tpdu.user_data_length);
}

bool FitsOneMessage(const Tpdu& tpdu) { return tpdu.user_data.size() <= kMostUserDataOctets; }

}  // namespace

std::string_view StatusText(MessageStatus status) {
  constexpr std::array<std::string_view, 4> kTexts{"REC UNREAD", "REC READ", "STO UNSENT", "STO SENT"};
  return kTexts[static_cast<std::size_t>(status)];
}

std::string AlphaText(const Phone& phone, const std::string& number) {
  if (phone.profile.alpha != AlphaField::kName) return {};
  for (const Phonebook& book : phone.memory.phonebooks) {
    for (const auto& [location, entry] : book.entries) {
      if (SameNumber(entry.number, number)) return phone.Line(entry.name);
    }
  }
  return {};
}

std::vector<std::string> ListText(const Phone& phone, int index, const StoredMessage& message) {
  const std::string head = "+CMGL: " + std::to_string(index) + ',' + Quoted(StatusText(message.status));
  const auto tpdu = ParseStored(message);
  if (!tpdu) return {head + ",\"\",", ""};
  if (tpdu->kind == TpduKind::kStatusReport) return {head + ReportFields(phone, *tpdu)};
  std::string tail;
  if (phone.session.show_text_header) {
    tail = ',' + std::to_string(tpdu->address.type) + ',' + std::to_string(tpdu->user_data_length);
  }
  return {head + MessageFields(phone, *tpdu) + tail, BodyText(phone, *tpdu)};
}

std::vector<std::string> ReadText(const Phone& phone, const StoredMessage& message) {
  const std::string head = "+CMGR: " + Quoted(StatusText(message.status));
  const auto tpdu = ParseStored(message);
  if (!tpdu) return {head + ",\"\",", ""};
  if (tpdu->kind == TpduKind::kStatusReport) return {head + ReportFields(phone, *tpdu)};
  return {head + MessageFields(phone, *tpdu) + HeaderFields(phone, *tpdu), BodyText(phone, *tpdu)};
}

Notice DirectNotice(const Phone& phone, const Tpdu& tpdu, const std::string& pdu) {
  const bool report = tpdu.kind == TpduKind::kStatusReport;
  if (!phone.session.text_mode) {
    const LinePdu line = MakeLinePdu(phone, pdu);
    const std::string length = std::to_string(line.length);
    return {report ? "+CDS: " + length : "+CMT: ," + length, line.text};
  }
  if (report) return {"+CDS: " + ReportFields(phone, tpdu).substr(1)};
  return {"+CMT: " + MessageFields(phone, tpdu).substr(1) + HeaderFields(phone, tpdu), BodyText(phone, tpdu)};
}

std::optional<Tpdu> ComposeText(const Phone& phone, const std::string& destination, std::string_view body) {
  const TextParameters& text = phone.session.text;
  Tpdu tpdu;
  tpdu.first_octet = text.first_octet;
  tpdu.address = MakeAddress(destination);
  tpdu.protocol = text.protocol;
  tpdu.coding = text.coding;
  if ((text.first_octet & kValidityBits) == kRelativeValidity)
    tpdu.validity = static_cast<char>(text.validity);
  if ((text.first_octet & kValidityBits) != kRelativeValidity) tpdu.first_octet &= ~kValidityBits;
  if (CodingOf(text.coding) != Coding::kSeptets) {
    const auto octets = FromHex(body);
    if (!octets) return std::nullopt;
    tpdu.user_data = *octets;
    tpdu.user_data_length = static_cast<int>(octets->size());
  } else {
    const auto characters = phone.Text(body);
    if (!characters) return std::nullopt;
    SetText(tpdu, *characters);
  }
  return FitsOneMessage(tpdu) ? std::optional(tpdu) : std::nullopt;
}

}  // namespace celldesk::simulator
