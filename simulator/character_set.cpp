#include "simulator/character_set.h"

#include <array>
#include <utility>

#include "simulator/ascii.h"

namespace celldesk::simulator {
namespace {

constexpr char kEscape = 0x1B;

// GSM 03.38 6.2.1. Position 0x1B leads to the extension table.
constexpr std::u16string_view kAlphabet =
    u"@\u00A3$\u00A5\u00E8\u00E9\u00F9\u00EC\u00F2\u00C7\n\u00D8\u00F8\r\u00C5\u00E5"
    u"\u0394_\u03A6\u0393\u039B\u03A9\u03A0\u03A8\u03A3\u0398\u039E\u001B\u00C6\u00E6\u00DF\u00C9"
    u" !\"#\u00A4%&'()*+,-./0123456789:;<=>?"
    u"\u00A1ABCDEFGHIJKLMNOPQRSTUVWXYZ\u00C4\u00D6\u00D1\u00DC\u00A7"
    u"\u00BFabcdefghijklmnopqrstuvwxyz\u00E4\u00F6\u00F1\u00FC\u00E0";
static_assert(kAlphabet.size() == 128);

constexpr std::array<std::pair<char, char16_t>, 10> kExtension{{{0x0A, u'\f'},
                                                                {0x14, u'^'},
                                                                {0x28, u'{'},
                                                                {0x29, u'}'},
                                                                {0x2F, u'\\'},
                                                                {0x3C, u'['},
                                                                {0x3D, u'~'},
                                                                {0x3E, u']'},
                                                                {0x40, u'|'},
                                                                {0x65, u'\u20AC'}}};

constexpr std::array<std::pair<std::string_view, CharacterSet>, 4> kNames{{{"GSM", CharacterSet::kGsm},
                                                                           {"UCS2", CharacterSet::kUcs2},
                                                                           {"HEX", CharacterSet::kHex},
                                                                           {"IRA", CharacterSet::kIra}}};

std::string SeptetsOf(char16_t unit) {
  for (const auto& [code, character] : kExtension) {
    if (character == unit) return {kEscape, code};
  }
  const auto position = kAlphabet.find(unit);
  return {position == kAlphabet.npos || unit == kEscape ? '?' : static_cast<char>(position)};
}

char16_t ExtensionCharacter(char code) {
  for (const auto& [extension_code, character] : kExtension) {
    if (extension_code == code) return character;
  }
  return kAlphabet[static_cast<std::size_t>(code & 0x7F)];
}

std::string ToIra(std::u16string_view text) {
  std::string bytes;
  for (const char16_t unit : text) bytes += unit < 0x80 ? static_cast<char>(unit) : '?';
  return bytes;
}

std::u16string FromIra(std::string_view bytes) {
  std::u16string text;
  for (const char byte : bytes) text += static_cast<char16_t>(byte & 0x7F);
  return text;
}

void AppendUtf8(std::string& bytes, char32_t point) {
  const auto append = [&bytes](char32_t value) { bytes += static_cast<char>(value); };
  if (point < 0x80) return append(point);
  if (point < 0x800) {
    append(0xC0 | point >> 6);
  } else if (point < 0x10000) {
    append(0xE0 | point >> 12);
    append(0x80 | (point >> 6 & 0x3F));
  } else {
    append(0xF0 | point >> 18);
    append(0x80 | (point >> 12 & 0x3F));
    append(0x80 | (point >> 6 & 0x3F));
  }
  append(0x80 | (point & 0x3F));
}

void AppendUtf16(std::u16string& text, char32_t point) {
  if (point < 0x10000) {
    text += static_cast<char16_t>(point);
  } else {
    text += static_cast<char16_t>(0xD7C0 + (point >> 10));
    text += static_cast<char16_t>(0xDC00 + (point & 0x3FF));
  }
}

std::size_t Utf8Length(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xF0) return 4;
  return lead >= 0xE0 ? 3 : 2;
}

}  // namespace

std::optional<CharacterSet> ParseCharacterSet(std::string_view name) {
  for (const auto& [known, set] : kNames) {
    if (known == ToUpper(name)) return set;
  }
  return std::nullopt;
}

