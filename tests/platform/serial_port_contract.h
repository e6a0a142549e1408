#pragma once

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <memory>
#include <numeric>
#include <span>
#include <string>
#include <string_view>
#include <thread>

#include "platform/event.h"
#include "platform/serial_port.h"

namespace celldesk {

/// What every back end of SerialPort promises. `Line` is a serial line with both ends at hand:
///   std::unique_ptr<SerialPort> Open(OpenProblem* problem);   // the near end
///   bool Send(std::string_view);  std::string Receive(std::size_t count);  bool WaitForBytes();
///   void Unplug();                                            // the line goes away
/// On a line that has gone a read waits until it is purged, or so long that no test sees the end of it.
template <typename Line>
class SerialPortContract : public testing::Test {
 protected:
  static constexpr std::chrono::minutes kDeadline{1};
  static constexpr std::chrono::hours kNever{1};

  /// One read on a thread of its own.
  class PendingRead {
   public:
    PendingRead(SerialPort& port, std::size_t size)
        : port_(port), buffer_(size, '\0'), thread_([this] { Run(); }) {}
    ~PendingRead() {
      if (!done_.Wait(kDeadline)) ADD_FAILURE() << "the read does not end";
      if (!done_.IsSet()) port_.Purge();
      thread_.join();
    }
    /// The result once the read has ended; `bytes` gets what it read.
    ReadResult Await(std::string* bytes = nullptr) {
      if (!done_.Wait(kDeadline)) ADD_FAILURE() << "the read does not end";
      if (!done_.IsSet()) port_.Purge();
      done_.Wait(kDeadline);
      if (bytes) *bytes = buffer_.substr(0, result_.count);
      return result_;
    }

   private:
    void Run() {
      result_ = port_.Read({reinterpret_cast<std::uint8_t*>(buffer_.data()), buffer_.size()});
      done_.Set();
    }

    SerialPort& port_;
    std::string buffer_;
    ReadResult result_{E_FAIL, 0};
    Event done_;
    std::thread thread_;
  };

  std::unique_ptr<SerialPort> OpenLine() {
    OpenProblem problem = OpenProblem::kOther;
    auto port = line_.Open(&problem);
    EXPECT_EQ(problem, OpenProblem::kNone);
    return port;
  }

  static std::string ReadOnce(SerialPort& port, std::size_t size) {
    std::string bytes;
    EXPECT_EQ(PendingRead(port, size).Await(&bytes).status, S_OK);
    return bytes;
  }

  static std::span<const std::uint8_t> Bytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
  }

  static std::string EveryByte() {
    std::string bytes(256, '\0');
    std::iota(bytes.begin(), bytes.end(), '\0');
    return bytes;
  }

  Line line_;
};

TYPED_TEST_SUITE_P(SerialPortContract);

TYPED_TEST_P(SerialPortContract, DeliversEveryByteValueUnchangedInBothDirections) {
  const auto port = this->OpenLine();
  EXPECT_EQ(port->SetReadInterval(this->kNever), S_OK);
  EXPECT_TRUE(this->line_.Send(this->EveryByte()));
  EXPECT_EQ(this->ReadOnce(*port, 256), this->EveryByte());
  EXPECT_EQ(port->Write(this->Bytes(this->EveryByte())), S_OK);
  EXPECT_EQ(this->line_.Receive(256), this->EveryByte());
}

TYPED_TEST_P(SerialPortContract, ASecondOpenFindsThePortInUseUntilTheFirstIsClosed) {
  auto port = this->OpenLine();
  OpenProblem problem = OpenProblem::kNone;
  EXPECT_EQ(this->line_.Open(&problem), nullptr);
  EXPECT_EQ(problem, OpenProblem::kInUse);
  port.reset();
  EXPECT_NE(this->OpenLine(), nullptr);
}

TYPED_TEST_P(SerialPortContract, AFailedSecondOpenLeavesTheFirstWorking) {
  const auto port = this->OpenLine();
  EXPECT_EQ(this->line_.Open(nullptr), nullptr);
  EXPECT_EQ(port->Write(this->Bytes("AT\r")), S_OK);
  EXPECT_EQ(this->line_.Receive(3), "AT\r");
}

TYPED_TEST_P(SerialPortContract, AReadEndsAtOnceWhenItsBufferIsFull) {
  const auto port = this->OpenLine();
  EXPECT_EQ(port->SetReadInterval(this->kNever), S_OK);
  EXPECT_TRUE(this->line_.Send("OKAY"));
  EXPECT_EQ(this->ReadOnce(*port, 3), "OKA");
  EXPECT_EQ(this->ReadOnce(*port, 1), "Y");
}

TYPED_TEST_P(SerialPortContract, AReadEndsWhenTheLineFallsSilent) {
  const auto port = this->OpenLine();
  EXPECT_EQ(port->SetReadInterval(std::chrono::milliseconds(50)), S_OK);
  EXPECT_TRUE(this->line_.Send("\r\nOK\r\n"));
  EXPECT_EQ(this->ReadOnce(*port, 256), "\r\nOK\r\n");
}

