#include "simulator/profile.h"

#include <algorithm>

#include "simulator/ascii.h"

namespace celldesk::simulator {

namespace {

constexpr ProfileInfo kProfiles[] = {
    {"default", "a phone that keeps to the standards", [](Profile&) {}},
    {"no-alpha", "message listings leave the name field out",
     [](Profile& profile) { profile.alpha = AlphaField::kAbsent; }},
    {"alpha-names", "message listings name the sender when the phonebook knows him",
     [](Profile& profile) { profile.alpha = AlphaField::kName; }},
    {"padded-names", "names are filled with blanks", [](Profile& profile) { profile.padded_names = true; }},
    {"empty-lists", "questions for lists are answered with ()",
     [](Profile& profile) {
       profile.replies["AT+CPBS=?"] = {"+CPBS: ()"};
       profile.replies["AT+CPBR=?"] = {"+CPBR: (),40,20"};
       profile.replies["AT+CPMS=?"] = {"+CPMS: (),(),()"};
     }},
    {"empty-replies", "the message memories are an empty line",
     [](Profile& profile) { profile.replies["AT+CPMS=?"] = {"+CPMS: "}; }},
    {"loose-lists", "blanks after commas and long memory names",
     [](Profile& profile) {
       profile.replies["AT+CPMS=?"] = {
           R"(+CPMS: ("SM", "ME", "SM_P", "ME_P"), ("SM", "ME", "SM_P", "ME_P"), ("SM", "ME", "SM_P", "ME_P"))"};
     }},
    {"bare-lists", "lists without parentheses",
     [](Profile& profile) {
       profile.replies["AT+CPBS=?"] = {R"(+CPBS: "ME","SM")"};
       profile.replies["AT+CPMS=?"] = {R"(+CPMS: "ME","SM","SM")"};
     }},
    {"no-lengths", "the phonebook range comes without lengths",
     [](Profile& profile) { profile.replies["AT+CPBR=?"] = {"+CPBR: (1-250)"}; }},
    {"prompt-crlf", "the prompt is a whole line of its own",
     [](Profile& profile) { profile.prompt = "\r\n> \r\n"; }},
    {"prompt-bare", "the prompt has no line end before it", [](Profile& profile) { profile.prompt = "> "; }},
    {"cme-errors", "+CME ERROR in place of ERROR from the start",
     [](Profile& profile) { profile.error_level = 1; }},
    {"not-found", "an empty phonebook location answers an error",
     [](Profile& profile) { profile.empty_slot_is_error = true; }},
    {"no-me", "there is no memory ME", [](Profile& profile) { profile.hidden_memories = {"ME"}; }},
    {"mt-union", "a memory MT joins SM and ME", [](Profile& profile) { profile.union_memories = {"MT"}; }},
    {"one-slot", "every memory has one place", [](Profile& profile) { profile.single_slot = true; }},
    {"storage-full", "nothing new fits in", [](Profile& profile) { profile.books_are_full = true; }},
    {"no-store", "messages cannot be stored, only sent", [](Profile& profile) { profile.can_store = false; }},
    {"no-smsc", "PDUs are without the service centre field",
     [](Profile& profile) { profile.centre_in_pdu = false; }},
    {"no-plus", "international numbers are listed without the plus sign",
     [](Profile& profile) { profile.plus_in_numbers = false; }},
    {"no-counts", "the memory selection shows no counts",
     [](Profile& profile) { profile.counts_in_selection = false; }},
    {"missing-types", "no type beside an empty number",
     [](Profile& profile) { profile.type_of_empty_number = false; }},
    {"trailing-comma", "phonebook lines end in a comma", [](Profile& profile) { profile.line_tail = ","; }},
    {"chatty", "unsolicited lines around every reply",
     [](Profile& profile) {
       profile.chatter = {"+CREG: 1", "^RSSI: 18", "+PSBEARER: 24, 0", "^BOOT: 37478870,0,0,0,77"};
     }},
    {"slow", "an old phone that takes its time",
     [](Profile& profile) {
       profile.latency_ms = 400;
       profile.line_delay_ms = 20;
     }},
    {"index-zero", "message indexes begin with 0", [](Profile& profile) { profile.index_shift = -1; }},
    {"huge-range", "65535 phonebook locations",
     [](Profile& profile) {
       profile.book_limits = BookLimits{1, 65535, 20, 100};
     }},
    {"bad-range", "a phonebook range that ends before it begins",
     [](Profile& profile) { profile.replies["AT+CPBR=?"] = {"+CPBR: (5-1),40,20"}; }},
    {"no-space", "no blank after the colon", [](Profile& profile) { profile.prefix_gap.clear(); }},
    {"doubled-cr", "lines end in CR CR LF", [](Profile& profile) { profile.line_end = "\r\r\n"; }},
};

}  // namespace

bool Profile::Hides(std::string_view memory) const {
  return std::find(hidden_memories.begin(), hidden_memories.end(), memory) != hidden_memories.end();
}

std::span<const ProfileInfo> Profiles() { return kProfiles; }

std::optional<Profile> MakeProfile(std::string_view names) {
  Profile profile;
  for (const std::string& name : Split(names, ',')) {
    const auto known = std::find_if(Profiles().begin(), Profiles().end(),
                                    [&](const ProfileInfo& info) { return info.name == name; });
    if (known == Profiles().end()) return std::nullopt;
    known->apply(profile);
  }
  return profile;
}

}  // namespace celldesk::simulator