std::string_view CharacterSetName(CharacterSet set) {
  for (const auto& [name, known] : kNames) {
    if (known == set) return name;
  }
  return {};
}

std::string ToLine(CharacterSet set, std::u16string_view text) {
  switch (set) {
    case CharacterSet::kUcs2:
      return ToHex(ToUcs2(text));
    case CharacterSet::kHex:
      return ToHex(ToSeptets(text));
    case CharacterSet::kIra:
      return ToIra(text);
    case CharacterSet::kGsm:
      break;
  }
  return ToSeptets(text);
}

std::optional<std::u16string> FromLine(CharacterSet set, std::string_view bytes) {
  if (set == CharacterSet::kIra) return FromIra(bytes);
  if (set == CharacterSet::kGsm) return FromSeptets(bytes);
  const auto octets = FromHex(bytes);
  if (!octets || (set == CharacterSet::kUcs2 && octets->size() % 2 != 0)) return std::nullopt;
  return set == CharacterSet::kUcs2 ? FromUcs2(*octets) : FromSeptets(*octets);
}

std::string ToSeptets(std::u16string_view text) {
  std::string septets;
  for (const char16_t unit : text) septets += SeptetsOf(unit);
  return septets;
}

std::u16string FromSeptets(std::string_view septets) {
  std::u16string text;
  for (std::size_t i = 0; i < septets.size(); ++i) {
    const char septet = static_cast<char>(septets[i] & 0x7F);
    const bool escaped = septet == kEscape && i + 1 < septets.size();
    text += escaped ? ExtensionCharacter(static_cast<char>(septets[++i] & 0x7F))
                    : kAlphabet[static_cast<std::size_t>(septet)];
  }
  return text;
}

std::string PackSeptets(std::string_view septets) {
  std::string octets((septets.size() * 7 + 7) / 8, '\0');
  for (std::size_t i = 0; i < septets.size(); ++i) {
    for (std::size_t bit = 0; bit < 7; ++bit) {
      const std::size_t at = i * 7 + bit;
      if (septets[i] >> bit & 1) octets[at / 8] = static_cast<char>(octets[at / 8] | 1 << at % 8);
    }
  }
  return octets;
}

std::string UnpackSeptets(std::string_view octets, std::size_t count, std::size_t fill) {
  std::string septets(count, '\0');
  for (std::size_t at = 0; at < count * 7 && (at + fill) / 8 < octets.size(); ++at) {
    if (octets[(at + fill) / 8] >> (at + fill) % 8 & 1) {
      septets[at / 7] = static_cast<char>(septets[at / 7] | 1 << at % 7);
    }
  }
  return septets;
}

std::string ToUcs2(std::u16string_view text) {
  std::string octets;
  for (const char16_t unit : text) {
    octets += static_cast<char>(unit >> 8);
    octets += static_cast<char>(unit & 0xFF);
  }
  return octets;
}

std::u16string FromUcs2(std::string_view octets) {
  std::u16string text;
  for (std::size_t i = 0; i + 1 < octets.size(); i += 2) {
    text += static_cast<char16_t>(static_cast<unsigned char>(octets[i]) << 8 |
                                  static_cast<unsigned char>(octets[i + 1]));
  }
  return text;
}

std::string ToUtf8(std::u16string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t point = text[i];
    if (point >= 0xD800 && point < 0xDC00 && i + 1 < text.size()) {
      point = (point << 10) + text[++i] - 0x35FDC00;
    }
    AppendUtf8(bytes, point);
  }
  return bytes;
}

std::u16string FromUtf8(std::string_view bytes) {
  std::u16string text;
  for (std::size_t i = 0; i < bytes.size();) {
    const auto lead = static_cast<unsigned char>(bytes[i]);
    const std::size_t length = Utf8Length(lead);
    char32_t point = length == 1 ? lead : lead & (0x7F >> length);
    for (std::size_t k = 1; k < length && i + k < bytes.size(); ++k) {
      point = point << 6 | (static_cast<unsigned char>(bytes[i + k]) & 0x3F);
    }
    AppendUtf16(text, point);
    i += length;
  }
  return text;
}

}  // namespace celldesk::simulator
