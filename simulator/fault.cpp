#include "simulator/fault.h"

#include <array>
#include <utility>

#include "simulator/ascii.h"

namespace celldesk::simulator {
namespace {

constexpr std::array<std::pair<std::string_view, FaultKind>, 14> kKinds{
    {{"error", FaultKind::kError},
     {"cms-error", FaultKind::kMessageError},
     {"cme-error", FaultKind::kPhoneError},
     {"silence", FaultKind::kSilence},
     {"half-line", FaultKind::kHalfLine},
     {"noise", FaultKind::kNoise},
     {"unsolicited", FaultKind::kUnsolicited},
     {"wrong-index", FaultKind::kWrongIndex},
     {"duplicate-line", FaultKind::kDuplicateLine},
     {"late", FaultKind::kLate},
     {"split", FaultKind::kSplit},
     {"delay", FaultKind::kDelay},
     {"hang-up", FaultKind::kHangUp},
     {"hang-up-back", FaultKind::kHangUpBack}}};

std::optional<FaultKind> ParseKind(std::string_view name) {
  for (const auto& [known, kind] : kKinds) {
    if (known == name) return kind;
  }
  return std::nullopt;
}

bool ParseStep(std::string_view step, Fault& fault) {
  if (step.empty()) return false;
  if (step == "*") return true;
  if (const auto line = ParseNumber(step)) {
    fault.line = *line;
    return *line >= 1;
  }
  const auto mark = step.rfind('#');
  const auto occurrence = mark == step.npos ? std::nullopt : ParseNumber(step.substr(mark + 1));
  fault.occurrence = occurrence.value_or(0);
  fault.prefix = step.substr(0, occurrence ? mark : step.npos);
  if (fault.prefix == "*") fault.prefix.clear();
  return fault.occurrence >= 0;
}

/// Kinds whose argument is numbers; the others take a text.
bool ArgumentFits(const Fault& fault) {
  if (fault.argument.empty() || fault.kind == FaultKind::kUnsolicited ||
      fault.kind == FaultKind::kWrongIndex) {
    return true;
  }
  for (const std::string& part : Split(fault.argument, ',')) {
    const auto number = ParseNumber(part);
    if (!number || *number < 0) return false;
  }
  return true;
}

}  // namespace

int Fault::Number(std::size_t n, int missing) const {
  const auto parts = Split(argument, ',');
  return n < parts.size() ? ParseNumber(parts[n]).value_or(missing) : missing;
}

std::optional<Fault> ParseFault(std::string_view text) {
  const auto step_end = text.find(':');
  if (step_end == text.npos) return std::nullopt;
  const std::string_view rest = text.substr(step_end + 1);
  const auto kind_end = rest.find(':');
  const auto kind = ParseKind(rest.substr(0, kind_end));
  Fault fault;
  if (!kind || !ParseStep(text.substr(0, step_end), fault)) return std::nullopt;
  fault.kind = *kind;
  if (kind_end != rest.npos) fault.argument = rest.substr(kind_end + 1);
  return ArgumentFits(fault) ? std::optional(fault) : std::nullopt;
}

std::vector<std::string> FaultKindNames() {
  std::vector<std::string> names;
  names.reserve(kKinds.size());
  for (const auto& [name, kind] : kKinds) names.emplace_back(name);
  return names;
}

std::vector<Fault> FaultPlan::Next(std::string_view line) {
  ++lines_;
  std::vector<Fault> faults;
  for (auto& [fault, seen] : entries_) {
    if (fault.line == 0 && !StartsWithIgnoringCase(line, fault.prefix)) continue;
    ++seen;
    const bool now =
        fault.line != 0 ? fault.line == lines_ : fault.occurrence == 0 || fault.occurrence == seen;
    if (now) faults.push_back(fault);
  }
  return faults;
}

}  // namespace celldesk::simulator
