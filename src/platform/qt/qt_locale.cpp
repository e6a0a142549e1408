#include "platform/qt/qt_locale.h"

#include <QCollator>
#include <QDateTime>
#include <QLocale>
#include <algorithm>

#include "platform/text_ranks.h"

namespace celldesk {
namespace {

constexpr qsizetype kLongestSeparator = 7;

bool IsFieldLetter(QChar c) { return QStringLiteral("HhmszAaPpt").contains(c); }

// What a time format has between its hour and its minute.
QString SeparatorOf(const QString& format) {
  qsizetype start = 0;
  while (start < format.size() && format[start].toLower() != 'h') ++start;
  while (start < format.size() && format[start].toLower() == 'h') ++start;
  qsizetype end = start;
  while (end < format.size() && !IsFieldLetter(format[end])) ++end;
  // A quote only marks literal text.
  return format.mid(start, end - start).remove('\'').left(kLongestSeparator);
}

// Short time formats leave the seconds out in most languages.
QString WithSeconds(QString format, const QString& separator) {
  if (format.contains('s')) return format;
  const qsizetype minutes = format.lastIndexOf('m');
  return minutes < 0 ? format : format.insert(minutes + 1, separator + "ss");
}

CalendarTime FieldsOf(const QDateTime& moment) {
  const QDate date = moment.date();
  const QTime time = moment.time();
  const auto field = [](int value) { return static_cast<std::uint16_t>(value); };
  // Sunday is 7 there and 0 here.
  return {field(date.year()), field(date.month()),  field(date.dayOfWeek() % 7), field(date.day()),
          field(time.hour()), field(time.minute()), field(time.second()),        field(time.msec())};
}

QStringView View(std::u16string_view text) { return {text.data(), static_cast<qsizetype>(text.size())}; }

}  // namespace

struct QtLocale::Formats {
  explicit Formats(const QLocale& source)
      : locale(source),
        collator(source),
        separator(SeparatorOf(source.timeFormat(QLocale::ShortFormat))),
        time_format(WithSeconds(source.timeFormat(QLocale::ShortFormat), separator)) {}

  // The collation of no language compares code units, and its keys are not in that order.
  bool HasKeys() const { return locale.language() != QLocale::C; }

  const QLocale locale;
  const QCollator collator;
  const QString separator;
  const QString time_format;
};

QtLocale::QtLocale() : formats_(std::make_unique<Formats>(QLocale::system())) {}

QtLocale::QtLocale(std::u16string_view name)
    : formats_(std::make_unique<Formats>(QLocale(View(name).toString()))) {}

QtLocale::~QtLocale() = default;

std::u16string QtLocale::DateText(const CalendarTime& time, bool short_format) const {
  const QLocale::FormatType format = short_format ? QLocale::ShortFormat : QLocale::LongFormat;
  return formats_->locale.toString(QDate(time.year, time.month, time.day), format).toStdU16String();
}

std::u16string QtLocale::TimeText(const CalendarTime& time) const {
  const QTime moment(time.hour, time.minute, time.second);
  return formats_->locale.toString(moment, formats_->time_format).toStdU16String();
}

std::u16string QtLocale::TimeSeparator() const { return formats_->separator.toStdU16String(); }

int QtLocale::Compare(std::u16string_view left, std::u16string_view right) const {
  return formats_->collator.compare(View(left), View(right));
}

// An empty text stands before any other, even before one of characters that the collation ignores: their keys
// are the same.
std::vector<std::uint32_t> QtLocale::Ranks(std::size_t count, const TextAt& text_at) const {
  if (!formats_->HasKeys()) return Locale::Ranks(count, text_at);
  std::vector<QCollatorSortKey> keys;
  std::vector<bool> is_empty(count);
  keys.reserve(count);
  std::u16string buffer;
  for (std::size_t i = 0; i < count; ++i) {
    const std::u16string_view text = text_at(i, buffer);
    is_empty[i] = text.empty();
    keys.push_back(formats_->collator.sortKey(View(text).toString()));
  }
  return RanksBy(count, [&](std::size_t left, std::size_t right) {
    return is_empty[left] || is_empty[right] ? int{is_empty[right]} - int{is_empty[left]}
                                             : keys[left].compare(keys[right]);
  });
}

CalendarTime QtLocale::Now(bool local) const {
  return FieldsOf(local ? QDateTime::currentDateTime() : QDateTime::currentDateTimeUtc());
}

}  // namespace celldesk
