#include "simulator/phone.h"

namespace celldesk::simulator {

void Phone::Reset() {
  session = Session();
  session.error_level = profile.error_level;
  body.reset();
}

void Phone::Announce(Notice notice) {
  auto& queue = session.notification[0] == 0 ? buffered_notices : notices;
  queue.push_back(std::move(notice));
}

std::optional<std::u16string> Phone::Text(std::string_view bytes) const {
  return FromLine(session.character_set, bytes);
}

std::string Phone::LineNumber(std::string_view number) const { return Line(FromUtf8(number)); }

std::string Phone::NumberText(std::string_view bytes) const {
  const bool hexadecimal =
      session.character_set == CharacterSet::kUcs2 || session.character_set == CharacterSet::kHex;
  if (!hexadecimal) return std::string(bytes);
  const auto text = Text(bytes);
  const std::string decoded = text ? ToUtf8(*text) : std::string();
  return !decoded.empty() && IsDialNumber(decoded) ? decoded : std::string(bytes);
}

bool IsDialNumber(std::string_view number) {
  if (number.starts_with('+')) number.remove_prefix(1);
  return number.find_first_not_of("0123456789*#pPwW?") == number.npos;
}

bool SameNumber(std::string_view left, std::string_view right) {
  constexpr std::size_t kSubscriberDigits = 9;
  if (left == right) return true;
  if (left.starts_with('+') && right.starts_with('+')) return false;
  if (left.size() < kSubscriberDigits || right.size() < kSubscriberDigits) return false;
  return left.substr(left.size() - kSubscriberDigits) == right.substr(right.size() - kSubscriberDigits);
}

}  // namespace celldesk::simulator
