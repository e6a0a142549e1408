#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace celldesk {

class Window;

enum class BoxButtons { kOk, kYesNo, kYesNoCancel };
enum class BoxIcon { kNone, kInformation, kWarning, kStop, kQuestion };

/// Answers of a message box.
inline constexpr int kAnswerOk = 1;
inline constexpr int kAnswerCancel = 2;
inline constexpr int kAnswerYes = 6;
inline constexpr int kAnswerNo = 7;

/// What a message box asks.
struct BoxQuestion {
  std::u16string text;
  std::u16string caption;
  BoxButtons buttons = BoxButtons::kOk;
  BoxIcon icon = BoxIcon::kNone;
  bool default_no = false;
};

/// Shows the box over `owner` until it is answered. An empty caption is the program's.
int ShowMessageBox(Window* owner, BoxQuestion question);

/// While one of these lives, boxes are answered from its list instead of being shown: No, or OK where there
/// is nothing to choose, once the list is used up. Tests and the tour only.
class MessageBoxScript {
 public:
  MessageBoxScript();
  ~MessageBoxScript();
  MessageBoxScript(const MessageBoxScript&) = delete;
  MessageBoxScript& operator=(const MessageBoxScript&) = delete;

  void Answer(int answer) { answers_.push_back(answer); }
  /// What was asked, in order.
  const std::vector<BoxQuestion>& asked() const { return asked_; }
  std::size_t unused_answers() const { return answers_.size(); }

  /// The script in force, or null.
  static MessageBoxScript* Current();
  int Take(const BoxQuestion& question);

 private:
  MessageBoxScript* outer_;
  std::deque<int> answers_;
  std::vector<BoxQuestion> asked_;
};

}  // namespace celldesk
