#pragma once

#include "data/address_book.h"
#include "ui/framework/dialog.h"

namespace celldesk {

/// Edits a copy of one entry: name, number and memory assignment.
class AddressEditDialog : public Dialog {
 public:
  /// `book` gives the limits and the free slots and is borrowed for the dialog's life; `entry` is what it
  /// starts with.
  AddressEditDialog(const AddressBook& book, const AddressEntry& entry, int title);

  /// The entry as the fields left it.
  const AddressEntry& entry() const { return entry_; }

  bool OnInitDialog(int focus, LongParameter parameter) override;
  bool UpdateData(bool save) override;
  void OnCommand(int command, LongParameter parameter) override;

 private:
  void FillAssignments();

  const AddressBook& book_;
  AddressEntry entry_;
  int title_;
};

}  // namespace celldesk
