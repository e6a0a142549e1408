// Input: octet 0 how the reads cut what follows (their size is 1 to 16, and changes with the octets read),
// then what the phone says. Property: the lines, without line feeds before them and without empty ones, are
// those of the uncut text, namely what stands between its carriage returns; the event is set exactly while a
// line waits; every field of a line lies inside it.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/property.h"
#include "link/line_queue.h"
#include "link/response_line.h"
#include "pdu/gsm_alphabet.h"

namespace {

using namespace celldesk;

using Lines = std::vector<std::u16string>;

void CheckFields(const ResponseLine& line) {
  const char16_t* const begin = line.text().data();
  for (std::size_t n = 0; n < 6; ++n) {
    const std::u16string_view field = Field(line, n);
    if (field.empty()) continue;
    HOLDS(field.data() >= begin && field.data() + field.size() <= begin + line.text().size());
    const std::u16string_view bound = RangeBound(field, true);
    HOLDS(bound.size() <= field.size() && bound.find(u')') == std::u16string_view::npos);
  }
}

void TakeLines(LineQueue& queue, Lines& lines) {
  std::u16string text;
  while (queue.line_event().IsSet()) {
    HOLDS(queue.Take(text));
    ResponseLine line;
    line.Take(std::move(text));
    line.DropLineFeeds();
    if (!line.text().empty()) lines.emplace_back(line.text());
    (void)StartsWith(line, u"+CPBR:");
    CheckFields(line);
  }
  HOLDS(!queue.Take(text));
}

Lines ExpectedLines(std::u16string_view text) {
  Lines lines;
  for (std::size_t end; (end = text.find(u'\r')) != text.npos; text.remove_prefix(end + 1)) {
    std::u16string_view line = text.substr(0, end);
    line.remove_prefix(std::min(line.find_first_not_of(u'\n'), line.size()));
    if (!line.empty()) lines.emplace_back(line);
  }
  return lines;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::size_t length = size - 1;
  std::u16string text(length, u'\0');
  GsmBytesToWide(text.data(), data + 1, length);
  LineQueue queue;
  Lines lines;
  std::size_t cut = data[0];
  for (std::size_t position = 0; position < length; position += cut % 16 + 1) {
    if (position > 0) cut = cut * 5 + data[position];
    queue.Receive(std::u16string_view(text).substr(position, cut % 16 + 1));
    if (cut % 3 == 0) TakeLines(queue, lines);
  }
  TakeLines(queue, lines);
  HOLDS(lines == ExpectedLines(text));
  return 0;
}
