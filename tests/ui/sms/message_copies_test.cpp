// Messages are in the backups folder before a command replaces, empties or uploads them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data/sms_file.h"
#include "ui/sms/sms_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

class MessageCopiesTest : public testing::Test {
 protected:
  MessageCopiesTest() { window_.Load(); }
  std::vector<std::string> Copies() {
    std::vector<std::string> names;
    for (const auto& name : window_.files.Names(Folder())) names.push_back(Utf8(name));
    return names;
  }
  /// What the program reads back from a copy.
  std::vector<std::string> TextsIn(std::size_t copy) {
    SmsStore store;
    const std::u16string path = Folder() + u'/' + window_.files.Names(Folder()).at(copy);
    EXPECT_EQ(ReadSmsFile(window_.files, path, {},
                          [&](std::u16string_view) {
                            return SmsTarget{&store, nullptr};
                          }),
              S_OK);
    std::vector<std::string> texts;
    for (int position = 0; position < store.count(); ++position)
      texts.push_back(Utf8(store.At(position).text));
    return texts;
  }
  static std::u16string Folder() { return u"/home/user/.local/share/celldesk/backups"; }

  SmsWindow window_;
};

TEST_F(MessageCopiesTest, LoadDataCopiesBothFolders) {
  EXPECT_THAT(Copies(), IsEmpty());
  const auto inbox = window_.InboxTexts().size();
  window_.Load();
  EXPECT_THAT(Copies(), ElementsAre(EndsWith(" Inbox.sms"), EndsWith(" Outbox.sms")));
  EXPECT_EQ(TextsIn(0).size(), inbox);
}

TEST_F(MessageCopiesTest, DeleteAllCopiesFirst) {
  const auto before = window_.InboxTexts().size();
  window_.CommandAnswering(command::kDeleteAll, kAnswerYes);
  EXPECT_EQ(TextsIn(0).size(), before);
}

TEST_F(MessageCopiesTest, ARefusedDeleteAllCopiesNothing) {
  window_.CommandAnswering(command::kDeleteAll, kAnswerNo);
  EXPECT_THAT(Copies(), IsEmpty());
}

TEST_F(MessageCopiesTest, DeleteCopiesFirst) {
  window_.Select(window_.inbox(), {0});
  window_.Command(command::kDelete);
  EXPECT_THAT(Copies(), ElementsAre(EndsWith(" Inbox.sms"), EndsWith(" Outbox.sms")));
}

TEST_F(MessageCopiesTest, UploadCopiesFirst) {
  window_.Command(command::kUpload);
  EXPECT_THAT(Copies(), ElementsAre(EndsWith(" Inbox.sms"), EndsWith(" Outbox.sms")));
}

}  // namespace
}  // namespace celldesk
