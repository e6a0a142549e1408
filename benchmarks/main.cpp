#include <array>
#include <cstdio>
#include <string_view>

#include "benchmarks.h"
#include "figure_file.h"
#include "scratch.h"
#include "table.h"

namespace {

using namespace celldesk::bench;

struct Topic {
  std::string_view name;
  void (*measure)(Figures& figures, const Options& options);
  bool in_quick;
};

constexpr std::array<Topic, 10> kTopics{{{"start", MeasureStart, true},
                                         {"idle", MeasureIdle, true},
                                         {"pdu", MeasurePdu, true},
                                         {"lines", MeasureLines, true},
                                         {"operators", MeasureOperators, true},
                                         {"adr", MeasureAddressBookFile, true},
                                         {"sms", MeasureSmsFile, true},
                                         {"list", MeasureList, true},
                                         {"phonebook", MeasurePhonebook, true},
                                         {"messages", MeasureMessages, false}}};

struct Arguments {
  bool understood = true;
  Options options;
  std::string_view json;
  std::string_view only;
  std::string_view older, newer;
};

Arguments Parse(int count, char** words) {
  Arguments arguments;
  for (int i = 1; i < count; ++i) {
    const std::string_view word = words[i];
    const int left = count - i - 1;
    if (word == "--quick") {
      arguments.options = {.quick = true, .runs = 5};
    } else if (word == "--json" && left >= 1) {
      arguments.json = words[++i];
    } else if (word == "--only" && left >= 1) {
      arguments.only = words[++i];
    } else if (word == "--compare" && left >= 2) {
      arguments.older = words[++i];
      arguments.newer = words[++i];
    } else {
      arguments.understood = false;
    }
  }
  return arguments;
}

int Usage() {
  std::fputs(
      "usage: bench [--quick] [--json FILE] [--only TOPIC]   measure, print a table, write JSON\n"
      "       bench --compare OLD NEW                        what changed between two JSON files\n"
      "topics:",
      stderr);
  for (const Topic& topic : kTopics) std::fprintf(stderr, " %s", topic.name.data());
  std::fputs("\n", stderr);
  return 2;
}

int Compare(const Arguments& arguments) {
  const auto older = ReadFigures(std::string(arguments.older));
  const auto newer = ReadFigures(std::string(arguments.newer));
  if (!older || !newer) {
    std::fprintf(stderr, "Cannot read %s.\n", (older ? arguments.newer : arguments.older).data());
    return 1;
  }
  PrintComparison(*older, *newer);
  return 0;
}

bool Wanted(const Topic& topic, const Arguments& arguments) {
  return arguments.only.empty() ? topic.in_quick || !arguments.options.quick : topic.name == arguments.only;
}

}  // namespace

int main(int count, char** words) {
  const Arguments arguments = Parse(count, words);
  if (!arguments.understood) return Usage();
  if (!arguments.older.empty()) return Compare(arguments);
  const Scratch scratch;
  Figures figures;
  for (const Topic& topic : kTopics) {
    if (!Wanted(topic, arguments)) continue;
    std::fprintf(stderr, "Measuring: %s\n", topic.name.data());
    topic.measure(figures, arguments.options);
  }
  if (figures.empty()) return Usage();
  PrintFigures(figures);
  if (arguments.json.empty() || WriteFigures(std::string(arguments.json), figures)) return 0;
  std::fprintf(stderr, "Cannot write %s.\n", arguments.json.data());
  return 1;
}