TYPED_TEST_P(SerialPortContract, WithoutAnIntervalAReadReturnsWithWhatHasArrived) {
  const auto port = this->OpenLine();
  EXPECT_TRUE(this->line_.Send("OK"));
  EXPECT_EQ(this->ReadOnce(*port, 256), "OK");
}

TYPED_TEST_P(SerialPortContract, AReadWaitsForItsFirstByte) {
  const auto port = this->OpenLine();
  EXPECT_EQ(port->SetReadInterval(std::chrono::milliseconds(1)), S_OK);
  typename TestFixture::PendingRead read(*port, 1);
  EXPECT_TRUE(this->line_.Send("!"));
  std::string bytes;
  EXPECT_EQ(read.Await(&bytes).status, S_OK);
  EXPECT_EQ(bytes, "!");
}

TYPED_TEST_P(SerialPortContract, EverySplitOfAReplyArrivesWhole) {
  const auto port = this->OpenLine();
  EXPECT_EQ(port->SetReadInterval(this->kNever), S_OK);
  const std::string reply = "\r\nERR\r\nOK\r\n";
  for (unsigned cuts = 0; cuts < 1U << (reply.size() - 1); ++cuts) {
    typename TestFixture::PendingRead read(*port, reply.size());
    std::size_t start = 0;
    for (std::size_t end = 1; end <= reply.size(); ++end) {
      if (end < reply.size() && (cuts >> (end - 1) & 1) == 0) continue;
      ASSERT_TRUE(this->line_.Send(std::string_view(reply).substr(start, end - start)));
      start = end;
    }
    std::string bytes;
    EXPECT_EQ(read.Await(&bytes).status, S_OK);
    ASSERT_EQ(bytes, reply) << "cut at " << cuts;
  }
}

TYPED_TEST_P(SerialPortContract, ALongListingArrivesThroughSmallReads) {
  const auto port = this->OpenLine();
  EXPECT_EQ(port->SetReadInterval(std::chrono::milliseconds(50)), S_OK);
  std::string listing;
  for (int i = 0; i < 500; ++i)
    listing += "\r\n+CPBR: " + std::to_string(i) + ",\"+420603123456\",145,\"Name\"";
  std::thread sender([&] { EXPECT_TRUE(this->line_.Send(listing)); });
  std::string received;
  while (received.size() < listing.size()) {
    const std::string more = this->ReadOnce(*port, 256);
    if (more.empty()) break;
    received += more;
  }
  sender.join();
  EXPECT_EQ(received, listing);
}

TYPED_TEST_P(SerialPortContract, PurgeEndsAPendingRead) {
  const auto port = this->OpenLine();
  typename TestFixture::PendingRead read(*port, 16);
  port->Purge();
  const ReadResult result = read.Await();
  EXPECT_EQ(result.status, S_OK);
  EXPECT_EQ(result.count, 0U);
}

TYPED_TEST_P(SerialPortContract, PurgeEndsAReadThatWaitsForTheEndOfAReply) {
  const auto port = this->OpenLine();
  EXPECT_EQ(port->SetReadInterval(this->kNever), S_OK);
  EXPECT_TRUE(this->line_.Send("O"));
  typename TestFixture::PendingRead read(*port, 16);
  port->Purge();
  EXPECT_EQ(read.Await().count, 0U);
}

TYPED_TEST_P(SerialPortContract, APurgeBetweenTwoReadsEndsTheNextOneOnce) {
  const auto port = this->OpenLine();
  port->Purge();
  port->Purge();
  EXPECT_EQ(this->ReadOnce(*port, 16), "");
  EXPECT_TRUE(this->line_.Send("OK"));
  EXPECT_EQ(this->ReadOnce(*port, 2), "OK");
}

TYPED_TEST_P(SerialPortContract, PurgeDiscardsWhatWasReceived) {
  const auto port = this->OpenLine();
  EXPECT_TRUE(this->line_.Send("old"));
  EXPECT_EQ(this->ReadOnce(*port, 1), "o");
  port->Purge();
  EXPECT_EQ(this->ReadOnce(*port, 16), "");
  EXPECT_TRUE(this->line_.Send("new"));
  EXPECT_EQ(this->ReadOnce(*port, 3), "new");
}

