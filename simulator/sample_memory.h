#pragma once

#include "simulator/phone_memory.h"

namespace celldesk::simulator {

/// A phone in use: people in both books, messages of every kind in both stores. Names and numbers are made up
/// (the numbers are of ranges reserved for fiction).
PhoneMemory SampleMemory();

}  // namespace celldesk::simulator
