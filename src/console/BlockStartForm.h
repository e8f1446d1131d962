// The listing of the slot in force, from which the operator takes the block to go on with.
#pragma once

#include "console/Screen.h"

namespace torvane::console {

class BlockStartForm final : public Screen {
 public:
  explicit BlockStartForm(const ScreenStart& start);

 private:
  void Loaded() override;
  void Unloaded() override;
  bool OtherKey(const toolkit::KeyStroke& stroke) override;
  void SelectPressed();
  void PagePressed(int index);

  toolkit::ListBox* list_ = nullptr;
  toolkit::Button* select_ = nullptr;
};

}  // namespace torvane::console
