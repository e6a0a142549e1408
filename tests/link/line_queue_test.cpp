#include "link/line_queue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "link/line_rule.h"
#include "support/memory/allocation_gate.h"
#include "util/number_text.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::u16string> TakeAll(LineQueue& queue) {
  std::vector<std::u16string> lines;
  std::u16string text;
  while (queue.Take(text)) lines.push_back(text);
  return lines;
}

/// The lines that the chunks give.
std::vector<std::u16string> LinesOf(const std::vector<std::u16string_view>& chunks) {
  LineQueue queue;
  for (const auto chunk : chunks) queue.Receive(chunk);
  return TakeAll(queue);
}

TEST(LineQueue, StartsEmptyAndUnsignalled) {
  LineQueue queue;
  std::u16string text = u"kept";
  EXPECT_FALSE(queue.Take(text));
  EXPECT_EQ(text, u"kept");
  EXPECT_FALSE(queue.line_event().IsSet());
  EXPECT_EQ(queue.completed_chunks(), 0U);
}

TEST(LineQueue, AReplyInOneChunkGivesAnEmptyLineAndTheResult) {
  EXPECT_THAT(LinesOf({u"\r\nOK\r\n"}), ElementsAre(u"", u"OK"));
}

TEST(LineQueue, OnlyTheCarriageReturnEndsALine) {
  EXPECT_THAT(LinesOf({u"one\ntwo\r"}), ElementsAre(u"one\ntwo"));
  EXPECT_THAT(LinesOf({u"one\n"}), IsEmpty());
}

TEST(LineQueue, EveryReturnAndLineFeedAfterALineIsSkippedInsideAChunk) {
  EXPECT_THAT(LinesOf({u"one\r\r\n\n\r\ntwo\r\n\r\n"}), ElementsAre(u"one", u"two"));
}

TEST(LineQueue, ALineFeedThatBeginsAChunkBelongsToItsLine) {
  EXPECT_THAT(LinesOf({u"one\r", u"\ntwo\r"}), ElementsAre(u"one", u"\ntwo"));
  EXPECT_THAT(LinesOf({u"one\r", u"\n", u"two\r"}), ElementsAre(u"one", u"\ntwo"));
}

TEST(LineQueue, ALineSplitBetweenTwoChunksIsCompletedByTheSecond) {
  LineQueue queue;
  queue.Receive(u"+CPBR: 1,\"12");
  EXPECT_FALSE(queue.line_event().IsSet());
  EXPECT_EQ(queue.completed_chunks(), 0U);
  std::u16string text;
  EXPECT_FALSE(queue.Take(text));

  queue.Receive(u"3\"\r\n");
  EXPECT_TRUE(queue.line_event().IsSet());
  EXPECT_EQ(queue.completed_chunks(), 1U);
  EXPECT_THAT(TakeAll(queue), ElementsAre(u"+CPBR: 1,\"123\""));
}

TEST(LineQueue, AChunkThatBeginsWithAReturnCompletesTheOpenLine) {
  EXPECT_THAT(LinesOf({u"OK", u"\r\n"}), ElementsAre(u"OK"));
}

TEST(LineQueue, AChunkThatBeginsWithAReturnMakesAnEmptyLineWhenNoneIsOpen) {
  EXPECT_THAT(LinesOf({u"OK\r", u"\r\n"}), ElementsAre(u"OK", u""));
}

TEST(LineQueue, AnEmptyChunkDoesNothing) {
  LineQueue queue;
  queue.Receive(u"");
  queue.Receive(u"O");
  queue.Receive(u"");
  queue.Receive(u"K\r");
  EXPECT_EQ(queue.completed_chunks(), 1U);
  EXPECT_THAT(TakeAll(queue), ElementsAre(u"OK"));
}

TEST(LineQueue, SeveralLinesInOneChunkSignalOnceAndCountOnce) {
  LineQueue queue;
  int signals = 0;
  queue.line_event().SetHook([&signals] { ++signals; });
  queue.Receive(u"one\r\ntwo\r\nthree\r\n");
  EXPECT_EQ(signals, 1);
  EXPECT_EQ(queue.completed_chunks(), 1U);
}

