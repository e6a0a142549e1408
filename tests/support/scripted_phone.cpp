#include "support/scripted_phone.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <numeric>
#include <utility>

namespace celldesk {
namespace {

void AppendEscaped(std::string& bytes, std::string_view text, std::size_t& i) {
  const char kind = text[i++];
  if (kind == 'r') bytes += '\r';
  if (kind == 'n') bytes += '\n';
  if (kind == '\\') bytes += '\\';
  if (kind != 'x') return;
  unsigned value = 0;
  const auto digits = text.substr(i, 2);
  std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  bytes += static_cast<char>(value);
  i += digits.size();
}

/// One line of a script: what stands before the first blank, and the rest.
struct ScriptLine {
  std::string_view kind;
  std::string_view rest;
};

ScriptLine SplitLine(std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
  const auto blank = std::min(line.find(' '), line.size());
  return {line.substr(0, blank), line.substr(std::min(blank + 1, line.size()))};
}

class ScriptReader {
 public:
  explicit ScriptReader(std::deque<ScriptedPhone::Exchange>& exchanges) : exchanges_(exchanges) {}

  void Read(std::string_view line) {
    const auto [kind, rest] = SplitLine(line);
    if (kind.empty() || kind[0] == '#') return;
    if (kind == ">") return exchanges_.push_back({Unescape(rest), {}});
    if (exchanges_.empty()) return Complain(line);
    if (kind == "<") return Append("\r\n" + Unescape(rest) + "\r\n");
    if (kind == "<<") return Append(Unescape(rest));
    if (kind == "=") return Wait(rest);
    Complain(line);
  }

 private:
  static void Complain(std::string_view line) { ADD_FAILURE() << "not a script line: " << line; }

  void Append(const std::string& bytes) {
    auto& answer = exchanges_.back().answer;
    if (answer.empty()) answer.emplace_back();
    answer.back().bytes += bytes;
  }

  void Wait(std::string_view digits) {
    int value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    exchanges_.back().answer.push_back({std::chrono::milliseconds(value), {}});
  }

  std::deque<ScriptedPhone::Exchange>& exchanges_;
};

}  // namespace

std::string Unescape(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size();) {
    const char c = text[i++];
    if (c != '\\' || i == text.size())
      bytes += c;
    else
      AppendEscaped(bytes, text, i);
  }
  return bytes;
}

ScriptedPhone::ScriptedPhone(ManualWaiter& waiter) : waiter_(waiter) { waiter.Attach(*this); }

void ScriptedPhone::Load(std::string_view script) {
  std::deque<Exchange> loaded;
  ScriptReader reader(loaded);
  for (std::size_t start = 0; start < script.size();) {
    const auto end = std::min(script.find('\n', start), script.size());
    reader.Read(script.substr(start, end - start));
    start = end + 1;
  }
  std::move(loaded.begin(), loaded.end(), std::back_inserter(exchanges_));
}

void ScriptedPhone::Say(std::string bytes, Milliseconds after) {
  under_way_.emplace(waiter_.now() + after, std::move(bytes));
}

void ScriptedPhone::Receive(std::span<const std::uint8_t> bytes) {
  const std::string command(bytes.begin(), bytes.end());
  writes_.push_back(command);
  if (exchanges_.empty() && otherwise_) return Say(otherwise_(command));
  if (exchanges_.empty()) {
    ADD_FAILURE() << "a write beyond the script: " << testing::PrintToString(command);
    return;
  }
  const Exchange exchange = std::move(exchanges_.front());
  exchanges_.pop_front();
  EXPECT_EQ(command, exchange.command) << "write " << writes_.size() << " differs from the script";
  if (command == exchange.command) Answer(exchange.answer);
}

std::string ScriptedPhone::sent() const {
  return std::accumulate(writes_.begin(), writes_.end(), std::string());
}

std::optional<ScriptedPhone::Milliseconds> ScriptedPhone::NextDue() const {
  if (under_way_.empty()) return std::nullopt;
  return under_way_.begin()->first;
}

void ScriptedPhone::RunDue(Milliseconds now) {
  while (!under_way_.empty() && under_way_.begin()->first <= now) {
    const std::string bytes = std::move(under_way_.begin()->second);
    under_way_.erase(under_way_.begin());
    Deliver(bytes);
  }
}

void ScriptedPhone::Answer(const std::vector<Burst>& answer) {
  Milliseconds after{};
  for (const Burst& burst : answer) {
    after += burst.after;
    if (!burst.bytes.empty()) Say(burst.bytes, after);
  }
}

void ScriptedPhone::Deliver(const std::string& bytes) {
  const std::vector<std::uint8_t> copy(bytes.begin(), bytes.end());
  std::span<const std::uint8_t> rest(copy);
  while (!rest.empty() && sink_) {
    const auto chunk = rest.first(std::min(chunk_size_, rest.size()));
    sink_(chunk);
    rest = rest.subspan(chunk.size());
  }
}

}  // namespace celldesk
