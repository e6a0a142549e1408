#include <gtest/gtest.h>

#include <map>
#include <string>

#include "pdu/gsm_alphabet.h"
#include "phonebook_fixture.h"
#include "services/sms_service.h"
#include "simulator/profile.h"
#include "simulator/sample_memory.h"
#include "support/fake_registry.h"
#include "support/fake_thread.h"
#include "support/manual_waiter.h"
#include "support/simulated_line.h"

namespace celldesk {
namespace {

using simulator::PhoneMemory;

/// The services on a simulated phone with the sample memory and these habits, connected.
struct PhoneSession {
  explicit PhoneSession(std::string_view profiles = "default")
      : line(waiter, simulator::SimulatedPhone(simulator::SampleMemory(), *simulator::MakeProfile(profiles))),
        link(line, threads, registry, waiter),
        engine(link, waiter),
        service(engine) {
    line.DeliverTo([this](std::span<const std::uint8_t> bytes) {
      std::u16string text(bytes.size(), u'\0');
      GsmBytesToWide(text.data(), bytes.data(), bytes.size());
      link.ReceiveChunk(text);
    });
    link.set_port_name(u"COM1:");
    EXPECT_EQ(link.Open(), S_OK);
    EXPECT_EQ(engine.DetectPhone(), S_OK);
    EXPECT_EQ(service.SetCentre(u"+447700900000"), S_OK);
  }

  PhoneMemory& memory() { return line.phone().memory(); }

