#include "simulator/options.h"

#include <gtest/gtest.h>

namespace celldesk::simulator {
namespace {

TEST(Options, WithoutArgumentsAreTheDefaults) {
  const Options options = ParseOptions({});
  EXPECT_EQ(options.error, "");
  EXPECT_EQ(options.port_name, "Simulated phone");
  EXPECT_EQ(options.baud, 0);
  EXPECT_FALSE(options.filled);
}

TEST(Options, TakesEveryOption) {
  const Options options = ParseOptions({"--port", "My phone", "--state", "a.txt", "--profile", "slow,no-me",
                                        "--baud", "9600", "--latency", "20", "--fault", "1:error", "--fault",
                                        "AT:late", "--filled", "--seed", "7", "--verbose"});
  EXPECT_EQ(options.error, "");
  EXPECT_EQ(options.port_name, "My phone");
  EXPECT_EQ(options.state_path, "a.txt");
  EXPECT_EQ(options.profile.latency_ms, 400);
  EXPECT_TRUE(options.profile.Hides("ME"));
  EXPECT_EQ(options.baud, 9600);
  EXPECT_EQ(options.latency_ms, 20);
  EXPECT_EQ(options.faults.size(), 2U);
  EXPECT_TRUE(options.filled);
  EXPECT_EQ(options.seed, 7U);
  EXPECT_TRUE(options.verbose);
}

TEST(Options, NamesWhatIsWrong) {
  const struct {
    std::vector<std::string> arguments;
    std::string_view error;
  } kTable[] = {{{"--nothing"}, "unknown option: --nothing"},
                {{"--filled", "file"}, "unknown option: file"},
                {{"--port"}, "--port needs a value"},
                {{"--port", "a/b"}, "bad value for --port: a/b"},
                {{"--port", ".."}, "bad value for --port: .."},
                {{"--state", ""}, "bad value for --state: "},
                {{"--baud", "fast"}, "bad value for --baud: fast"},
                {{"--latency", "-1"}, "bad value for --latency: -1"},
                {{"--seed", "x"}, "bad value for --seed: x"},
                {{"--profile", "none"}, "bad value for --profile: none"},
                {{"--fault", "1:none"}, "bad value for --fault: 1:none"}};
  for (const auto& row : kTable) EXPECT_EQ(ParseOptions(row.arguments).error, row.error);
}

TEST(Options, TheHelpNamesEveryOptionAndFault) {
  const std::string help = HelpText();
  for (const std::string_view option : {"--port", "--state", "--filled", "--profile", "--baud", "--latency",
                                        "--fault", "--seed", "--verbose", "--list-profiles", "--help"}) {
    EXPECT_NE(help.find(option), help.npos) << option;
  }
  for (const std::string& kind : FaultKindNames()) EXPECT_NE(help.find(kind), help.npos) << kind;
  EXPECT_TRUE(ParseOptions({"--help"}).show_help);
}

TEST(Options, TheProfileListNamesEveryProfile) {
  const std::string list = ProfileListText();
  for (const ProfileInfo& info : Profiles()) EXPECT_NE(list.find(info.name), list.npos) << info.name;
  EXPECT_TRUE(ParseOptions({"--list-profiles"}).show_profiles);
}

}  // namespace
}  // namespace celldesk::simulator
