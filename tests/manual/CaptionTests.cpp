// The captions that the manual quotes are those of the console's own controls, screen by screen.
#include <algorithm>
#include <set>

#include "Manual.h"
#include "SourceTexts.h"
#include "console/ConsoleFixture.h"
#include "console/ScreenTable.h"
#include "toolkit/Frame.h"
#include "toolkit/Panel.h"
#include "tools/SimulatorPanel.h"

namespace torvane::tests {
namespace {

/// What a reader sees of a caption: "EXIT" for "E&XIT", "&" for "&&".
std::string Seen(const std::string& caption) {
  std::string seen;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && ++i == caption.size()) break;
    seen += caption[i];
  }
  return Squeezed(seen);
}

class ManualCaptions : public ConsoleFixture {
 protected:
  std::set<std::string> Texts;

  void Take(const toolkit::Form& form) {
    for (const toolkit::Control* control : form.Controls()) {
      if (const auto* button = dynamic_cast<const toolkit::Button*>(control))
        Texts.insert(Seen(button->Caption()));
      if (const auto* label = dynamic_cast<const toolkit::Label*>(control))
        Texts.insert(Seen(label->Text()));
      if (const auto* panel = dynamic_cast<const toolkit::Panel*>(control))
        Texts.insert(Seen(panel->Caption()));
      if (const auto* frame = dynamic_cast<const toolkit::Frame*>(control))
        Texts.insert(Seen(frame->Caption()));
    }
  }
  void TakeShown(const std::string& name) {
    if (console::Screen* screen = Screens().Find(name)) Take(screen->Window());
  }
  /// Every screen as it comes up.
  void TakeScreens() {
    for (const auto& row : console::ScreenTable()) {
      const std::string& name = row.Traits.Name;
      if (name == "FrontEnd" || name == "RestartForm" || name == "BlockStartForm") continue;
      if (Screens().Load(name) != nullptr) TakeShown(name);
      Screens().Unload(name);
    }
    Screens().Load("RestartForm");
    TakeShown("RestartForm");
    Screens().Load("BlockStartForm");
    TakeShown("BlockStartForm");
  }
  /// The main screen in its states, and the screens of the file menu.
  void TakeStates() {
    Take(Main().Window());
    TypeF(7);
    Take(Main().Window());
    for (const toolkit::Key mode : {toolkit::Key::Z, toolkit::Key::C, toolkit::Key::P}) {
      Type(mode);
      Take(Main().Window());
    }
    Type(toolkit::Key::C);
    Type(toolkit::Key::X);
    Take(Main().Window());
    TypeF(6);
    for (char action = '1'; action <= '8'; ++action) {
      Type(static_cast<toolkit::Key>(action));
      TakeShown(action < '6' ? "FileForm" : "DirectoryForm");
      Type(toolkit::Key::C);
    }
    tools::SimulatorPanel panel(Loop, *Controller, System.Colours);
    Take(panel.Window());
  }
  /// The text of a control, or what a figure stands after, as in "RAPID : 1.2 m".
  [[nodiscard]] bool OnAScreen(const std::string& text) const {
    return Texts.count(text) != 0 ||
           std::any_of(Texts.begin(), Texts.end(), [&](const std::string& shown) {
             return text.ends_with(" :") && shown.starts_with(text + " ");
           });
  }
};

TEST_F(ManualCaptions, AreOnTheScreens) {
  Start();
  Select("STAR");
  TakeScreens();
  Screens().Unload("RestartForm");
  Screens().Unload("BlockStartForm");
  TakeStates();
  // What shows only for a moment: beside a row, while something is changed, in the line of the
  // graphics state.
  std::set<std::string> passing;
  for (const SourceText& text : TextsOf("console")) passing.insert(Seen(text.Text));
  for (const char* role : {"btn", "caption"}) {
    for (const Quote& quote : Quotes(role))
      EXPECT_TRUE(OnAScreen(quote.Text) || passing.count(quote.Text))
          << quote.Where() << ": no control has the caption \"" << quote.Text << "\"";
  }
  EXPECT_GT(Texts.size(), 150U);
}

}  // namespace
}  // namespace torvane::tests
