#include <algorithm>
#include <array>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "benchmarks.h"
#include "link/line_queue.h"
#include "measure.h"
#include "memory.h"
#include "pdu/gsm_alphabet.h"
#include "sample_messages.h"

namespace celldesk::bench {
namespace {

constexpr std::size_t kReadSize = 256;  // of the link's reader
constexpr int kMessages = 5000;
constexpr double kBudget = 2.5;  // milliseconds a megabyte: 400 MB/s
constexpr double kMegabyte = 1e6;
constexpr double kMilliseconds = 1e3;

std::string Listing() {
  const auto& samples = SampleMessages();
  std::string text;
  for (int i = 1; i <= kMessages; ++i) {
    const ListedMessage& message = samples[static_cast<std::size_t>(i) % samples.size()];
    text += "\r\n+CMGL: " + std::to_string(i) + "," + std::to_string(message.storage_status) + ",," +
            std::to_string(message.tpdu_length) + "\r\n" + message.pdu + "\r\n";
  }
  return text + "\r\nOK\r\n";
}

/// What the reader thread and a procedure do with the bytes, without the port; the number of lines.
std::size_t TakeLines(std::string_view bytes) {
  LineQueue queue;
  std::array<char16_t, kReadSize> wide;
  std::u16string line;
  std::size_t lines = 0;
  for (std::size_t at = 0; at < bytes.size(); at += kReadSize) {
    const std::string_view chunk = bytes.substr(at, kReadSize);
    GsmBytesToWide(wide.data(), reinterpret_cast<const std::uint8_t*>(chunk.data()), chunk.size());
    queue.Receive({wide.data(), chunk.size()});
    while (queue.Take(line)) {
      std::u16string taken = std::move(line);
      Keep(taken);
      ++lines;
    }
  }
  return lines;
}

}  // namespace

void MeasureLines(Figures& figures, const Options& options) {
  const std::string bytes = Listing();
  const double unit = kMilliseconds / (static_cast<double>(bytes.size()) / kMegabyte);
  std::vector<char> copy(bytes.size());
  const Sample floor = TimePerCall(options.runs, [&] {
    std::memcpy(copy.data(), bytes.data(), bytes.size());
    Keep(copy);
  });
  const Sample lines = TimePerCall(options.runs, [&] {
    std::size_t count = TakeLines(bytes);
    Keep(count);
  });
  figures.push_back(
      {"received bytes to lines", lines.median * unit, "ms/MB", floor.median * unit, kBudget, lines.spread});
  const std::size_t before = AllocationCount();
  const std::size_t count = TakeLines(bytes);
  figures.push_back({"received bytes to lines: allocations",
                     static_cast<double>(AllocationCount() - before) / static_cast<double>(count),
                     "per line",
                     {},
                     1.0,
                     0});
}

}  // namespace celldesk::bench
