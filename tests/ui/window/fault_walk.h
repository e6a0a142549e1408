#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "ui/window/book_window.h"

/// One run of a procedure of the address books or of the connection with one fault of the phone.
namespace celldesk::fault_walk {

using std::chrono::milliseconds;

/// What a command of a procedure is for.
enum class Step {
  kDetect,
  kMemories,
  kSelect,
  kRange,
  kTransferSelect,  // the selection right before reading or writing
  kRead,
  kLastRead,
  kWrite,
  kMessageMemories,
  kStoring
};

/// What a fault does to the command's reply.
enum class Effect {
  kHarmless,       // more lines, other pieces, later but in time
  kError,          // ERROR
  kUnknownResult,  // a result that the phonebook procedures do not know
  kNoReply,        // nothing, or only the beginning of a line
  kTooLate,        // comes with the next reply
  kLineGone        // nothing, and no command goes out any more
};

struct FaultCase {
  std::string text;
  Effect effect;
  std::string last_line;  // the last whole line that it leaves; "-" when it leaves none
};

/// Every kind of fault, with nothing left to chance.
const std::vector<FaultCase>& FaultCases();

enum class Ends { kUnnoticed, kFails, kNotImplemented };

/// A procedure of the window, from its preparation on a healthy phone to what must hold after it.
struct Procedure {
  std::string name;
  bool connects = false;
  bool loads = false;
  int folder = 0;
  int command = 0;
  bool reconnects = false;  // by another port in the settings

  bool uploads() const { return !connects && !loads; }
  bool tolerant() const { return folder == 0; }
};

/// The window before a procedure, its run, and what the phone saw of it.
class Walk : public WindowSession {
 public:
  explicit Walk(const Procedure& procedure);

  AddressBookView& view() { return procedure_.folder == 0 ? sim() : phone_book(); }
  void RunProcedure();
  std::vector<std::string> Lines();
  milliseconds took() const { return took_; }
  const simulator::PhoneMemory& memory_before() const { return memory_before_; }
  /// "location|name|number" of the phone's memory behind the folder.
  std::vector<std::string> PhoneRows();
  /// What the status line says of the rows, e.g. "6 items".
  std::string Counts();

 private:
  void PrepareUpload();

  const Procedure& procedure_;
  std::size_t lines_before_ = 0;
  simulator::PhoneMemory memory_before_;
  milliseconds took_{};
};

/// The commands of a run without faults.
struct GoodRun {
  std::vector<std::string> lines;
  std::vector<Step> steps;
  milliseconds longest{};  // the sum of all time-outs
};

GoodRun RecordGoodRun(const Procedure& procedure);

/// Where in a procedure something goes wrong.
struct Place {
  const Procedure& procedure;
  const GoodRun& run;
  std::size_t at;

  Step step() const { return run.steps[at]; }
  bool reads() const { return step() == Step::kRead || step() == Step::kLastRead; }
  bool first_after_flush() const;
  /// The second memory of the connection is the phone's own, which is not tolerant; nor is it needed.
  bool second_memory() const;
  bool tolerant() const { return procedure.tolerant() && !second_memory(); }
  /// Writes of the good run before this command.
  std::size_t writes_before() const;

  /// How the procedure ends with this fault here.
  Ends EndsWith(const FaultCase& fault) const;
  /// The line that the box shows after a failure: the fault's own, or the one before it, which is forgotten
  /// where lines are flushed before the command.
  std::string ShownLine(const FaultCase& fault) const;
};

}  // namespace celldesk::fault_walk