TYPED_TEST_P(SerialPortContract, ALongWriteArrivesWhole) {
  const auto port = this->OpenLine();
  std::string text;
  while (text.size() < 100'000) text += this->EveryByte();
  std::string received;
  std::thread far_end([&] { received = this->line_.Receive(text.size()); });
  EXPECT_EQ(port->Write(this->Bytes(text)), S_OK);
  far_end.join();
  EXPECT_TRUE(received == text);
}

TYPED_TEST_P(SerialPortContract, WritingNothingSucceeds) { EXPECT_EQ(this->OpenLine()->Write({}), S_OK); }

TYPED_TEST_P(SerialPortContract, ReadingIntoNoBufferReturnsAtOnce) {
  const auto port = this->OpenLine();
  EXPECT_EQ(this->ReadOnce(*port, 0), "");
}

TYPED_TEST_P(SerialPortContract, PurgeEndsAPendingWrite) {
  const auto port = this->OpenLine();
  LineParameters slow;
  slow.baud_rate = 300;
  slow.set_rts_control(LineControl::kEnable);
  EXPECT_EQ(port->SetParameters(slow), S_OK);
  const std::string text(4'000'000, 'x');
  Status status = S_OK;
  std::thread writer([&] { status = port->Write(this->Bytes(text)); });
  EXPECT_TRUE(this->line_.WaitForBytes());
  port->Purge();
  writer.join();
  EXPECT_EQ(status, E_FAIL);
  EXPECT_EQ(port->Write(this->Bytes("AT\r")), S_OK);
}

TYPED_TEST_P(SerialPortContract, APurgeBeforeAWriteDoesNotEndIt) {
  const auto port = this->OpenLine();
  port->Purge();
  // More than the line holds, so that the write has to wait for the far end.
  const std::string text(300'000, 'x');
  std::string received;
  std::thread far_end([&] { received = this->line_.Receive(text.size()); });
  EXPECT_EQ(port->Write(this->Bytes(text)), S_OK);
  far_end.join();
  EXPECT_EQ(received.size(), text.size());
}

TYPED_TEST_P(SerialPortContract, ParametersGiveBackAllThatWasSet) {
  const auto port = this->OpenLine();
  for (std::uint32_t speed : {2400U, 4800U, 9600U, 19200U, 38400U, 57600U, 115200U})
    for (Parity parity : {Parity::kNone, Parity::kOdd, Parity::kEven, Parity::kMark, Parity::kSpace})
      for (StopBits stop_bits : {StopBits::kOne, StopBits::kOnePointFive, StopBits::kTwo}) {
        LineParameters parameters;
        parameters.baud_rate = speed;
        parameters.parity = parity;
        parameters.stop_bits = stop_bits;
        parameters.byte_size = parity == Parity::kNone ? 8 : 7;
        parameters.xon_limit = 77;
        parameters.event_char = 26;
        ASSERT_EQ(port->SetParameters(parameters), S_OK);
        ASSERT_EQ(port->Parameters(), parameters);
      }
}

TYPED_TEST_P(SerialPortContract, ParametersThatNoLineHasAreRefusedAndChangeNothing) {
  const auto port = this->OpenLine();
  const LineParameters good;
  EXPECT_EQ(port->SetParameters(good), S_OK);
  LineParameters no_speed, no_size, no_parity;
  no_speed.baud_rate = 0;
  no_size.byte_size = 9;
  no_parity.parity = static_cast<Parity>(5);
  for (const LineParameters& bad : {no_speed, no_size, no_parity})
    EXPECT_EQ(port->SetParameters(bad), E_FAIL);
  EXPECT_EQ(port->Parameters(), good);
}

TYPED_TEST_P(SerialPortContract, ReportsCapabilitiesAndClearsErrors) {
  const auto port = this->OpenLine();
  EXPECT_NE(port->ProviderCapabilities().value_or(0), 0U);
  EXPECT_EQ(port->ClearError(), S_OK);
}

TYPED_TEST_P(SerialPortContract, PurgeEndsTheWaitOnALineThatHasGone) {
  const auto port = this->OpenLine();
  typename TestFixture::PendingRead read(*port, 16);
  this->line_.Unplug();
  port->Purge();
  EXPECT_EQ(read.Await().status, S_OK);
}

TYPED_TEST_P(SerialPortContract, WritingToALineThatHasGoneFails) {
  const auto port = this->OpenLine();
  this->line_.Unplug();
  EXPECT_EQ(port->Write(this->Bytes("AT\r")), E_FAIL);
}

REGISTER_TYPED_TEST_SUITE_P(SerialPortContract, DeliversEveryByteValueUnchangedInBothDirections,
                            ASecondOpenFindsThePortInUseUntilTheFirstIsClosed,
                            AFailedSecondOpenLeavesTheFirstWorking, AReadEndsAtOnceWhenItsBufferIsFull,
                            AReadEndsWhenTheLineFallsSilent, WithoutAnIntervalAReadReturnsWithWhatHasArrived,
                            AReadWaitsForItsFirstByte, EverySplitOfAReplyArrivesWhole,
                            ALongListingArrivesThroughSmallReads, PurgeEndsAPendingRead,
                            PurgeEndsAReadThatWaitsForTheEndOfAReply, APurgeBetweenTwoReadsEndsTheNextOneOnce,
                            PurgeDiscardsWhatWasReceived, ALongWriteArrivesWhole, WritingNothingSucceeds,
                            ReadingIntoNoBufferReturnsAtOnce, PurgeEndsAPendingWrite,
                            APurgeBeforeAWriteDoesNotEndIt, ParametersGiveBackAllThatWasSet,
                            ParametersThatNoLineHasAreRefusedAndChangeNothing,
                            ReportsCapabilitiesAndClearsErrors, PurgeEndsTheWaitOnALineThatHasGone,
                            WritingToALineThatHasGoneFails);

}  // namespace celldesk
