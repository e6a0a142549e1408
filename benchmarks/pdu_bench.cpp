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
    std::u16string().swap(message->pdu_text);
  }
  return messages;
}

/// A few hundred records as a listing or the editor makes them, new each time: what an operation allocates is
/// part of it. Seconds and allocations for one message.
class Operation {
 public:
  Operation(Messages (*make)(), Status (SmsMessage::*operation)()) : make_(make), operation_(operation) {}

  double Seconds() const {
    double seconds = 0;
    for (int batch = 0; batch < kBatches; ++batch) {
      const Messages messages = MakeMany();
      seconds += TimeOf([&] { Run(messages); });
    }
    return seconds / (kBatches * kCopies * static_cast<double>(SampleMessages().size()));
  }

  double Allocations() const {
    const Messages messages = make_();
    const std::size_t before = AllocationCount();
    Run(messages);
    return static_cast<double>(AllocationCount() - before) / static_cast<double>(messages.size());
  }

 private:
  static constexpr int kBatches = 200, kCopies = 10;

  Messages MakeMany() const {
    Messages all;
    for (int copy = 0; copy < kCopies; ++copy) {
      for (auto& message : make_()) all.push_back(std::move(message));
    }
    return all;
  }
  void Run(const Messages& messages) const {
    for (const auto& message : messages) {
      Status status = (message.get()->*operation_)();
      Keep(status);
    }
  }

  Messages (*make_)();
  Status (SmsMessage::*operation_)();
};

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
  const Operation decoding(Listed, &SmsMessage::Decode);
  const Sample decode = Repeat(options.runs, [&] { return decoding.Seconds(); });
  figures.push_back(
      {"decode a message", decode.median * kNanoseconds, "ns", kKnownDecoder, kDecodeBudget, decode.spread});
  figures.push_back(
      {"decode a message: allocations", decoding.Allocations(), "count", {}, kDecodeAllocations, 0});
  const Operation encoding(ToSend, &SmsMessage::Encode);
  const Sample encode = Repeat(options.runs, [&] { return encoding.Seconds(); });
  figures.push_back(
      {"encode a message", encode.median * kNanoseconds, "ns", kKnownEncoder, kEncodeBudget, encode.spread});
  figures.push_back(
      {"encode a message: allocations", encoding.Allocations(), "count", {}, kEncodeAllocations, 0});
  figures.push_back({"a record of 65 characters", RecordBytes(), "bytes", {}, kRecordBudget, 0});
}

}  // namespace celldesk::bench
