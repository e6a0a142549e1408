#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "data/message_memory.h"
#include "data/row_observer.h"
#include "data/sms_store.h"
#include "link/at_engine.h"
#include "util/object.h"
#include "util/status.h"

namespace celldesk {

class SmsListing;

/// What the user wants after a message could not be stored or sent. Any other value stops, too.
enum class UploadAnswer : int { kStop = 2, kRetry = 6, kSkip = 7 };

/// Carries short messages between the phone's memories and the records of both folders, in PDU mode
/// (GSM 07.05). Interface thread only; while a procedure runs the interface lives on, and nobody else may use
/// the link or change the records.
class SmsService : public Object {
 public:
  /// Asked after a failed store or send, with the message and its position.
  using Question = std::function<UploadAnswer(SmsMessage& message, int position)>;

  static constexpr std::uint8_t kInvalidCentre = 128;

  /// The engine is borrowed for the service's life.
  explicit SmsService(AtEngine& engine) : engine_(engine) {}

  SmsStore& messages() { return messages_; }
  const SmsStore& messages() const { return messages_; }

  /// Checks and keeps the number of the SMS centre, "+" and at least 6 characters. E_FAIL: without the "+"
  /// the stored number becomes empty and its type kInvalidCentre; too short, both stay.
  Status SetCentre(std::u16string_view number);
  /// `validity` is a relative validity period. With `adapter` a message is sent without the centre's address.
  void SetOptions(bool delivery_report, bool reply_path, bool adapter, std::uint8_t validity);
  /// Who decides after a failure (empty: the upload stops), and the view that is repainted then and told of
  /// each record that the upload is done with (may be null); both are kept until the next call.
  void SetProgress(Question question, RowObserver* view);

  /// The centre's digits without the "+".
  const std::u16string& centre() const { return centre_; }
  std::uint8_t centre_type() const { return centre_type_; }
  bool delivery_report() const { return delivery_report_; }
  bool reply_path() const { return reply_path_; }
  bool adapter() const { return adapter_; }
  std::uint8_t validity() const { return validity_; }

  /// Asks which message memories there are and whether messages can be stored. A phone that lists no memories
  /// is no failure.
  Status QueryCapabilities();
  /// The answers: memories to read and delete from, to write and send from, to receive into, e.g.
  /// "\"SM\",\"ME\"".
  const std::u16string& read_memories() const { return read_memories_; }
  const std::u16string& write_memories() const { return write_memories_; }
  const std::u16string& receive_memories() const { return receive_memories_; }
  bool store_supported() const { return store_supported_; }
  /// False once every memory that messages can be stored in is known to be full, those to be stored counted,
  /// and when the records here are.
  bool HasRoom() const;

  /// Selects one memory of kMessageMemories for reading, deleting and writing. E_FAIL for any other.
  Status SelectMemory(int memory);
  /// Lists every memory that the phone reads from and appends what it holds to the messages; `view` (may be
  /// null) is told of each. A memory that cannot be selected ends the listing; a listing that breaks off does
  /// not: the status is the last one's.
  Status ListAll(RowObserver* view);
  /// False when the last listing did not give every message its PDU.
  bool all_pdus_came() const { return all_pdus_came_; }
  /// Deletes the message from its memory. The phone's answer does not count.
  Status Delete(const SmsMessage& message);
  /// Submits the message's PDU to the network.
  Status Send(const SmsMessage& message);
  /// Writes the message's PDU into its memory and clears its flag "to be stored".
  Status Store(SmsMessage& message);
  /// Carries every pending change to the phone, in the order of the records: deletes, stores, sends.
  Status UploadAll();

 private:
  /// How full a memory is.
  struct Usage {
    int used = 0;
    int total = 0;
  };

  void QueryMemories();
  Status QueryStoring();
  void TakeUsage(int memory, const ResponseLine& line);
  bool MayHaveRoom(int memory) const;
  Status ListMemory(int memory, RowObserver* view);
  Status TakeListing(SmsListing& listing);
  Status Submit(std::u16string_view command, const SmsMessage& message);
  bool WasRefused();
  Status SendPdu(const SmsMessage& message);
  Status WaitSubmitted();
  Status UploadRecord(int position);
  /// Runs `operation` until it succeeds or the user does not want it again; false when the record is done
  /// with: `status` is then S_OK (skipped) or the failure.
  bool TryUpload(const std::function<Status()>& operation, int position, Status& status);
  UploadAnswer Ask(SmsMessage& message, int position);
  Status StoreRecord(SmsMessage& message);
  Status SendRecord(SmsMessage& message);

  AtEngine& engine_;
  SmsStore messages_;
  std::u16string centre_;
  std::uint8_t centre_type_ = kInvalidCentre;
  bool adapter_ = false;
  bool delivery_report_ = false;
  bool reply_path_ = false;
  std::uint8_t validity_ = 0;
  Question question_;
  RowObserver* view_ = nullptr;
  std::u16string read_memories_;
  std::u16string write_memories_;
  std::u16string receive_memories_;
  bool store_supported_ = false;
  bool all_pdus_came_ = true;
  std::array<std::optional<Usage>, kMessageMemories.size()> usage_;
};

}  // namespace celldesk
