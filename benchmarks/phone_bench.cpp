#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "benchmarks.h"
#include "data/address_book.h"
#include "measure.h"
#include "phone_session.h"
#include "sample_messages.h"
#include "services/phonebook_transfer.h"
#include "services/sms_service.h"
#include "util/text.h"

namespace celldesk::bench {
namespace {

constexpr int kPhones = 5;
constexpr int kEntries = 250;
constexpr int kMessages = 1000;
constexpr double kReadEnd = 0.050;  // the link's reader waits so long after the last byte
constexpr double kPhonebookBudget = 1.03;
constexpr double kMessageBudget = 1.03;

simulator::PhoneMemory PhoneWithEntries() {
  simulator::PhoneMemory memory;
  auto& entries = memory.FindPhonebook("SM")->entries;
  for (int i = 1; i <= kEntries; ++i) {
    const std::string digits = std::to_string(1000 + i).substr(1);
    entries[i] = {"+447700900" + digits, simulator::kInternational,
                  u"Person number " + WidenAscii(std::to_string(i))};
  }
  return memory;
}

/// Half of the messages in each memory.
simulator::PhoneMemory PhoneWithMessages() {
  simulator::PhoneMemory memory;
  const auto& samples = SampleMessages();
  for (const char* name : {"SM", "ME"}) {
    simulator::MessageStore& store = *memory.FindStore(name);
    store.capacity = kMessages / 2;
    for (int i = 1; i <= kMessages / 2; ++i) {
      const ListedMessage& message = samples[static_cast<std::size_t>(i) % samples.size()];
      store.messages[i] = {static_cast<simulator::MessageStatus>(message.storage_status), message.pdu};
    }
  }
  return memory;
}

/// What the command Connect does, in its order.
Status Connect(PhoneSession& session, AddressBook& sim, AddressBook& phone, SmsService& sms) {
  Status status = session.link().Open();
  if (!Failed(status)) status = session.engine().DetectPhone();
  if (!Failed(status)) status = QueryPhonebook(session.engine(), sim);
  if (!Failed(status)) status = QueryPhonebook(session.engine(), phone);
  return Failed(status) ? status : sms.QueryCapabilities();
}

PhoneRun LoadPhonebook(PhoneSession& session) {
  AddressBook sim(u"SM", true);
  AddressBook phone(u"ME", false);
  SmsService sms(session.engine());
  const Stopwatch watch;
  Status status = Connect(session, sim, phone, sms);
  if (!Failed(status)) status = ReadPhonebook(session.engine(), sim, nullptr);
  PhoneRun run{watch.Seconds(), session.toll(), !Failed(status)};
  const auto& entries = sim.entries();
  run.done &= std::count_if(entries.begin(), entries.end(),
                            [](const AddressEntry& entry) { return entry.is_occupied(); }) == kEntries;
  return run;
}

Toll Difference(const Toll& later, const Toll& earlier) {
  return {later.bytes - earlier.bytes, later.pauses - earlier.pauses, later.read_ends - earlier.read_ends};
}

PhoneRun LoadMessages(PhoneSession& session) {
  AddressBook sim(u"SM", true);
  AddressBook phone(u"ME", false);
  SmsService sms(session.engine());
  Status status = Connect(session, sim, phone, sms);
  const Toll before = session.toll();
  const Stopwatch watch;
  if (!Failed(status)) status = sms.ListAll(nullptr);
  const double seconds = watch.Seconds();
  return {seconds, Difference(session.toll(), before),
          !Failed(status) && sms.messages().count() == kMessages};
}

void Add(Figures& figures, const std::string& name, double budget, const std::vector<PhoneRun>& runs) {
  std::vector<double> times;
  for (const PhoneRun& run : runs) {
    if (!run.done) std::fprintf(stderr, "%s: not everything arrived; the figure is void.\n", name.c_str());
    times.push_back(run.seconds);
  }
  const Sample sample = Summarize(times);
  const Toll& toll = runs.front().toll;
  const double without_read_ends = toll.line_time() + toll.pauses;
  const double floor = without_read_ends + toll.read_ends * kReadEnd;
  std::fprintf(stderr, "%s: %zu bytes, %.3f s on the line, %.1f s of pauses, %d ends of reads\n",
               name.c_str(), toll.bytes, toll.line_time(), toll.pauses, toll.read_ends);
  figures.push_back({name, sample.median, "s", floor, budget * floor, sample.spread});
  figures.push_back({name + ", without the reads' ends", sample.median, "s", without_read_ends, std::nullopt,
                     sample.spread});
}

}  // namespace

void MeasurePhonebook(Figures& figures, const Options& /*options*/) {
  Add(figures, "connect and load 250 entries", kPhonebookBudget,
      RunAtOnce(kPhones, PhoneWithEntries(), LoadPhonebook));
}

void MeasureMessages(Figures& figures, const Options& /*options*/) {
  Add(figures, "load 1000 messages", kMessageBudget, RunAtOnce(kPhones, PhoneWithMessages(), LoadMessages));
}

}  // namespace celldesk::bench
