// parts_main.cc - the tests divide searches as dl does, so they can become its helpers.
#include <gtest/gtest.h>

#include "dl/parts/divided_search.h"

int main(int argc, char** argv) {
  dl::become_helper(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
