#include "pdu/sms_pdu.h"

#include <array>
#include <span>

#include "pdu/gsm_alphabet.h"
#include "pdu/pdu_text.h"
#include "pdu/septets.h"

namespace celldesk {

Status SmsPdu::ReadFirstOctet(std::size_t& position) {
  position = 0;
  std::uint8_t octet = 0;
  if (const Status status = ReadOctet(octet, pdu_text, position); Failed(status)) return status;
  const std::ptrdiff_t surplus =
      static_cast<std::ptrdiff_t>(pdu_text.size()) - 2 * std::ptrdiff_t{tpdu_length};
  if (surplus > 0) {
    position = static_cast<std::size_t>(surplus / 2);
    if (const Status status = ReadOctet(octet, pdu_text, position); Failed(status)) return status;
  }
  first_octet = octet;
  return S_OK;
}

Status SmsPdu::ReadFirstOctet(std::size_t& position, SmsType expected) {
  const Status status = ReadFirstOctet(position);
  if (Failed(status)) return status;
  return type() == expected ? S_OK : E_FAIL;
}

Status SmsPdu::ReadUserData(std::size_t position) {
  std::uint8_t length = 0;
  if (const Status status = ReadOctet(length, pdu_text, position); Failed(status)) return status;
  if (const Status status = ResizeText(text, length); Failed(status)) return status;
  std::array<std::uint8_t, 255> septets;
  UnpackSeptets(std::span(septets).first(length), pdu_text, position);
  GsmBytesToWide(text.data(), septets.data(), length);
  return S_OK;
}

void SmsPdu::ClearPdu() {
  tpdu_length = 0;
  first_octet = 0;
  pid = 0;
  dcs = 0;
  pdu_text.clear();
  phone_alpha.clear();
  text.clear();
}

}  // namespace celldesk