TEST(LineQueue, TheEventStaysSetUntilTheLastCompleteLineIsTaken) {
  LineQueue queue;
  queue.Receive(u"one\r\ntwo\r\nthr");
  std::u16string text;
  ASSERT_TRUE(queue.Take(text));
  EXPECT_EQ(text, u"one");
  EXPECT_TRUE(queue.line_event().IsSet());
  ASSERT_TRUE(queue.Take(text));
  EXPECT_EQ(text, u"two");
  EXPECT_FALSE(queue.line_event().IsSet());
  EXPECT_FALSE(queue.Take(text));
}

TEST(LineQueue, ASignalWithoutALineIsTakenBackByTheTake) {
  LineQueue queue;
  queue.line_event().Set();
  std::u16string text;
  EXPECT_FALSE(queue.Take(text));
  EXPECT_FALSE(queue.line_event().IsSet());
}

TEST(LineQueue, FlushDeletesCompleteAndOpenLinesAndTheSignal) {
  LineQueue queue;
  queue.Receive(u"one\r\ntwo\r\nthr");
  queue.Flush();
  EXPECT_FALSE(queue.line_event().IsSet());
  queue.Receive(u"ee\r");
  EXPECT_THAT(TakeAll(queue), ElementsAre(u"ee"));
}

TEST(LineQueue, RestartKeepsTheLinesButNotTheSignalAndTheCount) {
  LineQueue queue;
  queue.Receive(u"one\r");
  queue.Restart();
  EXPECT_FALSE(queue.line_event().IsSet());
  EXPECT_EQ(queue.completed_chunks(), 0U);
  EXPECT_THAT(TakeAll(queue), ElementsAre(u"one"));
}

constexpr std::u16string_view kReply =
    u"\r\n+CPBR: 1,\"+4917012\",145,\"Ann, Lee\"\r\n+CPBR: 2,\"112\",129,\"\"\r\n\r\nOK\r\n";

TEST(LineQueue, EverySplitOfAReplyInTwoGivesTheSameLines) {
  const auto whole = LinesOf({kReply});
  ASSERT_THAT(whole, ElementsAre(u"", u"+CPBR: 1,\"+4917012\",145,\"Ann, Lee\"", u"+CPBR: 2,\"112\",129,\"\"",
                                 u"OK"));
  for (std::size_t cut = 0; cut <= kReply.size(); ++cut) {
    const std::vector chunks{kReply.substr(0, cut), kReply.substr(cut)};
    const bool inside_line_end =
        cut > 0 && cut < kReply.size() && kReply[cut - 1] <= u'\r' && kReply[cut] <= u'\r';
    EXPECT_EQ(LinesOf(chunks), inside_line_end ? ExpectedLines(chunks) : whole) << "cut at " << cut;
  }
}

TEST(LineQueue, EverySplitOfAReplyInThreeGivesTheLinesOfTheRule) {
  for (std::size_t first = 0; first <= kReply.size(); ++first) {
    for (std::size_t second = first; second <= kReply.size(); ++second) {
      const std::vector chunks{kReply.substr(0, first), kReply.substr(first, second - first),
                               kReply.substr(second)};
      EXPECT_EQ(LinesOf(chunks), ExpectedLines(chunks)) << first << ", " << second;
    }
  }
}

TEST(LineQueue, ByteByByteNoCharacterOfALineIsLost) {
  std::vector<std::u16string_view> chunks;
  for (std::size_t i = 0; i < kReply.size(); ++i) chunks.push_back(kReply.substr(i, 1));
  EXPECT_THAT(LinesOf(chunks), ElementsAre(u"", u"\n+CPBR: 1,\"+4917012\",145,\"Ann, Lee\"",
                                           u"\n+CPBR: 2,\"112\",129,\"\"", u"\n", u"\nOK"));
}

