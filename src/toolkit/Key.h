// Key codes of the console and one key stroke, free of the window system.
#pragma once

class QKeyEvent;

namespace torvane::toolkit {

/// One code a key. Letters and digits have the code of their capital or digit, on either keypad.
enum class Key : int {
  None = 0,
  Backspace = 8,
  Tab = 9,
  Enter = 13,
  Shift = 16,
  Control = 17,
  Alt = 18,
  CapsLock = 20,
  Escape = 27,
  Space = 32,
  PageUp = 33,
  PageDown = 34,
  End = 35,
  Home = 36,
  Left = 37,
  Up = 38,
  Right = 39,
  Down = 40,
  Insert = 45,
  Delete = 46,
  Digit0 = 48,
  Digit9 = 57,
  A = 65,
  B,
  C,
  D,
  E,
  F,
  G,
  H,
  I,
  J,
  K,
  L,
  M,
  N,
  O,
  P,
  Q,
  R,
  S,
  T,
  U,
  V,
  W,
  X,
  Y,
  Z,
  F1 = 112,
  F2,
  F3,
  F4,
  F5,
  F6,
  F7,
  F8,
  F9,
  F10,
  F11,
  F12
};

/// The key that types this character: letters in either case, digits, space; Key::None for others.
[[nodiscard]] Key KeyOf(char character);

/// True for F1 to F12.
[[nodiscard]] bool IsFunctionKey(Key key);

/// One stroke. `Character` is the Latin-1 character that it types, 8 for Backspace, 13 for Enter,
/// 0 when it types none.
struct KeyStroke {
  Key Code = Key::None;
  char Character = 0;
  bool Shift = false;
  bool Control = false;
  bool Alt = false;
  bool Repeat = false;  ///< the key is being held

  KeyStroke() = default;
  /// A plain stroke; letters type their capital, digits and space themselves.
  explicit KeyStroke(Key code);
  /// A stroke that types a character.
  explicit KeyStroke(char character);
};

/// The stroke of a window system's key event.
[[nodiscard]] KeyStroke StrokeOf(const QKeyEvent& event);

}  // namespace torvane::toolkit
