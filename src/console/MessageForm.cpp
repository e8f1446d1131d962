#include "console/MessageForm.h"

#include "console/ScreenSet.h"

namespace torvane::console {

using supervision::HelpKey;
using toolkit::Key;

namespace {

/// Pixels of the drawing.
constexpr int HelpLineHeight = 21;

}  // namespace

MessageForm::MessageForm(ScreenSet& screens, platform::FileSystem& files,
                         supervision::MessageList& messages)
    : Screen(screens, {.Name = ScreenName,
                       .PanelName = "MessagePanel",
                       .Title = "MESSAGES",
                       .Accelerators = false}),
      files_(files),
      messages_(messages) {
  MakeRows();
  helpBox_ = new toolkit::ListBox(&Body(), toolkit::Selection::None);  // owned by the panel
  Adopt(*helpBox_, "HelpBox", Role::Entry);
  helpBox_->SetVisibleLines(supervision::HelpPageLines);
  helpBox_->OnClick(Guard([this] { FocusHome(); }));
  help_ = &AddButton(Body(), "HelpButton", supervision::HelpCaption, Role::General,
                     [this] { HelpPressed(); });
  clear_ =
      &AddButton(Body(), "ClearButton", "&ACKNOWLEDGE", Role::General, [this] { ClearPressed(); });
  exit_ = &AddExitButton(Body());
  SetHome(*help_);
  Window().SetDefaultButton(help_);
  for (const Key key : {Key::H, Key::M, Key::B}) AddKey(key, *help_);
  AddKey(Key::A, *clear_);
  AddKey(Key::X, *exit_);
}

void MessageForm::MakeRows() {
  messageBox_ = &AddPanel(Body(), "MessageBox", toolkit::PanelStyle::Sunken, Role::Entry);
  for (int row = 1; row <= supervision::MessageRows; ++row) {
    auto& label = AddLabel(*messageBox_, "Message(" + std::to_string(row) + ")",
                           supervision::BlankRow(), Role::Entry);
    label.SetPlainText(true);
    label.SetFilled(true);
    label.OnClick(Guard([this, row] {
      messages_.Select(row);
      FocusHome();
    }));
    rows_[static_cast<std::size_t>(row - 1)] = &label;
  }
}

void MessageForm::Activated() {
  ShowList(true);
  messages_.Reset();
}

void MessageForm::ShowList(bool list) {
  listShows_ = list;
  messageBox_->SetVisible(list);
  helpBox_->SetVisible(!list);
  SetCaption(*help_, list ? supervision::HelpCaption : supervision::MessagesCaption);
}

void MessageForm::ShowMessages(const supervision::MessageList& messages) {
  for (int row = 1; row <= supervision::MessageRows; ++row) {
    toolkit::Label& label = *rows_[static_cast<std::size_t>(row - 1)];
    Paint(label, messages.Row(row).Inverse ? Role::EntryInverse : Role::Entry, Colours());
    label.SetText(messages.Row(row).Text);
  }
}

void MessageForm::HelpPressed() {
  if (!listShows_) {
    ShowList(true);
    return;
  }
  const auto help = supervision::ReadHelpText(files_, Screens().System().Directories,
                                              messages_.HelpPath(messages_.SelectedMessage()));
  if (!help.Found) Screens().Desk().Beep();
  helpBox_->SetItems(help.Lines);
  helpBox_->SetTopLine(0);
  ShowList(false);
}

void MessageForm::ClearPressed() {
  supervision::AcknowledgeReceived(files_, Screens().System().Directories,
                                   Screens().System().Console.NewProgramsReceived);
}

void MessageForm::Scroll(HelpKey key) {
  helpBox_->SetTopLine(supervision::HelpTopLine(helpBox_->TopLine(), helpBox_->Count(), key));
}

bool MessageForm::OtherKey(const toolkit::KeyStroke& stroke) {
  struct ScrollRow {
    Key Code;
    HelpKey Help;
    int Step;  ///< of the selection while the list shows, 0 none
  };
  static constexpr std::array<ScrollRow, 6> Rows = {{
      {Key::Up, HelpKey::Up, -1},
      {Key::Down, HelpKey::Down, 1},
      {Key::PageUp, HelpKey::PageUp, 0},
      {Key::PageDown, HelpKey::PageDown, 0},
      {Key::Home, HelpKey::Home, 0},
      {Key::End, HelpKey::End, 0},
  }};
  for (const ScrollRow& row : Rows) {
    if (row.Code != stroke.Code) continue;
    if (!listShows_) {
      Scroll(row.Help);
    } else if (row.Step != 0) {
      messages_.MoveSelection(row.Step);
    }
    return true;
  }
  return false;
}

void MessageForm::Layout(const toolkit::Metrics& metrics) {
  // The help page has more lines than the list has rows; both fill the same box.
  const int rows = supervision::HelpPageLines * metrics.Px(HelpLineHeight) + 2 * metrics.Hairline;
  toolkit::Area rest =
      PlaceBody(metrics, metrics.Px(880), rows + metrics.KeyHeight + 3 * metrics.Margin);
  const toolkit::Area box = toolkit::TakeTop(rest, rows, metrics.Margin);
  messageBox_->Place(box);
  helpBox_->Place(box);
  const auto lines =
      toolkit::Rows(messageBox_->Inside().Inset(metrics.Gap), supervision::MessageRows, 0);
  for (std::size_t i = 0; i < lines.size(); ++i) rows_[i]->Place(lines[i]);
  const auto keys = toolkit::Columns(rest, 3, metrics.Gap);
  help_->Place(keys[0]);
  clear_->Place(keys[1]);
  exit_->Place(keys[2]);
}

}  // namespace torvane::console
