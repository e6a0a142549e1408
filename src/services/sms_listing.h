#pragma once

#include "data/row_observer.h"
#include "data/sms_store.h"
#include "link/response_line.h"

namespace celldesk {

/// Takes the lines of one memory's message listing (GSM 07.05 3.4.2, PDU mode) into records.
class SmsListing {
 public:
  /// `memory` is an index into kMessageMemories; `observer` may be null. All are borrowed.
  SmsListing(int memory, SmsStore& store, RowObserver* observer)
      : memory_(memory), store_(store), observer_(observer) {}

  /// A "+CMGL:" line opens a record, the next other line is its PDU; the rest is skipped.
  void TakeLine(ResponseLine& line);

  /// False when the line that was taken for a message's PDU, if one came, cannot be it: the phone said
  /// something else in between.
  bool AllPdusCame() const { return all_pdus_came_ && open_ == kNone; }

 private:
  void OpenRecord(const ResponseLine& line);
  void TakePdu(std::u16string_view pdu);

  static constexpr int kNone = -1;

  int memory_;
  SmsStore& store_;
  RowObserver* observer_;
  int open_ = kNone;  // position of the record that waits for its PDU
  bool all_pdus_came_ = true;
};

}  // namespace celldesk
