#include "platform/vdir/vcard_reader.h"

#include "platform/vdir/ascii.h"
#include "platform/vdir/vcard_contact.h"

namespace celldesk {
namespace {

bool Is(const VcardLine& line, std::string_view name, std::string_view value) {
  return EqualAscii(line.name, name) && EqualAscii(TrimBlanks(line.value), value);
}

}  // namespace

// A vCard that begins in another one is its agent's after an empty AGENT property only; anywhere else the
// other's end is missing.
std::optional<ContactRecord> VcardReader::Next() {
  VcardContact contact;
  int depth = 0;
  bool agent_follows = false;
  while (const auto line = lines_.Next()) {
    if (Is(*line, "BEGIN", "VCARD")) {
      depth = agent_follows ? depth + 1 : 1;
      if (depth == 1) contact = {};
      if (depth == 1) lines_.set_fold_keeps_blank(false);
    } else if (Is(*line, "END", "VCARD") && depth > 0) {
      if (--depth == 0) return contact.Properties();
    } else if (Is(*line, "VERSION", "2.1")) {
      lines_.set_fold_keeps_blank(true);
    } else if (depth == 1) {
      contact.Take(*line);
    }
    agent_follows = depth > 0 && Is(*line, "AGENT", "");
  }
  return std::nullopt;
}

}  // namespace celldesk
