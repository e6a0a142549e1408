#include "simulator/posix/pty_phone.h"

#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/resource.h>

#include <filesystem>
#include <mutex>

#include "pty_client.h"
#include "simulator/sample_memory.h"
#include "temporary_folder.h"

namespace celldesk::simulator {
namespace {

namespace fs = std::filesystem;

const std::string kOk = "\r\nOK\r\n";

TEST(PtyPhone, AnswersOnItsDevice) {
  PtyPhone phone(SimulatedPhone{SampleMemory()});
  ASSERT_TRUE(phone.Start());
  PtyClient client(phone.device());
  ASSERT_TRUE(client.is_open());
  EXPECT_EQ(client.Ask("ATE0"), "ATE0\r" + kOk);
  EXPECT_EQ(client.Ask("AT+CPBR=1"), "\r\n+CPBR: 1,\"+447700900101\",145,\"Anna Whitfield\"\r\n" + kOk);
}

TEST(PtyPhone, EveryByteValuePassesUnchanged) {
  PtyPhone phone(SimulatedPhone{});
  ASSERT_TRUE(phone.Start());
  PtyClient client(phone.device());
  std::string bytes;
  for (int value = 0; value < 256; ++value) {
    if (value != '\r') bytes += static_cast<char>(value);
  }
  bytes += '\r';
  ASSERT_TRUE(client.Write(bytes));
  EXPECT_EQ(client.ReadUntil("\r"), bytes);
  EXPECT_TRUE(phone.WaitFor([&](SimulatedPhone& served) { return served.received_bytes() == bytes; }));
}

TEST(PtyPhone, ClientsComeAndGo) {
  PtyPhone phone(SimulatedPhone{});
  ASSERT_TRUE(phone.Start());
  for (int visit = 0; visit < 5; ++visit) {
    PtyClient client(phone.device());
    const std::string answer = client.Ask("AT");
    EXPECT_TRUE(answer.ends_with(kOk)) << visit;
  }
}

bool WaitForEmptyLine(PtyPhone& phone) {
  return phone.WaitFor([&phone](SimulatedPhone&) { return !phone.has_client(); });
}

TEST(PtyPhone, ALeavingClientLeavesNothingBehind) {
  PtyPhone phone(SimulatedPhone{});
  ASSERT_TRUE(phone.Start());
  PtyClient first(phone.device());
  ASSERT_EQ(first.Ask("ATE0"), "ATE0\r" + kOk);
  ASSERT_TRUE(first.Write("AT+CSQ\rAT+CPBW=1,\"12\""));
  const auto all_read = [](SimulatedPhone& served) { return served.received_bytes().ends_with("\"12\""); };
  ASSERT_TRUE(phone.WaitFor(all_read));
  first.Close();
  ASSERT_TRUE(WaitForEmptyLine(phone));
  PtyClient second(phone.device());
  EXPECT_EQ(second.Ask("\rAT"), kOk);
  phone.ChangePhone([](SimulatedPhone& served) {
    EXPECT_TRUE(served.memory().FindPhonebook("SM")->entries.empty());
    return std::vector<Emission>();
  });
}

TEST(PtyPhone, AnExclusiveClientLocksNobodyOutForGood) {
  PtyPhone phone(SimulatedPhone{});
  ASSERT_TRUE(phone.Start());
  PtyClient first(phone.device());
  ASSERT_EQ(ioctl(first.descriptor(), TIOCEXCL), 0);
  ASSERT_TRUE(first.Ask("ATE0").ends_with(kOk));
  first.Close();
  ASSERT_TRUE(WaitForEmptyLine(phone));
  PtyClient second(phone.device());
  // Root is let in anyway, so the mark itself is asked for.
  int exclusive = 1;
  ASSERT_EQ(ioctl(second.descriptor(), TIOCGEXCL, &exclusive), 0);
  EXPECT_EQ(exclusive, 0);
}

/// Milliseconds of processor time that this process has taken.
long ProcessorTime() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000 +
         (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000;
}

TEST(PtyPhone, TakesNoProcessorTimeWhileIdle) {
  PtyPhone phone(SimulatedPhone{});
  ASSERT_TRUE(phone.Start());
  {
    PtyClient client(phone.device());
    ASSERT_TRUE(client.Ask("AT").ends_with(kOk));
  }
  ASSERT_TRUE(WaitForEmptyLine(phone));
  ASSERT_TRUE(phone.WaitUntilQuiet());
  const long before = ProcessorTime();
  EXPECT_FALSE(phone.WaitFor([](SimulatedPhone&) { return false; }, std::chrono::milliseconds(300)));
  EXPECT_LT(ProcessorTime() - before, 30) << "the phone is busy although nothing happens";
}

TEST(PtyPhone, UnsolicitedLinesReachTheClient) {
  PtyPhone phone(SimulatedPhone{});
  ASSERT_TRUE(phone.Start());
  PtyClient client(phone.device());
  ASSERT_TRUE(client.Ask("ATE0").ends_with(kOk));
  phone.ChangePhone([](SimulatedPhone& served) { return served.Notify("RING"); });
  EXPECT_EQ(client.ReadUntil("RING\r\n"), "\r\nRING\r\n");
}

TEST(PtyPhone, WhatNobodyListensToIsLost) {
  PtyPhone phone(SimulatedPhone{});
  ASSERT_TRUE(phone.Start());
  phone.ChangePhone([](SimulatedPhone& served) { return served.Notify("LOST"); });
  ASSERT_TRUE(phone.WaitUntilQuiet());
  PtyClient client(phone.device());
  EXPECT_EQ(client.Ask("AT"), "AT\r" + kOk);
}

TEST(PtyPhone, DelayedRepliesComeInTheirOrder) {
  SimulatedPhone slow;
  slow.AddLatency(20);
  PtyPhone phone(std::move(slow));
  ASSERT_TRUE(phone.Start());
  PtyClient client(phone.device());
  ASSERT_TRUE(client.Ask("ATE0").ends_with(kOk));
  const auto start = std::chrono::steady_clock::now();
  ASSERT_TRUE(client.Write("AT+CSQ\rAT+CMGF?\r"));
  const std::string answer = client.ReadUntil("+CMGF: 0\r\n\r\nOK\r\n");
  EXPECT_LT(answer.find("+CSQ"), answer.find("+CMGF"));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(40));
}

TEST(PtyPhone, ABaudRatePacesTheLine) {
  PtyOptions options;
  options.baud = 9600;
  PtyPhone phone(SimulatedPhone{SampleMemory()}, options);
  ASSERT_TRUE(phone.Start());
  PtyClient client(phone.device());
  ASSERT_TRUE(client.Ask("ATE0").ends_with(kOk));
  const auto start = std::chrono::steady_clock::now();
  const std::string answer = client.Ask("AT+CPBR=1,20");
  EXPECT_TRUE(answer.ends_with(kOk));
  const auto least = std::chrono::microseconds(answer.size() * 1000000 / 960) - std::chrono::milliseconds(15);
  EXPECT_GE(std::chrono::steady_clock::now() - start, least);
}

TEST(PtyPhone, AListingLongerThanTheTerminalsBufferIsWhole) {
  PhoneMemory memory;
  auto& book = *memory.FindPhonebook("ME");
  for (int location = 1; location <= 500; ++location)
    book.entries[location] = {"07700900100", 129, u"Somebody known"};
  PtyPhone phone(SimulatedPhone{memory});
  ASSERT_TRUE(phone.Start());
  PtyClient client(phone.device());
  ASSERT_TRUE(client.Ask("ATE0").ends_with(kOk));
  const std::string answer = client.Ask("AT+CPBS=\"ME\";+CPBR=1,500");
  EXPECT_TRUE(answer.ends_with("+CPBR: 500,\"07700900100\",129,\"Somebody known\"\r\n" + kOk));
  EXPECT_EQ(answer.size(), 2U + 500 * 47 - 9 * 2 - 90 + kOk.size());
}

TEST(PtyPhone, AHangUpTakesTheLineAway) {
  const TemporaryFolder folder;
  SimulatedPhone faulty;
  ASSERT_TRUE(faulty.AddFault("AT+CSQ:hang-up:4"));
  PtyOptions options;
  options.port_name = "Test phone";
  PtyPhone phone(std::move(faulty), options);
  ASSERT_TRUE(phone.Start());
  PtyClient client(phone.device());
  ASSERT_TRUE(client.Ask("ATE0").ends_with(kOk));
  ASSERT_TRUE(client.Write("AT+CSQ\r"));
  EXPECT_TRUE(client.WaitForHangUp());
  EXPECT_TRUE(phone.WaitFor([&](SimulatedPhone&) { return !fs::is_symlink(PortFolder() + "/Test phone"); }));
  EXPECT_EQ(phone.device(), "");
}

TEST(PtyPhone, AHungUpPhoneMayComeBackOnAnotherDevice) {
  const TemporaryFolder folder;
  std::mutex mutex;
  std::string returned;
  SimulatedPhone faulty;
  ASSERT_TRUE(faulty.AddFault("AT+CSQ#1:hang-up-back"));
  PtyOptions options;
  options.port_name = "Test phone";
  options.on_device = [&](const std::string& device) {
    const std::lock_guard lock(mutex);
    returned = device;
  };
  PtyPhone phone(std::move(faulty), options);
  ASSERT_TRUE(phone.Start());
  PtyClient client(phone.device());
  ASSERT_TRUE(client.Ask("ATE0").ends_with(kOk));
  ASSERT_TRUE(client.Write("AT+CSQ\r"));
  EXPECT_TRUE(client.WaitForHangUp());
  ASSERT_TRUE(phone.WaitFor([&](SimulatedPhone&) {
    const std::lock_guard lock(mutex);
    return !returned.empty();
  }));
  EXPECT_EQ(fs::read_symlink(PortFolder() + "/Test phone"), phone.device());
  PtyClient again(phone.device());
  EXPECT_EQ(again.Ask("AT+CSQ"), "\r\n+CSQ: 21,99\r\n" + kOk);
}

TEST(PtyPhone, EveryChangeOfTheMemoryIsTold) {
  std::mutex mutex;
  std::vector<std::size_t> sizes;
  PtyOptions options;
  options.on_change = [&](const PhoneMemory& memory) {
    const std::lock_guard lock(mutex);
    sizes.push_back(memory.FindPhonebook("SM")->entries.size());
  };
  PtyPhone phone(SimulatedPhone{}, options);
  ASSERT_TRUE(phone.Start());
  PtyClient client(phone.device());
  for (const std::string_view line : {"AT", "AT+CPBW=1,\"1\"", "AT+CPBR=1", "AT+CPBW=2,\"2\"", "AT+CPBW=2"}) {
    ASSERT_TRUE(client.Ask(line).ends_with(kOk));
  }
  const std::lock_guard lock(mutex);
  EXPECT_EQ(sizes, (std::vector<std::size_t>{1, 2, 1}));
}

TEST(PtyPhone, ListsItselfAsAPortAndGoes) {
  const TemporaryFolder folder;
  PtyOptions options;
  options.port_name = "Test phone";
  {
    PtyPhone phone(SimulatedPhone{}, options);
    ASSERT_TRUE(phone.Start());
    EXPECT_EQ(fs::read_symlink(PortFolder() + "/Test phone"), phone.device());
    phone.Stop();
    EXPECT_FALSE(fs::is_symlink(PortFolder() + "/Test phone"));
  }
  EXPECT_TRUE(fs::is_empty(PortFolder()));
}

TEST(PtyPhone, StopsWithoutAClient) {
  PtyPhone phone(SimulatedPhone{});
  ASSERT_TRUE(phone.Start());
  phone.Stop();
  EXPECT_EQ(phone.device(), "");
  phone.Stop();
}

TEST(PtyPhone, AHungUpPhoneCanBeStartedAgain) {
  SimulatedPhone faulty;
  ASSERT_TRUE(faulty.AddFault("AT+CSQ:hang-up"));
  PtyPhone phone(std::move(faulty));
  ASSERT_TRUE(phone.Start());
  PtyClient client(phone.device());
  ASSERT_TRUE(client.Ask("ATE0;+CPBW=1,\"12\"").ends_with(kOk));
  ASSERT_TRUE(client.Write("AT+CSQ\r"));
  EXPECT_TRUE(client.WaitForHangUp());
  phone.Stop();
  ASSERT_TRUE(phone.Start());
  PtyClient again(phone.device());
  EXPECT_EQ(again.Ask("AT+CPBR=1"), "\r\n+CPBR: 1,\"12\",129,\"\"\r\n" + kOk);
}

TEST(PtyPhone, AStopLeavesNothingOfTheLineBehind) {
  PtyPhone phone(SimulatedPhone{});
  ASSERT_TRUE(phone.Start());
  PtyClient client(phone.device());
  ASSERT_EQ(client.Ask("ATE0"), "ATE0\r" + kOk);
  ASSERT_TRUE(client.Write("AT+CPBW=1,"));
  const auto all_read = [](SimulatedPhone& served) { return served.received_bytes().ends_with("=1,"); };
  ASSERT_TRUE(phone.WaitFor(all_read));
  phone.Stop();
  ASSERT_TRUE(phone.Start());
  PtyClient again(phone.device());
  EXPECT_EQ(again.Ask("\rAT"), kOk);
}

TEST(PtyPhone, APhoneThatCannotBeListedDoesNotStart) {
  const TemporaryFolder folder;
  setenv("XDG_RUNTIME_DIR", folder.File("missing/folder").c_str(), 1);
  PtyOptions options;
  options.port_name = "Test phone";
  PtyPhone phone(SimulatedPhone{}, options);
  EXPECT_FALSE(phone.Start());
}

}  // namespace
}  // namespace celldesk::simulator
