#include <memory>
#include <vector>

#include "benchmarks.h"
#include "data/sms_store.h"
#include "measure.h"
#include "memory.h"
#include "pdu/sms_message.h"
#include "sample_messages.h"

namespace celldesk::bench {
namespace {

// What a widely used C decoder takes for the same work.
constexpr double kKnownDecoder = 510, kKnownEncoder = 1390;
constexpr double kDecodeBudget = 200, kEncodeBudget = 300;
constexpr double kDecodeAllocations = 3, kEncodeAllocations = 2;
constexpr double kRecordBudget = 1536;

using Messages = std::vector<std::unique_ptr<SmsMessage>>;

Messages Listed() {
  Messages messages;
  for (const ListedMessage& listed : SampleMessages()) {
    messages.push_back(std::make_unique<SmsMessage>());
    TakeListed(*messages.back(), listed);
  }
  return messages;
}

/// The same texts and numbers as messages to send.
Messages ToSend() {
  Messages messages = Listed();
  for (const auto& message : messages) {
    static_cast<void>(message->Decode());
    if (message->type() == SmsType::kDeliver) {
      message->submit.number = message->deliver.number;
      message->submit.toa = message->deliver.toa;
      message->submit.relative_validity = 167;
    }
    message->first_octet = 0x31;
    message->pdu_text.clear();
  }
  return messages;
}

Sample PerMessage(const Options& options, Messages& messages, Status (SmsMessage::*operation)()) {
  std::size_t next = 0;
  return TimePerCall(options.runs, [&] {
    SmsMessage& message = *messages[next];
    next = next + 1 < messages.size() ? next + 1 : 0;
    Status status = (message.*operation)();
    Keep(status);
  });
}

/// Allocations of one operation on a message that has none of its results yet.
double AllocationsPerMessage(Messages messages, Status (SmsMessage::*operation)()) {
  const std::size_t before = AllocationCount();
  for (const auto& message : messages) static_cast<void>((message.get()->*operation)());
  return static_cast<double>(AllocationCount() - before) / static_cast<double>(messages.size());
}

/// A decoded record of the store, its PDU's text included: the mean of the samples, whose texts have 65
/// characters in the mean.
double RecordBytes() {
  constexpr int kRecords = 2000;
  const auto& samples = SampleMessages();
  SmsStore store;
  const std::size_t before = HeapInUse();
  for (std::size_t i = 0; i < kRecords; ++i) {
    SmsMessage& message = store.At(store.Append());
    TakeListed(message, samples[i % samples.size()]);
    static_cast<void>(message.Decode());
  }
  return static_cast<double>(HeapInUse() - before) / kRecords;
}

}  // namespace

void MeasurePdu(Figures& figures, const Options& options) {
  constexpr double kNanoseconds = 1e9;
  Messages listed = Listed();
  const Sample decode = PerMessage(options, listed, &SmsMessage::Decode);
  figures.push_back(
      {"decode a message", decode.median * kNanoseconds, "ns", kKnownDecoder, kDecodeBudget, decode.spread});
  figures.push_back({"decode a message: allocations",
                     AllocationsPerMessage(Listed(), &SmsMessage::Decode),
                     "count",
                     {},
                     kDecodeAllocations,
                     0});
  Messages outgoing = ToSend();
  const Sample encode = PerMessage(options, outgoing, &SmsMessage::Encode);
  figures.push_back(
      {"encode a message", encode.median * kNanoseconds, "ns", kKnownEncoder, kEncodeBudget, encode.spread});
  figures.push_back({"encode a message: allocations",
                     AllocationsPerMessage(ToSend(), &SmsMessage::Encode),
                     "count",
                     {},
                     kEncodeAllocations,
                     0});
  figures.push_back({"a record of 65 characters", RecordBytes(), "bytes", {}, kRecordBudget, 0});
}

}  // namespace celldesk::bench
