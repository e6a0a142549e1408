#include <array>

#include "simulator/ascii.h"
#include "simulator/command_table.h"
#include "simulator/phonebook_view.h"

namespace celldesk::simulator {
namespace {

std::u16string Padded(const Phone& phone, const BookLimits& limits, std::u16string name) {
  const auto length = static_cast<std::size_t>(limits.name_length);
  if (phone.profile.padded_names && name.size() < length) name.resize(length, u' ');
  return name;
}

std::string NumberField(const Phone& phone, const PhonebookEntry& entry) {
  const bool drop_plus = !phone.profile.plus_in_numbers && entry.number.starts_with('+');
  return Quoted(phone.LineNumber(std::string_view(entry.number).substr(drop_plus ? 1 : 0)));
}

std::string EntryLine(const Phone& phone, const PhonebookView& book, std::string_view prefix, int location) {
  const PhonebookEntry& entry = *book.Find(location);
  const bool typed = !entry.number.empty() || phone.profile.type_of_empty_number;
  return std::string(prefix) + ": " + std::to_string(location) + ',' + NumberField(phone, entry) + ',' +
         (typed ? std::to_string(entry.type) : "") + ',' +
         Quoted(phone.Line(Padded(phone, book.limits(), entry.name))) + phone.profile.line_tail;
}

Reply Select(Phone& phone, const Command& command) {
  if (command.form == CommandForm::kTest) {
    return Ok({"+CPBS: (" + QuotedList(PhonebookView::Names(phone)) + ')'});
  }
  if (command.form == CommandForm::kSet) {
    const std::string name = ToUpper(command.Text(0));
    if (!PhonebookView(phone, name).exists()) return PhoneError(kOperationNotAllowed);
    phone.session.phonebook = name;
    return Ok();
  }
  const PhonebookView book(phone, phone.session.phonebook);
  if (command.form != CommandForm::kRead || !book.exists()) return PhoneError(kOperationNotAllowed);
  std::string line = "+CPBS: " + Quoted(phone.session.phonebook);
  if (phone.profile.counts_in_selection) {
    line += ',' + std::to_string(book.used()) + ',' + std::to_string(book.total());
  }
  return Ok({line});
}

Reply RangeLine(const PhonebookView& book) {
  return Ok({"+CPBR: " + book.RangeText() + ',' + std::to_string(book.limits().number_length) + ',' +
             std::to_string(book.limits().name_length)});
}

Reply Read(Phone& phone, const Command& command) {
  const PhonebookView book(phone, phone.session.phonebook);
  if (!book.exists()) return PhoneError(kOperationNotAllowed);
  if (command.form == CommandForm::kTest) return RangeLine(book);
  if (command.form != CommandForm::kSet) return Error();
  const int first = command.Number(0, kNoNumber);
  const int last = command.Number(1, first);
  if (!book.InRange(first) || !book.InRange(last)) return PhoneError(kInvalidPhonebookIndex);
  Reply reply;
  for (int location = first; location <= last; ++location) {
    if (book.Find(location)) reply.lines.push_back(EntryLine(phone, book, "+CPBR", location));
  }
  const bool missing = reply.lines.empty() && !command.Has(1) && phone.profile.empty_slot_is_error;
  return missing ? PhoneError(kNotFound) : reply;
}

bool BeginsWith(std::u16string_view name, std::u16string_view wanted) {
  return StartsWithIgnoringCase(ToUtf8(name), ToUtf8(wanted));
}

Reply Find(Phone& phone, const Command& command) {
  const PhonebookView book(phone, phone.session.phonebook);
  if (!book.exists()) return PhoneError(kOperationNotAllowed);
  const BookLimits& limits = book.limits();
  if (command.form == CommandForm::kTest) {
    return Ok({"+CPBF: " + std::to_string(limits.number_length) + ',' + std::to_string(limits.name_length)});
  }
  const auto wanted = phone.Text(command.Text(0));
  if (command.form != CommandForm::kSet || !wanted) return PhoneError(kInvalidText);
  Reply reply;
  for (int location = limits.first; location <= limits.last; ++location) {
    const PhonebookEntry* entry = book.Find(location);
    if (entry && BeginsWith(entry->name, *wanted)) {
      reply.lines.push_back(EntryLine(phone, book, "+CPBF", location));
    }
  }
  return reply;
}

/// The number and the type that belong together: an international number has a plus sign and type 145.
PhonebookEntry MakeEntry(std::string number, int type, std::u16string name) {
  const bool plus = number.starts_with('+');
  if (type == kInternational && !plus && !number.empty()) number.insert(0, 1, '+');
  if (plus) type = kInternational;
  return {std::move(number), type, std::move(name)};
}

Reply CheckEntry(const PhonebookView& book, const PhonebookEntry& entry) {
  const std::size_t digits = entry.number.size() - (entry.number.starts_with('+') ? 1 : 0);
  if (!IsDialNumber(entry.number)) return PhoneError(kInvalidNumber);
  if (digits > static_cast<std::size_t>(book.limits().number_length)) return PhoneError(kNumberTooLong);
  if (ToSeptets(entry.name).size() > static_cast<std::size_t>(book.limits().name_length)) {
    return PhoneError(kTextTooLong);
  }
  return Ok();
}

Reply PutEntry(PhonebookView& book, std::optional<int> location, PhonebookEntry entry) {
  Reply checked = CheckEntry(book, entry);
  if (!checked.ok()) return checked;
  if (!location) location = book.FreeLocation();
  if (!location || !book.HasRoomFor(*location)) return PhoneError(kPhonebookFull);
  book.Put(*location, std::move(entry));
  return Ok();
}

Reply WriteRange(const PhonebookView& book) {
  return Ok({"+CPBW: " + book.RangeText() + ',' + std::to_string(book.limits().number_length) +
             ",(129,145)," + std::to_string(book.limits().name_length)});
}

Reply Write(Phone& phone, const Command& command) {
  PhonebookView book(phone, phone.session.phonebook);
  if (!book.exists()) return PhoneError(kOperationNotAllowed);
  if (command.form == CommandForm::kTest) return WriteRange(book);
  if (command.form != CommandForm::kSet) return Error();
  if (book.read_only()) return PhoneError(kOperationNotAllowed);
  std::optional<int> location;
  if (command.Has(0)) location = command.Number(0, 0);
  if (location && !book.InRange(*location)) return PhoneError(kInvalidPhonebookIndex);
  const auto name = phone.Text(command.Text(3));
  if (!name) return PhoneError(kInvalidText);
  const std::string number = phone.NumberText(command.Text(1));
  if (!number.empty() || !name->empty()) {
    const int type = command.Number(2, kNational);
    if (type < 128 || type > 255) return PhoneError(kInvalidNumber);
    return PutEntry(book, location, MakeEntry(number, type, *name));
  }
  if (!location) return PhoneError(kInvalidPhonebookIndex);
  book.Erase(*location);
  return Ok();
}

constexpr std::array<CommandEntry, 4> kCommands{
    {{"+CPBS", Select}, {"+CPBR", Read}, {"+CPBF", Find}, {"+CPBW", Write}}};

}  // namespace

std::span<const CommandEntry> PhonebookCommands() { return kCommands; }

}  // namespace celldesk::simulator
