// The user keypad: sixteen keys that the machine builder has defined.
#pragma once

#include <array>

#include "console/Screen.h"
#include "supervision/Keypad.h"

namespace torvane::console {

class UserForm final : public Screen {
 public:
  explicit UserForm(const ScreenStart& start);

 private:
  /// A key is a button or a toggle; the other one hides.
  struct UserKey {
    toolkit::Button* Button = nullptr;
    toolkit::TwoStateButton* Check = nullptr;
  };

  [[nodiscard]] Cell MakeKey(int key);
  [[nodiscard]] UserKey& KeyOf(int key) { return keys_[static_cast<std::size_t>(key - 1)]; }
  void TakeKey(int key);
  void CheckChanged(int key);
  /// Reads the variable and shows the key. False when the screen has gone or the file was read
  /// anew.
  bool ShowKeypadEntry(int key);
  void ShowKey(int key);
  /// Keys that the machine's state forbids look it; they stay silent.
  void DimKeys();
  void DimKey(int key);

  void Activated() override;

  supervision::Keypad keypad_;
  std::array<UserKey, core::KeypadKeys> keys_{};
};

}  // namespace torvane::console
