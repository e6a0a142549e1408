#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "ui/framework/application.h"
#include "ui/framework/dialog.h"
#include "ui/framework/frame_window.h"
#include "ui/framework/menu_state.h"
#include "ui/framework/qt/native.h"
#include "ui/window_session.h"

namespace celldesk {

/// The toolkit is up, no window is open.
class FrameworkTest : public testing::Test {
 protected:
  FrameworkTest() : application_(count_, arguments_) {}
  ~FrameworkTest() override { Dialog::SetModalHook({}); }

  Application& application() { return application_; }

 private:
  int count_ = 1;
  char name_[5] = "test";
  char* arguments_[2] = {name_, nullptr};
  Application application_;
};

/// Notes the operations that are called, by name. Used on windows, dialogs and frames.
template <typename Base>
class Noting : public Base {
 public:
  using Base::Base;

  bool OnCreate(LongParameter parameter) override {
    calls.push_back("OnCreate " + std::to_string(parameter));
    return creates;
  }
  void OnTimer(int timer_id) override { calls.push_back("OnTimer " + std::to_string(timer_id)); }
  MessageResult OnNotify(int control_id, const Notification& notification) override {
    calls.push_back("OnNotify " + std::to_string(control_id) + " " + std::to_string(notification.row));
    return 5;
  }
  void OnCommand(int command, LongParameter parameter) override {
    calls.push_back("OnCommand " + std::to_string(command));
    if (ends_by_default) Base::OnCommand(command, parameter);
  }
  void OnInitMenuPopup(MenuState& menu, int index) override {
    calls.push_back("OnInitMenuPopup " + std::to_string(index));
    menu.Enable(disabled_command, false);
  }
  MessageResult WindowProc(Message message, WordParameter, LongParameter) override {
    calls.push_back("WindowProc " + std::to_string(static_cast<unsigned>(message)));
    attached_in_destroy = this->IsAttached();
    return message == handled ? 7 : 0;
  }

  std::vector<std::string> calls;
  bool creates = true;
  bool ends_by_default = false;
  bool attached_in_destroy = false;
  int disabled_command = 0;
  Message handled = Message::kCreate;
};

/// A plain window of its own on a widget.
class NotingWindow : public Noting<Window> {
 public:
  void Make() { Attach(std::make_unique<NativeWindow>(new QWidget), nullptr); }
  ~NotingWindow() override { delete WidgetOf(this); }
};

}  // namespace celldesk
