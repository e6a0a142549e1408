#include "link/line_trace.h"

#include <algorithm>
#include <iomanip>
#include <string>
#include <utility>

#include "util/text.h"

namespace celldesk {
namespace {

void AppendByte(std::string& text, std::uint8_t byte) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  if (byte == '\r')
    text += "\\r";
  else if (byte == '\n')
    text += "\\n";
  else if (byte == '\\')
    text += "\\\\";
  else if (byte >= 0x20 && byte < 0x7F)
    text += static_cast<char>(byte);
  else
    (text += "\\x") += {kDigits[byte >> 4], kDigits[byte & 15]};
}

std::string Escaped(std::span<const std::uint8_t> bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes) AppendByte(text, byte);
  return text;
}

void WriteTime(std::ostream& output, std::chrono::system_clock::time_point time) {
  using namespace std::chrono;
  const auto day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss clock(floor<milliseconds>(time - day));
  const auto two_digits = [&output](auto value) { output << std::setw(2) << value; };
  output << std::setfill('0') << std::setw(4) << static_cast<int>(date.year()) << '-';
  two_digits(static_cast<unsigned>(date.month()));
  output << '-';
  two_digits(static_cast<unsigned>(date.day()));
  output << ' ';
  two_digits(clock.hours().count());
  output << ':';
  two_digits(clock.minutes().count());
  output << ':';
  two_digits(clock.seconds().count());
  output << '.' << std::setw(3) << clock.subseconds().count();
}

}  // namespace

std::shared_ptr<LineTrace> LineTrace::ToFile(const std::filesystem::path& path) {
  auto file = std::make_unique<std::ofstream>(path, std::ios::app | std::ios::binary);
  if (!file->is_open()) return nullptr;
  return std::make_shared<LineTrace>(std::move(file), [] { return std::chrono::system_clock::now(); });
}

LineTrace::LineTrace(std::unique_ptr<std::ostream> output, Clock clock)
    : output_(std::move(output)), clock_(std::move(clock)) {}

void LineTrace::Opened(std::u16string_view port, bool success) {
  WriteLine(success ? "open" : "cannot open", ToUtf8(port));
}

void LineTrace::Closed(std::u16string_view port) { WriteLine("close", ToUtf8(port)); }
void LineTrace::Sent(std::span<const std::uint8_t> bytes) { WriteLine(">", Escaped(bytes)); }
void LineTrace::Received(std::span<const std::uint8_t> bytes) { WriteLine("<", Escaped(bytes)); }

void LineTrace::WriteLine(std::string_view direction, std::string_view text) {
  MutexLock guard(lock_);
  WriteTime(*output_, clock_());
  // Flushed line by line: the last words before a crash count most.
  *output_ << ' ' << direction << ' ' << text << std::endl;
}

}  // namespace celldesk
