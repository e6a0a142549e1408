#include <random>

#include "ui/sms/sms_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kDeliver = "07917283010010F5040BC87238880900F10000993092516195800AE8329BFD4697D9EC37";
constexpr int kDeliverLength = 28;

/// A phone whose listing of "SM" is these lines; "ME" is hidden.
class ListingWindow : public SmsWindow {
 public:
  explicit ListingWindow(const std::vector<std::string>& lines)
      : SmsWindow(PhoneListing(lines), OneMemory()) {
    Load();
  }

  /// Draws every cell of both folders and opens every message.
  void Walk() {
    ShowFolder(kOutboxTab);
    WalkFolder(outbox());
    ShowFolder(kInboxTab);
    WalkFolder(inbox());
  }

 private:
  static simulator::PhoneMemory PhoneListing(const std::vector<std::string>& lines) {
    simulator::PhoneMemory memory;
    memory.replies["AT+CMGL=4"] = lines;
    return memory;
  }
  static simulator::Profile OneMemory() {
    simulator::Profile profile;
    profile.replies["AT+CPMS=?"] = {R"(+CPMS: ("SM"),("SM"),("SM"))"};
    return profile;
  }
  void WalkFolder(SmsFolderView& folder) {
    for (int header = 0; header < 4; ++header) {
      folder.list().OnHeaderClick(header);
      folder.list().OnHeaderClick(header);
    }
    EXPECT_EQ(Rows(folder).size(), static_cast<std::size_t>(folder.list().RowCount()));
    if (folder.list().RowCount() == 0) return;
    Select(folder, {0});
    InDialog(command::kOpen, [&](Dialog& dialog) {
      for (int row = 1; row < folder.list().RowCount(); ++row)
        dialog.Dispatch(Message::kCommand, command::kNext, 0);
      EXPECT_THAT(folder.list().SelectedRows(), ElementsAre(folder.list().RowCount() - 1));
    });
  }
};

std::string Header(int index, const std::string& status, const std::string& length) {
  return "+CMGL: " + std::to_string(index) + "," + status + ",," + length;
}

TEST(HostilePhone, APduCutAnywhereLeavesARowAndNothingWorse) {
  const std::string pdu = kDeliver;
  std::vector<std::string> lines;
  for (std::size_t cut = 1; cut <= pdu.size(); ++cut) {
    lines.push_back(Header(static_cast<int>(cut), std::to_string(cut % 2), std::to_string(kDeliverLength)));
    lines.push_back(pdu.substr(0, cut));
  }
  ListingWindow window(lines);
  EXPECT_EQ(window.inbox().list().RowCount(), static_cast<int>(pdu.size()));
  EXPECT_EQ(SmsWindow::Cell(window.inbox(), window.inbox().list().RowCount() - 1, 3), "hellohello");
  window.Walk();
}

TEST(HostilePhone, AStoredPduCutAnywhereCanBeOpenedInTheEditor) {
  const std::string pdu = "11000C912460102143650000A702C834";
  std::vector<std::string> lines;
  for (std::size_t cut = 1; cut <= pdu.size(); ++cut) {
    lines.push_back(Header(static_cast<int>(cut), "2", "16"));
    lines.push_back(pdu.substr(0, cut));
  }
  ListingWindow window(lines);
  window.ShowFolder(kOutboxTab);
  EXPECT_EQ(window.outbox().list().RowCount(), static_cast<int>(pdu.size()));
  window.Walk();
}

TEST(HostilePhone, LengthsThatLieDoNoHarm) {
  std::vector<std::string> lines;
  for (const char* length : {"-1", "0", "1", "27", "29", "255", "32767", "65535", "99999999999", "abc", ""}) {
    for (const char* status : {"0", "1", "2", "3"}) {
      lines.push_back(Header(1, status, length));
      lines.emplace_back(kDeliver);
    }
  }
  ListingWindow window(lines);
  EXPECT_EQ(window.messages().count(), 44);
  window.Walk();
}

TEST(HostilePhone, IndexesAndStatusesThatLieDoNoHarm) {
  std::vector<std::string> lines;
  for (const char* index : {"-1", "0", "65536", "2147483648", "x", ""}) {
    for (const char* status : {"-1", "4", "9", "65536", "x", "1"}) {
      lines.push_back(std::string("+CMGL: ") + index + "," + status + ",,28");
      lines.emplace_back(kDeliver);
    }
  }
  ListingWindow window(lines);
  EXPECT_EQ(window.messages().count(), 36);
  EXPECT_GE(window.inbox().list().RowCount(), 6);
  window.Walk();
}

TEST(HostilePhone, APduThatNeverComesLeavesNoRow) {
  ListingWindow window({Header(1, "1", "28"), kDeliver, Header(2, "1", "28")});
  EXPECT_EQ(window.inbox().list().RowCount(), 1);
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
  window.InDialog(command::kReply, [](Dialog&) {});
}

TEST(HostilePhone, HeadersInARowLeaveOnlyTheOneWithAPdu) {
  ListingWindow window({Header(1, "1", "28"), Header(2, "1", "28"), Header(3, "1", "28"), kDeliver});
  EXPECT_EQ(window.inbox().list().RowCount(), 1);
  EXPECT_EQ(window.inbox().MessageAt(0).memory_index, 3);
}

TEST(HostilePhone, TheSameMessageTwiceIsTwoRows) {
  ListingWindow window({Header(1, "1", "28"), kDeliver, Header(1, "1", "28"), kDeliver});
  EXPECT_EQ(window.inbox().list().RowCount(), 2);
}

TEST(HostilePhone, SenselessLinesDoNoHarm) {
  std::mt19937 random(7);
  const std::string characters = "+CMGL: 0123456789ABCDEF,,,,\"\"xyz";
  std::vector<std::string> lines;
  for (int i = 0; i < 600; ++i) {
    std::string line = i % 3 == 0 ? "+CMGL: " : "";
    for (auto length = random() % 60; length > 0; --length) line += characters[random() % characters.size()];
    if (line != "OK" && line != "ERROR") lines.push_back(line);
  }
  ListingWindow window(lines);
  EXPECT_GT(window.messages().count(), 0);
  window.Walk();
}

TEST(HostilePhone, TenThousandMessagesInAMemoryAreShown) {
  constexpr int kCount = 10000;
  std::vector<std::string> lines;
  for (int i = 0; i < kCount; ++i) {
    lines.push_back(Header(i, i % 2 == 0 ? "1" : "0", std::to_string(kDeliverLength)));
    lines.emplace_back(kDeliver);
  }
  ListingWindow window(lines);
  EXPECT_EQ(window.inbox().list().RowCount(), kCount);
  window.inbox().list().OnHeaderClick(1);
  window.inbox().list().OnHeaderClick(2);
  window.CommandAnswering(command::kDeleteAll, kAnswerYes);
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), kCount - 1) & kMessageToDelete, kMessageToDelete);
}

}  // namespace
}  // namespace celldesk
