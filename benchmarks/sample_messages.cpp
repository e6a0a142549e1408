#include "sample_messages.h"

#include <array>
#include <string_view>

#include "pdu/sms_message.h"
#include "simulator/ascii.h"
#include "simulator/tpdu.h"
#include "util/text.h"

namespace celldesk::bench {
namespace {

// Written by the simulated phone's own code, which knows nothing of the program's.
using simulator::PhoneSeconds;
using simulator::Tpdu;

constexpr std::string_view kCentre = "+447700900000";
constexpr PhoneSeconds kFirstMorning = 1767171600;  // 2025-12-31 09:00:00
constexpr PhoneSeconds kStep = 26 * 3600 + 1234;
constexpr std::size_t kReceived = 17;
constexpr std::size_t kSent = 2;

constexpr std::array<std::u16string_view, 20> kTexts = {
    u"Good morning! Coffee at ten in the usual place? I have an hour before my train leaves.",
    u"Ok, see you there.",
    u"The parcel for number 14 is with us. Please come and get it before eight in the evening.",
    u"Can you buy milk, eggs, two lemons and the bread with the dark crust? Thank you so much!",
    u"Running late, start without me",
    u"Your appointment with Dr. Quinn is on 14/01 at 15:30. Call 07700900206 to change it.",
    u"Gr\u00FC\u00DFe aus K\u00F6ln, das Wetter ist gro\u00DFartig und der Dom immer noch eine Baustelle.",
    u"Did you see the game last night? I still cannot believe that third goal...",
    u"Yes",
    u"Happy birthday!! Many happy returns from all of us at number nine!",
    u"The code for the door is 4711, then the green button. The key is under the second pot.",
    u"Meeting moved to 16:00, room 3. Bring the figures of the last quarter, please.",
    u"Call me when you can",
    u"We are at the harbour, by the big crane. Park behind the fish market, it is \u00A32 an hour.",
    u"Train 19:04 is cancelled, I take the one at 19:34. Dinner can wait, or eat without me.",
    u"Thanks for yesterday, it was lovely. We must do that again soon, next time at our place?",
    u"Is it still raining there?",
    u"Your taxi waits at the corner. The driver has a red scarf. Fare to the station: about 12 pounds.",
    u"I found your umbrella, it was behind the sofa all the time. Shall I bring it tomorrow?",
    u"Please water the plants until Sunday",
};

std::string NumberOf(std::size_t n) { return "+4477009001" + std::to_string(10 + n); }

Tpdu Submitted(std::size_t n) {
  Tpdu tpdu;
  tpdu.first_octet = 0x31;  // report wanted, relative validity
  tpdu.reference = static_cast<int>(n);
  tpdu.address = simulator::MakeAddress(NumberOf(n));
  tpdu.validity = static_cast<char>(0xA7);
  simulator::SetText(tpdu, kTexts[n]);
  return tpdu;
}

ListedMessage Listed(std::int32_t status, const Tpdu& tpdu) {
  const std::string octets = simulator::WriteTpdu(tpdu);
  return {status, static_cast<std::int16_t>(octets.size()),
          simulator::ToHex(simulator::WriteCentre(kCentre) + octets)};
}

ListedMessage MakeMessage(std::size_t n) {
  const Tpdu submitted = Submitted(n);
  if (n >= kReceived) return Listed(n < kReceived + kSent ? kStoredSent : kStoredUnsent, submitted);
  const PhoneSeconds time = kFirstMorning + static_cast<PhoneSeconds>(n) * kStep;
  const std::int32_t status = n % 3 == 0 ? kReceivedUnread : kReceivedRead;
  return Listed(status, simulator::DeliverOf(submitted, NumberOf(n), time));
}

}  // namespace

const std::vector<ListedMessage>& SampleMessages() {
  static const std::vector<ListedMessage> messages = [] {
    std::vector<ListedMessage> made;
    for (std::size_t n = 0; n < kTexts.size(); ++n) made.push_back(MakeMessage(n));
    return made;
  }();
  return messages;
}

void TakeListed(SmsMessage& message, const ListedMessage& listed) {
  message.storage_status = listed.storage_status;
  message.tpdu_length = listed.tpdu_length;
  message.pdu_text = WidenAscii(listed.pdu);
}

}  // namespace celldesk::bench
