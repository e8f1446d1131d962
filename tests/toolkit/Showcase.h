// Two screens that hold one of every control, for pictures and for tests of the look.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "toolkit/Button.h"
#include "toolkit/Desk.h"
#include "toolkit/EntryBox.h"
#include "toolkit/Frame.h"
#include "toolkit/ImageMark.h"
#include "toolkit/Label.h"
#include "toolkit/ListBox.h"
#include "toolkit/Panel.h"
#include "toolkit/PickBox.h"
#include "toolkit/PlotCanvas.h"
#include "toolkit/ProgressBar.h"

namespace torvane::tests {

namespace shades {
constexpr toolkit::Colour Plot = 0x400000, Header = 0xC7BE98, Keys = 0xC08000, Green = 0x00C000,
                          Yellow = 0x00FFFF, Cyan = 0xFFFF00, SubKeys = 0xFFB824, Red = 0x0000FF,
                          Black = 0, Sheet = 0x808080;
}

/// The main screen's arrangement: plot, figures, text lines, a row of keys.
class MainShowcase {
 public:
  explicit MainShowcase(toolkit::Desk& desk);

  toolkit::Form Screen;
  toolkit::Panel Header;
  toolkit::Panel PlotFrame;
  toolkit::PlotCanvas Plot;
  toolkit::Panel Figures;
  std::deque<toolkit::Label> Names;
  std::deque<toolkit::Label> Values;
  toolkit::Panel Text;
  toolkit::Panel Status;
  std::deque<toolkit::Button> Keys;
  std::deque<toolkit::TwoStateButton> Slots;
  toolkit::Button Messages;

 private:
  void Layout(const toolkit::Metrics& m);
  void Draw();
};

/// One of every control in every state.
class ControlShowcase {
 public:
  explicit ControlShowcase(toolkit::Desk& desk);

  toolkit::Form Screen;
  toolkit::Panel Title;
  toolkit::Panel Body;
  toolkit::Button Plain;
  toolkit::Button Focused;
  toolkit::Button Disabled;
  toolkit::TwoStateButton Down;
  toolkit::TwoStateButton Up;
  toolkit::Button Green;
  toolkit::Button Pad;
  toolkit::Button Long;
  toolkit::Frame Options;
  std::deque<toolkit::OptionButton> Speeds;
  toolkit::EntryBox Entry;
  toolkit::EntryBox Marked;
  toolkit::PickBox Pick;
  toolkit::ListBox Single;
  toolkit::ListBox Several;
  toolkit::ProgressBar Flood;
  std::deque<toolkit::ImageMark> Marks;
  toolkit::Label Caption;
  toolkit::Label Readout;
  toolkit::Label Message;

 private:
  void Layout(const toolkit::Metrics& m);
  void Colour();
};

}  // namespace torvane::tests
