#include "ui/framework/message_box.h"

namespace celldesk {
namespace {

MessageBoxScript* current = nullptr;

}  // namespace

MessageBoxScript::MessageBoxScript() : outer_(current) { current = this; }
MessageBoxScript::~MessageBoxScript() { current = outer_; }
MessageBoxScript* MessageBoxScript::Current() { return current; }

int MessageBoxScript::Take(const BoxQuestion& question) {
  asked_.push_back(question);
  if (question.buttons == BoxButtons::kOk) return kAnswerOk;
  if (answers_.empty()) return kAnswerNo;
  const int answer = answers_.front();
  answers_.pop_front();
  return answer;
}

}  // namespace celldesk
