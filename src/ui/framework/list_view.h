#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "ui/framework/font.h"

namespace celldesk {

class CommandSurface;
class Window;
struct NativeList;

/// A report list that holds no texts: each row is a record's index, and texts, fonts and images are asked of
/// the owning window when a row is drawn. Rows are numbered from 0 in display order. Interface thread only.
class ListView {
 public:
  /// `owner` answers ColumnText, ItemFont, ItemImage and Compare and gets the notifications of control `id`.
  ListView(Window& owner, int id);
  ~ListView();
  ListView(const ListView&) = delete;
  ListView& operator=(const ListView&) = delete;

  /// Columns of the string resource of this number.
  void BuildColumns(int column_string);
  int ColumnCount() const;
  /// In column order, in pixels.
  std::vector<std::uint16_t> Widths() const;
  /// Applied from the left, as far as there are columns.
  void SetWidths(const std::vector<std::uint16_t>& widths);
  /// Draws a column as wide as its texts need when they come into sight, unless the user chose its width. Its
  /// width in Widths stays the one it was given.
  void FitColumn(int column);
  /// Icons by resource name, in the order of ItemImage's indexes, shown in front of the texts of `column`.
  void SetImages(const std::vector<std::string_view>& icons, int column = 0);
  /// Borrowed until the list goes.
  void SetFonts(const FontSet& fonts);
  /// Shown in the middle of an empty list.
  void SetEmptyText(std::u16string_view text);
  /// What a screen reader calls the list; without it, the title of its dialog.
  void SetName(std::u16string_view name);
  /// Typed letters go to the next row that begins so in this column; in the sorted one after a click on a
  /// header.
  void SetSearchColumn(int column);
  /// Shows these commands of `surface` as a menu where the list was asked for one; 0 is a separator. Commands
  /// that the menu bar does not have are left out.
  void ShowContextMenu(const CommandSurface& surface, std::span<const int> commands);
  /// The style of a box of choices: no header, and one row is selected at a time.
  void SetChoiceStyle();
  /// The style of item assignment: a plain click picks a row; nothing is dragged or edited.
  void SetAssignmentStyle(bool on);

  int RowCount() const;
  void Reserve(std::size_t rows);
  /// Replaces all rows at once: in this order, each record once, or in that of a header that was clicked.
  /// The toolkit is told of them together.
  void SetRows(std::span<const std::uint32_t> records);
  /// Appends a row; its index.
  int AddRow(std::size_t record);
  void RemoveRow(int row);
  void Clear();
  std::size_t RecordAt(int row) const;
  void SetRecordAt(int row, std::size_t record);
  /// True when a row shows this record; constant time.
  bool Shows(std::size_t record) const;
  /// The row of a record, or -1; linear.
  int RowOf(std::size_t record) const;

  /// Selected rows in display order.
  std::vector<int> SelectedRows() const;
  std::size_t SelectedCount() const;
  void Select(int row, bool selected);
  /// Deselects one row after the other until none is left.
  void ClearSelection();
  /// The row with the focus, or -1.
  int FocusedRow() const;
  void SetFocusedRow(int row);

  /// One row; a negative index is every visible row.
  void Redraw(int row);
  /// Paints what is due, at most 25 times a second.
  void UpdateNow();
  void SetFocus();

  /// Header clicks sort, once enabled. A click on the sort column flips the direction; another column takes
  /// over with the present direction.
  void EnableSorting(bool on);
  void OnHeaderClick(int column);
  int sort_column() const { return sort_column_; }
  bool descending() const { return descending_; }
  /// Sorts in the order of the owner's Compare, negated when descending; equal rows keep their order.
  /// Selection and focus stay with their records.
  void Sort();
  /// Sorts again after rows came, if a header says that the list is sorted.
  void SortAgain();

  Window& owner() const { return owner_; }
  int id() const { return id_; }
  NativeList* native() const { return native_.get(); }

 private:
  Window& owner_;
  int id_;
  int sort_column_ = 0;
  bool descending_ = false;
  bool sorting_ = false;
  std::unique_ptr<NativeList> native_;
};

}  // namespace celldesk
