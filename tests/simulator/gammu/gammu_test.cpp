// A client written elsewhere must be able to work with the phone. These tests run the program "gammu" and
// look at what it prints and at the phone's memory afterwards.

#include <gtest/gtest.h>

#include <fstream>

#include "simulator/character_set.h"
#include "simulator/loopback_network.h"
#include "simulator/phone_program.h"
#include "simulator/posix/pty_phone.h"
#include "simulator/sample_memory.h"
#include "simulator/temporary_folder.h"

namespace celldesk::simulator {
namespace {

/// The sample memory in books of 30 places: reading a whole book is then quick.
PhoneMemory SmallSample() {
  PhoneMemory memory = SampleMemory();
  for (const std::string_view name : {"SM", "ME"}) {
    Phonebook& book = *memory.FindPhonebook(name);
    book.last = 30;
    book.entries.erase(book.entries.upper_bound(book.last), book.entries.end());
  }
  return memory;
}

/// A phone being served and gammu set up for it.
class Gammu : public testing::Test {
 protected:
  void SetUp() override {
    setenv("LC_ALL", "C.UTF-8", 1);
    Program probe("gammu", {"--version"});
    probe.ReadAll();
    ASSERT_EQ(probe.Wait(), 0) << "the program gammu is missing: install the package gammu";
  }

  void Serve(PhoneMemory memory, std::string_view profiles = "default") {
    phone_.emplace(SimulatedPhone(std::move(memory), MakeProfile(profiles).value_or(Profile())));
    ASSERT_TRUE(phone_->Start());
    std::ofstream(folder_.File("gammurc"))
        << "[gammu]\ndevice = " << phone_->device() << "\nconnection = at115200\nmodel = at\n";
  }

  /// What gammu prints; it must succeed.
  std::string Run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"-c", folder_.File("gammurc")});
    Program program("gammu", arguments);
    std::string output = program.ReadAll();
    EXPECT_EQ(program.Wait(), 0) << output;
    return output;
  }

  PhoneMemory Memory() {
    PhoneMemory memory;
    phone_->ChangePhone([&memory](SimulatedPhone& phone) {
      memory = phone.memory();
      return std::vector<Emission>();
    });
    return memory;
  }

  TemporaryFolder folder_;
  std::optional<PtyPhone> phone_;
};

bool Holds(const std::string& output, const std::string& part) {
  return output.find(part) != std::string::npos;
}

void ExpectEveryEntry(const std::string& output, const PhoneMemory& memory, const std::string& book) {
  std::size_t count = 0;
  for (const auto& [location, entry] : memory.FindPhonebook(book)->entries) {
    EXPECT_TRUE(Holds(output, "Memory " + book + ", Location " + std::to_string(location) + '\n'))
        << location;
    EXPECT_TRUE(Holds(output, '"' + entry.number + '"')) << entry.number;
    EXPECT_TRUE(Holds(output, '"' + ToUtf8(entry.name) + '"')) << ToUtf8(entry.name) << '\n' << output;
    ++count;
  }
  EXPECT_GT(count, 8U);
}

TEST_F(Gammu, IdentifiesThePhone) {
  Serve(SmallSample());
  const std::string output = Run({"identify"});
  for (const std::string_view part :
       {"Corvane", "Simulated Phone", "Firmware             : 1.0", "490154203237518", "001010123456789"}) {
    EXPECT_TRUE(Holds(output, std::string(part))) << part << '\n' << output;
  }
}

TEST_F(Gammu, ReadsBothPhonebooksWhole) {
  const PhoneMemory memory = SmallSample();
  Serve(memory);
  ExpectEveryEntry(Run({"getallmemory", "SM"}), memory, "SM");
  ExpectEveryEntry(Run({"getallmemory", "ME"}), memory, "ME");
  EXPECT_EQ(Memory(), memory);
}

TEST_F(Gammu, AddsAnEntry) {
  Serve(SmallSample());
  std::ofstream(folder_.File("new.vcf")) << "BEGIN:VCARD\nVERSION:2.1\nN;CHARSET=UTF-8:M\xC3\xBCller\n"
                                            "TEL;PREF;VOICE:+447700900777\nEND:VCARD\n";
  Run({"addnew", folder_.File("new.vcf"), "-yes", "-memory", "SM"});
  const PhoneMemory memory = Memory();
  EXPECT_EQ(memory.FindPhonebook("SM")->entries.at(6),
            (PhonebookEntry{"+447700900777", 145, u"M\u00FCller"}));
  EXPECT_EQ(memory.FindPhonebook("ME")->entries, SmallSample().FindPhonebook("ME")->entries);
}

