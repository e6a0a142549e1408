#include "ui/sms/sms_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(SmsFolderView, OpenWithNothingSelectedDoesNothing) {
  SmsWindow window;
  window.Load();
  window.Select(window.inbox(), {});
  window.InNextDialog([](Dialog& dialog) {
    ADD_FAILURE() << "opened";
    dialog.EndDialog(kIdCancel);
  });
  window.Command(command::kOpen);
  window.Command(command::kOk);
}

TEST(SmsFolderView, EnterAndDoubleClickOpen) {
  SmsWindow window;
  window.Load();
  ClickRow(window.inbox().list(), 1);
  window.InDialog([&] { PressKey(window.inbox().list(), Qt::Key_Return); },
                  [](Dialog& dialog) { EXPECT_EQ(TextOf(dialog, viewer::kBody), "Who are you?"); });
  window.InDialog([&] { DoubleClickRow(window.inbox().list(), 0); },
                  [](Dialog& dialog) { EXPECT_EQ(TextOf(dialog, viewer::kBody), "Coffee at ten?"); });
}

TEST(SmsFolderView, AFullPhoneIsReportedAndTheEditorOpensAllTheSame) {
  SmsWindow window(PhoneWithMessages(), *simulator::MakeProfile("one-slot"));
  window.Load();
  window.InDialog(command::kNew, [](Dialog& dialog) { EXPECT_EQ(dialog.template_number(), 204); });
  EXPECT_THAT(window.TakeAsked(),
              ElementsAre("There is no space for saving another SMS message on your mobile phone."));
  EXPECT_EQ(window.LastBox().icon, BoxIcon::kStop);
  EXPECT_EQ(window.LastBox().buttons, BoxButtons::kOk);
}

TEST(SmsFolderView, NewTakesNothingFromTheSelection) {
  SmsWindow window;
  window.Load();
  window.Select(window.inbox(), {0});
  window.InDialog(command::kNew, [](Dialog& dialog) {
    EXPECT_EQ(TextOf(dialog, editor::kRecipient), "");
    EXPECT_EQ(TextOf(dialog, editor::kBody), "");
  });
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(SmsFolderView, TheKeyForNewWorksInBothFolders) {
  SmsWindow window;
  window.Load();
  for (const int tab : {kInboxTab, kOutboxTab}) {
    window.ShowFolder(tab);
    window.InDialog([&] { PressKey(window.frame(), Qt::Key_N, Qt::ControlModifier); },
                    [](Dialog& dialog) { EXPECT_EQ(TextOf(dialog, editor::kBody), ""); });
  }
}

TEST(SmsFolderView, TheKeysFollowTheMenu) {
  SmsWindow window;
  window.Load();
  const auto nothing_opens = [&](Qt::Key key) {
    window.InNextDialog([](Dialog& dialog) {
      ADD_FAILURE() << "opened";
      dialog.EndDialog(kIdCancel);
    });
    PressKey(window.frame(), key, Qt::ControlModifier);
    Dialog::SetModalHook({});
  };
  window.Select(window.inbox(), {0, 1});
  nothing_opens(Qt::Key_R);
  window.Select(window.inbox(), {0});
  window.InDialog([&] { PressKey(window.frame(), Qt::Key_R, Qt::ControlModifier); },
                  [](Dialog& dialog) { EXPECT_EQ(TextOf(dialog, editor::kBody), "Coffee at ten?"); });
  window.ShowFolder(kOutboxTab);
  window.Select(window.outbox(), {0});
  nothing_opens(Qt::Key_R);
  window.InDialog([&] { PressKey(window.frame(), Qt::Key_F, Qt::ControlModifier); },
                  [](Dialog& dialog) { EXPECT_EQ(TextOf(dialog, editor::kBody), "Train is late"); });
}

TEST(SmsFolderView, ReplyGoesToTheSenderWithTheText) {
  SmsWindow window;
  window.LoadNames();
  window.Load();
  window.Select(window.inbox(), {0});
  window.InDialog(command::kReply, [](Dialog& dialog) {
    EXPECT_EQ(TextOf(dialog, editor::kRecipient), "Anna");
    EXPECT_EQ(FontName(dialog, editor::kRecipient), "underlined");
    EXPECT_EQ(TextOf(dialog, editor::kBody), "Coffee at ten?");
  });
  window.Select(window.inbox(), {1});
  window.InDialog(command::kReply, [](Dialog& dialog) {
    EXPECT_EQ(TextOf(dialog, editor::kRecipient), "07700900999");
    EXPECT_EQ(FontName(dialog, editor::kRecipient), "plain");
  });
}

TEST(SmsFolderView, ReplyAndForwardTakeTheFirstOfSeveral) {
  SmsWindow window;
  window.Load();
  window.Select(window.inbox(), {1, 2});
  for (const int command : {command::kReply, command::kForward}) {
    window.InDialog([&] { ClickBarButton(window.frame(), command); },
                    [](Dialog& dialog) { EXPECT_EQ(TextOf(dialog, editor::kBody), "Who are you?"); });
  }
}

TEST(SmsFolderView, ForwardTakesTheTextAlone) {
  SmsWindow window;
  window.LoadNames();
  window.Load();
  window.Select(window.inbox(), {0});
  window.InDialog(command::kForward, [](Dialog& dialog) {
    EXPECT_EQ(TextOf(dialog, editor::kRecipient), "");
    EXPECT_EQ(TextOf(dialog, editor::kBody), "Coffee at ten?");
  });
  window.ShowFolder(kOutboxTab);
  window.Select(window.outbox(), {0});
  window.InDialog(command::kForward, [](Dialog& dialog) {
    EXPECT_EQ(TextOf(dialog, editor::kRecipient), "");
    EXPECT_EQ(TextOf(dialog, editor::kBody), "Train is late");
  });
}

TEST(SmsFolderView, AReplyToAReportGoesToItsRecipientWithoutText) {
  SmsWindow window;
  window.LoadNames();
  window.Load();
  window.Select(window.inbox(), {2});
  window.InDialog(command::kReply, [](Dialog& dialog) {
    EXPECT_EQ(TextOf(dialog, editor::kRecipient), "Ben");
    EXPECT_EQ(TextOf(dialog, editor::kBody), "");
  });
}

}  // namespace
}  // namespace celldesk
