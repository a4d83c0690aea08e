// explain_main.cc - the tests start clingo as dl does, so they can become it: see Note [bound to the
// life of dl].
#include <gtest/gtest.h>

#include "dl/child_process.h"

int main(int argc, char** argv) {
  if (argc > 3 && argv[1] == dl::kBecomeClingo) dl::become_clingo(argv + 2);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
