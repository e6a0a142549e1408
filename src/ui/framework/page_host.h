#pragma once

#include <memory>
#include <string_view>
#include <vector>

namespace celldesk {

class Dialog;
class Window;
struct NativeHost;

/// How a page host looks and starts.
struct PageHostStyle {
  bool icon_list = false;          ///< a list of icons instead of a tab strip
  bool select_first_page = false;  ///< shows the first page at creation
};

/// Shows one of several dialogs under a tab strip. A page is made the first time it is shown. Leaving asks
/// the page's OnLeavePage, showing calls its OnShowPage. Pages are borrowed and outlive the host.
class PageHost {
 public:
  /// Fills `owner` below its command bar, or is control `id` of a dialog. One label for each page; icons by
  /// name.
  PageHost(Window& owner, int id, PageHostStyle style);
  ~PageHost();
  PageHost(const PageHost&) = delete;
  PageHost& operator=(const PageHost&) = delete;

  void AddPage(std::u16string_view label, std::string_view icon, Dialog& page);
  int PageCount() const;
  /// The shown page's index, or -1.
  int Current() const;
  Dialog* CurrentPage() const;
  Dialog* PageAt(int index) const;
  /// False when the page to be left keeps itself.
  bool Select(int index);
  /// After the last AddPage: shows the first page where the style says so.
  void Start();
  /// Makes the pages that were not shown yet, for messages that go to every page.
  void CreatePages();

  Window& owner() const { return owner_; }
  NativeHost* native() const { return native_.get(); }
  /// The user wants page `index` (from the tab strip); the strip goes back when the page is kept.
  void OnTabClicked(int index);

 private:
  Window& owner_;
  int id_;
  PageHostStyle style_;
  std::vector<Dialog*> pages_;
  int current_ = -1;
  std::unique_ptr<NativeHost> native_;
};

}  // namespace celldesk
