#include "console/PadForm.h"

#include "console/ConsoleServices.h"
#include "console/EntryMode.h"
#include "core/General.h"

namespace torvane::console {

using toolkit::Key;

PadForm::PadForm(const ScreenStart& start, const char* boxName)
    : Screen(start), entry_(Services().EntryPads.Entry()), mode_(entry_->EntryResult) {
  box_ = &AddEntry(Body(), boxName);
  MakeCommonKeys();
  SetHome(*box_);
  // Typed keys go the way of the pad's keys; Backspace and Enter are dealt with before.
  Window().OnKeyPress([this](char character) -> char {
    const int code = static_cast<unsigned char>(character);
    if (code != BackspaceCharacter && code != EnterCharacter)
      Insert(static_cast<unsigned char>(Typed(character)));
    return 0;
  });
}

void PadForm::MakeCommonKeys() {
  cursorButtons_[0] =
      &AddButton(Body(), "CursorButton(1)", "<<<", Role::SubKey, [this] { Apply(MoveLeft); });
  cursorButtons_[1] =
      &AddButton(Body(), "CursorButton(2)", ">>>", Role::SubKey, [this] { Apply(MoveRight); });
  deleteButtons_[0] = &AddButton(Body(), "DeleteButton(0)", "&CLEAR ALT+C", Role::SubKey,
                                 [this] { Show(ClearText(Current())); });
  deleteButtons_[1] = &AddButton(Body(), "DeleteButton(1)", "DEL", Role::SubKey,
                                 [this] { Apply(DeleteButtonPressed); });
  ok_ = &AddButton(Body(), "OkButton", "OK", Role::General, [this] { OkPressed(); });
  cancel_ = &AddButton(Body(), "ExitButton", "CANCEL", Role::General, [this] {
    entry_->EntryResult = 0;
    Unload();
  });
}

toolkit::Button& PadForm::AddPadKey(const std::string& name, const std::string& caption, Role role,
                                    std::function<int()> character) {
  return AddButton(Body(), name, caption, role,
                   [this, character = std::move(character)] { Insert(character()); });
}

void PadForm::Activated() {
  const PadText opened = OpenPad(entry_->EntryText);
  Show(opened);
  box_->SetSelectionLength(opened.SelectionLength);
}

PadText PadForm::Current() const { return {box_->Text(), box_->Cursor(), box_->SelectionLength()}; }

void PadForm::Show(const PadText& text) {
  box_->SetText(text.Text);
  box_->SetCursor(text.Cursor);
  box_->SetSelectionLength(text.SelectionLength);
}

void PadForm::Apply(PadText (*edit)(PadText)) { Show(edit(Current())); }

void PadForm::Insert(int character) {
  const PadText before = Current();
  const int accepted = FilterKey(character, mode_, TrimmedText(), before.SelectionLength);
  if (accepted == 0) Screens().Desk().Beep();
  Show(InsertCharacter(before, accepted));
}

std::string PadForm::TrimmedText() const { return std::string(core::Trim(box_->Text())); }

void PadForm::Accept(const std::string& text) {
  entry_->EntryResult = -1;
  entry_->EntryText = text;
  Unload();
}

bool PadForm::OtherKey(const toolkit::KeyStroke& stroke) {
  switch (stroke.Code) {
    case Key::Backspace:
      Apply(BackspaceTyped);
      return true;
    case Key::Delete:
      Apply(DeleteTyped);
      return true;
    case Key::Enter:
      ok_->Press();
      return true;
    case Key::C:
      if (!stroke.Alt) return false;
      deleteButtons_[0]->Press();
      return true;
    default:
      return false;
  }
}

void PadForm::Arrange(double keysWide, const Cell& keys, double sideWide,
                      std::vector<Cell> lastRow) {
  std::vector<Cell> side;
  for (toolkit::Button* key :
       {cursorButtons_[0], cursorButtons_[1], deleteButtons_[1], deleteButtons_[0]})
    side.push_back(Cell(key).High(PadKeyHigh));
  for (toolkit::Button* answer : {ok_, cancel_})
    lastRow.push_back(Cell(answer).Wide(sideWide).High(PadKeyHigh));
  SetGrid(keysWide + sideWide + 3 * SectionGap,
          Rows({box_, Columns({keys.Wide(keysWide), Rows(side).Wide(sideWide)}).Spaced(SectionGap),
                Columns(std::move(lastRow))})
              .Spaced(SectionGap));
}

}  // namespace torvane::console
