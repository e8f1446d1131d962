#include <string>

#include <gtest/gtest.h>

#include "core/Slot.h"

namespace torvane::core {
namespace {

TEST(SlotNumber, IsOneAtTheStart) { EXPECT_EQ(Slot().Number(), 1); }

TEST(SlotNumber, AnyNumberButTwoIsSlotOne) {
  for (const int number : {-1, 0, 1, 3, 12, 32767}) EXPECT_EQ(Slot(number).Number(), 1) << number;
  EXPECT_EQ(Slot(2).Number(), 2);
}

TEST(SlotNumber, TheOtherOfTheOtherIsTheSlotItself) {
  for (const Slot slot : BothSlots) {
    EXPECT_NE(slot.Other(), slot);
    EXPECT_EQ(slot.Other().Other(), slot);
  }
}

TEST(SlotNumber, IsNotTheSameAsANumberOfNoSlot) {
  EXPECT_FALSE(Slot(1) == 0);
  EXPECT_FALSE(Slot(1) == 3);
  EXPECT_TRUE(Slot(2) == 2);
}

TEST(BySlotOf, EachSlotHasItsOwnValue) {
  BySlot<std::string> names{"one", "two"};
  names[2] += "!";
  EXPECT_EQ(names[1], "one");
  EXPECT_EQ(names[Slot(1).Other()], "two!");
}

}  // namespace
}  // namespace torvane::core
