#include "ui/framework/message_box.h"

#include <QAbstractButton>
#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QMessageBox>
#include <QPalette>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "ui/framework/framework_fixture.h"

namespace celldesk {
namespace {

using testing::ElementsAre;

class MessageBoxTest : public FrameworkTest {
 protected:
  /// Shows the real box, works it once it is there, and gives its answer.
  static int Show(const BoxQuestion& question, const std::function<void(QMessageBox&)>& work,
                  Window* owner = nullptr) {
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      timer.stop();
      work(*box);
    });
    timer.start(1);
    return ShowMessageBox(owner, question);
  }
  static std::function<void(QMessageBox&)> Press(Qt::Key key) {
    return [key](QMessageBox& box) { QTest::keyClick(&box, key); };
  }
  static BoxQuestion YesNo(bool default_no) {
    return {u"Really?", {}, BoxButtons::kYesNo, BoxIcon::kQuestion, default_no};
  }
};

std::vector<std::string> ButtonTexts(const QMessageBox& box) {
  std::vector<std::string> texts;
  for (const QAbstractButton* button : box.buttons()) texts.push_back(button->text().toStdString());
  return texts;
}

TEST_F(MessageBoxTest, DrawsTheIconOfThisProgramInTheColourOfItsText) {
  const QPalette usual = QApplication::palette();
  const auto picture = [](BoxIcon icon) {
    QImage image;
    Show({u"Really?", {}, BoxButtons::kOk, icon, false}, [&](QMessageBox& box) {
      image = box.findChild<QLabel*>(QStringLiteral("qt_msgboxex_icon_label"))->pixmap().toImage();
      box.reject();
    });
    return image;
  };
  QPalette dark = usual;
  dark.setColor(QPalette::ButtonText, Qt::white);
  for (const BoxIcon icon : {BoxIcon::kInformation, BoxIcon::kWarning, BoxIcon::kStop, BoxIcon::kQuestion}) {
    const QImage light_picture = picture(icon);
    EXPECT_FALSE(light_picture.isNull());
    QApplication::setPalette(dark);
    EXPECT_NE(picture(icon), light_picture) << "drawn for a dark window too";
    QApplication::setPalette(usual);
  }
  EXPECT_NE(picture(BoxIcon::kQuestion), picture(BoxIcon::kInformation));
}

TEST_F(MessageBoxTest, ShowsTextCaptionIconAndButtons) {
  Show({u"Really?", {}, BoxButtons::kYesNo, BoxIcon::kStop, true}, [](QMessageBox& box) {
    EXPECT_EQ(box.text().toStdString(), "Really?");
    EXPECT_EQ(box.windowTitle().toStdString(), "Corvane Cell Desk");
    EXPECT_EQ(box.icon(), QMessageBox::Critical);
    EXPECT_THAT(ButtonTexts(box), testing::UnorderedElementsAre("&Yes", "&No"));
    EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No));
    box.reject();
  });
  Show({u"ERROR", u"Communication error", BoxButtons::kOk, BoxIcon::kInformation, false},
       [](QMessageBox& box) {
         EXPECT_EQ(box.windowTitle().toStdString(), "Communication error");
         EXPECT_EQ(box.icon(), QMessageBox::Information);
         EXPECT_THAT(ButtonTexts(box), ElementsAre("OK"));
         box.reject();
       });
}

TEST_F(MessageBoxTest, TakesEnterForTheDefaultButton) {
  EXPECT_EQ(Show(YesNo(false), Press(Qt::Key_Return)), kAnswerYes);
  EXPECT_EQ(Show(YesNo(true), Press(Qt::Key_Return)), kAnswerNo);
}

TEST_F(MessageBoxTest, TakesEscapeForNoCancelOrOk) {
  EXPECT_EQ(Show(YesNo(false), Press(Qt::Key_Escape)), kAnswerNo);
  EXPECT_EQ(Show({u"?", {}, BoxButtons::kYesNoCancel, BoxIcon::kWarning, false}, Press(Qt::Key_Escape)),
            kAnswerCancel);
  EXPECT_EQ(Show({u"!", {}, BoxButtons::kOk, BoxIcon::kStop, false}, Press(Qt::Key_Escape)), kAnswerOk);
}

