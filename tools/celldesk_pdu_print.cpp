#include "celldesk_pdu_print.h"

#include "pdu/address.h"
#include "pdu/delivery_status.h"
#include "pdu/validity.h"
#include "platform/locale.h"
#include "util/text.h"

namespace celldesk {
namespace {

/// What the validity text asks for: the time separator.
class PlainLocale : public Locale {
 public:
  std::u16string DateText(const CalendarTime&, bool) const override { return {}; }
  std::u16string TimeText(const CalendarTime&) const override { return {}; }
  std::u16string TimeSeparator() const override { return u":"; }
  int Compare(std::u16string_view left, std::u16string_view right) const override {
    return left.compare(right);
  }
  CalendarTime Now(bool) const override { return {}; }
};

std::u16string ValidityUnit(int number) {
  if (number == 157) return u"%s hours";
  return number == 158 ? u"%i days" : u"%i weeks";
}

std::string TypeNumber(std::uint32_t value) { return ToUtf8(Format(u"0x%02X", {value})); }

std::string TimeText(const DateTime& time) {
  if (!time.is_set()) return {};
  const CalendarTime& f = time.fields;
  return ToUtf8(
      Format(u"%04i-%02i-%02i %02i:%02i:%02i", {f.year, f.month, f.day, f.hour, f.minute, f.second}));
}

void TakeDeliver(PduRecord& record, const SmsDeliver& deliver) {
  record.number = AddressForDisplay(deliver.number, deliver.toa);
  record.toa = deliver.toa;
  record.timestamp = TimeText(deliver.timestamp);
}

void TakeReport(PduRecord& record, const SmsStatusReport& report) {
  record.number = AddressForDisplay(report.number, report.toa);
  record.toa = report.toa;
  record.timestamp = TimeText(report.timestamp);
  record.discharge = TimeText(report.discharge);
  record.status = report.status;
}

void TakeSubmit(PduRecord& record, const SmsSubmit& submit, ValidityFormat format) {
  record.number = AddressForDisplay(submit.number, submit.toa);
  record.toa = submit.toa;
  record.validity_format = static_cast<std::uint32_t>(format);
  if (format == ValidityFormat::kRelative) record.validity = submit.relative_validity;
  if (format == ValidityFormat::kAbsolute) record.absolute = TimeText(submit.absolute_validity);
}

std::string_view TypeName(SmsType type) {
  constexpr std::string_view kNames[] = {"deliver", "submit", "status-report", "reserved"};
  return kNames[static_cast<std::size_t>(type)];
}

std::string ValidityLine(const PduRecord& record) {
  switch (static_cast<ValidityFormat>(record.validity_format)) {
    case ValidityFormat::kRelative:
      return std::to_string(record.validity) + " (" +
             ToUtf8(RelativeValidityText(static_cast<std::uint8_t>(record.validity), PlainLocale(),
                                         ValidityUnit)) +
             ")";
    case ValidityFormat::kAbsolute:
      return "till " + record.absolute;
    default:
      return "none";
  }
}

/// Writes the members of one JSON object.
class JsonObject {
 public:
  explicit JsonObject(std::ostream& out) : out_(out) {}
  ~JsonObject() { out_ << "}\n"; }
  JsonObject(const JsonObject&) = delete;
  JsonObject& operator=(const JsonObject&) = delete;

  void Text(std::string_view name, std::u16string_view value) { Name(name) << Quoted(value); }
  void Plain(std::string_view name, std::string_view value) { Name(name) << '"' << value << '"'; }
  void Number(std::string_view name, std::uint32_t value) { Name(name) << value; }

 private:
  std::ostream& Name(std::string_view name) {
    out_ << (first_ ? "{" : ",") << '"' << name << "\":";
    first_ = false;
    return out_;
  }

  std::ostream& out_;
  bool first_ = true;
};

}  // namespace

PduRecord RecordOf(const SmsMessage& message, Status result) {
  PduRecord record;
  record.type = TypeName(message.type());
  record.reference = message.Reference();
  record.pid = message.pid;
  record.dcs = message.dcs;
  record.text = message.text;
  record.result = result;
  if (message.is_received()) {
    if (message.type() == SmsType::kDeliver) TakeDeliver(record, message.deliver);
    if (message.type() == SmsType::kStatusReport) TakeReport(record, message.report);
  } else if (message.type() == SmsType::kSubmit) {
    TakeSubmit(record, message.submit, ValidityFormatOf(message.first_octet));
  }
  return record;
}

void PrintJson(std::ostream& out, const PduRecord& record) {
  JsonObject object(out);
  object.Plain("type", record.type);
  object.Text("number", record.number);
  object.Number("toa", record.toa);
  object.Plain("timestamp", record.timestamp);
  object.Plain("discharge", record.discharge);
  object.Plain("absolute", record.absolute);
  object.Number("vpf", record.validity_format);
  object.Number("validity", record.validity);
  object.Number("reference", record.reference);
  object.Number("pid", record.pid);
  object.Number("dcs", record.dcs);
  object.Number("status", record.status);
  object.Text("text", record.text);
  object.Plain("result", StatusCode(record.result));
}

void PrintText(std::ostream& out, const PduRecord& record) {
  if (Failed(record.result)) {
    out << "result     " << StatusCode(record.result) << "\n\n";
    return;
  }
  out << "type       " << record.type << "\nnumber     " << Quoted(record.number) << "\ntoa        "
      << TypeNumber(record.toa) << '\n';
  if (!record.timestamp.empty()) out << "timestamp  " << record.timestamp << '\n';
  if (!record.discharge.empty()) out << "discharge  " << record.discharge << '\n';
  if (record.type == "submit") out << "validity   " << ValidityLine(record) << '\n';
  if (record.type != "deliver") out << "reference  " << record.reference << '\n';
  if (record.type == "status-report") {
    out << "status     " << TypeNumber(record.status) << ' ' << DeliveryStatusText(record.status)
        << "\nseverity   " << DeliverySeverityText(record.status) << "\n\n";
    return;
  }
  out << "pid        " << record.pid << "\ndcs        " << record.dcs << "\ntext       "
      << Quoted(record.text) << "\n\n";
}

std::string StatusCode(Status status) {
  return ToUtf8(Format(u"0x%08X", {static_cast<std::uint32_t>(status)}));
}

std::string Quoted(std::u16string_view text) {
  std::u16string quoted = u"\"";
  for (const char16_t character : text) {
    if (character == u'"' || character == u'\\') {
      quoted += {u'\\', character};
    } else if (character < 0x20 || (character >= 0x7F && character < 0xA0)) {
      quoted += Format(u"\\u%04x", {character});
    } else {
      quoted += character;
    }
  }
  return ToUtf8(quoted + u'"');
}

}  // namespace celldesk
