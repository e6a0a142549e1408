#include "ui/framework/dialog.h"

#include "ui/framework/framework_fixture.h"
#include "ui/user_actions.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kEditTemplate = 200, kAboutTemplate = 213;
constexpr int kName = 1001, kNumber = 1002, kMemory = 1003;

class NotingDialog : public Noting<Dialog> {
 public:
  explicit NotingDialog(int number = kEditTemplate) : Noting<Dialog>(number) { ends_by_default = true; }

  bool OnInitDialog(int /*focus*/, LongParameter parameter) override {
    calls.push_back("OnInitDialog " + std::to_string(parameter));
    saw_controls = !ChoiceCount(kMemory) && IsEnabled(kName);
    if (ends_at_once != 0) EndDialog(ends_at_once);
    return true;
  }
  bool UpdateData(bool save) override {
    calls.push_back(save ? "UpdateData save" : "UpdateData show");
    return accepts;
  }

  bool saw_controls = false;
  bool accepts = true;
  int ends_at_once = 0;
};

class DialogTest : public FrameworkTest {
 protected:
  /// Runs the dialog and works it once it is on screen.
  static int Run(Dialog& dialog, std::function<void(Dialog&)> work, LongParameter parameter = 0) {
    Dialog::SetModalHook([work](Dialog& shown) {
      Dialog::SetModalHook({});
      work(shown);
    });
    return dialog.RunModal(nullptr, parameter);
  }
};

TEST_F(DialogTest, IsPreparedBeforeItShows) {
  NotingDialog dialog;
  EXPECT_EQ(Run(
                dialog, [](Dialog& shown) { shown.EndDialog(42); }, 17),
            42);
  EXPECT_EQ(dialog.calls.front(), "OnInitDialog 17");
  EXPECT_TRUE(dialog.saw_controls);
}

TEST_F(DialogTest, IsTheCurrentViewWhileItRuns) {
  NotingDialog dialog;
  NotingWindow before;
  application().set_current_view(&before);
  Window* during = nullptr;
  Run(dialog, [&](Dialog& shown) {
    during = application().current_view();
    shown.EndDialog(1);
  });
  EXPECT_EQ(during, &dialog);
  EXPECT_EQ(application().current_view(), &before);
}

TEST_F(DialogTest, ActivatesTheMainFrameAfterwards) {
  Noting<FrameWindow> frame;
  ASSERT_TRUE(frame.Create(u"Frame"));
  application().set_main_frame(&frame);
  NotingDialog dialog;
  Run(dialog, [&](Dialog& shown) {
    frame.calls.clear();
    shown.EndDialog(1);
  });
  EXPECT_THAT(frame.calls, testing::Contains("WindowProc 6"));
  application().set_main_frame(nullptr);
}

TEST_F(DialogTest, OfAnotherDialogGivesTheCurrentViewBackToIt) {
  NotingDialog outer, inner;
  std::vector<Window*> views;
  Run(outer, [&](Dialog& shown) {
    Run(inner, [&](Dialog& innermost) {
      views.push_back(application().current_view());
      innermost.EndDialog(3);
    });
    views.push_back(application().current_view());
    shown.EndDialog(1);
  });
  EXPECT_THAT(views, ElementsAre(&inner, &outer));
  EXPECT_EQ(application().current_view(), nullptr);
}

TEST_F(DialogTest, GivesEveryMessageToItsProcedureFirst) {
  NotingDialog dialog;
  MessageResult command = 0, notification_result = 0, handled = 0;
  Run(dialog, [&](Dialog& shown) {
    dialog.calls.clear();
    command = shown.Dispatch(Message::kCommand, 2002, 0);
    const Notification notification{NotifyCode::kClick, 1, 0};
    notification_result =
        shown.Dispatch(Message::kNotify, 1000, reinterpret_cast<LongParameter>(&notification));
    dialog.handled = Message::kTimer;
    handled = shown.Dispatch(Message::kTimer, 4, 0);
    dialog.handled = Message::kCreate;
    shown.Dispatch(Message::kTimer, 5, 0);
    shown.EndDialog(1);
  });
  EXPECT_EQ(command, 1) << "handled, whatever the operation gives";
  EXPECT_EQ(notification_result, 1);
  EXPECT_EQ(handled, 7);
  dialog.calls.resize(std::min<std::size_t>(dialog.calls.size(), 7));
  EXPECT_THAT(dialog.calls, ElementsAre("WindowProc 273", "OnCommand 2002", "WindowProc 78",
                                        "OnNotify 1000 1", "WindowProc 275", "WindowProc 275", "OnTimer 5"));
}

