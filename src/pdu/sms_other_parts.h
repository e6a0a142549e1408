#pragma once

#include "pdu/sms_pdu.h"

namespace celldesk {

/// The combinations of type and direction that no phone is asked for. They have no fields.

/// An SMS-SUBMIT among the received messages.
class SmsReceivedSubmitPart : public virtual SmsPdu {
 public:
  ~SmsReceivedSubmitPart() override = default;

 protected:
  static Status DecodeReceivedSubmit() { return E_NOTIMPL; }
};

/// An SMS-DELIVER among the stored messages: only its type is checked.
class SmsStoredDeliverPart : public virtual SmsPdu {
 public:
  ~SmsStoredDeliverPart() override = default;

 protected:
  Status DecodeStoredDeliver() {
    std::size_t position = 0;
    return ReadFirstOctet(position, SmsType::kDeliver);
  }
  static Status EncodeStoredDeliver() { return E_NOTIMPL; }
};

/// An SMS-STATUS-REPORT among the stored messages.
class SmsStoredStatusReportPart : public virtual SmsPdu {
 public:
  ~SmsStoredStatusReportPart() override = default;

 protected:
  static Status DecodeStoredStatusReport() { return E_NOTIMPL; }
  static Status EncodeStoredStatusReport() { return E_NOTIMPL; }
};

}  // namespace celldesk
