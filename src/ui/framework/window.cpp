#include "ui/framework/window.h"

#include "ui/framework/menu_state.h"

namespace celldesk {

bool Window::OnCreate(LongParameter /*parameter*/) { return true; }
void Window::OnTimer(int /*timer_id*/) {}
MessageResult Window::OnNotify(int /*control_id*/, const Notification& /*notification*/) { return 0; }
void Window::OnCommand(int /*command*/, LongParameter /*parameter*/) {}
void Window::OnInitMenuPopup(MenuState& /*menu*/, int /*index*/) {}
MessageResult Window::WindowProc(Message /*message*/, WordParameter /*word*/, LongParameter /*parameter*/) {
  return 0;
}
bool Window::OnInitDialog(int /*focus*/, LongParameter /*parameter*/) { return true; }
int Window::Compare(std::size_t /*record1*/, std::size_t /*record2*/) { return 0; }
void Window::OnShowPage() {}
bool Window::OnLeavePage() { return true; }
bool Window::UpdateData(bool /*save*/) { return true; }
bool Window::OnIdle(int /*count*/) { return false; }
int Window::AddItem(std::size_t /*record*/) { return -1; }
bool Window::IsCommandDisabled(int /*command*/, std::size_t /*selection_count*/) { return false; }
std::u16string_view Window::ColumnText(std::size_t /*record*/, int /*column*/, std::u16string& /*buffer*/) {
  return {};
}
FontRole Window::ItemFont(std::size_t /*record*/) { return FontRole::kNormal; }
int Window::ItemImage(std::size_t /*record*/) { return -1; }
bool Window::SortsLast(std::size_t /*record*/) { return false; }
std::vector<std::uint64_t> Window::SortKeys(std::span<const std::uint32_t> /*records*/, bool /*descending*/) {
  return {};
}

MessageResult Window::Dispatch(Message message, WordParameter word, LongParameter parameter) {
  if (!IsAttached()) return 0;
  switch (message) {
    case Message::kCreate:
      return OnCreate(parameter) ? 0 : -1;
    case Message::kCommand:
      OnCommand(static_cast<int>(word), parameter);
      return 0;
    case Message::kTimer:
      OnTimer(static_cast<int>(word));
      return 0;
    case Message::kInitMenuPopup:
      OnInitMenuPopup(*reinterpret_cast<MenuState*>(word), static_cast<int>(parameter & 0xFFFF));
      return 0;
    case Message::kNotify:
      return OnNotify(static_cast<int>(word), *reinterpret_cast<const Notification*>(parameter));
    case Message::kDestroy: {
      const MessageResult result = WindowProc(message, word, parameter);
      Detach();
      return result;
    }
    default:
      return WindowProc(message, word, parameter);
  }
}

}  // namespace celldesk
