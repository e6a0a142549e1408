#pragma once

#include <memory>
#include <string_view>

#include "ui/framework/command_surface.h"
#include "ui/framework/window.h"

namespace celldesk {

struct NativeFrame;

/// A top-level window with menus, command bar, a client area and a status line.
class FrameWindow : public Window {
 public:
  FrameWindow();
  ~FrameWindow() override;

  /// Makes the window (OnCreate runs) and shows it; false when OnCreate refuses.
  bool Create(std::u16string_view caption, LongParameter parameter = 0);
  CommandSurface& Surface() { return *surface_; }

  void SetStatus(std::u16string_view text);
  std::u16string StatusText() const;
  /// A second field at the right end of the status line.
  void SetStatusRight(std::u16string_view text);
  void SetIcon(std::string_view name);
  void BringToFront();

  NativeFrame* frame() const { return frame_.get(); }

 private:
  std::unique_ptr<NativeFrame> frame_;
  std::unique_ptr<CommandSurface> surface_;
};

}  // namespace celldesk
