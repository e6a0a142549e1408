#include "pdu/timestamp.h"

#include "pdu/pdu_text.h"

namespace celldesk {
namespace {

constexpr std::ptrdiff_t kLeastMeasure = 12;
constexpr int kFirstYearOf1900 = 98;

}  // namespace

Status ReadTimestamp(DateTime& value, std::u16string_view text, std::size_t& position) {
  if (RemainingMeasure(text, position) < kLeastMeasure) return E_FAIL;
  const auto next = [&] { return ReadBcdAt(text, position++); };
  value.ClearFields();
  const int year = next();
  value.fields.year = static_cast<std::uint16_t>(year + (year < kFirstYearOf1900 ? 2000 : 1900));
  value.fields.month = next();
  value.fields.day = next();
  value.fields.hour = next();
  value.fields.minute = next();
  value.fields.second = next();
  ++position;  // the zone
  value.MarkSet(true);
  return S_OK;
}

void WriteTimestamp(std::span<char16_t> text, const DateTime& value, std::size_t& position) {
  const auto put = [&](int number) { WriteBcdAt(text, static_cast<std::uint8_t>(number), position++); };
  const CalendarTime& fields = value.fields;
  put(fields.year - (fields.year < 2000 ? 1900 : 2000));
  put(fields.month);
  put(fields.day);
  put(fields.hour);
  put(fields.minute);
  put(fields.second);
  put(0);
}

}  // namespace celldesk
