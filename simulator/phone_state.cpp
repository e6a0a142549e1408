#include "simulator/phone_state.h"

#include <array>
#include <limits>
#include <utility>

#include "simulator/ascii.h"
#include "simulator/character_set.h"

namespace celldesk::simulator {
namespace {

constexpr std::string_view kHeader = "celldesk-phone-state 1";

struct TextField {
  std::string_view key;
  std::string PhoneMemory::*value;
};

constexpr std::array<TextField, 7> kTextFields{{{"manufacturer", &PhoneMemory::manufacturer},
                                                {"model", &PhoneMemory::model},
                                                {"revision", &PhoneMemory::revision},
                                                {"serial", &PhoneMemory::serial},
                                                {"subscriber", &PhoneMemory::subscriber},
                                                {"own-number", &PhoneMemory::own_number},
                                                {"centre", &PhoneMemory::centre}}};

std::string Escaped(std::string_view text) {
  std::string escaped = "\"";
  for (const char byte : text) {
    if (byte == '"' || byte == '\\') escaped += '\\';
    if (static_cast<unsigned char>(byte) < 0x20) {
      escaped += "\\x" + ToHex(std::string_view(&byte, 1));
    } else {
      escaped += byte;
    }
  }
  return escaped + '"';
}

/// Takes words and quoted texts off a line, one after another.
class WordReader {
 public:
  explicit WordReader(std::string_view line) : rest_(line) {}

  bool failed() const { return failed_; }
  bool AtEnd() {
    rest_ = Trim(rest_);
    return rest_.empty();
  }

  std::string Word() {
    if (AtEnd()) failed_ = true;
    if (rest_.starts_with('"')) return QuotedText();
    const auto end = rest_.find(' ');
    std::string word(rest_.substr(0, end));
    rest_.remove_prefix(word.size());
    return word;
  }

  int Number(int lowest, int highest) {
    const auto number = ParseNumber(Word());
    if (!number || *number < lowest || *number > highest) failed_ = true;
    return number.value_or(0);
  }

 private:
  std::string QuotedText() {
    std::string text;
    for (std::size_t i = 1; i < rest_.size(); ++i) {
      if (rest_[i] == '"') {
        rest_.remove_prefix(i + 1);
        return text;
      }
      text += rest_[i] == '\\' ? EscapedByte(i) : rest_[i];
    }
    failed_ = true;
    rest_ = {};
    return text;
  }

  char EscapedByte(std::size_t& i) {
    ++i;
    if (i >= rest_.size()) return '\\';
    if (rest_[i] != 'x') return rest_[i];
    const auto octet = FromHex(rest_.substr(i + 1, 2));
    if (!octet || octet->size() != 1) {
      failed_ = true;
      return '?';
    }
    i += 2;
    return octet->front();
  }

  std::string_view rest_;
  bool failed_ = false;
};

/// Fills a memory line by line; a section header says where the lines after it belong.
class StateParser {
 public:
  explicit StateParser(PhoneMemory& memory) : memory_(memory) {}

  bool ParseLine(std::string_view line) {
    WordReader words(line);
    if (line.starts_with('[')) return ParseSection(line);
    (this->*section_)(words);
    return !words.failed() && words.AtEnd();
  }

 private:
  bool ParseSection(std::string_view line) {
    if (!line.ends_with(']')) return false;
    const auto parts = Split(line.substr(1, line.size() - 2), ' ');
    if (parts.size() == 2 && parts[0] == "phonebook") return OpenPhonebook(parts[1]);
    if (parts.size() == 2 && parts[0] == "messages") return OpenStore(parts[1]);
    if (parts.size() != 1) return false;
    if (parts[0] == "sent") section_ = &StateParser::ParseSent;
    if (parts[0] == "waiting") section_ = &StateParser::ParseWaiting;
    if (parts[0] == "replies") section_ = &StateParser::ParseReply;
    return parts[0] == "sent" || parts[0] == "waiting" || parts[0] == "replies";
  }

  bool OpenPhonebook(const std::string& name) {
    if (!memory_.FindPhonebook(name)) memory_.phonebooks.emplace_back().name = name;
    book_ = memory_.FindPhonebook(name);
    book_->entries.clear();
    section_ = &StateParser::ParsePhonebook;
    return true;
  }

  bool OpenStore(const std::string& name) {
    if (!memory_.FindStore(name)) memory_.stores.emplace_back().name = name;
    store_ = memory_.FindStore(name);
    section_ = &StateParser::ParseStore;
    return true;
  }

  void ParseGeneral(WordReader& words) {
    const std::string key = words.Word();
    if (key == "reference") {
      memory_.last_reference = words.Number(0, 255);
      return;
    }
    for (const TextField& field : kTextFields) {
      if (field.key == key) {
        memory_.*field.value = words.Word();
        return;
      }
    }
    static_cast<void>(words.Number(1, 0));  // an unknown key is a failure
  }

