#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "benchmarks.h"
#include "data/sms_file.h"
#include "file_floor.h"
#include "measure.h"
#include "memory.h"
#include "platform/posix/posix_file.h"
#include "sample_messages.h"
#include "scratch.h"
#include "util/text.h"

namespace celldesk::bench {
namespace {

// Two stores together, because one holds 65536 messages at most.
constexpr int kFiles = 2;
constexpr int kMessages = 50000;
constexpr double kReadBudget = 1.5, kWriteBudget = 2;
constexpr double kMilliseconds = 1e3;
constexpr double kMegabyte = 1e6;

std::u16string PathOf(int n) {
  return FromUtf8(Scratch::Path("messages" + std::to_string(n) + ".sms").string());
}

std::u16string NoText(int /*number*/) { return {}; }

void FillStore(SmsStore& store) {
  const auto& samples = SampleMessages();
  for (std::size_t i = 0; i < kMessages; ++i) {
    SmsMessage& message = store.At(store.Append());
    TakeListed(message, samples[i % samples.size()]);
    message.flags = kMessageInUse;
    static_cast<void>(message.Decode());
  }
}

std::vector<const SmsMessage*> AllOf(const SmsStore& store) {
  std::vector<const SmsMessage*> messages;
  for (int i = 0; i < store.count(); ++i) messages.push_back(&store.At(i));
  return messages;
}

void ReadStore(FileSystem& files, int n, SmsStore& store) {
  const Status status = ReadSmsFile(files, PathOf(n), {}, [&](std::u16string_view) {
    return SmsTarget{&store, nullptr};
  });
  if (Failed(status) || store.count() != kMessages) std::fputs("Messages were not read whole.\n", stderr);
}

/// Seconds for both stores; that they are destroyed afterwards does not count.
double TimeReading(FileSystem& files) {
  MakeRoom();
  SmsStore first, second;
  return TimeOf([&] {
    ReadStore(files, 0, first);
    ReadStore(files, 1, second);
  });
}

/// Seconds for the characters of both files and the decoding of every PDU, into records that are there.
double TimeDecoding(FileSystem& files, std::vector<SmsMessage>& samples) {
  MakeRoom();
  std::optional<Characters> first, second;
  return TimeOf([&] {
    first.emplace(files, PathOf(0));
    second.emplace(files, PathOf(1));
    for (std::size_t i = 0; i < kFiles * kMessages; ++i) {
      Status status = samples[i % samples.size()].Decode();
      Keep(status);
    }
  });
}

void AddReading(Figures& figures, FileSystem& files, const Options& options, Room room) {
  SetRoom(room);
  std::vector<SmsMessage> samples(SampleMessages().size());
  for (std::size_t i = 0; i < samples.size(); ++i) TakeListed(samples[i], SampleMessages()[i]);
  const Sample read = Repeat(options.runs, [&] { return TimeReading(files); });
  const Sample floor = Repeat(options.runs, [&] { return TimeDecoding(files, samples); });
  const double least = floor.median * kMilliseconds;
  figures.push_back({"read 100000 messages" + NameOf(room), read.median * kMilliseconds, "ms", least,
                     kReadBudget * least, read.spread});
}

/// The most memory while one file is read, against what the store keeps.
void AddMemory(Figures& figures, FileSystem& files) {
  SmsStore store;
  const std::size_t before = HeapInUse();
  const std::size_t peak = PeakGrowth([&] { ReadStore(files, 0, store); });
  const double kept = static_cast<double>(HeapInUse() - before) / kMegabyte;
  figures.push_back(
      {"read 50000 messages: peak memory", static_cast<double>(peak) / kMegabyte, "MB", kept, {}, 0});
}

void AddWriting(Figures& figures, FileSystem& files, const SmsStore& store, const Options& options) {
  const std::vector<const SmsMessage*> messages = AllOf(store);
  const Characters text(files, PathOf(0));
  const Sample write = Repeat(options.runs, [&] {
    return TimeOf([&] {
      for (int n = 0; n < kFiles; ++n)
        static_cast<void>(WriteSmsFile(files, PathOf(n), u"Inbox", messages, NoText));
    });
  });
  const Sample floor = Repeat(options.runs, [&] {
    return TimeOf([&] {
      for (int n = 0; n < kFiles; ++n)
        static_cast<void>(ConvertAndWrite(files, PathOf(kFiles + n), text.view()));
    });
  });
  const double least = floor.median * kMilliseconds;
  figures.push_back({"write 100000 messages", write.median * kMilliseconds, "ms", least, kWriteBudget * least,
                     write.spread});
}

}  // namespace

void MeasureSmsFile(Figures& figures, const Options& options) {
  PosixFileSystem files;
  SmsStore store;
  FillStore(store);
  for (int n = 0; n < kFiles; ++n) {
    if (Failed(WriteSmsFile(files, PathOf(n), u"Inbox", AllOf(store), NoText))) {
      std::fputs("A file was not written.\n", stderr);
    }
  }
  AddReading(figures, files, options, Room::kUsed);
  AddReading(figures, files, options, Room::kNew);
  AddMemory(figures, files);
  AddWriting(figures, files, store, options);
}

}  // namespace celldesk::bench
