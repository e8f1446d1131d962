#include "toolkit/Key.h"

#include <QKeyEvent>
#include <array>
#include <cctype>
#include <utility>

namespace torvane::toolkit {

namespace {

constexpr std::array Named = {
    std::pair{Qt::Key_Backspace, Key::Backspace},
    std::pair{Qt::Key_Tab, Key::Tab},
    std::pair{Qt::Key_Backtab, Key::Tab},
    std::pair{Qt::Key_Return, Key::Enter},
    std::pair{Qt::Key_Enter, Key::Enter},
    std::pair{Qt::Key_Shift, Key::Shift},
    std::pair{Qt::Key_Control, Key::Control},
    std::pair{Qt::Key_Alt, Key::Alt},
    std::pair{Qt::Key_CapsLock, Key::CapsLock},
    std::pair{Qt::Key_Escape, Key::Escape},
    std::pair{Qt::Key_Space, Key::Space},
    std::pair{Qt::Key_PageUp, Key::PageUp},
    std::pair{Qt::Key_PageDown, Key::PageDown},
    std::pair{Qt::Key_End, Key::End},
    std::pair{Qt::Key_Home, Key::Home},
    std::pair{Qt::Key_Left, Key::Left},
    std::pair{Qt::Key_Up, Key::Up},
    std::pair{Qt::Key_Right, Key::Right},
    std::pair{Qt::Key_Down, Key::Down},
    std::pair{Qt::Key_Insert, Key::Insert},
    std::pair{Qt::Key_Delete, Key::Delete},
};

Key CodeOf(int qtKey) {
  if ((qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) || (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9)) {
    return static_cast<Key>(qtKey);
  }
  if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F12) {
    return static_cast<Key>(static_cast<int>(Key::F1) + qtKey - Qt::Key_F1);
  }
  for (const auto& [from, to] : Named) {
    if (from == qtKey) return to;
  }
  return Key::None;
}

/// The control characters that a stroke of these keys types.
char ControlCharacter(Key code) {
  if (code == Key::Backspace || code == Key::Enter) return static_cast<char>(code);
  return 0;
}

char TypedBy(const QKeyEvent& event, Key code) {
  if (const char control = ControlCharacter(code)) return control;
  if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return 0;
  const QString text = event.text();
  if (text.size() != 1) return 0;
  const char16_t unit = text.at(0).unicode();
  const bool printable = (unit >= 32 && unit < 127) || (unit >= 160 && unit <= 255);
  return printable ? static_cast<char>(unit) : '\0';
}

}  // namespace

Key KeyOf(char character) {
  const auto unit = static_cast<unsigned char>(character);
  if (unit < 128 && (std::isalnum(unit) || unit == ' ')) {
    return static_cast<Key>(std::toupper(unit));
  }
  return Key::None;
}

bool IsFunctionKey(Key key) { return key >= Key::F1 && key <= Key::F12; }

KeyStroke::KeyStroke(Key code) : Code(code), Character(ControlCharacter(code)) {
  const int value = static_cast<int>(code);
  const bool letter = code >= Key::A && code <= Key::Z;
  const bool digit = code >= Key::Digit0 && code <= Key::Digit9;
  if (letter || digit || code == Key::Space) Character = static_cast<char>(value);
}

KeyStroke::KeyStroke(char character) : Code(KeyOf(character)), Character(character) {
  if (character == 8) Code = Key::Backspace;
  if (character == 13) Code = Key::Enter;
}

KeyStroke StrokeOf(const QKeyEvent& event) {
  KeyStroke stroke;
  stroke.Code = CodeOf(event.key());
  stroke.Character = TypedBy(event, stroke.Code);
  stroke.Shift = event.modifiers().testFlag(Qt::ShiftModifier);
  stroke.Control = event.modifiers().testFlag(Qt::ControlModifier);
  stroke.Alt = event.modifiers().testFlag(Qt::AltModifier);
  stroke.Repeat = event.isAutoRepeat();
  return stroke;
}

}  // namespace torvane::toolkit
