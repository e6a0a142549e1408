#pragma once

#include "ui/sms/pending_messages.h"

/// One run of a procedure of the message folders with one fault of the phone.
namespace celldesk::message_fault_walk {

/// What a command of a procedure is for.
enum class Step {
  kSelectToDelete,
  kDelete,
  kSelectToStore,
  kSelectToSend,
  kSubmit,
  kPdu,
  kSelectToList,
  kList
};

/// What a fault does to the command's reply.
enum class Effect { kHarmless, kError, kCmsError, kCmeError, kNoReply, kTooLate, kLineGone };

struct FaultCase {
  std::string text;
  Effect effect;
  bool cuts_in = false;  // in a listing another line comes between a message's header and its PDU
};

/// Every kind of fault, with nothing left to chance.
const std::vector<FaultCase>& FaultCases();

/// An upload (or a mere listing) of the folders, with what it has to do.
struct Procedure {
  std::string name;
  bool deletes = false;
  std::uint32_t flags = 0;  // of a new message; 0: there is none
  int memory = 0;           // of the message that is deleted or stored: 0 is "SM", 1 is "ME"

  bool uploads() const { return deletes || flags != 0; }
  bool stores() const { return (flags & kMessageToStore) != 0; }
  bool sends() const { return (flags & kMessageToSend) != 0; }
  std::string store() const { return memory == 0 ? "SM" : "ME"; }
  /// The message that is deleted: the first one of the memory.
  std::u16string_view deleted_text() const { return memory == 0 ? u"Coffee at ten?" : u"Done"; }
};

inline constexpr std::u16string_view kText = u"Pending text";

/// The window before a procedure, its run, and what the phone holds.
class Walk : public SmsWindow {
 public:
  explicit Walk(const Procedure& procedure);

  /// Answers what is asked with `answer`.
  void RunProcedure(int answer);
  std::size_t lines_before() const { return lines_before_; }
  int TimesSent() { return pdu_.empty() ? 0 : celldesk::TimesSent(*this, pdu_); }

  /// "memory index PDU" of all that the phone holds; the phone itself marks messages as read.
  std::vector<std::string> Stored();
  const std::vector<std::string>& stored_before() const { return stored_before_; }
  const std::vector<simulator::Phonebook>& phonebooks_before() const { return phonebooks_before_; }
  /// The line that lists the last message of memory "ME"; empty when there is none.
  std::string LastHeader();
  /// A row for every message of the phone, and the very PDUs behind them.
  bool ShowsWhatThePhoneHolds();
  /// What the status line says of the rows, e.g. "3 items".
  std::string Counts();

 private:
  void MarkToDelete();

  const Procedure& procedure_;
  std::string pdu_;
  std::size_t lines_before_ = 0;
  std::vector<std::string> stored_before_;
  std::vector<simulator::Phonebook> phonebooks_before_;
};

/// The commands of a run without faults, found by running it.
struct GoodRun {
  std::vector<std::string> lines;
  std::vector<Step> steps;
};

GoodRun RecordGoodRun(const Procedure& procedure);

/// Where in a procedure what goes wrong, and what comes of it.
struct Place {
  const Procedure& procedure;
  const GoodRun& run;
  std::size_t at;
  const FaultCase& fault;

  Step step() const { return run.steps[at]; }
  Effect effect() const { return fault.effect; }
  bool is_refused() const;
  bool is_last() const { return at + 1 == run.steps.size(); }
  bool submits() const { return step() == Step::kSubmit || step() == Step::kPdu; }
  /// The message cannot be stored or sent, or nobody knows whether it was.
  bool submission_fails() const;
  /// The place belongs to the sending of a message that is stored too.
  bool in_sending() const;
  /// The procedure ends in a communication error without a question.
  bool ends_in_error() const;
  /// Commands up to this one that the phone has carried out, of those that begin with `start`.
  bool CarriesOut(const std::string& start, Step last) const;
  /// What the box or the question shows as the phone's last word.
  std::string ShownLine(Walk& walk) const;
  /// The status line then says that rows may be missing: the listing broke off, or an answer was missed.
  bool may_lack_rows(Walk& walk) const;

 private:
  /// The memory that the command lists.
  const simulator::MessageStore& ListedStore(Walk& walk) const;
  std::string LastSubmission() const;
  std::string LineBefore() const;
  std::string LineOfTheFault(Walk& walk) const;
};

}  // namespace celldesk::message_fault_walk