TEST_F(DialogTest, EndsWithOkOnceItsDataIsTaken) {
  NotingDialog dialog;
  EXPECT_EQ(Run(dialog, [](Dialog& shown) { ClickDialogButton(shown, kIdOk); }), kIdOk);
  EXPECT_THAT(dialog.calls, testing::IsSupersetOf({"OnCommand 1", "UpdateData save"}));
}

TEST_F(DialogTest, StaysWhileItsDataIsRefused) {
  NotingDialog dialog;
  dialog.accepts = false;
  const int result = Run(dialog, [&](Dialog& shown) {
    ClickDialogButton(shown, kIdOk);
    EXPECT_TRUE(shown.IsVisible());
    ClickDialogButton(shown, kIdCancel);
  });
  EXPECT_EQ(result, kIdCancel);
}

TEST_F(DialogTest, TakesEnterForOkAndEscapeAndTheCloseButtonForCancel) {
  NotingDialog dialog;
  EXPECT_EQ(Run(dialog, [](Dialog& shown) { PressKey(shown, Qt::Key_Return); }), kIdOk);
  EXPECT_EQ(Run(dialog, [](Dialog& shown) { PressKey(shown, Qt::Key_Escape); }), kIdCancel);
  EXPECT_EQ(Run(dialog, [](Dialog& shown) { WidgetOf(&shown)->close(); }), kIdCancel);
}

TEST_F(DialogTest, CannotRunWithoutItsTemplate) {
  NotingDialog dialog(9999);
  EXPECT_EQ(dialog.RunModal(nullptr), -1);
  EXPECT_FALSE(dialog.CreateModeless(nullptr));
  EXPECT_THAT(dialog.calls, IsEmpty());
}

TEST_F(DialogTest, NeverShowsWhenItEndsWhileItIsPrepared) {
  NotingDialog dialog;
  dialog.ends_at_once = 9;
  EXPECT_EQ(dialog.RunModal(nullptr), 9);
  EXPECT_FALSE(dialog.IsAttached());
}

TEST_F(DialogTest, CanRunAgain) {
  NotingDialog dialog;
  for (int run = 1; run <= 3; ++run) {
    EXPECT_EQ(Run(dialog,
                  [&](Dialog& shown) {
                    EXPECT_EQ(shown.Text(kName), u"");
                    shown.SetText(kName, u"left over");
                    shown.EndDialog(run);
                  }),
              run);
  }
}

TEST_F(DialogTest, ReadsAsEmptyWhenItIsNotThere) {
  NotingDialog dialog;
  Run(dialog, [](Dialog& shown) { shown.EndDialog(1); });
  EXPECT_EQ(dialog.Text(kName), u"");
  EXPECT_EQ(dialog.ChoiceCount(kMemory), 0);
  EXPECT_EQ(dialog.SelectedChoice(kMemory), -1);
  EXPECT_FALSE(dialog.IsEnabled(kName));
  dialog.SetText(kName, u"x");
  dialog.EndDialog(1);
}

TEST_F(DialogTest, IgnoresControlsThatItsTemplateDoesNotHave) {
  NotingDialog dialog;
  Run(dialog, [](Dialog& shown) {
    shown.SetText(77, u"x");
    shown.SetChecked(77, true);
    shown.Enable(77, false);
    shown.SetLimit(77, 3);
    shown.SetBar(77, 50);
    shown.AddChoice(77, u"x", 1);
    EXPECT_EQ(shown.Text(77), u"");
    EXPECT_FALSE(shown.IsChecked(77));
    shown.EndDialog(1);
  });
}

