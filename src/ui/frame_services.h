#pragma once

#include <string>
#include <string_view>

#include "ui/framework/font.h"

namespace celldesk {

class AddressBooks;
class CommandSurface;
class Window;

/// What the main frame does for its folders. Borrowed from the frame for the folder's life.
class FrameServices {
 public:
  virtual ~FrameServices() = default;
  virtual Window& window() = 0;
  /// Menus and command bar, which show the current folder's commands.
  virtual CommandSurface& commands() = 0;
  virtual const FontSet& fonts() const = 0;
  /// Both address books, for numbers and names.
  virtual const AddressBooks& address_books() const = 0;
  /// Runs the message editor on a new message to this number; the name may be empty.
  virtual void ComposeMessage(std::u16string_view number, std::u16string_view name) = 0;
  virtual bool IsConnected() const = 0;
  /// Keeps copies of what the folders hold. Before a command replaces or empties that, or changes the phone.
  virtual void SaveCopies() = 0;
  /// A phone procedure begins or ends; see PhoneProcedure.
  virtual void BeginProcedure(std::u16string_view status) = 0;
  virtual void EndProcedure() = 0;
  virtual bool IsBusy() const = 0;
  /// What a phone procedure does now, in the status line; while none runs the line tells the folder's hint or
  /// the connection.
  virtual void ShowStatus(std::u16string_view text) = 0;
  /// Selection, counts, mode or connection changed: command bar and status line follow at the next idle time.
  virtual void RefreshLater() = 0;
  /// Idle work: does what RefreshLater asked for.
  virtual void RefreshIfDue() = 0;
};

/// While one of these lives a phone procedure runs: commands that would disturb it are disabled, the wait
/// cursor shows, and a close request waits for its end.
class PhoneProcedure {
 public:
  PhoneProcedure(FrameServices& frame, std::u16string_view status) : frame_(frame) {
    frame_.BeginProcedure(status);
  }
  ~PhoneProcedure() { frame_.EndProcedure(); }
  PhoneProcedure(const PhoneProcedure&) = delete;
  PhoneProcedure& operator=(const PhoneProcedure&) = delete;

 private:
  FrameServices& frame_;
};

}  // namespace celldesk
