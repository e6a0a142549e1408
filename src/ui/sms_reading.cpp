#include "ui/sms_reading.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "pdu/gsm_alphabet.h"
#include "ui/commands.h"
#include "ui/resources/resources.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr std::uint8_t kSeptet = 0x7F;

// Characters before the first change that fit the line with it.
constexpr std::size_t kLeadShown = 8;

}  // namespace

std::u16string TextAsReceived(std::u16string_view text) {
  std::u16string received(text);
  std::transform(text.begin(), text.end(), received.begin(), [](char16_t character) {
    return GsmToWide(static_cast<std::uint8_t>(WideToGsm(character) & kSeptet));
  });
  return received;
}

std::u16string ReadingHint(std::u16string_view text) {
  std::u16string received = TextAsReceived(text);
  if (received == text) return {};
  const auto change = static_cast<std::size_t>(
      std::mismatch(text.begin(), text.end(), received.begin()).first - text.begin());
  std::replace_if(
      received.begin(), received.end(), [](char16_t c) { return c == u'\n' || c == u'\r'; }, u' ');
  if (change > kLeadShown) received = u"..." + received.substr(change - kLeadShown);
  return Format(LoadString(text::kReadsAs), {received});
}

}  // namespace celldesk
