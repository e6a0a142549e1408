#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTextBlock>
#include <algorithm>

#include "ui/framework/dialog.h"
#include "ui/framework/qt/native.h"
#include "ui/framework/qt/qt_text.h"

namespace celldesk {
namespace {

// In a large font a field still shows a whole number.
constexpr QLatin1String kLongNumber("+447700900123");
constexpr int kFieldMargins = 9;

template <typename Control>
Control* Find(const Dialog& dialog, int id) {
  return dialog.controls() == nullptr ? nullptr
                                      : dynamic_cast<Control*>(dialog.controls()->controls.value(id));
}

// The line that a user types into: an edit field, or that of a choice list.
QLineEdit* FindLine(const Dialog& dialog, int id) {
  if (const auto* combo = Find<QComboBox>(dialog, id)) return combo->lineEdit();
  return Find<QLineEdit>(dialog, id);
}

// Drops typed and pasted characters that the field does not take.
class FilteredInput : public QObject {
 public:
  FilteredInput(EditFilter filter, QLineEdit* field) : QObject(field), filter_(filter), field_(field) {
    field->installEventFilter(this);
    // A choice list hands the keys to its line itself.
    if (QWidget* list = field->focusProxy()) list->installEventFilter(this);
    connect(field, &QLineEdit::textEdited, this, [this](const QString& text) { DropForeign(text); });
  }

  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return false;
    const QString text = static_cast<QKeyEvent*>(event)->text();
    return !text.isEmpty() && !PassesFilter(filter_, text.front().unicode());
  }

 private:
  void DropForeign(const QString& text) {
    QString kept;
    for (const QChar character : text) {
      if (PassesFilter(filter_, character.unicode())) kept += character;
    }
    if (kept != text) field_->setText(kept);
  }

  EditFilter filter_;
  QLineEdit* field_;
};

// Keeps what a user types or pastes into a memo within its limit: what is too much of it goes again.
class LimitedMemo : public QObject {
 public:
  LimitedMemo(QPlainTextEdit* memo, int limit) : QObject(memo), memo_(memo), limit_(limit) {
    connect(memo->document(), &QTextDocument::contentsChange, this, [this](int position, int, int added) {
      added_ = added;
      end_ = position + added;
    });
    connect(memo, &QPlainTextEdit::textChanged, this, [this] { DropExcess(); });
  }

 private:
  // The document's count holds the end of its last block, which is no character of the text.
  int Length() const { return memo_->document()->characterCount() - 1; }

