#include "console/WarningForm.h"

#include <algorithm>

#include "console/ConsoleServices.h"
#include "console/ScreenSet.h"

namespace torvane::console {

using supervision::WarningImages;
using toolkit::MarkKind;

namespace {

/// Lines that the box always has room for: with the line feeds of its callers a message of one or
/// two lines then is in the middle.
constexpr int LeastLines = 5;

/// Longest line, in characters, that the large type has room for.
constexpr std::size_t LargeLine = 44;

bool FitsLarge(const std::string& text) {
  std::size_t start = 0;
  for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', start)) {
    if (end - start > LargeLine) return false;
    start = end + 1;
  }
  return text.size() - start <= LargeLine;
}

int LineCount(const std::string& text) {
  return 1 + static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

}  // namespace

WarningForm::WarningForm(const ScreenStart& start) : Screen(start), box_(Services().Warning) {
  MakeMarks();
  label_ = &AddLabel(Body(), "WarningLabel", "", Role::Bold, toolkit::TypeStyle::Strong,
                     toolkit::Alignment::Centre);
  label_->SetAtTop(true);
  label_->SetPlainText(true);
  for (int button = 0; button < 3; ++button) {
    buttons_[static_cast<std::size_t>(button)] =
        &AddButton(Body(), "WarningButton(" + std::to_string(button) + ")", "", Role::General,
                   [this, button] { Answer(button); });
  }
}

void WarningForm::MakeMarks() {
  struct MarkRow {
    WarningImages Images;
    MarkKind Kind;
    const char* Name;
  };
  static constexpr std::array<MarkRow, 3> Rows = {{
      {WarningImages::Warning, MarkKind::Warning, "WarningImage"},
      {WarningImages::Question, MarkKind::Question, "QuestionImage"},
      {WarningImages::Information, MarkKind::Information, "InformationImage"},
  }};
  for (std::size_t i = 0; i < Rows.size(); ++i) {
    marks_[i].Images = Rows[i].Images;
    for (std::size_t side = 0; side < 2; ++side) {
      auto& mark = AddImage(Body(), Numbered(Rows[i].Name, static_cast<int>(side)), Rows[i].Kind,
                            Role::Bold);
      mark.SetVisible(false);
      marks_[i].Marks[side] = &mark;
    }
  }
}

void WarningForm::Answer(int button) {
  box_.Press(button);
  Unload();
}

void WarningForm::Activated() {
  for (MarkPair& pair : marks_) {
    for (toolkit::ImageMark* mark : pair.Marks) mark->SetVisible(pair.Images == box_.Images());
  }
  label_->SetText(box_.Text());
  label_->SetStyle(FitsLarge(box_.Text()) ? toolkit::TypeStyle::Strong : toolkit::TypeStyle::Bold);
  const supervision::WarningLayout& layout = box_.Layout();
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    const bool shown = layout.Visible(static_cast<int>(i));
    buttons_[i]->SetVisible(shown);
    SetCaption(*buttons_[i], shown ? layout.Captions[i] : "");
  }
  Window().SetDefaultButton(buttons_[static_cast<std::size_t>(layout.DefaultButton)]);
  SetHome(*buttons_[static_cast<std::size_t>(layout.FocusButton)]);
  Arrange();
  Screens().Desk().Beep();
}

void WarningForm::Unloaded() {
  for (MarkPair& pair : marks_) {
    for (toolkit::ImageMark* mark : pair.Marks) mark->SetVisible(false);
  }
  label_->SetText("");
  box_.Closed();
}

bool WarningForm::OtherKey(const toolkit::KeyStroke& stroke) {
  const int code = static_cast<int>(stroke.Code);
  if (code < 'A' || code > 'Z') return false;
  if (const auto button = supervision::WarningKeyButton(static_cast<char>(code), box_.Layout()))
    Answer(*button);
  return true;
}

void WarningForm::Arrange() {
  constexpr double LineHigh = 37;
  constexpr double MarkWide = 72;
  const auto marks = [this](std::size_t side) {
    std::vector<Cell> cells;
    for (const MarkPair& pair : marks_) cells.emplace_back(pair.Marks[side]);
    return Layers(std::move(cells)).Wide(MarkWide);
  };
  const int lines = std::max(LeastLines, LineCount(label_->Text()));
  SetGrid(880, Rows({Columns({marks(0), label_, marks(1)}).High(lines * LineHigh),
                     Columns({buttons_[0], buttons_[1], buttons_[2]})})
                   .Spaced(SectionGap));
  Window().Relayout();
}

}  // namespace torvane::console
