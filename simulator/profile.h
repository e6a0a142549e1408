#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace celldesk::simulator {

/// What stands in the name field of a message listing.
enum class AlphaField { kEmpty, kAbsent, kName };

struct BookLimits {
  int first = 1;
  int last = 250;
  int number_length = 40;
  int name_length = 20;
};

/// The habits of one make of phone. Plain data: the commands ask it, nothing asks for a profile's name.
struct Profile {
  AlphaField alpha = AlphaField::kEmpty;
  bool padded_names = false;         // names filled with blanks to the greatest length
  bool empty_slot_is_error = false;  // one empty location answers "not found"
  bool counts_in_selection = true;   // +CPBS? shows used and total
  bool plus_in_numbers = true;       // an international number is listed with its "+"
  bool type_of_empty_number = true;  // the type field is filled when the number is empty
  bool can_store = true;             // +CMGW exists
  bool centre_in_pdu = true;         // PDUs on the line begin with the service centre field
  bool books_are_full = false;       // nothing new fits in
  bool single_slot = false;          // every memory has one place
  int index_shift = 0;               // added to the index of every message
  int error_level = 0;               // +CMEE from the start
  int latency_ms = 0;                // before every reply
  int line_delay_ms = 0;             // before every line of a reply
  std::string prompt = "\r\n> ";
  std::string line_end = "\r\n";
  std::string prefix_gap = " ";  // after the colon of an information line
  std::string line_tail;         // behind every phonebook line
  std::vector<std::string> hidden_memories;
  std::vector<std::string> union_memories;  // names of a union of all message stores, e.g. "MT"
  std::vector<std::string> chatter;         // unsolicited lines, one before and one after every reply
  std::optional<BookLimits> book_limits;
  /// Fixed information lines in answer to a command (upper case, without spaces and quotes).
  std::map<std::string, std::vector<std::string>> replies;

  bool Hides(std::string_view memory) const;
};

struct ProfileInfo {
  std::string_view name;
  std::string_view description;
  void (*apply)(Profile& profile);
};

/// Every profile there is, "default" first.
std::span<const ProfileInfo> Profiles();

/// The profile of one name or of several joined with commas, their habits added up; nothing for an unknown
/// name.
std::optional<Profile> MakeProfile(std::string_view names);

}  // namespace celldesk::simulator
