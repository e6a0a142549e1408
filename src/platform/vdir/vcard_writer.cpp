#include "platform/vdir/vcard_writer.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>

#include "util/text.h"

namespace celldesk {
namespace {

constexpr std::size_t kLongestLine = 75;  // octets, without the line end
constexpr std::array<ContactPropertyId, 8> kWritable = {
    kContactSurname,        kContactSecondName, kContactGivenName, kContactMobileNumber,
    kContactBusinessNumber, kContactHomeNumber, kContactCompany,   kContactFileAs};

std::u16string_view TextOf(std::span<const ContactProperty> properties, ContactPropertyId id) {
  for (const ContactProperty& property : properties) {
    if (property.id == id && property.text) return *property.text;
  }
  return {};
}

/// In UTF-8, with the characters that structure a vCard escaped.
std::string Escaped(std::u16string_view text) {
  std::string escaped;
  for (const char character : ToUtf8(text)) {
    const auto octet = static_cast<unsigned char>(character);
    if (character == '\r') continue;
    if (character == '\n') {
      escaped += "\\n";
    } else if (octet < ' ' || octet == 0x7F) {
      escaped += ' ';
    } else {
      if (std::string_view("\\;,").find(character) != std::string_view::npos) escaped += '\\';
      escaped += character;
    }
  }
  return escaped;
}

bool ContinuesCharacter(char octet) { return (static_cast<unsigned char>(octet) & 0xC0) == 0x80; }

/// Appends the line, folded where it is too long, but never inside a character.
void AppendLine(std::string& vcard, std::string_view line) {
  std::size_t room = kLongestLine;
  while (line.size() > room) {
    std::size_t cut = room;
    while (ContinuesCharacter(line[cut])) --cut;
    vcard.append(line.substr(0, cut)).append("\r\n ");
    line.remove_prefix(cut);
    room = kLongestLine - 1;
  }
  vcard.append(line).append("\r\n");
}

std::u16string FormattedName(std::span<const ContactProperty> properties) {
  std::u16string name(TextOf(properties, kContactFileAs));
  if (!name.empty()) return name;
  for (const ContactPropertyId id : {kContactGivenName, kContactSecondName, kContactSurname}) {
    const std::u16string_view part = TextOf(properties, id);
    if (!name.empty() && !part.empty()) name += u' ';
    name += part;
  }
  for (const ContactPropertyId id :
       {kContactCompany, kContactMobileNumber, kContactBusinessNumber, kContactHomeNumber}) {
    if (name.empty()) name = TextOf(properties, id);
  }
  return name;
}

}  // namespace

bool CanWriteVcard(std::span<const ContactProperty> properties) {
  return std::all_of(properties.begin(), properties.end(), [](const ContactProperty& property) {
    return std::find(kWritable.begin(), kWritable.end(), property.id) != kWritable.end();
  });
}

std::string WriteVcard(std::span<const ContactProperty> properties, std::string_view uid) {
  const auto text = [properties](ContactPropertyId id) { return Escaped(TextOf(properties, id)); };
  std::string vcard;
  const auto optional_line = [&](std::string_view header, ContactPropertyId id) {
    const std::string value = text(id);
    if (!value.empty()) AppendLine(vcard, std::string(header) + value);
  };
  AppendLine(vcard, "BEGIN:VCARD");
  AppendLine(vcard, "VERSION:3.0");
  AppendLine(vcard, "PRODID:-//Corvane//Cell Desk//EN");
  AppendLine(vcard, "UID:" + std::string(uid));
  AppendLine(vcard, "FN:" + Escaped(FormattedName(properties)));
  AppendLine(vcard, "N:" + text(kContactSurname) + ";" + text(kContactGivenName) + ";" +
                        text(kContactSecondName) + ";;");
  optional_line("ORG:", kContactCompany);
  optional_line("TEL;TYPE=CELL:", kContactMobileNumber);
  optional_line("TEL;TYPE=WORK,VOICE:", kContactBusinessNumber);
  optional_line("TEL;TYPE=HOME,VOICE:", kContactHomeNumber);
  AppendLine(vcard, "END:VCARD");
  return vcard;
}

}  // namespace celldesk
