#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "simulator/phone_clock.h"

namespace celldesk::simulator {

/// An address field of GSM 03.40 9.1.2.5: the type octet and the semi-octets as the digits they stand for.
struct PduAddress {
  int type = 129;
  std::string digits;  // "0123456789*#abc"; for an alphanumeric type the packed octets

  /// The number as a person writes it, with "+" when international; an alphanumeric sender as UTF-8.
  std::string Text() const;
};

PduAddress MakeAddress(std::string_view number);

/// The kinds that travel here (GSM 03.40 9.2.3.1); the direction tells those with equal type bits apart.
enum class TpduKind { kDeliver, kSubmit, kStatusReport, kCommand };

/// One short message TPDU, all kinds in one record. Octets are raw bytes.
struct Tpdu {
  TpduKind kind = TpduKind::kSubmit;
  int first_octet = 1;
  int reference = 0;
  PduAddress address;  // originator, destination or recipient
  int protocol = 0;
  int coding = 0;
  std::string validity;   // 0, 1 or 7 octets
  std::string timestamp;  // 7 octets
  std::string discharge;  // 7 octets
  int status = 0;
  int user_data_length = 0;  // septets or octets, as the coding says
  std::string user_data;

  bool wants_report() const { return kind == TpduKind::kSubmit && (first_octet & 0x20) != 0; }
  bool is_from_phone() const { return kind == TpduKind::kSubmit || kind == TpduKind::kCommand; }
};

/// How user data is written (GSM 03.38 4).
enum class Coding { kSeptets, kOctets, kUcs2 };
Coding CodingOf(int data_coding_scheme);

/// Octets that `length` units of user data take.
std::size_t UserDataOctets(int data_coding_scheme, int length);

/// A whole TPDU, not an octet less or more; nothing otherwise. `from_phone` says who wrote it.
std::optional<Tpdu> ParseTpdu(std::string_view octets, bool from_phone);

std::string WriteTpdu(const Tpdu& tpdu);

/// The service centre field: its length octet, its type and its digits (GSM 07.05 3.1).
std::string WriteCentre(std::string_view number);

/// Octets of the centre field at the head of `octets`, length octet included.
std::size_t CentreSize(std::string_view octets);

/// What the network makes of a submitted message: the message at the other end, and the report about it.
Tpdu DeliverOf(const Tpdu& submit, std::string_view originator, PhoneSeconds now);
Tpdu ReportOf(const Tpdu& submit, int reference, PhoneSeconds now);

/// The text of the user data; a user data header is left out.
std::u16string TextOf(const Tpdu& tpdu);

/// Puts a text into the user data in the record's coding.
void SetText(Tpdu& tpdu, std::u16string_view text);

}  // namespace celldesk::simulator
