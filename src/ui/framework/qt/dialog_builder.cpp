#include "ui/framework/qt/dialog_builder.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>
#include <algorithm>

#include "ui/framework/dialog.h"
#include "ui/framework/qt/elided_label.h"
#include "ui/framework/qt/qt_icons.h"
#include "ui/framework/qt/qt_text.h"
#include "ui/resources/resources.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr int kChooseFor = 370;
constexpr int kImageHeight = 64;
constexpr int kMargin = 4;  // small screens have no room to spare
// A choice list shows at least this much of its texts.
constexpr int kShownCharacters = 10;
constexpr int kNameCharacters = 30;
constexpr int kBarWidth = 300;

void SendCommand(Window& dialog, int id) {
  dialog.Dispatch(Message::kCommand, static_cast<WordParameter>(id), 0);
}

void SendChange(Window& dialog, int id, int index) {
  const Notification notification{NotifyCode::kChanged, index, -1};
  dialog.Dispatch(Message::kNotify, static_cast<WordParameter>(id),
                  reinterpret_cast<LongParameter>(&notification));
}

// A field wants room for a name or a number, and takes less.
class WideEdit : public QLineEdit {
 public:
  QSize sizeHint() const override {
    const QSize usual = QLineEdit::sizeHint();
    return usual.expandedTo({kNameCharacters * fontMetrics().averageCharWidth(), 0});
  }
};

QString ShortDateAndTime() {
  const QLocale locale;
  return locale.dateFormat(QLocale::ShortFormat) + u' ' + locale.timeFormat(QLocale::ShortFormat);
}

class Builder {
 public:
  Builder(QWidget* page, Window& dialog, NativeDialog& native)
      : page_(page), dialog_(dialog), native_(native) {
    outer_ = new QVBoxLayout(page);
    outer_->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    AddBand();
  }

  void Add(const ControlTemplate& control) {
    if (control.beside) return AddBeside(control);
    switch (control.kind) {
      case ControlKind::kBand:
        EndColumn();
        AddBand();
        break;
      case ControlKind::kQuiet:
        AddQuiet(control);
        break;
      case ControlKind::kColumn:
        EndColumn();
        AddColumn();
        break;
      case ControlKind::kButton:
        AddButton(control);
        break;
      case ControlKind::kList:
        AddPlace(control);
        break;
      case ControlKind::kGroup:
        AddWide(control, new QLabel(QStringLiteral("<b>%1</b>").arg(Text(control))));
        break;
      case ControlKind::kLine:
        AddLine(control);
        break;
      case ControlKind::kImage:
        AddImage(control);
        break;
      case ControlKind::kBar:
        AddBar(control);
        break;
      case ControlKind::kCheck:
        AddSwitch(control, new QCheckBox(Text(control)));
        break;
      case ControlKind::kRadio:
        AddSwitch(control, new QRadioButton(Text(control)));
        break;
      case ControlKind::kMemo:
        AddMemo(control);
        break;
      case ControlKind::kBrowse:
        AddBrowse(control);
        break;
      default:
        AddField(control);
        break;
    }
  }

  void Finish() {
    if (!fills_) {
      EndColumn();
    } else if (buttons_ == nullptr) {
      outer_->setContentsMargins(0, 0, 0, 0);
    }
  }

