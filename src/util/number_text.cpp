#include "util/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "util/text.h"

namespace celldesk {
namespace {

constexpr std::int64_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kHighest = std::numeric_limits<std::int32_t>::max();

bool IsSpace(char16_t character) { return character == u' ' || (character >= u'\t' && character <= u'\r'); }
bool IsDigit(char16_t character) { return character >= u'0' && character <= u'9'; }

std::uint32_t Magnitude(std::int32_t value) {
  const auto bits = static_cast<std::uint32_t>(value);
  return value < 0 ? 0 - bits : bits;
}

template <typename Text>
std::int32_t ParseDecimalOf(Text text, std::size_t& position) {
  std::size_t at = position;
  while (at < text.size() && IsSpace(text[at])) ++at;
  const bool negative = at < text.size() && text[at] == '-';
  if (negative || (at < text.size() && text[at] == '+')) ++at;
  const std::size_t first_digit = at;
  std::int64_t value = 0;
  for (; at < text.size() && IsDigit(text[at]); ++at) {
    value = std::min<std::int64_t>(value * 10 + (text[at] - '0'), -kLowest);
  }
  if (at != first_digit) position = at;
  return static_cast<std::int32_t>(std::min(negative ? -value : value, kHighest));
}

/// Truncated toward zero and held at the limits of 32 bits; 0 when not a number.
std::int32_t Truncate(double value) {
  if (std::isnan(value)) return 0;
  return static_cast<std::int32_t>(
      std::clamp(value, static_cast<double>(kLowest), static_cast<double>(kHighest)));
}

/// The part of `text` that may belong to a decimal floating-point number, narrowed.
std::string NarrowNumber(std::u16string_view text) {
  const std::size_t end = std::min(text.find_first_not_of(u"0123456789.eE+-"), text.size());
  return {text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end)};
}

double BeyondRange(const std::string& number) {
  return number.find("e-") == std::string::npos && number.find("E-") == std::string::npos ? HUGE_VAL : 0.0;
}

}  // namespace

std::u16string SizeText(std::uint32_t bytes) {
  constexpr std::uint32_t kKilo = 1024;
  constexpr std::uint32_t kMega = 1048576;
  if (bytes < kKilo) return Format(u"%i byte", {bytes});
  const std::uint32_t unit = bytes >= kMega ? kMega : kKilo;
  return Format(u"%i,%02i %s", {bytes / unit, bytes * 100U / unit % 100U, bytes >= kMega ? u"MB" : u"kB"});
}

std::u16string NumberText(double value, int decimals) {
  if (decimals <= 0) return DecimalText(Truncate(value));
  constexpr int kMostDecimals = 9;
  decimals = std::min(decimals, kMostDecimals);
  const double power = std::pow(10.0, decimals);
  const double fraction = std::fmod(std::floor(power * std::fabs(value) + 0.5), power);
  return Format(Format(u"%%i.%%0%ii", {decimals}), {Truncate(value), Truncate(fraction)});
}

double ParseNumber(std::u16string& text) {
  std::replace(text.begin(), text.end(), u',', u'.');
  std::u16string_view rest = text;
  while (!rest.empty() && IsSpace(rest.front())) rest.remove_prefix(1);
  const bool negative = !rest.empty() && rest.front() == u'-';
  if (negative || (!rest.empty() && rest.front() == u'+')) rest.remove_prefix(1);
  if (!rest.empty() && rest.front() == u'-') return 0;
  const std::string number = NarrowNumber(rest);
  double value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  if (result.ec == std::errc::result_out_of_range) value = BeyondRange(number);
  return negative ? -value : value;
}

std::uint32_t ParseHex(std::u16string_view text) {
  std::uint32_t total = 0;
  for (const char16_t character : text) {
    const std::uint32_t digit = IsDigit(character) ? character - 0x30U : (character | 0x20U) - 0x57U;
    total = (total << 4) + digit;
  }
  return total;
}

std::u16string HexText(std::uint32_t value) { return Format(u"%x", {value}); }

std::int32_t ParseDecimal(std::u16string_view text) {
  std::size_t position = 0;
  return ParseDecimalOf(text, position);
}

std::int32_t ParseDecimal(std::string_view text) {
  std::size_t position = 0;
  return ParseDecimalOf(text, position);
}

std::int32_t ParseDecimalAt(std::u16string_view text, std::size_t& position) {
  return ParseDecimalOf(text, position);
}

std::u16string DecimalText(std::int32_t value) {
  std::u16string text(DecimalLength(value), u'\0');
  WriteDecimal(value, text);
  return text;
}

std::size_t DecimalLength(std::int32_t value) {
  std::size_t length = value < 0 ? 2 : 1;
  for (std::uint64_t power = 10; power <= Magnitude(value); power *= 10) ++length;
  return length;
}

std::size_t WriteDecimal(std::int32_t value, std::span<char16_t> text) {
  if (value < 0) text.front() = u'-';
  std::size_t position = text.size();
  std::uint32_t rest = Magnitude(value);
  for (; rest >= 10; rest /= 100) {  // two at a time: a division waits for the one before it
    const std::uint32_t pair = rest % 100;
    text[--position] = static_cast<char16_t>(u'0' + pair % 10);
    text[--position] = static_cast<char16_t>(u'0' + pair / 10);
  }
  if (rest != 0 || position == text.size()) text[--position] = static_cast<char16_t>(u'0' + rest);
  return text.size();
}

}  // namespace celldesk
