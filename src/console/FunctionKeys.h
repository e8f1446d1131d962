// The global keys of the console: what each does in the normal state and in the graphics state.
#pragma once

#include <initializer_list>

#include "core/System.h"
#include "toolkit/Key.h"

namespace torvane::console {

/// What a global key asks for. `Number` of KeyAction says which where there are several.
enum class KeyCommand {
  None,
  OpenScreen,     ///< main key 1 to 6
  EnterGraphics,  ///< also back to the first graphics state from a mode
  OpenMessages,
  ChangeProgram,  ///< slot 1 or 2
  Shutdown,
  GraphicsButton,  ///< 1 to 4
  FlipLimits,
  FlipKerf,
  LeaveGraphics,
  PathButton,   ///< 1 to 6
  LeaveRestart  ///< leave the visual restart and clean up after it
};

struct KeyAction {
  KeyCommand Command = KeyCommand::None;
  int Number = 0;

  friend bool operator==(const KeyAction&, const KeyAction&) = default;
};

/// The action of a key in this state; None for a key that is dead in it.
[[nodiscard]] KeyAction FunctionKeyAction(toolkit::Key key, const core::ConsoleState& state);

/// A set of the global keys: F1 to F12 and K. Any other key is in no set.
class KeyMask {
 public:
  constexpr KeyMask() = default;
  constexpr KeyMask(std::initializer_list<toolkit::Key> keys) {
    for (const toolkit::Key key : keys) bits_ = bits_ | Bit(key);
  }

  [[nodiscard]] constexpr bool Holds(toolkit::Key key) const { return (bits_ & Bit(key)) != 0; }
  [[nodiscard]] constexpr KeyMask With(KeyMask more) const { return KeyMask(bits_ | more.bits_); }
  [[nodiscard]] constexpr KeyMask Without(KeyMask less) const {
    return KeyMask(bits_ & ~less.bits_);
  }

 private:
  explicit constexpr KeyMask(unsigned bits) : bits_(bits) {}
  static constexpr unsigned Bit(toolkit::Key key) {
    if (key == toolkit::Key::K) return 1U;
    if (key < toolkit::Key::F1 || key > toolkit::Key::F12) return 0U;
    return 2U << (static_cast<unsigned>(key) - static_cast<unsigned>(toolkit::Key::F1));
  }

  unsigned bits_ = 0;
};

/// Sets that several screens hand on to the global keys.
namespace GlobalKeys {
inline constexpr KeyMask None{};  ///< the pads and the dialogs
inline constexpr KeyMask AllButK{toolkit::Key::F1,  toolkit::Key::F2,  toolkit::Key::F3,
                                 toolkit::Key::F4,  toolkit::Key::F5,  toolkit::Key::F6,
                                 toolkit::Key::F7,  toolkit::Key::F8,  toolkit::Key::F9,
                                 toolkit::Key::F10, toolkit::Key::F11, toolkit::Key::F12};
inline constexpr KeyMask All = AllButK.With({toolkit::Key::K});
/// The slot cannot be changed from these screens.
inline constexpr KeyMask NoSlots = All.Without({toolkit::Key::F10, toolkit::Key::F11});
}  // namespace GlobalKeys

}  // namespace torvane::console
