#include "celldesk_pdu_decode.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iostream>
#include <sstream>
#include <string_view>

#include "celldesk_pdu_print.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr int kHighestLength = 32767;

bool ReadNumber(std::string_view text, int highest, int& value) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() && value >= 0 && value <= highest;
}

bool IsHexadecimal(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789ABCDEFabcdef") == std::string_view::npos;
}

std::vector<std::string> Words(const std::string& line) {
  std::istringstream stream(line);
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

/// Fills `message` from STATUS LENGTH HEX; what is wrong with them, or nothing.
std::string ReadMessage(const std::vector<std::string>& words, SmsMessage& message) {
  if (words.size() != 3) return "expected STATUS LENGTH HEX";
  int status = 0;
  int length = 0;
  if (!ReadNumber(words[0], kStoredSent, status)) return "the storage status must be 0 to 3: " + words[0];
  if (!ReadNumber(words[1], kHighestLength, length))
    return "the length must be 0 to 32767 octets: " + words[1];
  if (!IsHexadecimal(words[2])) return "the PDU must be hexadecimal digits: " + words[2];
  message.storage_status = status;
  message.tpdu_length = static_cast<std::int16_t>(length);
  message.pdu_text = WidenAscii(words[2]);
  return {};
}

bool DecodeOne(const std::vector<std::string>& words, bool json, const std::string& place) {
  SmsMessage message;
  const std::string error = ReadMessage(words, message);
  if (!error.empty()) {
    std::cerr << "celldesk-pdu: " << place << error << '\n';
    return false;
  }
  const Status result = message.Decode();
  (json ? PrintJson : PrintText)(std::cout, RecordOf(message, result));
  return true;
}

int DecodeLines(bool json) {
  bool good = true;
  std::string line;
  for (int number = 1; std::getline(std::cin, line); ++number) {
    const std::vector<std::string> words = Words(line);
    if (words.empty()) continue;
    good = DecodeOne(words, json, "line " + std::to_string(number) + ": ") && good;
  }
  return good ? 0 : 1;
}

}  // namespace

int RunDecode(const std::vector<std::string>& arguments) {
  std::vector<std::string> words = arguments;
  const auto json = std::find(words.begin(), words.end(), "--json");
  const bool as_json = json != words.end();
  if (as_json) words.erase(json);
  if (words.empty()) return DecodeLines(as_json);
  return DecodeOne(words, as_json, {}) ? 0 : 1;
}

}  // namespace celldesk
