#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace celldesk {

/// Of a walk's faults those after which an answer is missing, or comes too late.
template <class FaultCase>
std::vector<FaultCase> MissedAnswers(const std::vector<FaultCase>& faults) {
  using Effect = decltype(FaultCase::effect);
  std::vector<FaultCase> missed;
  std::copy_if(faults.begin(), faults.end(), std::back_inserter(missed), [](const FaultCase& fault) {
    return fault.effect == Effect::kNoReply || fault.effect == Effect::kTooLate;
  });
  return missed;
}

/// Tells how many cases a walk had.
inline void ReportCases(const std::string& walk, int cases) {
  testing::Test::RecordProperty("cases", cases);
  std::cout << walk << ": " << cases << " cases\n";
}

}  // namespace celldesk
