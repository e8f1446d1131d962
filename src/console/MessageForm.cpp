#include "console/MessageForm.h"

#include <array>

#include "console/ConsoleServices.h"
#include "console/ScreenSet.h"
#include "supervision/PollTrio.h"

namespace torvane::console {

using supervision::HelpKey;
using toolkit::Key;

MessageForm::MessageForm(const ScreenStart& start) : Screen(start), messages_(Services().Messages) {
  messageBox_ = &AddPanel(Body(), "MessageBox", toolkit::PanelStyle::Sunken, Role::Entry);
  rows_ = AddTextRows(*messageBox_, "Message", supervision::MessageRows, toolkit::TypeStyle::Entry,
                      [this](int row) {
                        messages_.Select(row);
                        FocusHome();
                      });
  for (toolkit::Label* row : rows_) row->SetText(supervision::BlankRow());
  helpBox_ = &AddList(Body(), "HelpBox", toolkit::Selection::None);
  helpBox_->SetVisibleLines(supervision::HelpPageLines);
  helpBox_->OnClick(Guard([this] { FocusHome(); }));
  help_ = &AddButton(Body(), "HelpButton", supervision::HelpCaption, Role::General,
                     [this] { HelpPressed(); });
  auto& clear =
      AddButton(Body(), "ClearButton", "&ACKNOWLEDGE", Role::General, [this] { ClearPressed(); });
  auto& exit = AddExitButton(Body());
  SetHome(*help_);
  Window().SetDefaultButton(help_);
  for (const Key key : {Key::H, Key::M, Key::B}) AddKey(key, *help_);
  AddKey(Key::A, clear);
  AddKey(Key::X, exit);
  OfferStage(supervision::PollStage::Messages, [this] {
    if (Services().Poll.RefreshMessages()) ShowRows();
  });
  constexpr double HelpHigh = 21.5 * supervision::HelpPageLines;
  // The help page has more lines than the list has rows; both fill the same box.
  const Cell list = Inside(*messageBox_, Rows(Sharing(LinesOf(rows_))).Spaced(0));
  SetGrid(968, Rows({Layers({Cell(helpBox_).High(HelpHigh), list}), Columns({help_, clear, exit})})
                   .Spaced(SectionGap));
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

void MessageForm::ShowRows() {
  for (int row = 1; row <= supervision::MessageRows; ++row) {
    toolkit::Label& label = *rows_[static_cast<std::size_t>(row - 1)];
    Paint(label, messages_.Row(row).Inverse ? Role::EntryInverse : Role::Entry, Colours());
    label.SetText(messages_.Row(row).Text);
  }
}

void MessageForm::HelpPressed() {
  if (!listShows_) {
    ShowList(true);
    return;
  }
  const auto help = supervision::ReadHelpText(Services().Files, System().Directories,
                                              messages_.HelpPath(messages_.SelectedMessage()));
  if (!help.Found) Screens().Desk().Beep();
  helpBox_->SetItems(help.Lines);
  helpBox_->SetTopLine(0);
  ShowList(false);
}

void MessageForm::ClearPressed() {
  supervision::AcknowledgeReceived(Services().Files, System().Directories,
                                   System().Console.NewProgramsReceived);
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

}  // namespace torvane::console
