// An invariant that stays checked in optimised fuzz builds: its failure is a crash the fuzzer records.
#pragma once
#include <cstdio>
#include <cstdlib>

#define FUZZ_CHECK(condition)                                                                                \
  do {                                                                                                       \
    if (!(condition)) {                                                                                      \
      std::fprintf(stderr, "%s:%d: broken: %s\n", __FILE__, __LINE__, #condition);                           \
      std::abort();                                                                                          \
    }                                                                                                        \
  } while (false)
