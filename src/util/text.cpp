#include "util/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace celldesk {
namespace {

constexpr char16_t kReplacement = 0xFFFD;
constexpr std::size_t kMostCount = 1'000'000;

/// One conversion of a format: what stands between '%' and its letter.
struct Conversion {
  bool left = false;
  bool zeros = false;
  bool prefix = false;
  bool has_precision = false;
  std::size_t width = 0;
  std::size_t precision = 0;
};

/// Builds a result that never grows beyond its limit.
class Output {
 public:
  Output(std::size_t limit, std::size_t expected) : limit_(limit) {
    text_.reserve(std::min(limit, expected));
  }

  void Add(char16_t character) { Repeat(1, character); }
  void Repeat(std::size_t count, char16_t character) { text_.append(std::min(count, Room()), character); }
  void Add(std::u16string_view text) { text_.append(text.substr(0, Room())); }
  std::u16string Take() { return std::move(text_); }

 private:
  std::size_t Room() const { return limit_ - text_.size(); }

  std::size_t limit_;
  std::u16string text_;
};

/// Digits of a 32-bit value in a base from 10 to 16, kept in place.
class Digits {
 public:
  Digits(std::uint32_t value, std::uint32_t base, bool upper) {
    const char16_t* symbols = upper ? u"0123456789ABCDEF" : u"0123456789abcdef";
    do {
      storage_[--first_] = symbols[value % base];
      value /= base;
    } while (value != 0);
  }
  std::u16string_view view() const { return {&storage_[first_], storage_.size() - first_}; }

 private:
  std::array<char16_t, 10> storage_{};
  std::size_t first_ = storage_.size();
};

void AddText(Output& out, const Conversion& how, std::u16string_view text) {
  if (how.has_precision) text = text.substr(0, how.precision);
  const std::size_t padding = how.width > text.size() ? how.width - text.size() : 0;
  if (!how.left) out.Repeat(padding, u' ');
  out.Add(text);
  if (how.left) out.Repeat(padding, u' ');
}

/// `sign` is "-", "0x", "0X" or empty; it counts toward the width and stands before padding zeros.
void AddNumber(Output& out, const Conversion& how, std::u16string_view sign, std::u16string_view digits) {
  std::size_t zeros = how.precision > digits.size() ? how.precision - digits.size() : 0;
  const std::size_t used = sign.size() + zeros + digits.size();
  std::size_t padding = how.width > used ? how.width - used : 0;
  if (how.zeros && !how.left) {
    zeros += padding;
    padding = 0;
  }
  if (!how.left) out.Repeat(padding, u' ');
  out.Add(sign);
  out.Repeat(zeros, u'0');
  out.Add(digits);
  if (how.left) out.Repeat(padding, u' ');
}

void AddSigned(Output& out, const Conversion& how, int number) {
  const auto bits = static_cast<std::uint32_t>(number);
  AddNumber(out, how, number < 0 ? u"-" : u"", Digits(number < 0 ? 0U - bits : bits, 10, false).view());
}

void AddHexadecimal(Output& out, const Conversion& how, std::uint32_t number, bool upper) {
  const std::u16string_view prefix = upper ? u"0X" : u"0x";
  AddNumber(out, how, how.prefix ? prefix : std::u16string_view(), Digits(number, 16, upper).view());
}

bool IsConversion(char16_t letter) {
  return std::u16string_view(u"sidxXuc").find(letter) != std::u16string_view::npos;
}

void AddArgument(Output& out, const Conversion& how, char16_t letter, const FormatArgument& argument) {
  const int number = argument.is_text() ? 0 : argument.number();
  const auto bits = static_cast<std::uint32_t>(number);
  const auto character = static_cast<char16_t>(number);
  switch (letter) {
    case u's':
      return AddText(out, how, argument.text());
    case u'c':
      return AddText(out, how, std::u16string_view(&character, argument.is_text() ? 0 : 1));
    case u'u':
      return AddNumber(out, how, {}, Digits(bits, 10, false).view());
    case u'x':
      return AddHexadecimal(out, how, bits, false);
    case u'X':
      return AddHexadecimal(out, how, bits, true);
    default:
      return AddSigned(out, how, number);
  }
}

/// Reads digits from format[position]; values beyond kMostCount are held there.
std::size_t ReadCount(std::u16string_view format, std::size_t& position) {
  std::size_t count = 0;
  for (; position < format.size() && format[position] >= u'0' && format[position] <= u'9'; ++position) {
    count = std::min(kMostCount, count * 10 + (format[position] - u'0'));
  }
  return count;
}

bool ReadFlag(Conversion& how, char16_t character) {
  switch (character) {
    case u'-':
      return how.left = true;
    case u'0':
      return how.zeros = true;
    case u'#':
      return how.prefix = true;
    default:
      return false;
  }
}

Conversion ReadConversion(std::u16string_view format, std::size_t& position) {
  Conversion how;
  while (position < format.size() && ReadFlag(how, format[position])) ++position;
  how.width = ReadCount(format, position);
  if (position < format.size() && format[position] == u'.') {
    how.has_precision = true;
    how.precision = ReadCount(format, ++position);
  }
  return how;
}

std::size_t ExpectedSize(std::u16string_view format, std::initializer_list<FormatArgument> arguments) {
  std::size_t size = format.size();
  for (const FormatArgument& argument : arguments) size += argument.is_text() ? argument.text().size() : 10;
  return size;
}

/// Decodes one UTF-8 character at text[position] and advances; malformed octets give U+FFFD, one for each
/// longest start of a sequence.
char32_t ReadUtf8(std::string_view text, std::size_t& position) {
  const auto lead = static_cast<std::uint8_t>(text[position++]);
  if (lead < 0x80) return lead;
  if (lead < 0xC2 || lead > 0xF4) return kReplacement;
  const int following = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
  // Overlong forms, surrogates and values beyond U+10FFFF show in the second octet.
  std::uint8_t low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  std::uint8_t high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  char32_t character = lead & (0x3FU >> following);
  for (int i = 0; i < following; ++i) {
    if (position == text.size()) return kReplacement;
    const auto octet = static_cast<std::uint8_t>(text[position]);
    if (octet < low || octet > high) return kReplacement;
    character = (character << 6) | (octet & 0x3FU);
    ++position;
    low = 0x80;
    high = 0xBF;
  }
  return character;
}

char32_t ReadUtf16(std::u16string_view text, std::size_t& position) {
  const char16_t unit = text[position++];
  if (unit < 0xD800 || unit > 0xDFFF) return unit;
  if (unit > 0xDBFF || position == text.size()) return kReplacement;
  const char16_t second = text[position];
  if (second < 0xDC00 || second > 0xDFFF) return kReplacement;
  ++position;
  return 0x10000 + ((unit & 0x3FFU) << 10) + (second & 0x3FFU);
}

void AppendUtf8(std::string& text, char32_t character) {
  const auto octet = [&text](char32_t bits) { text.push_back(static_cast<char>(bits)); };
  if (character < 0x80) return octet(character);
  if (character < 0x800) {
    octet(0xC0 | (character >> 6));
  } else {
    if (character < 0x10000) {
      octet(0xE0 | (character >> 12));
    } else {
      octet(0xF0 | (character >> 18));
      octet(0x80 | ((character >> 12) & 0x3F));
    }
    octet(0x80 | ((character >> 6) & 0x3F));
  }
  octet(0x80 | (character & 0x3F));
}

}  // namespace

