#pragma once

#include <optional>
#include <string>
#include <vector>

#include "simulator/phone.h"

namespace celldesk::simulator {

/// A message memory as the phone's habits let a client see it: one store, or a union of all of them. Indexes
/// are those of the line. Borrows the phone for one command.
class MessageMemory {
 public:
  /// Names of the memories that can be selected, in order.
  static std::vector<std::string> Names(const Phone& phone);

  MessageMemory(Phone& phone, const std::string& name);

  bool exists() const { return !parts_.empty(); }
  int used() const { return static_cast<int>(Indexes().size()); }
  int capacity() const;

  std::vector<int> Indexes() const;
  StoredMessage* Find(int index) const;
  /// The new index; nothing when there is no room.
  std::optional<int> Add(StoredMessage message);
  bool Remove(int index);

 private:
  struct Part {
    MessageStore* store;
    int shift;  // from a place in the store to its index on the line
    int capacity;
    int room;
  };

  void AddPart(Phone& phone, MessageStore& store);
  static int PlaceOf(const Part& part, int index);
  static bool Shows(const Part& part, int place);
  static bool HasRoom(const Part& part);

  std::vector<Part> parts_;
  int next_shift_ = 0;
};

}  // namespace celldesk::simulator