 private:
  static bool HasLetters(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar character) { return character.isLetter(); });
  }
  QString Title() const { return ToQt(dialog_.Title()).remove(u':'); }
  static QString Text(const ControlTemplate& control) { return ToQt(control.text); }

  // The room that is left goes to the list or memo; where there is none, to what is below the last row.
  void EndColumn() {
    if (!has_memo_) grid_->setRowStretch(row_, 1);
    if (has_memo_) outer_->setStretchFactor(columns_, 1);
  }

  void AddBand() {
    columns_ = new QHBoxLayout;
    outer_->addLayout(columns_);
    AddColumn();
  }

  void AddColumn() {
    grid_ = new QGridLayout;
    grid_->setColumnStretch(1, 1);
    columns_->addLayout(grid_);
    row_ = 0;
    has_memo_ = false;
  }

  void Register(const ControlTemplate& control, QWidget* widget) {
    widget->setObjectName(QStringLiteral("control_%1").arg(control.id));
    if (control.id != 0) native_.controls.insert(control.id, widget);
  }

  void AddWide(const ControlTemplate& control, QWidget* widget) {
    Register(control, widget);
    grid_->addWidget(widget, row_++, 0, 1, 3);
  }

  void AddLine(const ControlTemplate& control) {
    auto* label = new QLabel(Text(control));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    AddWide(control, label);
  }

  void AddImage(const ControlTemplate& control) {
    auto* label = new QLabel;
    label->setPixmap(IconOf(ToUtf8(control.text)).pixmap(QSize(4 * kImageHeight, kImageHeight)));
    label->setAlignment(Qt::AlignCenter);
    label->setAccessibleName(Title());
    AddWide(control, label);
  }

  void AddBar(const ControlTemplate& control) {
    auto* bar = new QProgressBar;
    bar->setRange(0, 100);
    bar->setAccessibleName(Title());
    bar->setMinimumWidth(kBarWidth);
    AddWide(control, bar);
  }

  void AddSwitch(const ControlTemplate& control, QAbstractButton* button) {
    const int id = control.id;
    QObject::connect(button, &QAbstractButton::clicked, page_,
                     [this_dialog = &dialog_, id] { SendCommand(*this_dialog, id); });
    AddWide(control, button);
  }

  void AddPlace(const ControlTemplate& control) {
    auto* place = new QWidget;
    auto* layout = new QVBoxLayout(place);
    layout->setContentsMargins(0, 0, 0, 0);
    fills_ = row_ == 0;
    has_memo_ = true;
    AddWide(control, place);
    grid_->setRowStretch(row_ - 1, 1);
  }

  void AddMemo(const ControlTemplate& control) {
    auto* memo = new QPlainTextEdit;
    memo->setTabChangesFocus(true);
    memo->setAccessibleName(Title());
    // A text that is only read shows its cursor too: so the focus is seen.
    if (control.text == u"readonly") {
      memo->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }
    const int id = control.id;
    QObject::connect(memo, &QPlainTextEdit::textChanged, page_,
                     [dialog = &dialog_, id] { SendChange(*dialog, id, -1); });
    has_memo_ = true;
    AddWide(control, memo);
    grid_->setRowStretch(row_ - 1, 1);
  }

  // A switch keeps its own width, then; anything else in the row before leaves the last place.
  void AddBeside(const ControlTemplate& control) {
    QWidget* before = grid_->itemAtPosition(row_ - 1, 0)->widget();
    const bool is_switch = qobject_cast<QAbstractButton*>(before) != nullptr;
    QWidget* widget = MakeField(control);
    Register(control, widget);
    if (grid_->itemAtPosition(row_ - 1, 2) != nullptr) {
      grid_->removeWidget(before);
      grid_->addWidget(before, row_ - 1, 0, 1, is_switch ? 1 : 2);
    }
    grid_->addWidget(widget, row_ - 1, is_switch ? 1 : 2, 1, is_switch ? 2 : 1);
    if (control.kind == ControlKind::kText) widget->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    if (is_switch) widget->setAccessibleName(static_cast<QAbstractButton*>(before)->text().remove(u'&'));
  }

  void AddQuiet(const ControlTemplate& control) {
    auto* label = new ElidedLabel(Text(control));
    label->setForegroundRole(QPalette::PlaceholderText);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    AddWide(control, label);
  }

  void AddBrowse(const ControlTemplate& control) {
    auto* button = new QToolButton;
    button->setText(Text(control));
    button->setFocusPolicy(Qt::StrongFocus);
    // Dots alone say nothing without the field before them.
    if (!HasLetters(button->text())) {
      const std::u16string field = FromQt(grid_->itemAtPosition(row_ - 1, 1)->widget()->accessibleName());
      button->setToolTip(ToQt(Format(LoadString(kChooseFor), {field})));
      button->setAccessibleName(button->toolTip());
    }
    const int id = control.id;
    QObject::connect(button, &QToolButton::clicked, page_,
                     [dialog = &dialog_, id] { SendCommand(*dialog, id); });
    Register(control, button);
    grid_->addWidget(button, row_ - 1, 2);
  }

  QComboBox* MakeCombo(const ControlTemplate& control) {
    const int id = control.id;
    Window* dialog = &dialog_;
    auto* combo = new QComboBox;
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(kShownCharacters);
    QObject::connect(combo, &QComboBox::activated, page_,
                     [dialog, id](int index) { SendChange(*dialog, id, index); });
    if (control.kind == ControlKind::kEditCombo) {
      combo->setEditable(true);
      combo->setInsertPolicy(QComboBox::NoInsert);
      combo->setCompleter(nullptr);
      QObject::connect(combo->lineEdit(), &QLineEdit::textEdited, page_,
                       [dialog, id] { SendChange(*dialog, id, -1); });
    }
    return combo;
  }

  QWidget* MakeField(const ControlTemplate& control) {
    const int id = control.id;
    Window* dialog = &dialog_;
    if (control.kind == ControlKind::kCombo || control.kind == ControlKind::kEditCombo) {
      return MakeCombo(control);
    }
    if (control.kind == ControlKind::kDate) {
      auto* date = new QDateTimeEdit;
      date->setCalendarPopup(true);
      date->setDisplayFormat(ShortDateAndTime());
      QObject::connect(date, &QDateTimeEdit::dateTimeChanged, page_,
                       [dialog, id] { SendChange(*dialog, id, -1); });
      return date;
    }
    if (control.kind == ControlKind::kText) {
      return new ElidedLabel;
    }
    auto* edit = new WideEdit;
    QObject::connect(edit, &QLineEdit::textEdited, page_, [dialog, id] { SendChange(*dialog, id, -1); });
    return edit;
  }

  void AddField(const ControlTemplate& control) {
    auto* label = new QLabel(Text(control));
    QWidget* field = MakeField(control);
    label->setBuddy(field);
    field->setAccessibleName(Text(control).remove(u'&').remove(u':'));
    if (const auto* combo = qobject_cast<QComboBox*>(field); combo != nullptr && combo->isEditable()) {
      combo->lineEdit()->setAccessibleName(field->accessibleName());
    }
    Register(control, field);
    grid_->addWidget(label, row_, 0);
    grid_->addWidget(field, row_++, 1);
  }

  void AddButton(const ControlTemplate& control) {
    if (buttons_ == nullptr) {
      buttons_ = new QDialogButtonBox;
      outer_->addWidget(buttons_);
    }
    const auto role = control.id == kIdOk       ? QDialogButtonBox::AcceptRole
                      : control.id == kIdCancel ? QDialogButtonBox::RejectRole
                                                : QDialogButtonBox::ActionRole;
    QPushButton* button = buttons_->addButton(Text(control), role);
    button->setDefault(control.id == kIdOk);
    const int id = control.id;
    QObject::connect(button, &QPushButton::clicked, page_,
                     [dialog = &dialog_, id] { SendCommand(*dialog, id); });
    Register(control, button);
  }

  QWidget* page_;
  Window& dialog_;
  NativeDialog& native_;
  QVBoxLayout* outer_;
  QHBoxLayout* columns_;
  QGridLayout* grid_ = nullptr;
  QDialogButtonBox* buttons_ = nullptr;
  int row_ = 0;
  bool fills_ = false;
  bool has_memo_ = false;
};

}  // namespace

void BuildControls(const DialogTemplate& form, QWidget* page, Window& dialog, NativeDialog& native) {
  Builder builder(page, dialog, native);
  for (const ControlTemplate& control : form.controls) builder.Add(control);
  builder.Finish();
}

}  // namespace celldesk