  ManualWaiter waiter;
  SimulatedLine line;
  FakeThreadStarter threads;
  FakeRegistry registry;
  PhoneLink link;
  AtEngine engine;
  SmsService service;
};

using Entries = std::map<int, std::pair<std::string, std::u16string>>;

std::u16string_view WithoutPadding(std::u16string_view name) {
  return name.substr(0, name.find_last_not_of(u' ') + 1);
}

Entries EntriesOf(const AddressBook& book) {
  Entries entries;
  for (const AddressEntry& entry : book.entries()) {
    if (!entry.is_occupied()) continue;
    const std::u16string_view number = entry.number;
    entries[ParseDecimal(entry.id)] = {std::string(number.begin(), number.end()),
                                       std::u16string(WithoutPadding(entry.name))};
  }
  return entries;
}

Entries EntriesOf(const simulator::Phonebook& book) {
  Entries entries;
  for (const auto& [index, entry] : book.entries) entries[index] = {entry.number, entry.name};
  return entries;
}

class SimulatedPhoneProfile : public testing::TestWithParam<std::string> {};

TEST_P(SimulatedPhoneProfile, GivesItsWholeSimBook) {
  PhoneSession session(GetParam());
  AddressBook book(u"SM", true);
  ASSERT_EQ(QueryPhonebook(session.engine, book), S_OK);
  EXPECT_EQ(book.memory().last, session.memory().FindPhonebook("SM")->last);
  ASSERT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  EXPECT_EQ(EntriesOf(book), EntriesOf(*session.memory().FindPhonebook("SM")));
  EXPECT_FALSE(book.IsModified());
}

TEST_P(SimulatedPhoneProfile, TakesWhatIsChangedInItsSimBook) {
  PhoneSession session(GetParam());
  AddressBook book(u"SM", true);
  ASSERT_EQ(QueryPhonebook(session.engine, book), S_OK);
  ASSERT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  book.Erase(0);
  Change(book, book.FirstFree(1), u"New One", u"+447700900999");
  const Entries wanted = EntriesOf(book);
  ASSERT_EQ(WritePhonebook(session.engine, book, nullptr, std::nullopt), S_OK);
  EXPECT_EQ(EntriesOf(*session.memory().FindPhonebook("SM")), wanted);
  EXPECT_FALSE(book.IsModified());
}

INSTANTIATE_TEST_SUITE_P(Habits, SimulatedPhoneProfile,
                         testing::Values("default", "padded-names", "no-lengths", "no-plus", "missing-types",
                                         "trailing-comma", "chatty", "slow", "no-space", "no-me"));

class SimulatedPhoneMessages : public testing::TestWithParam<std::string> {};

TEST_P(SimulatedPhoneMessages, AreListedWithTheirPdus) {
  PhoneSession session(GetParam());
  // Taken before the listing, which makes unread messages read ones.
  std::multimap<std::string, int> wanted;
  for (const simulator::MessageStore& store : session.memory().stores) {
    for (const auto& [index, message] : store.messages) {
      wanted.emplace(store.name + message.pdu, static_cast<int>(message.status));
    }
  }
  ASSERT_EQ(session.service.QueryCapabilities(), S_OK);
  ASSERT_EQ(session.service.ListAll(nullptr), S_OK);
  std::multimap<std::string, int> listed;
  for (int position = 0; position < session.service.messages().count(); ++position) {
    const SmsMessage& message = session.service.messages().At(position);
    const std::u16string_view memory = kMessageMemories[static_cast<std::size_t>(message.memory)];
    const std::u16string name = std::u16string(memory) + message.pdu_text;
    listed.emplace(std::string(name.begin(), name.end()), message.storage_status);
    EXPECT_GT(message.pdu_text.size() / 2, static_cast<std::size_t>(message.tpdu_length));
  }
  EXPECT_FALSE(wanted.empty());
  EXPECT_EQ(listed, wanted);
}

INSTANTIATE_TEST_SUITE_P(Habits, SimulatedPhoneMessages,
                         testing::Values("default", "no-alpha", "alpha-names", "prompt-crlf", "no-counts",
                                         "no-store", "slow", "index-zero", "no-space", "loose-lists"));

/// A message to the phone's own number.
SmsMessage& Compose(PhoneSession& session, std::uint32_t flags, int memory) {
  SmsMessage& message = session.service.messages().At(session.service.messages().Append());
  message.flags = flags;
  message.memory = static_cast<std::int16_t>(memory);
  message.storage_status = kStoredUnsent;
  message.first_octet = 0x11;
  message.submit.toa = 0x91;
  message.submit.number = u"447700900123";
  message.submit.relative_validity = 167;
  message.text = u"Hello myself";
  EXPECT_EQ(message.Encode(), S_OK);
  return message;
}

class SimulatedPhoneSubmit : public testing::TestWithParam<std::string> {};

TEST_P(SimulatedPhoneSubmit, SendsStoresAndDeletesInOneUpload) {
  PhoneSession session(GetParam());
  ASSERT_EQ(session.service.QueryCapabilities(), S_OK);
  simulator::MessageStore& sim = *session.memory().FindStore("SM");
  sim.messages.clear();
  session.memory().FindStore("ME")->messages.clear();
  Compose(session, 155, kPhoneMemory);
  ASSERT_EQ(session.service.UploadAll(), S_OK);
  EXPECT_EQ(session.memory().sent.size(), 1U);

  session.service.messages().Clear();
  ASSERT_EQ(session.service.ListAll(nullptr), S_OK);
  ASSERT_EQ(session.service.messages().count(), 2);
  SmsMessage& received = session.service.messages().At(0);
  EXPECT_TRUE(received.is_received());
  EXPECT_EQ(received.text, u"Hello myself");
  EXPECT_EQ(received.deliver.number, u"447700900123");
  const SmsMessage& stored = session.service.messages().At(1);
  EXPECT_EQ(stored.storage_status, kStoredUnsent);
  EXPECT_EQ(stored.memory, kPhoneMemory);
  EXPECT_EQ(stored.submit.number, u"447700900123");

  received.flags |= kMessageChanged | kMessageToDelete;
  ASSERT_EQ(session.service.UploadAll(), S_OK);
  EXPECT_TRUE(sim.messages.empty());
}

INSTANTIATE_TEST_SUITE_P(Habits, SimulatedPhoneSubmit,
                         testing::Values("default", "prompt-crlf", "prompt-bare", "slow", "index-zero"));

TEST(SimulatedPhone, RejectsAMemoryThatItDoesNotHave) {
  PhoneSession session("no-me");
  AddressBook book(u"ME", false);
  EXPECT_EQ(QueryPhonebook(session.engine, book), E_NOTIMPL);
}

TEST(SimulatedPhone, IsReadOverTheWholeOfAHugeMemory) {
  PhoneSession session("huge-range");
  AddressBook book(u"SM", true);
  ASSERT_EQ(QueryPhonebook(session.engine, book), S_OK);
  ASSERT_EQ(ReadPhonebook(session.engine, book, nullptr), S_OK);
  EXPECT_EQ(book.count(), 65535);
  EXPECT_EQ(EntriesOf(book), EntriesOf(*session.memory().FindPhonebook("SM")));
}

TEST(SimulatedPhone, SendsWithoutTheCentreFieldForTheAdapter) {
  PhoneSession session("no-smsc");
  session.service.SetOptions(false, false, true, 167);
  const SmsMessage& message = Compose(session, 27, 0);
  EXPECT_EQ(session.service.Send(message), S_OK);
  ASSERT_EQ(session.memory().sent.size(), 1U);
  EXPECT_EQ(session.memory().sent[0].body, std::string(message.pdu_text.begin(), message.pdu_text.end()));
}

TEST(SimulatedPhone, CannotStoreWhereItOffersNoStoring) {
  PhoneSession session("no-store");
  ASSERT_EQ(session.service.QueryCapabilities(), S_OK);
  EXPECT_FALSE(session.service.store_supported());
}

}  // namespace
}  // namespace celldesk
