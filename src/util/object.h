#pragma once

namespace celldesk {

/// Root of every class that is owned through a base pointer. One creator owns each object,
/// with std::unique_ptr or as a member; a reference elsewhere is borrowed.
class Object {
 public:
  Object() = default;
  virtual ~Object() = default;
  Object(const Object&) = default;
  Object& operator=(const Object&) = default;
};

}  // namespace celldesk
