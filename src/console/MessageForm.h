// What stands at the moment, and the help behind each message.
#pragma once

#include <array>

#include "console/Screen.h"
#include "platform/FileSystem.h"
#include "supervision/MessageHelp.h"
#include "supervision/MessageList.h"

namespace torvane::console {

class MessageForm final : public Screen {
 public:
  static constexpr const char* ScreenName = "MessageForm";

  MessageForm(ScreenSet& screens, platform::FileSystem& files, supervision::MessageList& messages);

  /// Shows the rows; called by the poll when the list was built anew.
  void ShowMessages(const supervision::MessageList& messages);

 private:
  void MakeRows();
  void ShowList(bool list);
  void HelpPressed();
  void ClearPressed();
  void Scroll(supervision::HelpKey key);
  void Activated() override;
  bool OtherKey(const toolkit::KeyStroke& stroke) override;
  void Layout(const toolkit::Metrics& metrics) override;

  platform::FileSystem& files_;
  supervision::MessageList& messages_;
  toolkit::Panel* messageBox_ = nullptr;
  toolkit::ListBox* helpBox_ = nullptr;
  std::array<toolkit::Label*, supervision::MessageRows> rows_{};
  toolkit::Button* help_ = nullptr;
  toolkit::Button* clear_ = nullptr;
  toolkit::Button* exit_ = nullptr;
  bool listShows_ = true;
};

}  // namespace torvane::console
