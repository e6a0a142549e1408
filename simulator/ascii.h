#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace celldesk::simulator {

/// Plain ASCII helpers: command names and digits, never names of people.
char ToUpper(char byte);
std::string ToUpper(std::string_view text);
bool StartsWithIgnoringCase(std::string_view text, std::string_view prefix);
std::string_view Trim(std::string_view text);

/// The whole text as a decimal number, an optional sign allowed; nothing when it is anything else.
std::optional<int> ParseNumber(std::string_view text);

/// Two upper-case digits per octet.
std::string ToHex(std::string_view octets);

/// Octets of a hexadecimal text of either case; nothing for an odd length or any other character.
std::optional<std::string> FromHex(std::string_view text);

std::vector<std::string> Split(std::string_view text, char separator);
std::string Join(const std::vector<std::string>& parts, std::string_view separator);

/// "text" between double quotes.
std::string Quoted(std::string_view text);

/// The texts between double quotes, parted by commas.
std::string QuotedList(const std::vector<std::string>& texts);

}  // namespace celldesk::simulator
