#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "simulator/character_set.h"
#include "simulator/command.h"
#include "simulator/phone_clock.h"
#include "simulator/phone_memory.h"
#include "simulator/profile.h"
#include "simulator/reply.h"

namespace celldesk::simulator {

/// What text mode puts into messages (+CSMP, GSM 07.05 3.3.3).
struct TextParameters {
  int first_octet = 17;
  int validity = 167;
  int protocol = 0;
  int coding = 0;
};

/// A message command that waits for its body.
struct BodyRequest {
  bool send = false;  // +CMGS, else +CMGW
  int length = 0;     // PDU mode: octets of the TPDU
  std::optional<MessageStatus> status;
  std::string destination;  // text mode
};

/// What a reset forgets.
struct Session {
  bool echo = true;
  bool verbose = true;
  bool quiet = false;
  int error_level = 0;
  CharacterSet character_set = CharacterSet::kGsm;
  bool text_mode = false;
  bool show_text_header = false;
  int message_service = 0;
  int registration_notice = 0;
  int packet_registration_notice = 0;
  int operator_format = 0;
  std::string phonebook = "SM";
  std::array<std::string, 3> message_memory{"SM", "SM", "SM"};  // read, write, receive
  std::array<int, 5> notification{};                            // +CNMI: mode, mt, bm, ds, bfr
  TextParameters text;
  std::map<std::string, std::string> registers;
};

/// An unsolicited message of one or more lines.
using Notice = std::vector<std::string>;

/// The phone as its commands see it.
struct Phone {
  PhoneMemory memory;
  Profile profile;
  Session session;
  std::optional<BodyRequest> body;
  std::vector<Notice> notices;           // follow the present reply
  std::vector<Notice> buffered_notices;  // kept until the client wants notices (+CNMI)
  std::map<std::string, int> rooms;      // places of each memory when the profile allows nothing new
  std::function<PhoneSeconds()> now;
  PhoneSeconds clock_shift = 0;

  PhoneSeconds Time() const { return now() + clock_shift; }
  void Reset();
  void Announce(Notice notice);

  /// A string of the line in the present character set, and back.
  std::string Line(std::u16string_view text) const { return ToLine(session.character_set, text); }
  std::optional<std::u16string> Text(std::string_view bytes) const;
  std::string LineNumber(std::string_view number) const;
  /// A number that may come plain although the character set is a hexadecimal one.
  std::string NumberText(std::string_view bytes) const;
};

/// Digits, '*', '#', 'p', 'w', '?' with an optional leading "+".
bool IsDialNumber(std::string_view number);

/// Two spellings of one subscriber: the same digits, or the same last nine when one has no country code.
bool SameNumber(std::string_view left, std::string_view right);

}  // namespace celldesk::simulator
