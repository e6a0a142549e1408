#include "link/line_trace.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace celldesk {
namespace {

using namespace std::chrono_literals;

struct TracedText {
  std::ostringstream* output = new std::ostringstream;
  LineTrace::Clock::result_type now{};
  LineTrace trace{std::unique_ptr<std::ostream>(output), [this] { return now; }};
};

std::vector<std::uint8_t> Bytes(std::string_view text) { return {text.begin(), text.end()}; }

TEST(LineTrace, ShowsTimeDirectionAndBytes) {
  TracedText traced;
  traced.now +=
      std::chrono::sys_days(std::chrono::year(2026) / 3 / 9).time_since_epoch() + 7h + 5min + 3s + 42ms;
  traced.trace.Sent(Bytes("AT+CPBS=\"SM\"\r\n"));
  traced.now += 16h + 54min + 57s;
  traced.trace.Received(Bytes("\r\nOK\r\n"));
  EXPECT_EQ(traced.output->str(),
            "2026-03-09 07:05:03.042 > AT+CPBS=\"SM\"\\r\\n\n"
            "2026-03-10 00:00:00.042 < \\r\\nOK\\r\\n\n");
}

TEST(LineTrace, EscapesWhatIsNotPrintable) {
  TracedText traced;
  traced.trace.Sent(Bytes(std::string_view("\\ ~\x00\x1A\x1F\x7F\x80\xFF", 9)));
  EXPECT_EQ(traced.output->str(), "1970-01-01 00:00:00.000 > \\\\ ~\\x00\\x1A\\x1F\\x7F\\x80\\xFF\n");
}

TEST(LineTrace, ShowsOpeningAndClosing) {
  TracedText traced;
  traced.trace.Opened(u"COM1:", true);
  traced.trace.Opened(u"COM2:", false);
  traced.trace.Closed(u"COM1:");
  EXPECT_EQ(traced.output->str(),
            "1970-01-01 00:00:00.000 open COM1:\n"
            "1970-01-01 00:00:00.000 cannot open COM2:\n"
            "1970-01-01 00:00:00.000 close COM1:\n");
}

TEST(LineTrace, TwoThreadsNeverMixTheirLines) {
  TracedText traced;
  constexpr int kLines = 500;
  std::thread reader([&] {
    for (int i = 0; i < kLines; ++i) traced.trace.Received(Bytes("in"));
  });
  for (int i = 0; i < kLines; ++i) traced.trace.Sent(Bytes("out"));
  reader.join();
  std::istringstream lines(traced.output->str());
  int count = 0;
  for (std::string line; std::getline(lines, line); ++count)
    EXPECT_TRUE(line == "1970-01-01 00:00:00.000 > out" || line == "1970-01-01 00:00:00.000 < in") << line;
  EXPECT_EQ(count, 2 * kLines);
}

class TraceFolder {
 public:
  TraceFolder() : path_(testing::TempDir() + "line_trace_test") {
    std::filesystem::create_directories(path_);
  }
  ~TraceFolder() { std::filesystem::remove_all(path_); }
  TraceFolder(const TraceFolder&) = delete;
  TraceFolder& operator=(const TraceFolder&) = delete;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

TEST(LineTrace, AFileIsAppendedToAndReadableAtOnce) {
  const TraceFolder folder;
  const auto file = folder.path() / "trace.txt";
  std::ofstream(file) << "from before\n";
  const auto trace = LineTrace::ToFile(file);
  ASSERT_NE(trace, nullptr);
  trace->Sent(Bytes("AT\r"));
  std::ifstream input(file);
  std::string first;
  std::string second;
  std::getline(input, first);
  std::getline(input, second);
  EXPECT_EQ(first, "from before");
  ASSERT_EQ(second.size(), std::string("2026-01-01 00:00:00.000 > AT\\r").size());
  EXPECT_EQ(second.substr(23), " > AT\\r");
}

TEST(LineTrace, AFileThatCannotBeOpenedGivesNoTrace) {
  const TraceFolder folder;
  EXPECT_EQ(LineTrace::ToFile(folder.path()), nullptr);
  EXPECT_EQ(LineTrace::ToFile(folder.path() / "missing" / "trace.txt"), nullptr);
}

}  // namespace
}  // namespace celldesk
