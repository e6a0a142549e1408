#include "ui/framework/qt/list_table.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QGestureEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QInputDevice>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTapAndHoldGesture>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "ui/framework/list_view.h"
#include "ui/framework/qt/list_header.h"
#include "ui/framework/qt/native.h"
#include "ui/framework/qt/touch_target.h"
#include "ui/framework/window.h"

namespace celldesk {
namespace {

constexpr int kOpenCommand = 2006;
constexpr int kRowHeight = 24, kRowPadding = 6;
constexpr int kIcon = 14, kGap = 2, kTextMargin = 4;
constexpr double kSmallestFont = 0.7;
constexpr int kIconRoom = 2 * kGap + kIcon + 1;
constexpr int kWidestHint = 600;
constexpr int kShortText = 4;

// The font in which `text` fits into `width`: narrow columns rather shrink a memory's name or an index than
// cut it.
QFont FittingFont(QFont font, const QString& text, int width) {
  const int wanted = QFontMetrics(font).horizontalAdvance(text);
  const double factor = wanted <= width ? 1.0 : static_cast<double>(width) / wanted;
  if (factor < 1.0) {
    font.setPixelSize(static_cast<int>(QFontInfo(font).pixelSize() * std::max(factor, kSmallestFont)));
  }
  return font;
}

class RowDelegate : public QStyledItemDelegate {
 public:
  explicit RowDelegate(ListTable* table) : QStyledItemDelegate(table), table_(table) {}

  // A text that is cut shows whole in a tool tip.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override {
    if (event->type() != QEvent::ToolTip) return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QString text = index.data().toString();
    const bool is_cut = sizeHint(option, index).width() > option.rect.width();
    QToolTip::showText(event->globalPos(), is_cut ? text : QString(), view);
    return true;
  }

  // A column with icons may have little room for its short texts.
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    if (item.icon.isNull()) {
      if (table_->FitsColumn(index.column())) {
        table_->NeedRoom(index.column(), sizeHint(option, index).width());
      }
      return QStyledItemDelegate::paint(painter, option, index);
    }
    if (table_->FitsColumn(index.column())) {
      table_->NeedRoom(index.column(), kIconRoom + item.fontMetrics.horizontalAdvance(item.text));
    }
    const QIcon icon = std::exchange(item.icon, {});
    const QString text = std::exchange(item.text, {});
    item.features.setFlag(QStyleOptionViewItem::HasDecoration, false);
    table_->style()->drawControl(QStyle::CE_ItemViewItem, &item, painter, table_);
    const bool selected = item.state.testFlag(QStyle::State_Selected);
    const QRect room = item.rect.adjusted(kGap, 0, 0, 0);
    icon.paint(painter, QRect(room.topLeft(), QSize(kIcon, room.height())), Qt::AlignCenter,
               selected ? QIcon::Selected : QIcon::Normal);
    const QRect text_room = room.adjusted(kIcon + kGap, 0, -1, 0);
    painter->save();
    painter->setPen(item.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    painter->setFont(FittingFont(item.font, text, text_room.width()));
    painter->drawText(text_room, Qt::AlignVCenter | Qt::AlignLeft,
                      painter->fontMetrics().elidedText(text, Qt::ElideRight, text_room.width()));
    painter->restore();
  }

 protected:
  // The whole row is hot, and the table draws the focus frame around the row.
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    option->state.setFlag(QStyle::State_MouseOver, index.row() == table_->hot_row());
    option->state.setFlag(QStyle::State_HasFocus, false);
    option->textElideMode = Qt::ElideRight;
    if (option->icon.isNull()) Shrink(*option);
  }

 private:
  // Short texts in a narrow column rather shrink than are cut.
  void Shrink(QStyleOptionViewItem& item) const {
    if (item.text.size() > kShortText) return;
    item.font = FittingFont(item.font, item.text, item.rect.width() - 2 * kTextMargin);
    item.fontMetrics = QFontMetrics(item.font);
  }

  ListTable* table_;
};

// A pen needs higher rows than a mouse.
int RowHeight(const QFontMetrics& font) {
  const QList<const QInputDevice*> devices = QInputDevice::devices();
  const bool has_pen = std::any_of(devices.begin(), devices.end(), [](const QInputDevice* device) {
    return device->type() == QInputDevice::DeviceType::TouchScreen;
  });
  return std::max(font.height() + kRowPadding, has_pen ? kTouchTarget : kRowHeight);
}

void Notify(ListView& list, NotifyCode code, const QModelIndex& index = {}) {
  if (!list.native()->ready) return;
  const Notification notification{code, index.row(), index.column()};
  list.owner().Dispatch(Message::kNotify, static_cast<WordParameter>(list.id()),
                        reinterpret_cast<LongParameter>(&notification));
}

}  // namespace