TEST_F(DialogTest, LimitsWhatIsTypedButShowsALongerTextWhole) {
  NotingDialog dialog;
  Run(dialog, [](Dialog& shown) {
    shown.SetLimit(kName, 5);
    TypeInto(shown, kName, QStringLiteral("abcdefgh"));
    EXPECT_EQ(shown.Text(kName), u"abcde");
    shown.SetText(kName, u"abcdefgh");
    EXPECT_EQ(shown.Text(kName), u"abcdefgh");
    shown.EndDialog(1);
  });
}

TEST_F(DialogTest, KeepsTextsAsTheyAre) {
  NotingDialog dialog;
  const std::u16string odd = u"<b>a</b> & \"b\" \u00e4\u20ac \xD83D\xDE00";
  Run(dialog, [&](Dialog& shown) {
    shown.SetText(kName, odd);
    EXPECT_EQ(shown.Text(kName), odd);
    shown.EndDialog(1);
  });
}

TEST_F(DialogTest, FillsItsChoiceLists) {
  NotingDialog dialog;
  Run(dialog, [](Dialog& shown) {
    shown.AddChoice(kMemory, u"one", 11);
    shown.AddChoice(kMemory, u"two", -2);
    shown.SelectChoice(kMemory, 1);
    EXPECT_EQ(shown.ChoiceCount(kMemory), 2);
    EXPECT_EQ(shown.ChoiceText(kMemory, 0), u"one");
    EXPECT_EQ(shown.ChoiceData(kMemory, 1), -2);
    EXPECT_EQ(shown.SelectedChoice(kMemory), 1);
    EXPECT_EQ(shown.Text(kMemory), u"two");
    shown.SelectChoice(kMemory, -1);
    EXPECT_EQ(shown.Text(kMemory), u"");
    shown.ClearChoices(kMemory);
    EXPECT_EQ(shown.ChoiceCount(kMemory), 0);
    shown.EndDialog(1);
  });
}

TEST_F(DialogTest, TellsOfChangesByTheUser) {
  NotingDialog dialog;
  Run(dialog, [&](Dialog& shown) {
    dialog.calls.clear();
    shown.SetText(kName, u"by the program");
    EXPECT_THAT(dialog.calls, testing::Not(testing::Contains("OnNotify 1001 -1")));
    TypeInto(shown, kName, QStringLiteral("u"));
    EXPECT_THAT(dialog.calls, testing::Contains("OnNotify 1001 -1"));
    shown.EndDialog(1);
  });
}

TEST_F(DialogTest, WithoutAModalRunIsTheActiveModelessOneUntilItIsDestroyed) {
  NotingDialog dialog;
  ASSERT_TRUE(dialog.CreateModeless(nullptr, 5));
  EXPECT_EQ(application().modeless_dialog(), &dialog);
  EXPECT_EQ(dialog.calls.front(), "OnInitDialog 5");
  dialog.Show(true);
  EXPECT_TRUE(dialog.IsVisible());
  dialog.Destroy();
  EXPECT_EQ(application().modeless_dialog(), nullptr);
  EXPECT_FALSE(dialog.IsAttached());
  dialog.SetText(kName, u"x");
  EXPECT_EQ(dialog.Text(kName), u"");
}

TEST_F(DialogTest, FitsTheSmallestScreen) {
  for (const int number : {kEditTemplate, kAboutTemplate, 189}) {
    NotingDialog dialog(number);
    Run(dialog, [number](Dialog& shown) {
      EXPECT_LE(WidgetOf(&shown)->width(), 640) << number;
      EXPECT_LE(WidgetOf(&shown)->height(), 240) << number;
      EXPECT_LE(WidgetOf(&shown)->minimumSizeHint().height(), 240) << number;
      shown.EndDialog(1);
    });
  }
}

}  // namespace
}  // namespace celldesk
