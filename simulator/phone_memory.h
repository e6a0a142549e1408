#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace celldesk::simulator {

inline constexpr int kInternational = 145;
inline constexpr int kNational = 129;

struct PhonebookEntry {
  std::string number;  // digits, '*', '#', 'p', 'w'; an international one begins with '+'
  int type = kNational;
  std::u16string name;

  bool operator==(const PhonebookEntry&) const = default;
};

struct Phonebook {
  std::string name;  // "SM", "ME", ...
  int first = 1;
  int last = 250;
  int number_length = 40;
  int name_length = 20;  // in septets of the default alphabet
  bool read_only = false;
  std::string range_text;  // what the range query shows instead of "(first-last)", when not empty
  std::map<int, PhonebookEntry> entries;

  bool operator==(const Phonebook&) const = default;
};

/// Message status as PDU mode numbers it (GSM 07.05 3.1).
enum class MessageStatus { kReceivedUnread, kReceivedRead, kStoredUnsent, kStoredSent };

struct StoredMessage {
  MessageStatus status = MessageStatus::kReceivedUnread;
  std::string pdu;  // upper-case hexadecimal, service centre field first

  bool operator==(const StoredMessage&) const = default;
};

struct MessageStore {
  std::string name;
  int first = 1;
  int capacity = 30;  // messages it can hold
  std::map<int, StoredMessage> messages;

  bool operator==(const MessageStore&) const = default;
};

/// What the network saw: one message as the client handed it over, body byte for byte.
struct SentMessage {
  int reference = 0;
  std::string body;

  bool operator==(const SentMessage&) const = default;
};

/// Everything the phone remembers when it is switched off. A plain value.
struct PhoneMemory {
  PhoneMemory();  // an empty phone: books SM, ME, ON, DC, RC, MC and stores SM, ME

  std::string manufacturer = "Corvane";
  std::string model = "Simulated Phone";
  std::string revision = "1.0";
  std::string serial = "490154203237518";
  std::string subscriber = "001010123456789";
  std::string own_number = "+447700900123";
  std::string centre = "+447700900000";
  int last_reference = 0;  // 0 ... 255
  std::vector<Phonebook> phonebooks;
  std::vector<MessageStore> stores;
  std::vector<SentMessage> sent;
  std::vector<std::string> waiting;  // PDUs the network could not deliver yet: no room, oldest first
  /// Fixed information lines in answer to a command (upper case, without spaces and quotes), whatever the
  /// phone knows.
  std::map<std::string, std::vector<std::string>> replies;

  Phonebook* FindPhonebook(std::string_view name);
  const Phonebook* FindPhonebook(std::string_view name) const;
  MessageStore* FindStore(std::string_view name);
  const MessageStore* FindStore(std::string_view name) const;

  bool operator==(const PhoneMemory&) const = default;
};

}  // namespace celldesk::simulator
