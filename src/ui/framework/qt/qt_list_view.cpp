#include <QHeaderView>
#include <QIcon>
#include <algorithm>

#include "ui/framework/dialog.h"
#include "ui/framework/list_view.h"
#include "ui/framework/qt/list_model.h"
#include "ui/framework/qt/list_table.h"
#include "ui/framework/qt/native.h"
#include "ui/framework/qt/qt_icons.h"
#include "ui/framework/qt/qt_text.h"
#include "ui/framework/row_order.h"
#include "ui/framework/token_list.h"
#include "ui/resources/resources.h"

namespace celldesk {
namespace {

constexpr int kLeastWidth = 100;

}  // namespace

// The table stands where the dialog's template has the list: as the only child of that placeholder.
ListView::ListView(Window& owner, int id) : owner_(owner), id_(id), native_(std::make_unique<NativeList>()) {
  auto* dialog = dynamic_cast<Dialog*>(&owner);
  QWidget* place = dialog == nullptr || dialog->controls() == nullptr
                       ? WidgetOf(&owner)
                       : dialog->controls()->controls.value(id);
  native_->table = new ListTable(*this, place);
  native_->model = new ListModel(*this, native_->table);
  native_->table->setModel(native_->model);
  native_->table->setObjectName(QStringLiteral("list_%1").arg(id));
  SetName(owner.Title());
  if (place != nullptr && place->layout() != nullptr) place->layout()->addWidget(native_->table);
  if (place != nullptr) place->setFocusProxy(native_->table);
  QObject::connect(native_->table->horizontalHeader(), &QHeaderView::sectionClicked, native_->table,
                   [this](int column) { OnHeaderClick(column); });
  native_->ready = true;
}

ListView::~ListView() { delete native_->table.data(); }

void ListView::BuildColumns(int column_string) {
  const std::vector<ColumnSpec> columns = ParseColumns(LoadString(column_string));
  native_->model->SetColumns(columns);
  native_->columns.assign(columns.size(), {});
  std::vector<std::uint16_t> widths;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    widths.push_back(static_cast<std::uint16_t>(columns[i].width));
    native_->columns[i].built = widths[i];
  }
  SetWidths(widths);
}

int ListView::ColumnCount() const { return native_->model->columnCount({}); }

// The last column fills what the window has left; its own width is the one it was given.
std::vector<std::uint16_t> ListView::Widths() const {
  std::vector<std::uint16_t> widths;
  for (int i = 0; i < ColumnCount(); ++i) {
    const NativeColumn& column = native_->columns[static_cast<std::size_t>(i)];
    const int width = native_->table->columnWidth(i);
    const bool is_untouched = width == column.Drawn() || i == ColumnCount() - 1;
    widths.push_back(is_untouched ? column.given : static_cast<std::uint16_t>(width));
  }
  return widths;
}

void ListView::SetWidths(const std::vector<std::uint16_t>& widths) {
  const int count = std::min(ColumnCount(), static_cast<int>(widths.size()));
  for (int i = 0; i < count; ++i) {
    NativeColumn& column = native_->columns[static_cast<std::size_t>(i)];
    column.given = widths[static_cast<std::size_t>(i)];
    native_->table->setColumnWidth(i, column.Drawn());
  }
  native_->YieldRoom();
  native_->table->updateGeometry();
}

void ListView::FitColumn(int column) { native_->columns[static_cast<std::size_t>(column)].fits = true; }

void NativeList::MakeRoom(int column, int width) {
  NativeColumn& one = columns[static_cast<std::size_t>(column)];
  if (!one.fits || width <= one.needed) return;
  const bool is_untouched = table->columnWidth(column) == one.Drawn();
  one.needed = width;
  if (!is_untouched) return;
  table->setColumnWidth(column, one.Drawn());
  YieldRoom();
}

void NativeList::YieldRoom() {
  if (columns.empty()) return;
  int width = columns.back().given;
  for (const NativeColumn& column : columns) width -= column.Drawn() - column.given;
  table->setColumnWidth(static_cast<int>(columns.size()) - 1,
                        std::max<int>(width, std::min<int>(kLeastWidth, columns.back().given)));
}

void ListView::SetImages(const std::vector<std::string_view>& icons, int column) {
  QList<QIcon> images;
  for (const std::string_view name : icons) images.append(IconOf(name));
  native_->model->SetIcons(images, column);
}

void ListView::SetFonts(const FontSet& fonts) { native_->model->SetFonts(&fonts); }
void ListView::SetEmptyText(std::u16string_view text) { native_->table->SetEmptyText(ToQt(text)); }

