#include "platform/vdir/vcard_contact.h"

#include <initializer_list>
#include <utility>

#include "platform/vdir/ascii.h"
#include "platform/vdir/vcard_parameters.h"
#include "platform/vdir/vcard_text.h"

namespace celldesk {
namespace {

void KeepFirst(std::u16string& kept, std::u16string text) {
  if (kept.empty()) kept = std::move(text);
}

std::u16string FirstComponent(const VcardLine& line) {
  std::string_view value = line.value;
  return DecodeVcardText(TakeComponent(value), VcardParameters::Parse(line.parameters));
}

}  // namespace

void VcardContact::Take(const VcardLine& line) {
  if (EqualAscii(line.name, "VERSION")) is_version_4_ = TrimBlanks(line.value) == "4.0";
  if (EqualAscii(line.name, "N")) TakeName(line);
  if (EqualAscii(line.name, "TEL")) TakeNumber(line);
  if (EqualAscii(line.name, "ORG")) KeepFirst(company_, FirstComponent(line));
  if (EqualAscii(line.name, "FN"))
    KeepFirst(formatted_, DecodeVcardText(line.value, VcardParameters::Parse(line.parameters)));
}

void VcardContact::TakeName(const VcardLine& line) {
  if (!family_.empty() || !given_.empty() || !additional_.empty()) return;
  const VcardParameters parameters = VcardParameters::Parse(line.parameters);
  std::string_view value = line.value;
  for (std::u16string* part : {&family_, &given_, &additional_})
    *part = DecodeVcardText(TakeComponent(value), parameters);
}

// Version 4.0 writes numbers as URIs, and some programs forget to say so.
void VcardContact::TakeNumber(const VcardLine& line) {
  const VcardParameters parameters = VcardParameters::Parse(line.parameters);
  const std::string_view value = TrimBlanks(line.value);
  const bool is_tel_uri = (parameters.uri || is_version_4_) && IsTelUri(value);
  if (parameters.no_voice || (parameters.uri && !is_tel_uri)) return;
  std::u16string number = is_tel_uri ? DecodeTelUri(value) : DecodeVcardText(line.value, parameters);
  std::u16string& kept = parameters.cell   ? mobile_
                         : parameters.work ? business_
                         : parameters.home ? home_
                                           : other_;
  KeepFirst(kept, std::move(number));
}

ContactRecord VcardContact::Properties() const {
  ContactRecord record;
  const auto add = [&record](ContactPropertyId id, std::u16string text) {
    if (!text.empty()) record.push_back({id, std::move(text)});
  };
  add(kContactSurname, Surname());
  add(kContactSecondName, additional_);
  add(kContactGivenName, given_);
  add(kContactMobileNumber, mobile_);
  add(kContactBusinessNumber, business_);
  add(kContactHomeNumber, HomeNumber());
  add(kContactCompany, company_);
  add(kContactFileAs, formatted_);
  return record;
}

// Programs that know a company or a number only repeat it as the formatted name, which must not be empty.
bool VcardContact::RepeatsAnother(const std::u16string& text) const {
  return text == company_ || text == mobile_ || text == business_ || text == HomeNumber();
}

const std::u16string& VcardContact::HomeNumber() const { return home_.empty() ? other_ : home_; }

std::u16string VcardContact::Surname() const {
  const bool has_name = !family_.empty() || !given_.empty() || !additional_.empty();
  return has_name || RepeatsAnother(formatted_) ? family_ : formatted_;
}

}  // namespace celldesk