TEST_F(MessageBoxTest, TakesClicks) {
  const auto click = [](QMessageBox::StandardButton which) {
    return [which](QMessageBox& box) { QTest::mouseClick(box.button(which), Qt::LeftButton); };
  };
  EXPECT_EQ(Show(YesNo(true), click(QMessageBox::Yes)), kAnswerYes);
  EXPECT_EQ(Show(YesNo(false), click(QMessageBox::No)), kAnswerNo);
  EXPECT_EQ(Show({u"!", {}, BoxButtons::kOk, BoxIcon::kNone, false}, click(QMessageBox::Ok)), kAnswerOk);
}

TEST_F(MessageBoxTest, BreaksLinesAtCarriageReturns) {
  Show({u"one\r\rtwo", {}, BoxButtons::kOk, BoxIcon::kNone, false}, [](QMessageBox& box) {
    EXPECT_EQ(box.text().toStdString(), "one\n\ntwo");
    box.reject();
  });
}

TEST_F(MessageBoxTest, NeverReadsTextsAsMarkup) {
  Show({u"<b>ERROR</b> &amp; <img src='x'>", {}, BoxButtons::kOk, BoxIcon::kNone, false},
       [](QMessageBox& box) {
         EXPECT_EQ(box.textFormat(), Qt::PlainText);
         EXPECT_EQ(box.text().toStdString(), "<b>ERROR</b> &amp; <img src='x'>");
         box.reject();
       });
}

/// A dialog with the editor's menu, so that it takes the key of Send.
class SendingDialog : public Dialog {
 public:
  SendingDialog() : Dialog(200) {}
  bool OnInitDialog(int /*focus*/, LongParameter /*parameter*/) override {
    Surface().SetMenu(199);
    return true;
  }
};

TEST_F(MessageBoxTest, KeepsItsKeysFromTheDialogThatItBelongsTo) {
  Noting<FrameWindow> frame;
  ASSERT_TRUE(frame.Create(u"Frame"));
  application().set_main_frame(&frame);
  application().SetAccelerators({{u"Ctrl+S", 2030}});
  std::vector<std::string> in_box, in_dialog;
  const auto press = [&](QWidget* widget) {
    frame.calls.clear();
    QTest::keyClick(widget, Qt::Key_S, Qt::ControlModifier);
    QTest::keyClick(widget, Qt::Key_F1);
    return frame.calls;
  };
  SendingDialog dialog;
  Dialog::SetModalHook([&](Dialog& shown) {
    Show(
        YesNo(false),
        [&](QMessageBox& box) {
          in_box = press(&box);
          box.reject();
        },
        &shown);
    in_dialog = press(WidgetOf(&shown));
    shown.EndDialog(1);
  });
  dialog.RunModal(&frame);
  EXPECT_THAT(in_box, testing::IsEmpty());
  EXPECT_THAT(in_dialog, ElementsAre("OnCommand 2030", "WindowProc 83"));
  application().set_main_frame(nullptr);
}

TEST(MessageBoxScript, AnswersInOrderAndThenNo) {
  MessageBoxScript script;
  script.Answer(kAnswerYes);
  const BoxQuestion question{u"Really?", u"Caption", BoxButtons::kYesNo, BoxIcon::kQuestion, false};
  EXPECT_EQ(ShowMessageBox(nullptr, question), kAnswerYes);
  EXPECT_EQ(ShowMessageBox(nullptr, question), kAnswerNo);
  EXPECT_EQ(ShowMessageBox(nullptr, {u"!", u"Caption", BoxButtons::kOk, BoxIcon::kNone, false}), kAnswerOk);
  EXPECT_EQ(script.asked().size(), 3u);
  EXPECT_EQ(script.unused_answers(), 0u);
}

TEST(MessageBoxScript, GivesWayToAnInnerOne) {
  MessageBoxScript outer;
  {
    MessageBoxScript inner;
    EXPECT_EQ(MessageBoxScript::Current(), &inner);
  }
  EXPECT_EQ(MessageBoxScript::Current(), &outer);
}

}  // namespace
}  // namespace celldesk
