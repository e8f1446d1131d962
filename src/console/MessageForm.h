// The messages in force, and the help behind each message.
#pragma once

#include <vector>

#include "console/Screen.h"
#include "supervision/MessageHelp.h"
#include "supervision/MessageList.h"

namespace torvane::console {

class MessageForm final : public Screen {
 public:
  explicit MessageForm(const ScreenStart& start);

 private:
  void ShowRows();
  void ShowList(bool list);
  void HelpPressed();
  void ClearPressed();
  void Scroll(supervision::HelpKey key);
  void Activated() override;
  bool OtherKey(const toolkit::KeyStroke& stroke) override;

  supervision::MessageList& messages_;
  toolkit::Panel* messageBox_ = nullptr;
  toolkit::ListBox* helpBox_ = nullptr;
  std::vector<toolkit::Label*> rows_;
  toolkit::Button* help_ = nullptr;
  bool listShows_ = true;
};

}  // namespace torvane::console
