// Programs over the second serial port to the office, under the operator's eye.
//
//   shows       event                              next
//   ListFrame   &OK with programs marked           SendFrame, the first program is offered
//   ListFrame   &CANCEL                            unloaded
//   SendFrame   a program has gone or was aborted  the next one is offered; after the last,
//   unloaded
//
// While a program waits for its start ForceButton shows; while it goes out the bar does.
#pragma once

#include <vector>

#include "console/Screen.h"
#include "files/FileParts.h"
#include "files/Lists.h"
#include "files/SendScreen.h"

namespace torvane::console {

class SendForm final : public Screen, private files::SendScreen {
 public:
  explicit SendForm(const ScreenStart& start);

 private:
  void MakeListFrame();
  void MakeSendFrame();
  void ShowFrame(bool sending);
  void Loaded() override;
  void Unloaded() override;
  bool OtherKey(const toolkit::KeyStroke& stroke) override;

  void DirectoryChanged();
  void FillPrograms();
  void ShowCount();
  void OkPressed();

  // files::SendScreen
  void ShowSendText(std::string_view text) override;
  void ShowWaitingForStart() override;
  void ShowSending(int maximum) override;
  void ShowProgress(int value) override;
  void ShowRemaining(int percent, int seconds) override;
  void HideProgress() override;
  void WarnCannotSend(std::string_view name) override;

  toolkit::Frame* listFrame_ = nullptr;
  toolkit::ListBox* directories_ = nullptr;
  toolkit::ListBox* programs_ = nullptr;
  toolkit::Label* count_ = nullptr;
  toolkit::Button* ok_ = nullptr;
  toolkit::Button* exit_ = nullptr;
  toolkit::Frame* sendFrame_ = nullptr;
  toolkit::Label* sendLabel_ = nullptr;
  toolkit::ProgressBar* floodBar_ = nullptr;
  toolkit::Label* remaining_ = nullptr;
  toolkit::Button* force_ = nullptr;
  toolkit::Button* abort_ = nullptr;
  std::vector<Cell> listCells_;
  std::vector<Cell> sendCells_;
  files::ProgramList listed_;
  std::string directory_;  ///< whose programs the list shows
};

}  // namespace torvane::console
