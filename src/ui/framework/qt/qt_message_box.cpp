#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QStyle>
#include <utility>

#include "ui/framework/qt/native.h"
#include "ui/framework/qt/qt_icons.h"
#include "ui/framework/qt/qt_message_box.h"
#include "ui/framework/qt/qt_text.h"
#include "ui/resources/resources.h"

namespace celldesk {
namespace {

constexpr int kCaption = 100;
constexpr int kYesText = 330, kNoText = 331, kOkText = 332, kCancelText = 333;

// A question in the middle of a procedure is answered without the wait cursor.
class NormalCursor {
 public:
  NormalCursor() : waiting_(QApplication::overrideCursor() != nullptr) {
    if (waiting_) QApplication::setOverrideCursor(Qt::ArrowCursor);
  }
  ~NormalCursor() {
    if (waiting_) QApplication::restoreOverrideCursor();
  }
  NormalCursor(const NormalCursor&) = delete;
  NormalCursor& operator=(const NormalCursor&) = delete;

 private:
  bool waiting_;
};

QMessageBox::Icon IconFor(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::kInformation:
      return QMessageBox::Information;
    case BoxIcon::kWarning:
      return QMessageBox::Warning;
    case BoxIcon::kStop:
      return QMessageBox::Critical;
    case BoxIcon::kQuestion:
      return QMessageBox::Question;
    case BoxIcon::kNone:
      break;
  }
  return QMessageBox::NoIcon;
}

std::string_view IconName(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::kInformation:
      return "information";
    case BoxIcon::kWarning:
      return "warning";
    case BoxIcon::kStop:
      return "stop";
    case BoxIcon::kQuestion:
      return "question";
    case BoxIcon::kNone:
      break;
  }
  return {};
}

// The toolkit's own pictures are of another family, and not for dark windows.
void SetIcon(QMessageBox& box, BoxIcon icon) {
  box.setIcon(IconFor(icon));
  auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgboxex_icon_label"));
  if (label == nullptr) return;
  label->setAccessibleName(box.windowTitle());
  if (icon == BoxIcon::kNone) return;
  const int size = box.style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, &box);
  label->setPixmap(IconOf(IconName(icon)).pixmap({size, size}, box.devicePixelRatioF()));
}

QPushButton* AddButton(QMessageBox& box, QMessageBox::StandardButton which, int text) {
  QPushButton* button = box.addButton(which);
  button->setText(ToQt(LoadString(text)));
  return button;
}

int AnswerFor(int clicked) {
  switch (clicked) {
    case QMessageBox::Yes:
      return kAnswerYes;
    case QMessageBox::No:
      return kAnswerNo;
    case QMessageBox::Cancel:
      return kAnswerCancel;
    default:
      return kAnswerOk;
  }
}

void AddButtons(QMessageBox& box, const BoxQuestion& question) {
  if (question.buttons == BoxButtons::kOk) {
    AddButton(box, QMessageBox::Ok, kOkText);
    return;
  }
  QPushButton* yes = AddButton(box, QMessageBox::Yes, kYesText);
  QPushButton* no = AddButton(box, QMessageBox::No, kNoText);
  box.setDefaultButton(question.default_no ? no : yes);
  box.setEscapeButton(no);
  if (question.buttons == BoxButtons::kYesNoCancel) {
    box.setEscapeButton(AddButton(box, QMessageBox::Cancel, kCancelText));
  }
}

}  // namespace

int ShowMessageBox(Window* owner, BoxQuestion question) {
  return ShowMessageBoxOver(WidgetOf(owner), std::move(question));
}

int ShowMessageBoxOver(QWidget* owner, BoxQuestion question) {
  if (question.caption.empty()) question.caption = LoadString(kCaption);
  if (MessageBoxScript* script = MessageBoxScript::Current()) return script->Take(question);
  QMessageBox box(owner);
  box.setWindowTitle(ToQt(question.caption));
  // Texts from the phone are shown as they are, never read as markup; "\r" is the line end of our own texts.
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQt(question.text).replace(u'\r', u'\n'));
  SetIcon(box, question.icon);
  AddButtons(box, question);
  const NormalCursor cursor;
  return AnswerFor(box.exec());
}

}  // namespace celldesk
