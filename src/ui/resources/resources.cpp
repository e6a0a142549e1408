#include "ui/resources/resources.h"

#include <algorithm>
#include <charconv>

#include "ui/resources/embedded_files.h"
#include "util/text.h"

namespace celldesk {
namespace {

std::u16string ResolveEscapes(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      plain += text[i];
      continue;
    }
    const char escaped = text[++i];
    plain += escaped == 'r' ? '\r' : escaped == 'n' ? '\n' : escaped;
  }
  return FromUtf8(plain);
}

}  // namespace

std::string_view FindResource(std::string_view name) {
  for (std::size_t i = 0; i < kEmbeddedFileCount; ++i) {
    const EmbeddedFile& file = kEmbeddedFiles[i];
    if (file.name == name) return {reinterpret_cast<const char*>(file.bytes), file.size};
  }
  return {};
}

std::u16string LoadString(int number) {
  std::u16string found;
  ForEachLine(FindResource("strings.txt"), [&](std::string_view line) {
    if (found.empty() && NumberOf(line) == number) {
      const std::size_t blank = line.find(' ');
      if (blank != std::string_view::npos) found = ResolveEscapes(line.substr(blank + 1));
    }
  });
  return found;
}

void ForEachLine(std::string_view text, const std::function<void(std::string_view line)>& line) {
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const std::string_view one = text.substr(0, end);
    if (!one.empty() && one.front() != '#') line(one);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
  }
}

std::string_view TakeWord(std::string_view& line) {
  line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
  const std::string_view word = line.substr(0, line.find(' '));
  line.remove_prefix(word.size());
  line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
  return word;
}

int NumberOf(std::string_view text) {
  int number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

}  // namespace celldesk