  void ParsePhonebook(WordReader& words) {
    constexpr int kMost = 65535;
    const std::string key = words.Word();
    if (key == "first")
      book_->first = words.Number(0, kMost);
    else if (key == "last")
      book_->last = words.Number(0, kMost);
    else if (key == "number-length")
      book_->number_length = words.Number(0, kMost);
    else if (key == "name-length")
      book_->name_length = words.Number(0, kMost);
    else if (key == "read-only")
      book_->read_only = words.Number(0, 1) == 1;
    else if (key == "range-text")
      book_->range_text = words.Word();
    else if (key == "entry")
      ParseEntry(words);
    else
      static_cast<void>(words.Number(1, 0));
  }

  void ParseEntry(WordReader& words) {
    const int location = words.Number(0, std::numeric_limits<int>::max());
    PhonebookEntry& entry = book_->entries[location];
    entry.number = words.Word();
    entry.type = words.Number(0, 255);
    entry.name = FromUtf8(words.Word());
  }

  void ParseStore(WordReader& words) {
    const std::string key = words.Word();
    if (key == "first")
      store_->first = words.Number(0, 65535);
    else if (key == "capacity")
      store_->capacity = words.Number(0, 65535);
    else if (key == "message")
      ParseMessage(words);
    else
      static_cast<void>(words.Number(1, 0));
  }

  void ParseMessage(WordReader& words) {
    StoredMessage& message = store_->messages[words.Number(0, 65535)];
    message.status = static_cast<MessageStatus>(words.Number(0, 3));
    message.pdu = words.Word();
  }

  void ParseSent(WordReader& words) {
    SentMessage& message = memory_.sent.emplace_back();
    message.reference = words.Number(0, 255);
    message.body = words.Word();
  }

  void ParseWaiting(WordReader& words) { memory_.waiting.push_back(words.Word()); }

  void ParseReply(WordReader& words) {
    const std::string command = words.Word();
    memory_.replies[command].push_back(words.Word());
  }

  PhoneMemory& memory_;
  void (StateParser::*section_)(WordReader&) = &StateParser::ParseGeneral;
  Phonebook* book_ = nullptr;
  MessageStore* store_ = nullptr;
};

std::string Line(std::string_view key, std::string_view value) {
  return std::string(key) + ' ' + std::string(value) + '\n';
}

std::string Line(std::string_view key, int value) { return Line(key, std::to_string(value)); }

std::string SavePhonebook(const Phonebook& book) {
  std::string text = "\n[phonebook " + book.name + "]\n";
  text += Line("first", book.first) + Line("last", book.last);
  text += Line("number-length", book.number_length) + Line("name-length", book.name_length);
  if (book.read_only) text += Line("read-only", 1);
  if (!book.range_text.empty()) text += Line("range-text", Escaped(book.range_text));
  for (const auto& [location, entry] : book.entries) {
    text += "entry " + std::to_string(location) + ' ' + Escaped(entry.number) + ' ' +
            std::to_string(entry.type) + ' ' + Escaped(ToUtf8(entry.name)) + '\n';
  }
  return text;
}

std::string SaveStore(const MessageStore& store) {
  std::string text = "\n[messages " + store.name + "]\n";
  text += Line("first", store.first) + Line("capacity", store.capacity);
  for (const auto& [index, message] : store.messages) {
    text += "message " + std::to_string(index) + ' ' + std::to_string(static_cast<int>(message.status)) +
            ' ' + message.pdu + '\n';
  }
  return text;
}

std::string SaveNetwork(const PhoneMemory& memory) {
  std::string text;
  if (!memory.sent.empty()) text += "\n[sent]\n";
  for (const SentMessage& sent : memory.sent)
    text += Line(std::to_string(sent.reference), Escaped(sent.body));
  if (!memory.waiting.empty()) text += "\n[waiting]\n";
  for (const std::string& pdu : memory.waiting) text += pdu + '\n';
  if (!memory.replies.empty()) text += "\n[replies]\n";
  for (const auto& [command, lines] : memory.replies) {
    for (const std::string& line : lines) text += Escaped(command) + ' ' + Escaped(line) + '\n';
  }
  return text;
}

}  // namespace

std::string SaveState(const PhoneMemory& memory) {
  std::string text(kHeader);
  text += '\n';
  for (const TextField& field : kTextFields) text += Line(field.key, Escaped(memory.*field.value));
  text += Line("reference", memory.last_reference);
  for (const Phonebook& book : memory.phonebooks) text += SavePhonebook(book);
  for (const MessageStore& store : memory.stores) text += SaveStore(store);
  return text + SaveNetwork(memory);
}

std::optional<PhoneMemory> LoadState(std::string_view text, std::string* error) {
  PhoneMemory memory;
  StateParser parser(memory);
  int number = 0;
  for (const std::string& raw : Split(text, '\n')) {
    ++number;
    const std::string_view line = Trim(raw);
    const bool understood = number == 1                             ? line == kHeader
                            : line.empty() || line.starts_with('#') ? true
                                                                    : parser.ParseLine(line);
    if (!understood) {
      if (error) *error = "line " + std::to_string(number) + ": " + std::string(line);
      return std::nullopt;
    }
  }
  return memory;
}

}  // namespace celldesk::simulator
