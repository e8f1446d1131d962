#include "console/FunctionKeys.h"

#include <array>
#include <span>

namespace torvane::console {

using toolkit::Key;

namespace {

/// One key of one state. `WhileLocked`: live even while the screens are locked.
struct KeyRow {
  Key Code;
  KeyCommand Command;
  int Number;
  bool WhileLocked;
};

constexpr std::array NormalKeys = {
    KeyRow{Key::F1, KeyCommand::OpenScreen, 1, false},
    KeyRow{Key::F2, KeyCommand::OpenScreen, 2, false},
    KeyRow{Key::F3, KeyCommand::OpenScreen, 3, false},
    KeyRow{Key::F4, KeyCommand::OpenScreen, 4, false},
    KeyRow{Key::F5, KeyCommand::OpenScreen, 5, false},
    KeyRow{Key::K, KeyCommand::OpenScreen, 5, false},
    KeyRow{Key::F6, KeyCommand::OpenScreen, 6, false},
    KeyRow{Key::F7, KeyCommand::EnterGraphics, 0, false},
    KeyRow{Key::F9, KeyCommand::OpenMessages, 0, true},
    KeyRow{Key::F10, KeyCommand::ChangeProgram, 1, false},
    KeyRow{Key::F11, KeyCommand::ChangeProgram, 2, false},
    KeyRow{Key::F12, KeyCommand::Shutdown, 0, true},
};

/// Graphics state, no mode on.
constexpr std::array IdleKeys = {
    KeyRow{Key::R, KeyCommand::GraphicsButton, 1, true},
    KeyRow{Key::Z, KeyCommand::GraphicsButton, 2, true},
    KeyRow{Key::O, KeyCommand::GraphicsButton, 3, true},
    KeyRow{Key::P, KeyCommand::GraphicsButton, 4, true},
    KeyRow{Key::L, KeyCommand::FlipLimits, 0, true},
    KeyRow{Key::K, KeyCommand::FlipKerf, 0, true},
    KeyRow{Key::X, KeyCommand::LeaveGraphics, 0, true},
    KeyRow{Key::F9, KeyCommand::OpenMessages, 0, true},
};

/// Zoom and pan: the cross moves.
constexpr std::array CursorKeys = {
    KeyRow{Key::L, KeyCommand::PathButton, 1, true},
    KeyRow{Key::Left, KeyCommand::PathButton, 1, true},
    KeyRow{Key::R, KeyCommand::PathButton, 2, true},
    KeyRow{Key::Right, KeyCommand::PathButton, 2, true},
    KeyRow{Key::U, KeyCommand::PathButton, 3, true},
    KeyRow{Key::Up, KeyCommand::PathButton, 3, true},
    KeyRow{Key::D, KeyCommand::PathButton, 4, true},
    KeyRow{Key::Down, KeyCommand::PathButton, 4, true},
    KeyRow{Key::S, KeyCommand::PathButton, 6, true},
    KeyRow{Key::C, KeyCommand::EnterGraphics, 0, true},
    KeyRow{Key::F9, KeyCommand::OpenMessages, 0, true},
};

/// Visual restart: a block is chosen along the path.
constexpr std::array RestartKeys = {
    KeyRow{Key::F, KeyCommand::PathButton, 1, true},
    KeyRow{Key::Home, KeyCommand::PathButton, 1, true},
    KeyRow{Key::P, KeyCommand::PathButton, 2, true},
    KeyRow{Key::Left, KeyCommand::PathButton, 2, true},
    KeyRow{Key::N, KeyCommand::PathButton, 3, true},
    KeyRow{Key::Right, KeyCommand::PathButton, 3, true},
    KeyRow{Key::L, KeyCommand::PathButton, 4, true},
    KeyRow{Key::End, KeyCommand::PathButton, 4, true},
    KeyRow{Key::T, KeyCommand::PathButton, 5, true},
    KeyRow{Key::Insert, KeyCommand::PathButton, 5, true},
    KeyRow{Key::S, KeyCommand::PathButton, 6, true},
    KeyRow{Key::C, KeyCommand::LeaveRestart, 0, true},
    KeyRow{Key::F9, KeyCommand::OpenMessages, 0, true},
};

std::span<const KeyRow> RowsOf(const core::ConsoleState& state) {
  if (!state.PlotKeysActive) return NormalKeys;
  switch (state.PlotKeyMode) {
    case 1:
    case 2:
    case 4:
      return CursorKeys;
    case 5:
    case 6:
    case 7:
    case 8:
      return RestartKeys;
    default:
      return IdleKeys;
  }
}

}  // namespace

KeyAction FunctionKeyAction(Key key, const core::ConsoleState& state) {
  for (const KeyRow& row : RowsOf(state)) {
    if (row.Code != key) continue;
    if (state.FormsLocked && !row.WhileLocked) return {};
    return {row.Command, row.Number};
  }
  return {};
}

}  // namespace torvane::console
