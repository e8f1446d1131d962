// Stacking, activation, modal forms, keys before the focused control, locks.
#include <stdexcept>

#include "ScreenFixture.h"
#include "toolkit/EntryBox.h"
#include "toolkit/Form.h"

namespace torvane::tests {
namespace {

using namespace toolkit;

class Forms : public OnDesk {
 protected:
  Forms() : Ground(Desk_, "FrontEnd", Log), A(Desk_, "AForm", Log), B(Desk_, "BForm", Log) {
    Ground.Window.SetBackdrop(true);
    Ground.Window.Show();
    Log.clear();
  }

  Words Stack() const {
    Words names;
    for (const Form* form : Desk_.Forms()) {
      if (form->Visible()) names.push_back(form->Name());
    }
    return names;
  }

  Screen Ground;
  Screen A;
  Screen B;
};

TEST_F(Forms, ShowingBringsToTheFrontAndActivatesOnce) {
  A.Window.Show();
  B.Window.Show();
  EXPECT_EQ(Stack(), (Words{"FrontEnd", "AForm", "BForm"}));
  A.Window.Show();
  A.Window.Show();
  EXPECT_EQ(Stack(), (Words{"FrontEnd", "BForm", "AForm"}));
  EXPECT_EQ(Taken(), (Words{"activate AForm", "activate BForm", "activate AForm"}));
  EXPECT_EQ(Desk_.ActiveForm(), &A.Window);
}

TEST_F(Forms, ChildrenOfTheDeskLieInTheSameOrder) {
  A.Window.Show();
  B.Window.Show();
  A.Window.Raise();
  const auto children = Desk_.children();
  EXPECT_GT(children.indexOf(&A.Window), children.indexOf(&B.Window));
  EXPECT_GT(children.indexOf(&B.Window), children.indexOf(&Ground.Window));
}

TEST_F(Forms, TheBackdropStaysUnderTheOthersWhenItIsPressed) {
  A.Window.Show();
  Click(Ground.Body);
  EXPECT_EQ(Stack(), (Words{"FrontEnd", "AForm"}));
  EXPECT_EQ(Desk_.ActiveForm(), &Ground.Window);
}

TEST_F(Forms, ClosingTellsTheFormThenActivatesTheNext) {
  A.Window.Show();
  B.Window.Show();
  Log.clear();
  B.Window.Close();
  EXPECT_EQ(Taken(), (Words{"unload BForm", "activate AForm"}));
  B.Window.Close();
  EXPECT_EQ(Taken(), Words{});
}

TEST_F(Forms, HidingTellsNoUnload) {
  A.Window.Show();
  Log.clear();
  A.Window.Hide();
  EXPECT_EQ(Taken(), Words{"activate FrontEnd"});
}

TEST_F(Forms, APressActivatesTheFormUnderIt) {
  A.Window.Show();
  B.Window.Show();
  Log.clear();
  Click(A.Body);
  EXPECT_EQ(Taken(), Words{"activate AForm"});
}

TEST_F(Forms, APressIsNotHeldUpByAnActivationThatWaits) {
  Button key(&A.Body, "GO");
  key.Place({0, 0, 100, 60});
  key.OnMouseDown([this](const PointerEvent&) { Log.push_back("down"); });
  key.OnMouseUp([this](const PointerEvent&) { Log.push_back("up"); });
  A.Window.Show();
  B.Window.Show();
  bool answered = false;
  A.Window.OnActivate([&] {
    Loop.WaitUntil([&] { return answered; });
    Log.push_back("active");
  });
  Log.clear();
  PressAt(key, 10, 10);
  EXPECT_EQ(Taken(), Words{"down"});
  ReleaseAt(key, 10, 10);
  EXPECT_EQ(Taken(), Words{"up"});
  answered = true;
  Pump(Loop);
  EXPECT_EQ(Taken(), Words{"active"});
}

TEST_F(Forms, WhatIsSwallowedReachesNothingButTheDefaultButtonByEnter) {
  EntryBox box(&A.Body);
  Button ok(&A.Body, "OK");
  Button cancel(&A.Body, "CANCEL");
  for (Control* control :
       {static_cast<Control*>(&box), static_cast<Control*>(&ok), static_cast<Control*>(&cancel)})
    control->Place({0, 0, 100, 60});
  ok.OnClick([this] { Log.push_back("ok"); });
  cancel.OnClick([this] { Log.push_back("cancel"); });
  A.Window.OnKeyPress([](char) { return '\0'; });
  A.Window.SetDefaultButton(&ok);
  A.Window.Show();
  Log.clear();
  const auto type = [this] {
    for (const Key key : {Key::A, Key::Space, Key::Backspace, Key::Enter})
      Desk_.TypeKey(KeyStroke(key));
  };
  box.SetFocus();
  type();
  EXPECT_EQ(box.Text(), "");
  EXPECT_EQ(Taken(), Words{"ok"});
  ok.SetFocus();
  type();
  EXPECT_EQ(Taken(), Words{"ok"});
  cancel.SetFocus();
  type();
  EXPECT_EQ(Taken(), Words{});
}

TEST_F(Forms, ALockThatKeepsWhatIsHeldIsToldOfAReleaseAtOnce) {
  int handsOff = 0;
  A.Window.OnHandsOff([&] { ++handsOff; });
  A.Window.OnKeyUp([this](const KeyStroke&) { Log.push_back("up"); });
  A.Window.Show();
  Desk_.PressKey(KeyStroke(Key::Right));
  Log.clear();
  A.Window.SetEnabled(false, Form::Holds::Keep);
  EXPECT_EQ(handsOff, 0);
  Desk_.ReleaseKey(KeyStroke(Key::Right));
  EXPECT_EQ(handsOff, 1);
  EXPECT_EQ(Taken(), Words{});
  A.Window.SetEnabled(true);
  Pump(Loop);
  EXPECT_EQ(Taken(), Words{"up"});
  // A lock that ends them, while the other one stands.
  A.Window.SetEnabled(false, Form::Holds::Keep);
  A.Window.SetEnabled(false);
  EXPECT_EQ(handsOff, 2);
}

TEST_F(Forms, AModalFormIsAWaitThatReturnsWhenItIsUnloaded) {
  A.Window.Show();
  Log.clear();
  Loop.Post([this] {
    EXPECT_EQ(Desk_.ModalForm(), &B.Window);
    B.Window.Close();
  });
  Desk_.ShowModal(B.Window);
  EXPECT_EQ(Desk_.ModalForm(), nullptr);
  EXPECT_EQ(Desk_.ActiveForm(), &A.Window);
  EXPECT_EQ(Taken(), (Words{"activate BForm", "unload BForm"}));
}

TEST_F(Forms, WhileAModalFormStandsTheOthersTakeNothing) {
  Button key(&A.Body, "GO");
  key.Place({0, 0, 100, 60});
  key.OnClick([this] { Log.push_back("click"); });
  A.Window.OnKeyDown([this](const KeyStroke&) {
    Log.push_back("key A");
    return true;
  });
  B.Window.OnKeyDown([this](const KeyStroke&) {
    Log.push_back("key B");
    return true;
  });
  A.Window.Show();
  Log.clear();
  Loop.Post([&] {
    Click(key);
    Desk_.TypeKey(KeyStroke('X'));
    A.Window.Show();
    EXPECT_EQ(Desk_.ActiveForm(), &B.Window);
    EXPECT_EQ(Stack().back(), "BForm");
    B.Window.Close();
  });
  Desk_.ShowModal(B.Window);
  EXPECT_EQ(Taken(), (Words{"activate BForm", "key B", "unload BForm"}));
}

TEST_F(Forms, AModalFormMayComeUpOverAnother) {
  Screen C(Desk_, "CForm", Log);
  A.Window.Show();
  Log.clear();
  Loop.Post([&] {
    Loop.Post([&] {
      EXPECT_EQ(Desk_.ModalForm(), &C.Window);
      EXPECT_FALSE(B.Window.AcceptsInput());
      C.Window.Close();
    });
    Desk_.ShowModal(C.Window);
    EXPECT_EQ(Desk_.ActiveForm(), &B.Window);
    EXPECT_TRUE(B.Window.AcceptsInput());
    Log.push_back("C returned");
    B.Window.Close();
  });
  Desk_.ShowModal(B.Window);
  EXPECT_EQ(Taken(), (Words{"activate BForm", "activate CForm", "unload CForm", "C returned",
                            "unload BForm"}));
}

TEST_F(Forms, TheLowerOfTwoModalFormsMayGoFirst) {
  Screen C(Desk_, "CForm", Log);
  A.Window.Show();
  Loop.Start([&] {
    Desk_.ShowModal(B.Window);
    Log.push_back("B returned");
  });
  Loop.Start([&] {
    Desk_.ShowModal(C.Window);
    Log.push_back("C returned");
  });
  Log.clear();
  B.Window.Close();
  EXPECT_EQ(Desk_.ModalForm(), &C.Window);
  Pump(Loop);
  EXPECT_EQ(Taken(), (Words{"unload BForm", "B returned"}));
  EXPECT_EQ(Desk_.ActiveForm(), &C.Window);
  C.Window.Close();
  EXPECT_EQ(Desk_.ActiveForm(), &A.Window) << "at once, whoever else waits";
  Pump(Loop);
  EXPECT_EQ(Taken(), (Words{"unload CForm", "C returned"}));
}

TEST_F(Forms, AModalFormThatShowsAgainWithinTheEventThatHidItHasGoneAllTheSame) {
  A.Window.Show();
  bool returned = false;
  Loop.Start([&] {
    Desk_.ShowModal(B.Window);
    returned = true;
  });
  Loop.Start([&] {
    B.Window.Close();
    B.Window.Show();
  });
  Pump(Loop);
  EXPECT_TRUE(returned);
  EXPECT_TRUE(B.Window.Visible());
  EXPECT_EQ(Desk_.ModalForm(), nullptr);
}

TEST_F(Forms, KeysReachTheFormBelowAsSoonAsTheModalOneHasGone) {
  A.Window.OnKeyDown([this](const KeyStroke&) {
    Log.push_back("key A");
    return true;
  });
  A.Window.Show();
  Loop.Start([&] { Desk_.ShowModal(B.Window); });
  B.Window.Close();
  Log.clear();
  Desk_.TypeKey(KeyStroke('X'));
  EXPECT_EQ(Taken(), Words{"key A"});
}

TEST_F(Forms, AKeyThatWaitsHoldsUpNoOther) {
  bool open = false;
  A.Window.OnKeyDown([&](const KeyStroke& stroke) {
    if (stroke.Code == toolkit::Key::X) Loop.WaitUntil([&] { return open; });
    Log.push_back(stroke.Code == toolkit::Key::X ? "X" : "Y");
    return true;
  });
  A.Window.Show();
  Log.clear();
  for (const int code : {Qt::Key_X, Qt::Key_Y}) {
    QKeyEvent press(QEvent::KeyPress, code, Qt::NoModifier, code == Qt::Key_X ? "x" : "y");
    QCoreApplication::sendEvent(&Desk_, &press);
  }
  EXPECT_EQ(Taken(), Words{"Y"});
  open = true;
  Pump(Loop);
  EXPECT_EQ(Taken(), Words{"X"});
}

TEST_F(Forms, AFormShownUnderAModalOneComesToTheFrontBehindIt) {
  Screen C(Desk_, "CForm", Log);
  A.Window.Show();
  Log.clear();
  Loop.Post([&] {
    C.Window.Show();
    B.Window.Close();
  });
  Desk_.ShowModal(B.Window);
  EXPECT_EQ(Desk_.ActiveForm(), &C.Window);
  EXPECT_EQ(Taken(), (Words{"activate BForm", "unload BForm", "activate CForm"}));
}

TEST_F(Forms, AFaultInAHandlerLeavesTheModalWaitWithIt) {
  Loop.Post([] { throw std::runtime_error("C:\\ROOT\\Machine.dat: damaged"); });
  EXPECT_THROW(Desk_.ShowModal(B.Window), std::runtime_error);
  EXPECT_EQ(Desk_.ModalForm(), nullptr);
}

TEST_F(Forms, TheKeyHooksRunBeforeTheFocusedControl) {
  EntryBox box(&A.Body);
  A.Window.OnKeyDown([this](const KeyStroke& stroke) {
    Log.push_back("down " + std::to_string(static_cast<int>(stroke.Code)));
    return stroke.Code == Key::F9;
  });
  A.Window.OnKeyPress([this](char c) {
    Log.push_back(std::string("press ") + c);
    return c == 'Q' ? '\0' : static_cast<char>(c + 1);
  });
  A.Window.OnKeyUp([this](const KeyStroke& stroke) {
    Log.push_back("up " + std::to_string(static_cast<int>(stroke.Code)));
  });
  A.Window.Show();
  box.SetFocus();
  Log.clear();
  for (const auto& stroke : {KeyStroke(Key::F9), KeyStroke('A'), KeyStroke('Q')}) {
    Desk_.TypeKey(stroke);
  }
  EXPECT_EQ(box.Text(), "B");
  EXPECT_EQ(Taken(), (Words{"down 120", "up 120", "down 65", "press A", "up 65", "down 81",
                            "press Q", "up 81"}));
}

TEST_F(Forms, EnterPressesTheDefaultButtonWhateverIsSwallowed) {
  EntryBox box(&A.Body);
  Button ok(&A.Body, "&OK");
  ok.OnClick([this] { Log.emplace_back("ok"); });
  A.Window.SetDefaultButton(&ok);
  A.Window.Show();
  box.SetFocus();
  Log.clear();
  Desk_.TypeKey(KeyStroke(Key::Enter));
  A.Window.OnKeyPress([](char) { return '\0'; });
  Desk_.TypeKey(KeyStroke(Key::Enter));
  EXPECT_EQ(Taken(), (Words{"ok", "ok"}));
  KeyStroke held(Key::Enter);
  held.Repeat = true;
  Desk_.PressKey(held);
  ok.SetEnabled(false);
  Desk_.TypeKey(KeyStroke(Key::Enter));
  EXPECT_EQ(Taken(), Words{}) << "held, and disabled";
}

TEST_F(Forms, KeysOfTheWindowSystemArriveWithTheirCodes) {
  std::vector<int> codes;
  std::string typed;
  A.Window.OnKeyDown([&](const KeyStroke& stroke) {
    codes.push_back(static_cast<int>(stroke.Code));
    return false;
  });
  A.Window.OnKeyPress([&](char c) {
    typed += c;
    return '\0';
  });
  A.Window.Show();
  const std::tuple<int, const char*, Qt::KeyboardModifiers> sent[] = {
      {Qt::Key_F1, "", Qt::NoModifier},      {Qt::Key_F12, "", Qt::NoModifier},
      {Qt::Key_K, "k", Qt::NoModifier},      {Qt::Key_Left, "", Qt::NoModifier},
      {Qt::Key_Enter, "\r", Qt::NoModifier}, {Qt::Key_Backspace, "\b", Qt::NoModifier},
      {Qt::Key_5, "5", Qt::KeypadModifier},  {Qt::Key_Tab, "\t", Qt::NoModifier},
      {Qt::Key_Delete, "", Qt::NoModifier},  {Qt::Key_PageDown, "", Qt::NoModifier},
      {Qt::Key_C, "", Qt::AltModifier}};
  for (const auto& [key, text, modifiers] : sent) {
    QKeyEvent press(QEvent::KeyPress, key, modifiers, QString::fromLatin1(text));
    QCoreApplication::sendEvent(&Desk_, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers);
    QCoreApplication::sendEvent(&Desk_, &release);
  }
  EXPECT_EQ(codes, (std::vector<int>{112, 123, 75, 37, 13, 8, 53, 9, 46, 34, 67}));
  EXPECT_EQ(typed, "k\r\b5");
}

TEST_F(Forms, AHeldKeyRepeatsButNeverOvertakesItsOwnHandler) {
  int depth = 0;
  int deepest = 0;
  int strokes = 0;
  KeyStroke held(Key::Right);
  held.Repeat = true;
  A.Window.OnKeyDown([&](const KeyStroke&) {
    deepest = std::max(deepest, ++depth);
    if (++strokes < 4) Desk_.PressKey(held);
    --depth;
    return true;
  });
  A.Window.Show();
  Desk_.PressKey(KeyStroke(Key::Right));
  Desk_.PressKey(held);
  EXPECT_EQ(strokes, 2);
  EXPECT_EQ(deepest, 1);
}

TEST_F(Forms, ALockedFormTakesNoKeysAndIsToldOfTheReleaseLater) {
  A.Window.OnKeyDown([this](const KeyStroke&) {
    Log.push_back("down");
    return true;
  });
  A.Window.OnKeyUp([this](const KeyStroke&) { Log.push_back("up"); });
  A.Window.Show();
  Log.clear();
  Desk_.PressKey(KeyStroke(Key::Left));
  A.Window.SetEnabled(false);
  Desk_.PressKey(KeyStroke(Key::Right));
  Desk_.ReleaseKey(KeyStroke(Key::Right));
  Desk_.ReleaseKey(KeyStroke(Key::Left));
  EXPECT_EQ(Taken(), Words{"down"});
  A.Window.SetEnabled(true);
  Pump(Loop, 5);
  EXPECT_EQ(Taken(), Words{"up"});
}

TEST_F(Forms, WhileTheFrontFormIsLockedFunctionKeysReachTheOneThatIsFree) {
  for (Screen* screen : {&Ground, &A}) {
    screen->Window.OnKeyDown([this, screen](const KeyStroke& stroke) {
      Log.push_back(screen->Window.Name() + " " + std::to_string(static_cast<int>(stroke.Code)));
      return true;
    });
  }
  A.Window.Show();
  A.Window.SetEnabled(false);
  Log.clear();
  Desk_.TypeKey(KeyStroke(Key::F9));
  Desk_.TypeKey(KeyStroke('X'));
  EXPECT_EQ(Taken(), Words{"FrontEnd 120"});
  EXPECT_EQ(Desk_.ActiveForm(), &A.Window);
}

TEST_F(Forms, APointerReleasedWhileLockedIsToldLaterAndIsNoClick) {
  Button jog(&A.Body, "X+");
  jog.Place({0, 0, 100, 60});
  jog.OnClick([this] { Log.push_back("click"); });
  jog.OnMouseDown([this](const PointerEvent&) { Log.push_back("mouse down"); });
  jog.OnMouseUp([this](const PointerEvent&) { Log.push_back("mouse up"); });
  A.Window.Show();
  Log.clear();
  PressAt(jog, 5, 5);
  A.Window.SetEnabled(false);
  ReleaseAt(jog, 5, 5);
  EXPECT_EQ(Taken(), Words{"mouse down"});
  EXPECT_FALSE(jog.Sunk());
  A.Window.SetEnabled(true);
  Pump(Loop, 5);
  EXPECT_EQ(Taken(), Words{"mouse up"});
}

TEST_F(Forms, AKeyHeldOnAFormThatGoesIsLetGo) {
  A.Window.OnKeyUp([this](const KeyStroke&) { Log.push_back("up"); });
  A.Window.Show();
  Desk_.PressKey(KeyStroke(Key::Left));
  Log.clear();
  A.Window.Close();
  EXPECT_EQ(Taken(), (Words{"up", "unload AForm", "activate FrontEnd"}));
}

TEST_F(Forms, LosingTheWindowLetsHeldKeysGo) {
  A.Window.OnKeyUp([this](const KeyStroke&) { Log.push_back("up"); });
  A.Window.Show();
  Desk_.PressKey(KeyStroke(Key::Left));
  Log.clear();
  QEvent away(QEvent::WindowDeactivate);
  QCoreApplication::sendEvent(&Desk_, &away);
  EXPECT_EQ(Taken(), Words{"up"});
}

TEST_F(Forms, TheFocusGoesBackToTheFixedControl) {
  Button exit(&A.Body, "&EXIT");
  Button other(&A.Body, "&MOVE");
  other.Place({0, 0, 100, 60});
  A.Window.SetDefaultFocus(&exit);
  other.OnClick([this] { A.Window.FocusDefault(); });
  A.Window.Show();
  A.Window.FocusDefault();
  EXPECT_TRUE(exit.HasFocus());
  PressAt(other, 5, 5);
  EXPECT_TRUE(other.HasFocus());
  ReleaseAt(other, 5, 5);
  EXPECT_TRUE(exit.HasFocus());
}

TEST_F(Forms, AHiddenOrDisabledControlCannotHaveTheFocus) {
  Button exit(&A.Body, "&EXIT");
  Button other(&A.Body, "&MOVE");
  A.Window.Show();
  exit.SetFocus();
  other.SetVisible(false);
  EXPECT_FALSE(other.SetFocus());
  other.SetVisible(true);
  other.SetEnabled(false);
  EXPECT_FALSE(other.SetFocus());
  EXPECT_TRUE(exit.HasFocus());
}

TEST_F(Forms, TabGoesRoundTheControlsThatTakeTheFocus) {
  Button first(&A.Body, "1"), second(&A.Body, "2"), third(&A.Body, "3");
  second.SetEnabled(false);
  A.Window.Show();
  first.SetFocus();
  Desk_.TypeKey(KeyStroke(Key::Tab));
  EXPECT_TRUE(third.HasFocus());
  Desk_.TypeKey(KeyStroke(Key::Tab));
  EXPECT_TRUE(first.HasFocus());
}

TEST_F(Forms, ATitlePanelTellsWhereItIsHeldWhileTheFormMoves) {
  Panel title(&A.Window, PanelStyle::Title, "MACHINE");
  title.Place({0, 0, 300, 48});
  int grabX = 0, grabY = 0;
  title.OnMouseDown([&](const PointerEvent& e) { grabX = e.X, grabY = e.Y; });
  title.OnMouseMove([&](const PointerEvent& e) {
    if (e.Button == PointerButton::None) return;
    A.Window.MoveTo(A.Window.Left() + e.X - grabX, A.Window.Top() + e.Y - grabY);
  });
  A.Window.Show();
  const int left = A.Window.Left(), top = A.Window.Top();
  PressAt(title, 30, 12);
  DragTo(title, 50, 17);
  EXPECT_EQ(A.Window.Left(), left + 20);
  EXPECT_EQ(A.Window.Top(), top + 5);
  DragTo(title, 30, 12);
  EXPECT_EQ(A.Window.Left(), left + 20);
  ReleaseAt(title, 30, 12);
  DragTo(title, 90, 40, Qt::NoButton);
  EXPECT_EQ(A.Window.Left(), left + 20);
}

TEST_F(Forms, TheDeskLaysItsFormsOutAnewWhenItsSizeChanges) {
  A.Window.Show();
  const int before = A.Window.width();
  Desk_.resize(1920, 1080);
  EXPECT_GT(A.Window.width(), before);
  EXPECT_EQ(Ground.Window.geometry(), Desk_.rect());
  EXPECT_NEAR(A.Window.geometry().center().x(), 960, 1);
}

TEST_F(Forms, ControlsAreFoundByTheirNames) {
  Button exit(&A.Body, "&EXIT");
  exit.SetName("ExitButton");
  EXPECT_EQ(A.Window.Find("ExitButton"), &exit);
  EXPECT_EQ(A.Window.Find("OkButton"), nullptr);
  EXPECT_EQ(Desk_.Find("AForm"), &A.Window);
}

TEST_F(Forms, ARefreshPaintsWhatHasChangedBeforeItReturns) {
  struct Painted : Control {
    using Control::Control;
    int Times = 0;
    void paintEvent(QPaintEvent*) override { ++Times; }
  } one(&A.Body), other(&A.Body);
  one.Place({0, 0, 50, 50});
  other.Place({100, 0, 50, 50});
  A.Window.Show();
  Pump(Loop, 20);
  one.Times = other.Times = 0;
  one.update();
  Desk_.Refresh();
  EXPECT_EQ(one.Times, 1);
  EXPECT_EQ(other.Times, 0);
}

TEST_F(Forms, TheHourglassPairsUp) {
  Desk_.SetBusy(true);
  Desk_.SetBusy(true);
  Desk_.SetBusy(false);
  EXPECT_EQ(Desk_.cursor().shape(), Qt::WaitCursor);
  Desk_.SetBusy(false);
  EXPECT_FALSE(Desk_.Busy());
  EXPECT_EQ(Desk_.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(Forms, ClosingTheWindowIsAQuestionToTheProgram) {
  int asked = 0;
  Desk_.OnCloseRequest([&] { ++asked; });
  EXPECT_FALSE(Desk_.close());
  EXPECT_EQ(asked, 1);
  EXPECT_TRUE(Desk_.isVisible());
}

TEST_F(Forms, AFormMayGoBeforeItsControls) {
  auto form = std::make_unique<Form>(Desk_, "GoneForm");
  auto* key = new Button(form.get(), "GO");
  form->Show();
  key->SetFocus();
  form.reset();
  EXPECT_EQ(Desk_.Find("GoneForm"), nullptr);
}

}  // namespace
}  // namespace torvane::tests
