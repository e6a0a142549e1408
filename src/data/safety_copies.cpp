#include "data/safety_copies.h"

#include <algorithm>
#include <utility>

#include "util/text.h"

namespace celldesk {
namespace {

constexpr std::u16string_view kStampShape = u"0000-00-00 00.00.00.000 ";
constexpr std::u16string_view kStampFormat = u"%04d-%02d-%02d %02d.%02d.%02d.%03d ";
constexpr std::u16string_view kUnfinished = u".unfinished";
constexpr FileTime kMillisecond = 10'000;

bool IsDigit(char16_t character) { return character >= u'0' && character <= u'9'; }

// Only what was written here counts, whatever else the user keeps in the folder.
bool IsCopy(std::u16string_view name) {
  if (name.size() <= kStampShape.size() || !(name.ends_with(u".adr") || name.ends_with(u".sms")))
    return false;
  return std::equal(kStampShape.begin(), kStampShape.end(), name.begin(),
                    [](char16_t expected, char16_t found) {
                      return expected == u'0' ? IsDigit(found) : expected == found;
                    });
}

std::u16string Stamp(const CalendarTime& time) {
  return Format(kStampFormat, {int{time.year}, int{time.month}, int{time.day}, int{time.hour},
                               int{time.minute}, int{time.second}, int{time.milliseconds}});
}

/// The same time where the calendar has none after it.
CalendarTime NextMillisecond(const CalendarTime& time) {
  const auto count = ToFileTime(time);
  return count ? ToCalendarTime(*count + kMillisecond).value_or(time) : time;
}

}  // namespace

Status SafetyCopies::Save(std::span<const CopySource> sources, const CalendarTime& now) {
  if (sources.empty()) return S_OK;
  fresh_.clear();
  Status first = StatusFromSystemError(files_.MakeFolder(folder_));
  for (const CopySource& source : sources) {
    const Status status = Copy(source, now);
    if (!Failed(first)) first = status;
  }
  DropOldest();
  return first;
}

Status SafetyCopies::Copy(const CopySource& source, const CalendarTime& now) {
  const std::u16string unfinished = PathOf(kUnfinished);
  Status status = source.write(unfinished);
  if (!Failed(status) && !IsSameAsNewest(source, unfinished)) return Keep(source, unfinished, now);
  static_cast<void>(files_.Remove(unfinished));
  return status;
}

Status SafetyCopies::Keep(const CopySource& source, std::u16string_view unfinished, const CalendarTime& now) {
  std::u16string name = FreeName(source, now);
  const Status status = StatusFromSystemError(files_.Rename(unfinished, PathOf(name)));
  if (Failed(status)) {
    static_cast<void>(files_.Remove(unfinished));
  } else {
    fresh_.push_back(std::move(name));
  }
  return status;
}

bool SafetyCopies::IsSameAsNewest(const CopySource& source, std::u16string_view path) const {
  const std::vector<std::u16string> names = Names();
  const auto newest = std::find_if(names.rbegin(), names.rend(), [&](std::u16string_view name) {
    return name.substr(kStampShape.size()) == source.file_name;
  });
  if (newest == names.rend()) return false;
  SystemError error = kErrorSuccess;
  const auto before = files_.Map(PathOf(*newest), error);
  const auto present = files_.Map(path, error);
  return before && present && std::ranges::equal(before->bytes(), present->bytes());
}

// Two copies of one book within a millisecond differ in their names, too.
std::u16string SafetyCopies::FreeName(const CopySource& source, const CalendarTime& now) const {
  const std::vector<std::u16string> taken = Names();
  std::u16string name;
  CalendarTime time = now;
  // As many names as there are copies cannot all be taken.
  for (std::size_t tries = 0; tries <= taken.size(); ++tries) {
    name = Stamp(time) + source.file_name;
    if (std::ranges::count(taken, name) == 0) break;
    time = NextMillisecond(time);
  }
  return name;
}

std::u16string SafetyCopies::PathOf(std::u16string_view name) const {
  return folder_ + u'/' + std::u16string(name);
}

// Oldest first: the names begin with their time.
std::vector<std::u16string> SafetyCopies::Names() const {
  std::vector<std::u16string> names = files_.Names(folder_);
  std::erase_if(names, [](const std::u16string& name) { return !IsCopy(name); });
  std::sort(names.begin(), names.end());
  return names;
}

void SafetyCopies::DropOldest() {
  std::vector<std::u16string> names = Names();
  std::erase_if(names, [this](const std::u16string& name) { return std::ranges::count(fresh_, name) > 0; });
  const std::size_t kept = kMostKept - std::min(kMostKept, fresh_.size());
  for (std::size_t at = 0; at + kept < names.size(); ++at)
    static_cast<void>(files_.Remove(PathOf(names[at])));
}

}  // namespace celldesk
