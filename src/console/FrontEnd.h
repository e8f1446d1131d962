// The main screen: the plot, the live figures, the text lines and the rows of keys.
#pragma once

#include <array>
#include <functional>

#include "console/PlotModes.h"
#include "console/Screen.h"
#include "core/Slot.h"
#include "graphics/DrawingModule.h"
#include "supervision/MessageButton.h"
#include "toolkit/PlotCanvas.h"

namespace torvane::console {

/// What the main screen leads to.
class FrontEndActions {
 public:
  virtual ~FrontEndActions() = default;

  /// A program button, or F10 and F11.
  virtual void ChangeActiveProgram(core::Slot slot) = 0;

  /// The main screen came to the front: the splash screen goes, the poll starts.
  virtual void MainScreenShown() = 0;

  /// KerfButton and LimitsButton changed.
  virtual void KerfButtonChanged(bool pressed) = 0;
  virtual void LimitsButtonChanged(bool pressed) = 0;

  /// Redraws a slot's plot and starts its run time again (REDRAW).
  virtual void RefreshPlot(core::Slot slot) = 0;

  /// The canvases lost their pixels.
  virtual void RedrawPlot(core::Slot slot) = 0;
};

/// Made once at start, before it shows: the plots of both slots are drawn on it while the splash
/// screen stands.
class FrontEnd final : public Screen, public graphics::PlotButtons, private PlotModeView {
 public:
  explicit FrontEnd(const ScreenStart& start);

  /// Canvas of slot 1 or 2.
  [[nodiscard]] toolkit::PlotCanvas& PlotBox(core::Slot slot) { return *plotBoxes_[slot]; }

  /// Shows header, plot of the active slot and focus; tells the actions that it is up.
  void ShowMainForm();

  /// The active slot's canvas in front, the other behind.
  void BringPlotForward(core::Slot slot);

  /// PositionText 1 to 6.
  void SetPositionText(int index, const std::string& text);
  /// The lamp in the header that tells of data on the second port; an empty text puts it off.
  void ShowReceiveLamp(const std::string& text);
  [[nodiscard]] const std::string& PositionText(int index) const;

  [[nodiscard]] std::uint32_t MessageBackground() const { return messageButton_->Background(); }
  void PaintMessageButton(std::uint32_t background, std::uint32_t text) {
    messageButton_->SetColours(background, text);
  }

  void MarkMessageButton(supervision::MessageState state);

  void SetProgramCaption(core::Slot slot, const std::string& caption);
  /// Presses the slot's program button without its event and lets the other up.
  void ShowActiveSlot(core::Slot slot);

  void SetTextLine(const std::string& text) override { textPanel_->SetCaption(text); }

  /// MainButton 1 to 7: nothing while the screens are locked.
  void OpenMain(int index);

  /// The graphics state.
  [[nodiscard]] PlotModes& Modes() { return modes_; }
  /// The key of a two-state button flips it, as a press does: not while it is hidden or disabled.
  void FlipKerf();
  void FlipLimits();
  /// ShutdownButton: the shutdown question, or out of the graphics state or its mode.
  void ShutdownPressed();
  void OpenMessages();
  /// PathButton 1 to 6, of the modes that steer the plot.
  [[nodiscard]] toolkit::Button& PathButton(int index) { return *pathButtons_[Index(index)]; }
  [[nodiscard]] toolkit::Button& GraphicsButton(int index) {
    return *graphicsButtons_[Index(index)];
  }

  // graphics::PlotButtons
  void SetKerfButton(bool pressed) override;
  void SetLimitsButton(bool pressed) override;

 private:
  static std::size_t Index(int index) { return static_cast<std::size_t>(index - 1); }

  void SetUpFrontEnd();
  void MakePlot();
  void MakePositions();
  void MakeKeys();
  void MakeGraphicsKeys();

  // PlotModeView
  void ShowKeyStrip(KeyStrip strip) override;
  void EnableGraphicsKeys(bool enabled) override;
  void ShowFigures(bool shown) override { positionBox_->SetVisible(shown); }
  void ShowProgramButtons(bool shown) override;
  void PressProgramButtons(bool pressed) override;
  void SetPathKeys(const PathCaptions& captions) override;
  void FocusPathKey() override { pathButtons_[0]->SetFocus(); }
  [[nodiscard]] platform::Canvas& PlotCanvasOf(core::Slot slot) override {
    return PlotBox(slot).Canvas();
  }
  void SetStatusLine(const std::string& text) override { statusPanel_->SetCaption(text); }
  void SetShutdownCaption(const char* caption) override { shutdownButton_->SetCaption(caption); }
  void RefreshScreen() override;
  void RefreshPlot(core::Slot slot) override { actions_.RefreshPlot(slot); }

  /// Runs a press of this screen: then the focus goes to the plot and no open screen stays hidden.
  Handler Press(Handler handler);

  void Activated() override { ShowMainForm(); }
  bool OtherKey(const toolkit::KeyStroke& stroke) override;
  void Unloaded() override;
  void Layout(const toolkit::Metrics& metrics) override;
  void LayoutKeys(toolkit::Area strip, const toolkit::Metrics& metrics);
  void LayoutGraphicsKeys(toolkit::Area whole, const toolkit::Metrics& metrics);
  void LayoutPositions(const toolkit::Metrics& metrics);

  FrontEndActions& actions_;
  PlotModes modes_;
  toolkit::Panel* header_ = nullptr;
  toolkit::Label* receiveLamp_ = nullptr;
  toolkit::Panel* mainPanel_ = nullptr;
  toolkit::Panel* figureField_ = nullptr;  ///< what shows of PositionBox's place without it
  toolkit::Panel* positionBox_ = nullptr;
  toolkit::Panel* textPanel_ = nullptr;
  toolkit::Panel* statusPanel_ = nullptr;
  toolkit::Panel* keyStrip_ = nullptr;
  toolkit::Panel* mainRow_ = nullptr;
  toolkit::Panel* graphicsRow_ = nullptr;
  toolkit::Panel* pathRow_ = nullptr;
  core::BySlot<toolkit::PlotCanvas*> plotBoxes_;
  std::array<toolkit::Label*, 6> positionLabels_{};
  std::array<toolkit::Label*, 6> positionTexts_{};
  std::array<toolkit::Panel*, 6> positionLines_{};  ///< below each figure
  std::array<toolkit::Button*, 7> mainButtons_{};
  core::BySlot<toolkit::TwoStateButton*> programButtons_;
  toolkit::Button* messageButton_ = nullptr;
  toolkit::Button* shutdownButton_ = nullptr;
  std::array<toolkit::Button*, 4> graphicsButtons_{};
  toolkit::TwoStateButton* kerfButton_ = nullptr;
  toolkit::TwoStateButton* limitsButton_ = nullptr;
  std::array<toolkit::Button*, 6> pathButtons_{};
};

}  // namespace torvane::console