ListTable::ListTable(ListView& list, QWidget* parent) : QTableView(parent), list_(list) {
  setItemDelegate(new RowDelegate(this));
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setShowGrid(false);
  setWordWrap(false);
  setMouseTracking(true);
  setFrameShape(NoFrame);
  grabGesture(Qt::TapAndHoldGesture);
  viewport()->grabGesture(Qt::TapAndHoldGesture);
  setIconSize({16, 16});
  setVerticalScrollMode(ScrollPerPixel);
  setHorizontalScrollMode(ScrollPerPixel);
  verticalHeader()->hide();
  verticalHeader()->setMinimumSectionSize(16);
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(RowHeight(fontMetrics()));
  setHorizontalHeader(new ListHeader(this));
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setStretchLastSection(true);
  horizontalHeader()->setSectionsClickable(true);
  horizontalHeader()->setMinimumSectionSize(16);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

QSize ListTable::sizeHint() const {
  int width = verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
  for (const std::uint16_t column : list_.Widths()) width += column;
  const QSize usual = QTableView::sizeHint();
  return {std::clamp(width, usual.width(), kWidestHint), usual.height()};
}

void ListTable::SetEmptyText(const QString& text) {
  empty_text_ = text;
  viewport()->update();
}

void ListTable::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      list_.owner().Dispatch(Message::kCommand, 1, 0);
      return;
    case Qt::Key_Delete:
      Notify(list_, NotifyCode::kDeleteKey, currentIndex());
      return;
    case Qt::Key_Menu:
      return AskForMenuByKey();
    case Qt::Key_F10:
      if (event->modifiers() == Qt::ShiftModifier) return AskForMenuByKey();
      break;
    case Qt::Key_Space:
      if (search_.IsUnderWay() && Find(event->text())) return;
      QTableView::keyPressEvent(event);
      if (currentIndex().isValid()) Notify(list_, NotifyCode::kClick, currentIndex());
      return;
    case Qt::Key_Home:
      if (event->modifiers() == Qt::NoModifier) return selectRow(0);
      break;
    case Qt::Key_End:
      if (event->modifiers() == Qt::NoModifier) return selectRow(list_.RowCount() - 1);
      break;
    default:
      break;
  }
  QTableView::keyPressEvent(event);
}

// A header that was clicked says by which column the user goes through the list.
bool ListTable::Find(const QString& letters) {
  const bool sorted = horizontalHeader()->isSortIndicatorShown();
  const int column = sorted ? horizontalHeader()->sortIndicatorSection() : search_column_;
  const int row = search_.Find(*model(), column, currentIndex().row(), letters);
  if (row < 0) return false;
  selectionModel()->setCurrentIndex(model()->index(row, 0),
                                    QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  scrollTo(model()->index(row, 0));
  return true;
}

void ListTable::keyboardSearch(const QString& letters) { Find(letters); }

// A pen held down asks for the menu as the right button does; that button held down has asked already.
bool ListTable::event(QEvent* event) {
  if (event->type() != QEvent::Gesture) return QTableView::event(event);
  QGesture* gesture = static_cast<QGestureEvent*>(event)->gesture(Qt::TapAndHoldGesture);
  if (gesture == nullptr) return QTableView::event(event);
  if (gesture->state() == Qt::GestureFinished && QApplication::activePopupWidget() == nullptr) {
    AskForMenu(static_cast<QTapAndHoldGesture*>(gesture)->position().toPoint());
  }
  return true;
}

// Where the system turns the key into a request of its own, the menu is open by then.
void ListTable::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  if (event->reason() != QContextMenuEvent::Keyboard) return AskForMenu(event->globalPos());
  if (QApplication::activePopupWidget() == nullptr) AskForMenuByKey();
}

// The key's menu opens at the row that it is about.
void ListTable::AskForMenuByKey() {
  const QRect row = visualRect(currentIndex()) & viewport()->rect();
  AskForMenu(viewport()->mapToGlobal(currentIndex().isValid() ? row.center() : viewport()->rect().center()));
}

void ListTable::AskForMenu(const QPoint& place) {
  menu_place_ = place;
  Notify(list_, NotifyCode::kContextMenu, indexAt(viewport()->mapFromGlobal(place)));
}

void ListTable::mousePressEvent(QMouseEvent* event) {
  QTableView::mousePressEvent(event);
  const QModelIndex index = indexAt(event->pos());
  if (event->button() == Qt::LeftButton && index.isValid()) Notify(list_, NotifyCode::kClick, index);
}

void ListTable::mouseMoveEvent(QMouseEvent* event) {
  SetHotRow(indexAt(event->pos()).row());
  QTableView::mouseMoveEvent(event);
}

void ListTable::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !indexAt(event->pos()).isValid()) return;
  if (list_.SelectedCount() == 1) list_.owner().Dispatch(Message::kCommand, kOpenCommand, 0);
}

void ListTable::leaveEvent(QEvent* event) {
  SetHotRow(-1);
  QTableView::leaveEvent(event);
}

void ListTable::SetHotRow(int row) {
  if (row == hot_row_) return;
  hot_row_ = row;
  viewport()->update();
}

void ListTable::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (hasFocus()) PaintFocus();
  if (empty_text_.isEmpty() || model()->rowCount() > 0) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  painter.drawText(viewport()->rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap,
                   empty_text_);
}

// Around the row that has the focus; around the list when none has it.
void ListTable::PaintFocus() {
  QPainter painter(viewport());
  const bool has_row = currentIndex().isValid();
  const int row = currentIndex().row();
  const QRect place(0, rowViewportPosition(row), viewport()->width(), rowHeight(row));
  const bool is_selected = has_row && selectionModel()->isRowSelected(row);
  painter.setPen(is_selected ? QPen(palette().color(QPalette::HighlightedText), 1, Qt::DotLine)
                             : QPen(palette().color(QPalette::Highlight)));
  painter.drawRect((has_row ? place : viewport()->rect()).adjusted(0, 0, -1, -1));
}

bool ListTable::FitsColumn(int column) const {
  return list_.native()->columns[static_cast<std::size_t>(column)].fits;
}

// Widths do not change while something is painted.
void ListTable::NeedRoom(int column, int width) {
  if (width <= columnWidth(column)) return;
  QMetaObject::invokeMethod(
      this, [this, column, width] { list_.native()->MakeRoom(column, width); }, Qt::QueuedConnection);
}

void ListTable::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QTableView::selectionChanged(selected, deselected);
  Notify(list_, NotifyCode::kSelectionChanged);
}

void ListTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  Notify(list_, NotifyCode::kSelectionChanged);
}

}  // namespace celldesk
