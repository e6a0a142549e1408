#pragma once

#include <string>

#include "platform/contacts_database.h"
#include "platform/vdir/vcard_lines.h"

namespace celldesk {

/// Gathers the lines of one vCard into a contact. The first text of each kind counts.
class VcardContact {
 public:
  void Take(const VcardLine& line);
  /// The properties that the vCard has, none of them empty.
  ContactRecord Properties() const;

 private:
  void TakeName(const VcardLine& line);
  void TakeNumber(const VcardLine& line);
  bool RepeatsAnother(const std::u16string& text) const;
  /// The home number, or the first of an unknown kind when there is none.
  const std::u16string& HomeNumber() const;
  std::u16string Surname() const;

  bool is_version_4_ = false;
  std::u16string family_;
  std::u16string given_;
  std::u16string additional_;
  std::u16string formatted_;
  std::u16string mobile_;
  std::u16string business_;
  std::u16string home_;
  std::u16string other_;  // a number that is none of these
  std::u16string company_;
};

}  // namespace celldesk