void ListView::SetName(std::u16string_view name) {
  native_->table->setAccessibleName(ToQt(name).remove(u':'));
}

void ListView::SetSearchColumn(int column) { native_->table->set_search_column(column); }

void ListView::ShowContextMenu(const CommandSurface& surface, std::span<const int> commands) {
  PopUpCommands(surface, commands, native_->table->menu_place());
}

void ListView::SetChoiceStyle() {
  native_->table->horizontalHeader()->hide();
  native_->table->setSelectionMode(QAbstractItemView::SingleSelection);
  native_->table->setFrameShape(QFrame::StyledPanel);
}

void ListView::SetAssignmentStyle(bool on) {
  native_->table->setSelectionMode(on ? QAbstractItemView::SingleSelection
                                      : QAbstractItemView::ExtendedSelection);
  native_->table->setAlternatingRowColors(on);
  native_->table->setCursor(on ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

int ListView::RowCount() const { return native_->model->rowCount({}); }
void ListView::Reserve(std::size_t rows) { native_->model->Reserve(rows); }

void ListView::SetRows(std::span<const std::uint32_t> records) {
  native_->model->SetRows(records);
  SortAgain();
}

int ListView::AddRow(std::size_t record) { return native_->model->Append(record); }

void ListView::RemoveRow(int row) {
  if (row >= 0 && row < RowCount()) native_->model->Remove(row);
}

void ListView::Clear() { native_->model->Clear(); }

std::size_t ListView::RecordAt(int row) const {
  return native_->model->rows()[static_cast<std::size_t>(row)];
}
void ListView::SetRecordAt(int row, std::size_t record) { native_->model->SetRecord(row, record); }
bool ListView::Shows(std::size_t record) const { return native_->model->Shows(record); }

int ListView::RowOf(std::size_t record) const {
  const auto& rows = native_->model->rows();
  const auto found = std::find(rows.begin(), rows.end(), static_cast<std::uint32_t>(record));
  return found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

std::vector<int> ListView::SelectedRows() const {
  std::vector<int> rows;
  for (const QItemSelectionRange& range : native_->table->selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row) rows.push_back(row);
  }
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

std::size_t ListView::SelectedCount() const {
  std::size_t count = 0;
  for (const QItemSelectionRange& range : native_->table->selectionModel()->selection()) {
    count += static_cast<std::size_t>(range.height());
  }
  return count;
}

void ListView::Select(int row, bool selected) {
  const auto how = selected ? QItemSelectionModel::Select : QItemSelectionModel::Deselect;
  native_->table->selectionModel()->select(native_->model->index(row, 0), how | QItemSelectionModel::Rows);
}

void ListView::ClearSelection() {
  const QItemSelectionModel* selection = native_->table->selectionModel();
  while (!selection->selection().isEmpty()) Select(selection->selection().first().top(), false);
}

int ListView::FocusedRow() const { return native_->table->currentIndex().row(); }

void ListView::SetFocusedRow(int row) {
  native_->table->selectionModel()->setCurrentIndex(native_->model->index(row, 0),
                                                    QItemSelectionModel::NoUpdate);
  native_->table->scrollTo(native_->model->index(row, 0));
}

void ListView::Redraw(int row) {
  if (row >= 0) {
    native_->model->Changed(row, row);
  } else {
    native_->table->viewport()->update();
  }
}

// Rows may come faster than they can be painted; those between two paintings show with the next.
void ListView::UpdateNow() {
  constexpr qint64 kPaintInterval = 40;
  QWidget* viewport = native_->table->viewport();
  if (native_->painted.isValid() && native_->painted.elapsed() < kPaintInterval) {
    viewport->update();
    return;
  }
  viewport->repaint();
  native_->painted.start();
}

void ListView::SetFocus() { native_->table->setFocus(Qt::OtherFocusReason); }

void ListView::EnableSorting(bool on) {
  sorting_ = on;
  native_->table->horizontalHeader()->setSortIndicatorShown(false);
}

void ListView::OnHeaderClick(int column) {
  if (!sorting_) return;
  if (column == sort_column_) descending_ = !descending_;
  sort_column_ = column;
  QHeaderView* header = native_->table->horizontalHeader();
  header->setSortIndicatorShown(true);
  header->setSortIndicator(column, descending_ ? Qt::DescendingOrder : Qt::AscendingOrder);
  Sort();
}

void ListView::Sort() { native_->model->Reorder(RowsInOrder(owner_, native_->model->rows(), descending_)); }

void ListView::SortAgain() {
  if (native_->table->horizontalHeader()->isSortIndicatorShown()) Sort();
}

}  // namespace celldesk