TEST_F(Gammu, DeletesEntries) {
  Serve(SmallSample());
  const std::string output = Run({"deletememory", "SM", "1", "2"});
  EXPECT_TRUE(Holds(output, "Entry was deleted")) << output;
  PhoneMemory expected = SmallSample();
  expected.FindPhonebook("SM")->entries.erase(1);
  expected.FindPhonebook("SM")->entries.erase(2);
  EXPECT_EQ(Memory(), expected);
}

TEST_F(Gammu, BringsABackedUpPhonebookBack) {
  const PhoneMemory memory = SmallSample();
  Serve(memory);
  Run({"backup", folder_.File("phone.backup"), "-yes"});
  Run({"deleteallmemory", "ME"});
  ASSERT_TRUE(Memory().FindPhonebook("ME")->entries.empty());
  Run({"restore", folder_.File("phone.backup"), "-yes"});
  EXPECT_EQ(Memory().FindPhonebook("ME")->entries, memory.FindPhonebook("ME")->entries);
}

TEST_F(Gammu, ReadsEveryMessage) {
  Serve(SmallSample());
  const std::string output = Run({"getallsms"});
  for (const std::u16string_view part :
       {u"Good morning! Coffee at ten?", u"Gr\u00FC\u00DFe aus K\u00F6ln, bis sp\u00E4ter",
        u"Happy birthday! The cake is \u00A35, the song is free.", u"Train is late, start without me.",
        u"Caf\u00E9 closes at six today \u20AC", u"Fare to the station: about 12 pounds.", u"Happy new year!",
        u"SMS status report", u"Delivery status      : Delivered", u"Status               : UnSent",
        u"Status               : Sent", u"Status               : UnRead", u"Status               : Read",
        u"8 SMS parts in 8 SMS sequences"}) {
    EXPECT_TRUE(Holds(output, ToUtf8(part))) << ToUtf8(part) << '\n' << output;
  }
}

TEST_F(Gammu, SavesAMessage) {
  Serve(PhoneMemory());
  const std::string output =
      Run({"savesms", "TEXT", "-folder", "1", "-unread", "-sender", "+447700900556", "-text", "Stored away"});
  EXPECT_TRUE(Holds(output, "location 1")) << output;
  const PhoneMemory memory = Memory();
  const auto& messages = memory.FindStore("SM")->messages;
  ASSERT_EQ(messages.size(), 1U);
  const auto tpdu = ParseStored(messages.at(1));
  ASSERT_TRUE(tpdu.has_value());
  EXPECT_EQ(tpdu->kind, TpduKind::kDeliver);
  EXPECT_EQ(tpdu->address.Text(), "+447700900556");
  EXPECT_EQ(TextOf(*tpdu), u"Stored away");
  EXPECT_EQ(messages.at(1).status, MessageStatus::kReceivedUnread);
}

TEST_F(Gammu, SendsAMessageThatComesBackWithItsReport) {
  Serve(PhoneMemory());
  const std::string output = Run({"sendsms", "TEXT", "+447700900123", "-report", "-text", "Hello loop"});
  EXPECT_TRUE(Holds(output, "message reference=1")) << output;
  ASSERT_EQ(Memory().sent.size(), 1U);
  const std::string list = Run({"getallsms"});
  EXPECT_TRUE(Holds(list, "Hello loop")) << list;
  EXPECT_TRUE(Holds(list, "Reference number     : 1")) << list;
  EXPECT_TRUE(Holds(list, "2 SMS parts in 2 SMS sequences")) << list;
}

TEST_F(Gammu, DeletesAMessage) {
  Serve(SmallSample());
  Run({"deletesms", "1", "1"});
  PhoneMemory expected = SmallSample();
  expected.FindStore("SM")->messages.erase(1);
  EXPECT_EQ(Memory(), expected);
}

TEST_F(Gammu, ReadsAndSetsTheMessageCentre) {
  Serve(PhoneMemory());
  EXPECT_TRUE(Holds(Run({"getsmsc"}), "\"+447700900000\""));
  Run({"setsmsc", "1", "+447700900001"});
  EXPECT_EQ(Memory().centre, "+447700900001");
}

TEST_F(Gammu, SeesTheNetwork) {
  Serve(PhoneMemory());
  const std::string output = Run({"networkinfo"});
  EXPECT_TRUE(Holds(output, "home network")) << output;
  EXPECT_TRUE(Holds(output, "001 01")) << output;
}

TEST_F(Gammu, WorksWithAPhoneOfOtherHabits) {
  const PhoneMemory memory = SmallSample();
  Serve(memory, "doubled-cr,no-me,not-found");
  ExpectEveryEntry(Run({"getallmemory", "SM"}), memory, "SM");
}

}  // namespace
}  // namespace celldesk::simulator
