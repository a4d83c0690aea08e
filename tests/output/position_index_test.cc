// The hash table of positions.

#include "output/position_index.h"

#include <gtest/gtest.h>

namespace zarel {
namespace {

TEST(PositionIndex, FindsTheEntryThatMatchesOfThoseOfOneHash) {
  PositionIndex index;
  const auto any = [](std::uint32_t) { return true; };
  EXPECT_EQ(index.find(7, any), PositionIndex::kNone);
  index.insert(7, 0);
  EXPECT_EQ(index.find(7, any), 0U);
  EXPECT_EQ(index.find(7 + 64, any), PositionIndex::kNone);    // the same slot
  for (std::uint32_t i = 1; i < 1000; ++i) index.insert(7 + i % 10, i);
  for (std::uint32_t i = 1; i < 1000; ++i)
    EXPECT_EQ(index.find(7 + i % 10, [i](std::uint32_t position) { return position == i; }), i);
  index.clear();
  EXPECT_EQ(index.find(7, any), PositionIndex::kNone);
}

}    // namespace
}    // namespace zarel
