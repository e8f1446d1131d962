// The global keys without a window: each state's table, and what each screen hands on.
#include <gtest/gtest.h>

#include "console/FunctionKeys.h"

namespace torvane::console {
namespace {

using toolkit::Key;

core::ConsoleState Normal() { return {}; }

core::ConsoleState Graphics(std::int16_t mode) {
  core::ConsoleState state;
  state.PlotKeysActive = true;
  state.PlotKeyMode = mode;
  return state;
}

std::vector<Key> EveryKey() {
  std::vector<Key> keys;
  for (int code = 1; code <= 123; ++code) keys.push_back(static_cast<Key>(code));
  return keys;
}

/// All keys that do something in a state.
std::vector<Key> LiveKeys(const core::ConsoleState& state) {
  std::vector<Key> live;
  for (const Key key : EveryKey()) {
    if (FunctionKeyAction(key, state).Command != KeyCommand::None) live.push_back(key);
  }
  return live;
}

TEST(FunctionKeys, OfTheNormalState) {
  const auto state = Normal();
  const auto opens = [](int number) { return KeyAction{KeyCommand::OpenScreen, number}; };
  EXPECT_EQ(FunctionKeyAction(Key::F1, state), opens(1));
  EXPECT_EQ(FunctionKeyAction(Key::F2, state), opens(2));
  EXPECT_EQ(FunctionKeyAction(Key::F3, state), opens(3));
  EXPECT_EQ(FunctionKeyAction(Key::F4, state), opens(4));
  EXPECT_EQ(FunctionKeyAction(Key::F5, state), opens(5));
  EXPECT_EQ(FunctionKeyAction(Key::K, state), opens(5));
  EXPECT_EQ(FunctionKeyAction(Key::F6, state), opens(6));
  EXPECT_EQ(FunctionKeyAction(Key::F7, state), (KeyAction{KeyCommand::EnterGraphics, 0}));
  EXPECT_EQ(FunctionKeyAction(Key::F9, state), (KeyAction{KeyCommand::OpenMessages, 0}));
  EXPECT_EQ(FunctionKeyAction(Key::F10, state), (KeyAction{KeyCommand::ChangeProgram, 1}));
  EXPECT_EQ(FunctionKeyAction(Key::F11, state), (KeyAction{KeyCommand::ChangeProgram, 2}));
  EXPECT_EQ(FunctionKeyAction(Key::F12, state), (KeyAction{KeyCommand::Shutdown, 0}));
  EXPECT_EQ(LiveKeys(state).size(), 12U) << "nothing else, F8 and Escape among it";
}

TEST(FunctionKeys, OnlyMessagesAndShutdownAreLiveWhileTheScreensAreLocked) {
  auto state = Normal();
  state.FormsLocked = true;
  EXPECT_EQ(LiveKeys(state), (std::vector<Key>{Key::F9, Key::F12}));
}

TEST(FunctionKeys, F8AndEscapeDoNothingInAnyState) {
  for (std::int16_t mode = 0; mode <= 8; ++mode) {
    for (const auto& state : {Normal(), Graphics(mode)}) {
      EXPECT_EQ(FunctionKeyAction(Key::F8, state), KeyAction{});
      EXPECT_EQ(FunctionKeyAction(Key::Escape, state), KeyAction{});
    }
  }
}

TEST(FunctionKeys, TheFunctionKeysButF9AreDeadInTheGraphicsState) {
  for (std::int16_t mode = 0; mode <= 8; ++mode) {
    for (int number = 0; number < 12; ++number) {
      const auto key = static_cast<Key>(static_cast<int>(Key::F1) + number);
      const auto wanted = key == Key::F9 ? KeyCommand::OpenMessages : KeyCommand::None;
      EXPECT_EQ(FunctionKeyAction(key, Graphics(mode)).Command, wanted) << mode << " F" << number;
    }
  }
}

struct KeyCase {
  Key Code;
  KeyCommand Command;
  int Number;
};

void ExpectKeys(const core::ConsoleState& state, const std::vector<KeyCase>& rows) {
  for (const auto& row : rows) {
    EXPECT_EQ(FunctionKeyAction(row.Code, state), (KeyAction{row.Command, row.Number}))
        << static_cast<int>(row.Code) << " in mode " << state.PlotKeyMode;
  }
  EXPECT_EQ(LiveKeys(state).size(), rows.size()) << "in mode " << state.PlotKeyMode;
}

TEST(FunctionKeys, OfTheGraphicsStateWithoutAMode) {
  ExpectKeys(Graphics(0), {{Key::R, KeyCommand::GraphicsButton, 1},
                           {Key::Z, KeyCommand::GraphicsButton, 2},
                           {Key::O, KeyCommand::GraphicsButton, 3},
                           {Key::P, KeyCommand::GraphicsButton, 4},
                           {Key::L, KeyCommand::FlipLimits, 0},
                           {Key::K, KeyCommand::FlipKerf, 0},
                           {Key::X, KeyCommand::LeaveGraphics, 0},
                           {Key::F9, KeyCommand::OpenMessages, 0}});
}

TEST(FunctionKeys, OfZoomAndPan) {
  for (const std::int16_t mode : {std::int16_t{1}, std::int16_t{2}, std::int16_t{4}}) {
    ExpectKeys(Graphics(mode), {{Key::L, KeyCommand::PathButton, 1},
                                {Key::Left, KeyCommand::PathButton, 1},
                                {Key::R, KeyCommand::PathButton, 2},
                                {Key::Right, KeyCommand::PathButton, 2},
                                {Key::U, KeyCommand::PathButton, 3},
                                {Key::Up, KeyCommand::PathButton, 3},
                                {Key::D, KeyCommand::PathButton, 4},
                                {Key::Down, KeyCommand::PathButton, 4},
                                {Key::S, KeyCommand::PathButton, 6},
                                {Key::C, KeyCommand::EnterGraphics, 0},
                                {Key::F9, KeyCommand::OpenMessages, 0}});
  }
}

TEST(FunctionKeys, OfTheVisualRestart) {
  for (std::int16_t mode = 5; mode <= 8; ++mode) {
    ExpectKeys(Graphics(mode), {{Key::F, KeyCommand::PathButton, 1},
                                {Key::Home, KeyCommand::PathButton, 1},
                                {Key::P, KeyCommand::PathButton, 2},
                                {Key::Left, KeyCommand::PathButton, 2},
                                {Key::N, KeyCommand::PathButton, 3},
                                {Key::Right, KeyCommand::PathButton, 3},
                                {Key::L, KeyCommand::PathButton, 4},
                                {Key::End, KeyCommand::PathButton, 4},
                                {Key::T, KeyCommand::PathButton, 5},
                                {Key::Insert, KeyCommand::PathButton, 5},
                                {Key::S, KeyCommand::PathButton, 6},
                                {Key::C, KeyCommand::LeaveRestart, 0},
                                {Key::F9, KeyCommand::OpenMessages, 0}});
  }
}

std::vector<Key> HandedOn(KeyMask set) {
  std::vector<Key> keys;
  for (const Key key : EveryKey()) {
    if (set.Holds(key)) keys.push_back(key);
  }
  return keys;
}

TEST(FunctionKeys, EachSetHandsOnItsOwnKeys) {
  const std::vector<Key> all = {Key::K,  Key::F1, Key::F2, Key::F3,  Key::F4,  Key::F5, Key::F6,
                                Key::F7, Key::F8, Key::F9, Key::F10, Key::F11, Key::F12};
  EXPECT_EQ(HandedOn(GlobalKeys::All), all);
  EXPECT_EQ(HandedOn(GlobalKeys::AllButK), std::vector<Key>(all.begin() + 1, all.end()));
  EXPECT_EQ(HandedOn(GlobalKeys::NoSlots),
            (std::vector<Key>{Key::K, Key::F1, Key::F2, Key::F3, Key::F4, Key::F5, Key::F6, Key::F7,
                              Key::F8, Key::F9, Key::F12}));
  EXPECT_TRUE(HandedOn(GlobalKeys::None).empty());
}

}  // namespace
}  // namespace torvane::console
