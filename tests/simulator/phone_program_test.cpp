#include "phone_program.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "pty_client.h"
#include "simulator/phone_state.h"
#include "simulator/posix/port_entry.h"
#include "simulator/posix/state_file.h"
#include "simulator/sample_memory.h"
#include "support/paths.h"
#include "temporary_folder.h"

namespace celldesk::simulator {
namespace {

namespace fs = std::filesystem;

std::string PhoneProgram() { return ProgramFolder() + "/celldesk-phone"; }

PhoneMemory StateIn(const std::string& path) {
  const auto memory = LoadState(ReadFile(path).value_or(""));
  EXPECT_TRUE(memory.has_value());
  return memory.value_or(PhoneMemory());
}

TEST(PhoneProgram, PrintsItsDeviceListsThePortAndEndsOnASignal) {
  for (const int signal : {SIGINT, SIGTERM}) {
    const TemporaryFolder folder;
    Program program(PhoneProgram(), {});
    const std::string device = program.ReadLine();
    EXPECT_TRUE(device.starts_with("/dev/")) << device;
    EXPECT_EQ(fs::read_symlink(PortFolder() + "/Simulated phone"), device);
    program.Signal(signal);
    EXPECT_EQ(program.Wait(), 0);
    EXPECT_TRUE(fs::is_empty(PortFolder()));
  }
}

TEST(PhoneProgram, ServesAFilledMemory) {
  const TemporaryFolder folder;
  Program program(PhoneProgram(), {"--filled", "--port", "Mine"});
  PtyClient client(program.ReadLine());
  EXPECT_EQ(client.Ask("ATE0"), "ATE0\r\r\nOK\r\n");
  EXPECT_EQ(client.Ask("AT+CPBS?"), "\r\n+CPBS: \"SM\",12,250\r\n\r\nOK\r\n");
  EXPECT_TRUE(fs::is_symlink(PortFolder() + "/Mine"));
}

TEST(PhoneProgram, KeepsItsMemoryInTheStateFile) {
  const TemporaryFolder folder;
  const std::string state = folder.File("state.txt");
  {
    Program program(PhoneProgram(), {"--filled", "--state", state});
    PtyClient client(program.ReadLine());
    ASSERT_TRUE(client.Ask("AT+CPBW=1").ends_with("OK\r\n"));
    EXPECT_FALSE(StateIn(state).FindPhonebook("SM")->entries.contains(1)) << "written before the reply";
    program.Signal(SIGTERM);
    EXPECT_EQ(program.Wait(), 0);
  }
  PhoneMemory expected = SampleMemory();
  expected.FindPhonebook("SM")->entries.erase(1);
  EXPECT_EQ(StateIn(state), expected);
  Program again(PhoneProgram(), {"--state", state});
  PtyClient client(again.ReadLine());
  ASSERT_TRUE(client.Ask("ATE0").ends_with("OK\r\n"));
  EXPECT_EQ(client.Ask("AT+CPBS?"), "\r\n+CPBS: \"SM\",11,250\r\n\r\nOK\r\n");
}

TEST(PhoneProgram, AStateFileIsThereAtTheEndEvenWithoutAChange) {
  const TemporaryFolder folder;
  Program program(PhoneProgram(), {"--state", folder.File("state.txt")});
  ASSERT_FALSE(program.ReadLine().empty());
  program.Signal(SIGTERM);
  ASSERT_EQ(program.Wait(), 0);
  EXPECT_EQ(StateIn(folder.File("state.txt")), PhoneMemory());
}

TEST(PhoneProgram, RefusesAStateFileItDoesNotUnderstand) {
  const TemporaryFolder folder;
  std::ofstream(folder.File("state.txt")) << "something else\n";
  Program program(PhoneProgram(), {"--state", folder.File("state.txt")});
  EXPECT_NE(program.ReadAll().find("state.txt: line 1: something else"), std::string::npos);
  EXPECT_EQ(program.Wait(), 1);
  EXPECT_EQ(ReadFile(folder.File("state.txt")), "something else\n");
}

TEST(PhoneProgram, FaultsAndProfilesOfTheCommandLineApply) {
  const TemporaryFolder folder;
  Program program(PhoneProgram(), {"--profile", "no-space", "--fault", "AT+CSQ#1:cme-error:14"});
  PtyClient client(program.ReadLine());
  ASSERT_TRUE(client.Ask("ATE0").ends_with("OK\r\n"));
  EXPECT_EQ(client.Ask("AT+CSQ", "14\r\n"), "\r\n+CME ERROR: 14\r\n");
  EXPECT_EQ(client.Ask("AT+CSQ"), "\r\n+CSQ:21,99\r\n\r\nOK\r\n");
}

TEST(PhoneProgram, PrintsTheNewDeviceAfterAHangUp) {
  const TemporaryFolder folder;
  Program program(PhoneProgram(), {"--fault", "AT+CSQ#1:hang-up-back"});
  PtyClient client(program.ReadLine());
  ASSERT_TRUE(client.Write("AT+CSQ\r"));
  EXPECT_TRUE(client.WaitForHangUp());
  PtyClient again(program.ReadLine());
  EXPECT_TRUE(again.Ask("AT+CSQ").ends_with("\r\n+CSQ: 21,99\r\n\r\nOK\r\n"));
}

TEST(PhoneProgram, TracesTheLineOnDemand) {
  const TemporaryFolder folder;
  Program program(PhoneProgram(), {"--verbose"});
  PtyClient client(program.ReadLine());
  ASSERT_TRUE(client.Ask("AT").ends_with("OK\r\n"));
  program.Signal(SIGTERM);
  EXPECT_NE(program.ReadAll().find("OK<0D><0A>"), std::string::npos);
  EXPECT_EQ(program.Wait(), 0);
}

TEST(PhoneProgram, AnswersQuestionsAndRefusesNonsense) {
  Program help(PhoneProgram(), {"--help"});
  EXPECT_NE(help.ReadAll().find("--fault STEP:KIND"), std::string::npos);
  EXPECT_EQ(help.Wait(), 0);
  Program list(PhoneProgram(), {"--list-profiles"});
  EXPECT_NE(list.ReadAll().find("huge-range"), std::string::npos);
  EXPECT_EQ(list.Wait(), 0);
  Program wrong(PhoneProgram(), {"--nonsense"});
  EXPECT_NE(wrong.ReadAll().find("unknown option: --nonsense"), std::string::npos);
  EXPECT_EQ(wrong.Wait(), 2);
}

}  // namespace
}  // namespace celldesk::simulator
