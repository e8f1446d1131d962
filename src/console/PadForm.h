// What both pads share: the box, the cursor and delete keys, OK and CANCEL, typed keys.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "console/PadEditing.h"
#include "console/Pads.h"
#include "console/Screen.h"

namespace torvane::console {

/// Height of a key of the pads, pixels of the drawing.
inline constexpr double PadKeyHigh = 60;

/// The mode is kept for the length of the call. Focus is always in the box.
class PadForm : public Screen {
 protected:
  PadForm(const ScreenStart& start, const char* boxName);

  /// A key of the pad that types a character.
  toolkit::Button& AddPadKey(const std::string& name, const std::string& caption, Role role,
                             std::function<int()> character);
  /// Puts a character in, by the filter of the mode. A rejected one beeps and ends the text at the
  /// cursor.
  void Insert(int character);
  /// Result, text, unload.
  void Accept(const std::string& text);
  [[nodiscard]] std::string TrimmedText() const;
  /// The entry box over the keys, beside them the cursor and delete keys, below them the row of the
  /// comes after what else is in it. `width` of the keys and of the side, pixels of the
  /// drawing.
  void Arrange(double keysWide, const Cell& keys, double sideWide, std::vector<Cell> lastRow);

  /// OK was pressed.
  virtual void OkPressed() = 0;
  /// The character that a typed one stands for.
  [[nodiscard]] virtual char Typed(char character) const { return character; }
  void Activated() override;

 private:
  void MakeCommonKeys();
  void Apply(PadText (*edit)(PadText));
  [[nodiscard]] PadText Current() const;
  void Show(const PadText& text);
  bool OtherKey(const toolkit::KeyStroke& stroke) override;

  std::shared_ptr<PadEntry> entry_;
  int mode_;
  toolkit::EntryBox* box_ = nullptr;
  std::array<toolkit::Button*, 2> cursorButtons_{};
  std::array<toolkit::Button*, 2> deleteButtons_{};
  toolkit::Button* ok_ = nullptr;
  toolkit::Button* cancel_ = nullptr;
};

}  // namespace torvane::console
