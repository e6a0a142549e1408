#pragma once

#include <random>
#include <string>
#include <vector>

#include "simulator/emission.h"
#include "simulator/fault.h"
#include "simulator/phone.h"

namespace celldesk::simulator {

/// Puts replies on the line: line ends, result codes, the phone's habits and the faults of the step.
class ReplyWriter {
 public:
  explicit ReplyWriter(unsigned seed) : random_(seed) {}

  std::vector<Emission> Write(const Phone& phone, Reply reply, const std::vector<Fault>& faults);
  std::string WriteNotice(const Phone& phone, const Notice& notice) const;

 private:
  void BendLines(Reply& reply, const Fault& fault);
  std::vector<Emission> BendBytes(std::vector<Emission> emissions, const Fault& fault);
  std::string WithNoise(std::string bytes, int count);
  std::string NextWrongIndex(const Fault& fault);

  std::mt19937 random_;
  std::size_t wrong_index_ = 0;
};

}  // namespace celldesk::simulator