std::u16string Format(std::u16string_view format, std::initializer_list<FormatArgument> arguments,
                      std::size_t limit) {
  Output out(limit, ExpectedSize(format, arguments));
  const auto* argument = arguments.begin();
  for (std::size_t position = 0; position < format.size();) {
    const char16_t character = format[position++];
    if (character != u'%') {
      out.Add(character);
      continue;
    }
    const Conversion how = ReadConversion(format, position);
    if (position == format.size()) break;
    const char16_t letter = format[position++];
    if (!IsConversion(letter)) {
      out.Add(letter);
    } else if (argument != arguments.end()) {
      AddArgument(out, how, letter, *argument++);
    } else {
      AddArgument(out, how, letter,
                  letter == u'c' || letter == u's' ? FormatArgument(u"") : FormatArgument(0));
    }
  }
  return out.Take();
}

std::u16string_view Trim(std::u16string_view text) {
  constexpr std::u16string_view kBlanks = u" \t\n\r";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::u16string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::u16string WidenAscii(std::string_view text) {
  std::u16string wide(text.size(), u'\0');
  std::transform(text.begin(), text.end(), wide.begin(), [](char character) {
    const auto octet = static_cast<std::uint8_t>(character);
    return octet < 0x80 ? static_cast<char16_t>(octet) : kReplacement;
  });
  return wide;
}

std::u16string FromUtf8(std::string_view text) {
  std::u16string wide;
  wide.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const char32_t character = ReadUtf8(text, position);
    if (character < 0x10000) {
      wide.push_back(static_cast<char16_t>(character));
    } else {
      wide.push_back(static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10)));
      wide.push_back(static_cast<char16_t>(0xDC00 + (character & 0x3FF)));
    }
  }
  return wide;
}

std::string ToUtf8(std::u16string_view text) {
  std::string narrow;
  narrow.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) AppendUtf8(narrow, ReadUtf16(text, position));
  return narrow;
}

}  // namespace celldesk
