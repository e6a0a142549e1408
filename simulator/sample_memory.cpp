#include "simulator/sample_memory.h"

#include <array>

#include "simulator/ascii.h"
#include "simulator/character_set.h"
#include "simulator/phone_clock.h"
#include "simulator/tpdu.h"

namespace celldesk::simulator {
namespace {

struct Person {
  int location;
  std::string_view number;
  std::u16string_view name;
};

constexpr std::array<Person, 12> kSimPeople{{{1, "+447700900101", u"Anna Whitfield"},
                                             {2, "+447700900102", u"Ben Okafor"},
                                             {3, "07700900103", u"Carla Jim\u00E9nez"},
                                             {4, "+447700900104", u"Dieter J\u00E4ger"},
                                             {5, "+15550100105", u"Emma Stone & Sons"},
                                             {7, "07700900106", u"Ren\u00E9e"},
                                             {8, "+447700900107", u"Garage (24 hours)"},
                                             {10, "+447700900108", u"Home"},
                                             {20, "112", u"Emergency"},
                                             {21, "07700900109", u"Ice cream \u00A35"},
                                             {100, "+447700900110", u"S\u00F8ren"},
                                             {250, "*#100#", u"My number"}}};

constexpr std::array<Person, 20> kPhonePeople{{{1, "+447700900201", u"Alice Barrow"},
                                               {2, "+447700900202", u"Alice Barrow work"},
                                               {3, "+447700900203", u"Bakery"},
                                               {4, "07700900204", u"Bj\u00F6rn"},
                                               {5, "+447700900205", u"Caf\u00E9 M\u00FCller"},
                                               {6, "+447700900206", u"Dentist"},
                                               {7, "+15550100207", u"Dr. Quinn, Boston"},
                                               {8, "07700900208", u"Erin"},
                                               {9, "+447700900209", u"Faculty office"},
                                               {10, "+447700900210", u"Grandma"},
                                               {11, "+447700900211", u"Hiroshi"},
                                               {12, "07700900212", u"Ines \u00D1u\u00F1ez"},
                                               {13, "+447700900213", u"J\u00F8rn"},
                                               {15, "+447700900215", u"Kiosk"},
                                               {16, "+447700900216", u"Library"},
                                               {18, "07700900218", u"Mechanic @ night"},
                                               {30, "+447700900230", u"Neighbour, left"},
                                               {31, "+447700900231", u"Neighbour, right"},
                                               {499, "+447700900299", u"Taxi"},
                                               {500, "07700900300", u"Zora's"}}};

void Fill(Phonebook& book, const Person* first, const Person* last) {
  for (const Person* person = first; person != last; ++person) {
    const int type = person->number.starts_with('+') ? kInternational : kNational;
    book.entries[person->location] = {std::string(person->number), type, std::u16string(person->name)};
  }
}

PhoneSeconds At(std::string_view clock_text) { return ParseClockText(clock_text).value_or(0); }

Tpdu Submit(std::string_view number, std::u16string_view text) {
  Tpdu tpdu;
  tpdu.first_octet = 0x31;  // report wanted, relative validity
  tpdu.address = MakeAddress(number);
  tpdu.validity = static_cast<char>(0xA7);
  SetText(tpdu, text);
  return tpdu;
}

Tpdu Received(std::string_view number, std::string_view clock_text, std::u16string_view text) {
  return DeliverOf(Submit("", text), number, At(clock_text));
}

StoredMessage Stored(MessageStatus status, const Tpdu& tpdu, std::string_view centre) {
  return {status, ToHex(WriteCentre(centre) + WriteTpdu(tpdu))};
}

void FillStores(PhoneMemory& memory) {
  const std::string& centre = memory.centre;
  auto& sim = memory.FindStore("SM")->messages;
  const Tpdu sent = Submit("+447700900102", u"Train is late, start without me.");
  sim[1] = Stored(MessageStatus::kReceivedRead,
                  Received("+447700900101", "26/01/03,09:12:45+00", u"Good morning! Coffee at ten?"), centre);
  sim[2] = Stored(
      MessageStatus::kReceivedUnread,
      Received("+447700900104", "26/01/04,18:30:00+00", u"Gr\u00FC\u00DFe aus K\u00F6ln, bis sp\u00E4ter"),
      centre);
  sim[3] = Stored(MessageStatus::kReceivedUnread, ReportOf(sent, 4, At("26/01/04,19:02:10+00")), centre);
  sim[4] = Stored(MessageStatus::kStoredUnsent,
                  Submit("07700900103", u"Happy birthday! The cake is \u00A35, the song is free."), "");
  sim[6] = Stored(MessageStatus::kStoredSent, sent, "");
  auto& phone = memory.FindStore("ME")->messages;
  phone[1] = Stored(
      MessageStatus::kReceivedRead,
      Received("+447700900205", "25/12/24,16:00:00+00", u"Caf\u00E9 closes at six today \u20AC"), centre);
  phone[2] = Stored(
      MessageStatus::kReceivedUnread,
      Received("+447700900299", "25/12/31,23:58:59+00",
               u"Your taxi waits at the corner. The driver has a red scarf, a blue cap and very little "
               u"patience, so please be quick. Fare to the station: about 12 pounds."),
      centre);
  phone[5] = Stored(MessageStatus::kReceivedRead,
                    Received("07700900300", "26/01/01,00:00:01+00", u"Happy new year!"), centre);
  memory.last_reference = 4;
}

}  // namespace

PhoneMemory SampleMemory() {
  PhoneMemory memory;
  Fill(*memory.FindPhonebook("SM"), kSimPeople.begin(), kSimPeople.end());
  Fill(*memory.FindPhonebook("ME"), kPhonePeople.begin(), kPhonePeople.end());
  FillStores(memory);
  return memory;
}

}  // namespace celldesk::simulator