  void DropExcess() {
    int excess = std::min({Length() - limit_, added_, Length()});
    if (excess <= 0 || !memo_->document()->isUndoAvailable()) return;
    end_ = std::min(end_, Length());
    if (memo_->document()->characterAt(end_ - excess).isLowSurrogate()) ++excess;
    added_ = 0;
    QTextCursor cursor(memo_->document());
    cursor.joinPreviousEditBlock();
    cursor.setPosition(end_ - excess);
    cursor.setPosition(end_, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    cursor.endEditBlock();
  }

  QPlainTextEdit* memo_;
  int limit_;
  int added_ = 0;
  int end_ = 0;
};

QDateTime ToQt(const CalendarTime& time) {
  return {QDate(time.year, time.month, time.day), QTime(time.hour, time.minute, time.second)};
}

}  // namespace

std::u16string Dialog::Text(int id) const {
  if (const auto* edit = Find<QLineEdit>(*this, id)) return FromQt(edit->text());
  if (const auto* memo = Find<QPlainTextEdit>(*this, id)) return FromQt(memo->toPlainText());
  if (const auto* label = Find<QLabel>(*this, id)) return FromQt(label->text());
  if (const auto* combo = Find<QComboBox>(*this, id)) return FromQt(combo->currentText());
  if (const auto* button = Find<QAbstractButton>(*this, id)) return FromQt(button->text());
  return {};
}

// The limit is the typist's: a longer text that is there already is shown whole.
void Dialog::SetText(int id, std::u16string_view text) {
  if (auto* edit = FindLine(*this, id)) {
    edit->setMaxLength(std::max(edit->maxLength(), static_cast<int>(text.size())));
    edit->setText(ToQt(text));
  }
  if (auto* memo = Find<QPlainTextEdit>(*this, id)) memo->setPlainText(ToQt(text));
  if (auto* label = Find<QLabel>(*this, id)) label->setText(ToQt(text));
  if (auto* button = Find<QAbstractButton>(*this, id)) button->setText(ToQt(text));
}

void Dialog::SetLimit(int id, int characters) {
  if (auto* edit = FindLine(*this, id)) edit->setMaxLength(characters);
  if (auto* memo = Find<QPlainTextEdit>(*this, id)) new LimitedMemo(memo, characters);
}

void Dialog::SetFilter(int id, EditFilter filter) {
  if (filter == EditFilter::kNone) return;
  if (auto* edit = FindLine(*this, id)) new FilteredInput(filter, edit);
}

bool Dialog::IsChecked(int id) const {
  const auto* button = Find<QAbstractButton>(*this, id);
  return button != nullptr && button->isChecked();
}

void Dialog::SetChecked(int id, bool checked) {
  if (auto* button = Find<QAbstractButton>(*this, id)) button->setChecked(checked);
}

void Dialog::Enable(int id, bool enabled) {
  if (auto* widget = Find<QWidget>(*this, id)) widget->setEnabled(enabled);
}

bool Dialog::IsEnabled(int id) const {
  const auto* widget = Find<QWidget>(*this, id);
  return widget != nullptr && widget->isEnabled();
}

void Dialog::ShowControl(int id, bool visible) {
  if (auto* widget = Find<QWidget>(*this, id)) widget->setVisible(visible);
}

void Dialog::SetControlFont(int id, const FontSet& fonts, FontRole role) {
  auto* widget = Find<QWidget>(*this, id);
  if (widget == nullptr) return;
  widget->setFont(FontOf(&fonts, role, widget->font()));
  if (qobject_cast<QLineEdit*>(widget) != nullptr) {
    widget->setMinimumWidth(widget->fontMetrics().horizontalAdvance(QString(kLongNumber)) + kFieldMargins);
  }
}

void Dialog::FocusControl(int id) {
  if (auto* widget = Find<QWidget>(*this, id)) widget->setFocus(Qt::OtherFocusReason);
}

CalendarTime Dialog::Date(int id) const {
  const auto* edit = Find<QDateTimeEdit>(*this, id);
  if (edit == nullptr) return {};
  const QDate date = edit->date();
  const QTime time = edit->time();
  const auto field = [](int value) { return static_cast<std::uint16_t>(value); };
  return {field(date.year()), field(date.month()),  field(date.dayOfWeek() % 7), field(date.day()),
          field(time.hour()), field(time.minute()), field(time.second()),        0};
}

void Dialog::SetDate(int id, const CalendarTime& time) {
  if (auto* edit = Find<QDateTimeEdit>(*this, id)) edit->setDateTime(ToQt(time));
}

void Dialog::SetDateRange(int id, const CalendarTime& first, const CalendarTime& last) {
  if (auto* edit = Find<QDateTimeEdit>(*this, id)) edit->setDateTimeRange(ToQt(first), ToQt(last));
}

void Dialog::AddChoice(int id, std::u16string_view text, LongParameter data) {
  if (auto* combo = Find<QComboBox>(*this, id)) {
    combo->addItem(ToQt(text), QVariant::fromValue(static_cast<qlonglong>(data)));
  }
}

void Dialog::ClearChoices(int id) {
  if (auto* combo = Find<QComboBox>(*this, id)) combo->clear();
}

int Dialog::ChoiceCount(int id) const {
  const auto* combo = Find<QComboBox>(*this, id);
  return combo == nullptr ? 0 : combo->count();
}

std::u16string Dialog::ChoiceText(int id, int index) const {
  const auto* combo = Find<QComboBox>(*this, id);
  return combo == nullptr ? std::u16string() : FromQt(combo->itemText(index));
}

LongParameter Dialog::ChoiceData(int id, int index) const {
  const auto* combo = Find<QComboBox>(*this, id);
  return combo == nullptr ? 0 : static_cast<LongParameter>(combo->itemData(index).toLongLong());
}

int Dialog::SelectedChoice(int id) const {
  const auto* combo = Find<QComboBox>(*this, id);
  return combo == nullptr ? -1 : combo->currentIndex();
}

void Dialog::SelectChoice(int id, int index) {
  if (auto* combo = Find<QComboBox>(*this, id)) combo->setCurrentIndex(index);
}

void Dialog::SetBar(int id, int percent) {
  if (auto* bar = Find<QProgressBar>(*this, id))
    bar->setValue(std::clamp(percent, bar->minimum(), bar->maximum()));
}

}  // namespace celldesk