TEST(LineQueue, ALineWithoutAnEndKeepsNoMoreThanTheLongestLine) {
  LineQueue queue;
  const std::u16string noise(LineQueue::kLongestLine / 3, u'x');
  for (int i = 0; i < 10; ++i) queue.Receive(noise);
  queue.Receive(u"end\r\nOK\r\n");
  std::u16string text;
  ASSERT_TRUE(queue.Take(text));
  EXPECT_EQ(text, std::u16string(LineQueue::kLongestLine, u'x'));
  EXPECT_THAT(TakeAll(queue), ElementsAre(u"OK"));
}

TEST(LineQueue, AHugeChunkWithoutAnEndKeepsNoMoreThanTheLongestLine) {
  LineQueue queue;
  queue.Receive(std::u16string(LineQueue::kLongestLine + 1, u'x') + u"\r");
  std::u16string text;
  ASSERT_TRUE(queue.Take(text));
  EXPECT_EQ(text.size(), LineQueue::kLongestLine);
}

TEST(LineQueue, ASegmentThatCannotBeStoredIsDropped) {
  LineQueue queue;
  {
    AllocationGate gate;
    gate.Refuse();
    queue.Receive(u"a line that needs memory\r\n");
  }
  EXPECT_FALSE(queue.line_event().IsSet());
  EXPECT_EQ(queue.completed_chunks(), 0U);
  queue.Receive(u"OK\r\n");
  EXPECT_THAT(TakeAll(queue), ElementsAre(u"OK"));
}

TEST(LineQueue, AContinuationThatCannotBeStoredLeavesTheLineOpen) {
  LineQueue queue;
  const std::u16string continuation = std::u16string(1000, u'x') + u'\r';
  queue.Receive(u"begin");
  {
    AllocationGate gate;
    gate.Refuse();
    queue.Receive(continuation);
  }
  EXPECT_FALSE(queue.line_event().IsSet());
  queue.Receive(u" end\r");
  EXPECT_THAT(TakeAll(queue), ElementsAre(u"begin end"));
}

TEST(LineQueue, ALineCostsAboutOneAllocation) {
  LineQueue queue;
  std::u16string listing;
  constexpr std::size_t kLines = 1000;
  for (std::size_t i = 0; i < kLines; ++i) listing += u"+CPBR: 1,\"+49170\",145,\"Ann\"\r\n";
  AllocationGate gate;
  queue.Receive(listing);
  EXPECT_LE(gate.count(), kLines + kLines / 8);
}

TEST(LineQueue, APduInTwoChunksCostsAboutOneAllocationToo) {
  LineQueue queue;
  constexpr std::size_t kLines = 1000;
  const std::u16string first(100, u'A'), second = std::u16string(200, u'B') + u"\r\n";
  AllocationGate gate;
  for (std::size_t i = 0; i < kLines; ++i) {
    queue.Receive(first);
    queue.Receive(second);
  }
  EXPECT_LE(gate.count(), kLines + kLines / 8);
}

// A backlog that grows and shrinks: what was taken makes room for what comes.
TEST(LineQueue, LinesKeepTheirOrderHoweverManyWait) {
  LineQueue queue;
  std::u16string text;
  std::size_t received = 0, taken = 0;
  const auto name = [](std::size_t number) { return u"line " + DecimalText(static_cast<int>(number)); };
  for (std::size_t round = 0; round < 200; ++round) {
    for (std::size_t i = 0; i < round % 7; ++i) queue.Receive(name(received++) + u"\r");
    for (std::size_t i = 0; i < round % 5 && queue.Take(text); ++i) EXPECT_EQ(text, name(taken++));
  }
  EXPECT_LT(taken, received);
  while (queue.Take(text)) EXPECT_EQ(text, name(taken++));
  EXPECT_EQ(taken, received);
}

TEST(LineQueue, AQueueThatIsEmptiedNeedsMemoryForTheTextsAlone) {
  LineQueue queue;
  std::u16string text;
  const std::u16string line = std::u16string(40, u'A') + u"\r";
  queue.Receive(line + line);
  while (queue.Take(text)) {
  }
  const AllocationGate gate;
  for (int i = 0; i < 50; ++i) {
    queue.Receive(line);
    queue.Take(text);
  }
  EXPECT_EQ(gate.count(), 50U);
}

}  // namespace
}  // namespace celldesk
