#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the process, which the fuzzer and the corpus test notice, when a property does not hold.
#define HOLDS(property)                                                                  \
  do {                                                                                   \
    if (!(property)) {                                                                   \
      std::fprintf(stderr, "%s:%d: does not hold: %s\n", __FILE__, __LINE__, #property); \
      std::abort();                                                                      \
    }                                                                                    \
  } while (false)
