#pragma once
// random_seeds.h - for properties over random programs: the same seeds in each run of the tests, and
// further ones for as long as somebody asks for.

#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>

namespace dl_test {

// Calls `test` with the seeds from 1 to `usual`; then, where the environment has
// ZAREL_RANDOM_SECONDS, with more until so many seconds are over. ZAREL_RANDOM_SEED is the first one
// instead of 1. Ends behind a failure.
template <typename Test>
void each_seed(unsigned usual, Test&& test) {
  const char* const seconds = std::getenv("ZAREL_RANDOM_SECONDS");
  const auto end = std::chrono::steady_clock::now() +
                   std::chrono::seconds(seconds == nullptr ? 0 : std::atoi(seconds));
  const char* const first = std::getenv("ZAREL_RANDOM_SEED");
  unsigned seed = first == nullptr ? 1 : static_cast<unsigned>(std::atoi(first));
  const unsigned last = first == nullptr ? usual : seed;
  while (seed <= last || std::chrono::steady_clock::now() < end) {
    test(seed);
    if (testing::Test::HasFailure()) FAIL() << "seed " << seed;
    ++seed;
  }
  if (seed > last + 1) testing::Test::RecordProperty("seeds", static_cast<int>(seed - 1));
}

}    // namespace dl_test
