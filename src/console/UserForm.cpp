#include "console/UserForm.h"

#include <string>

#include "console/ConsoleServices.h"
#include "toolkit/Theme.h"

namespace torvane::console {

namespace {
constexpr int KeysInRow = 4;
}  // namespace

UserForm::UserForm(const ScreenStart& start)
    : Screen(start), keypad_(System(), Services().Files, Services().Trio) {
  std::vector<std::vector<Cell>> rows;
  for (int key = 1; key <= core::KeypadKeys; ++key) {
    if (key % KeysInRow == 1) rows.emplace_back();
    rows.back().push_back(MakeKey(key));
  }
  OfferStage(supervision::PollStage::Machine, [this] { DimKeys(); });
  SetGrid(928,
          Rows({Table(std::vector<double>(KeysInRow, 0), rows), AtRight(AddExitButton(Body()))})
              .Spaced(SectionGap));
}

Cell UserForm::MakeKey(int key) {
  const std::string caption = keypad_.Look(key).Caption;
  auto& made = KeyOf(key);
  made.Button = &AddButton(Body(), Numbered("UserButton", key), caption, Role::General,
                           [this, key] { keypad_.Press(key); });
  made.Check = &AddTwoState(Body(), Numbered("UserCheck", key), caption, Role::General,
                            [this, key](bool) { CheckChanged(key); });
  // The letter belongs to whichever of the two shows.
  AddKey(static_cast<toolkit::Key>('@' + key), [this, key] { TakeKey(key); });
  ShowKey(key);
  return Layers({made.Button, made.Check});
}

void UserForm::TakeKey(int key) {
  const UserKey& taken = KeyOf(key);
  keypad_.Look(key).Latching ? taken.Check->Press() : taken.Button->Press();
}

void UserForm::CheckChanged(int key) {
  if (keypad_.Flip(key)) {
    ShowKey(key);
  } else {
    ShowKeypadEntry(key);
  }
}

bool UserForm::ShowKeypadEntry(int key) {
  if (!keypad_.ReadValue(key) || !Visible()) return false;
  ShowKey(key);
  return true;
}

void UserForm::ShowKey(int key) {
  const supervision::KeyLook look = keypad_.Look(key);
  const UserKey& shown = KeyOf(key);
  const auto show = [&look](toolkit::Button& button, bool visible) {
    button.SetCaption(look.Caption);
    button.SetVisible(visible);
    button.SetEnabled(visible);
  };
  show(*shown.Button, look.Active && !look.Latching);
  show(*shown.Check, look.Active && look.Latching);
  shown.Check->SetDown(look.On, toolkit::Events::Silent);
  DimKey(key);
}

void UserForm::DimKeys() {
  for (int key = 1; key <= core::KeypadKeys; ++key) DimKey(key);
}

void UserForm::DimKey(int key) {
  const RoleColours pair = ColoursOf(Role::General);
  const auto face = Colours()[pair.Background];
  const auto text = Colours()[pair.Foreground];
  const auto shade = keypad_.Allowed(key) ? text : toolkit::Faded(text, face);
  const UserKey& shown = KeyOf(key);
  for (toolkit::Button* button : {shown.Button, static_cast<toolkit::Button*>(shown.Check)}) {
    if (button->Foreground() != shade) button->SetColours(face, shade);
  }
}

void UserForm::Activated() {
  keypad_.LoadKeypad();
  for (int key = 1; key <= core::KeypadKeys; ++key) {
    if (!ShowKeypadEntry(key)) return;
  }
}

}  // namespace torvane::console
