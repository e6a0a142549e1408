#include "platform/vdir/vcard_parameters.h"

#include <algorithm>
#include <cstddef>

#include "platform/vdir/ascii.h"

namespace celldesk {
namespace {

/// Cuts the text before the next ";" off `rest`; one between quotes does not count.
std::string_view TakeParameter(std::string_view& rest) {
  bool quoted = false;
  std::size_t end = 0;
  for (; end < rest.size() && (quoted || rest[end] != ';'); ++end) {
    if (rest[end] == '"') quoted = !quoted;
  }
  const std::string_view taken = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return taken;
}

/// The same up to the next comma or quote: words stand between quotes each, or all of them, or none.
std::string_view TakeWordOf(std::string_view& rest) {
  const std::size_t end = std::min(rest.find_first_of(",\""), rest.size());
  const std::string_view taken = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return TrimBlanks(taken);
}

std::string_view WithoutQuotes(std::string_view text) {
  text = TrimBlanks(text);
  while (text.starts_with('"')) text.remove_prefix(1);
  while (text.ends_with('"')) text.remove_suffix(1);
  return text;
}

}  // namespace

VcardParameters VcardParameters::Parse(std::string_view parameters) {
  VcardParameters result;
  while (!parameters.empty()) result.Take(TakeParameter(parameters));
  return result;
}

void VcardParameters::Take(std::string_view parameter) {
  const std::size_t equals = parameter.find('=');
  if (equals == std::string_view::npos) return TakeWord(TrimBlanks(parameter));
  const std::string_view name = TrimBlanks(parameter.substr(0, equals));
  std::string_view value = parameter.substr(equals + 1);
  if (EqualAscii(name, "CHARSET")) charset = WithoutQuotes(value);
  if (!EqualAscii(name, "TYPE") && !EqualAscii(name, "ENCODING") && !EqualAscii(name, "VALUE")) return;
  while (!value.empty()) TakeWord(TakeWordOf(value));
}

void VcardParameters::TakeWord(std::string_view word) {
  const auto is = [word](std::string_view other) { return EqualAscii(word, other); };
  quoted_printable |= is("QUOTED-PRINTABLE");
  base64 |= is("BASE64") || is("B");
  uri |= is("URI") || is("URL");
  cell |= is("CELL");
  work |= is("WORK");
  home |= is("HOME");
  no_voice |= is("FAX") || is("PAGER") || is("MODEM") || is("BBS");
}

}  // namespace celldesk
