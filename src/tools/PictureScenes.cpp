#include "tools/PictureScenes.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "console/EntryMode.h"
#include "core/ScreenNames.h"
#include "toolkit/ListBox.h"
#include "toolkit/PickBox.h"
#include "tools/SimulatorPanel.h"

namespace torvane::tools {

using toolkit::Key;

namespace {

constexpr const char* LongName = "COVER-PLATE_LEFT-HAND_1250X2500A";

toolkit::Control* ControlOf(PictureStage& stage, const char* screen, const char* name) {
  console::Screen* found = stage.Screens().Find(screen);
  return found == nullptr ? nullptr : found->Window().Find(name);
}

void Pads(PictureStage& stage) {
  stage.WhenShows("KeyboardForm", [&stage] {
    stage.Snap("KeyboardForm", "empty");
    stage.TypeText("bracket-4");
    stage.Snap("KeyboardForm");
    stage.TypeText("0 with a name of 32 letters ab");
    stage.Snap("KeyboardForm", "full");
    stage.Type(Key::Enter);
  });
  stage.Type(Key::P);
  stage.WhenShows("NumberForm", [&stage] {
    stage.Snap("NumberForm", "selected");
    stage.TypeText("1250/2+13.5");
    stage.Snap("NumberForm");
    stage.Type(Key::Enter);
  });
  (void)stage.Console().Screens().EntryPads().EnterNumber("100.00", console::EntryMode::Arithmetic);
}

void ProgramScreen(PictureStage& stage) {
  stage.Type(Key::F1);
  stage.Snap("ProgramForm", "fresh");
  Pads(stage);
  for (int step = 0; step < 3; ++step) stage.Type(Key::Down);
  stage.Snap("ProgramForm");
  if (auto* box =
          dynamic_cast<toolkit::PickBox*>(ControlOf(stage, "ProgramForm", "ProgramCombo"))) {
    box->OpenList();
    stage.Snap("ProgramForm", "list");
    box->CloseList();
  }
  stage.WhenShows("WarningForm", [&stage] {
    stage.Snap("WarningForm", "two-lines");
    stage.Type(Key::O);
  });
  (void)stage.Console().Selection().SelectProgram("FAULTS", "NO-SUB");
  stage.Screens().Unload("ProgramForm");
  stage.RunFor(300);
}

void StatusScreens(PictureStage& stage) {
  struct Row {
    Key Opens;
    const char* Screen;
  };
  constexpr Row Rows[] = {{Key::P, "XYPositionForm"},
                          {Key::A, "AuxPositionForm"},
                          {Key::V, "ViewProgForm"},
                          {Key::I, "SetupForm"}};
  stage.Type(Key::F4);
  stage.Type(static_cast<Key>('1'));
  stage.Snap("StatusMenuForm");
  for (const Row& row : Rows) {
    stage.Type(row.Opens);
    stage.RunFor(300);
    stage.Snap(row.Screen);
    stage.Type(Key::X);
  }
  stage.Type(static_cast<Key>('1'));
  stage.Type(Key::X);
}

void Laser(PictureStage& stage) {
  stage.Type(Key::F2);
  stage.RunFor(300);
  stage.Snap("LaserStatusForm");
  stage.Type(static_cast<Key>('3'));
  stage.Snap("LaserStatusForm", "asked-for");
  stage.Type(static_cast<Key>('1'));
  stage.Type(static_cast<Key>('1'));
  stage.Type(Key::X);
  stage.RunFor(300);
}

void Receive(PictureStage& stage) {
  stage.Office().Obey("name FROM-OFFICE");
  stage.Office().Obey("send Programs\\SHOP\\NEST.prg");
  stage.RunFor(1500);
  stage.Snap("FrontEnd", "receiving");
  stage.RunFor(12000);
}

/// Before anything is received: that would stand in the list with the day of the picture.
void Send(PictureStage& stage) {
  stage.Screens().Open(core::ScreenNames::SendForm);
  if (auto* list = dynamic_cast<toolkit::ListBox*>(ControlOf(stage, "SendForm", "FileList"))) {
    list->PressLine(3);
    list->PressLine(5);
  }
  stage.Snap("SendForm");
  stage.Loop().After(100, [&stage] {
    stage.Snap("SendForm", "waiting");
    stage.Type(Key::F);
  });
  stage.Loop().After(1500, [&stage] {
    stage.Snap("SendForm", "sending");
    stage.Type(Key::A);
    stage.Loop().After(100, [&stage] { stage.Type(Key::A); });
  });
  stage.Type(Key::O);
  stage.RunFor(2000);
}

void Messages(PictureStage& stage) {
  auto& machine = stage.Controller().TheMachine();
  machine.RaiseError(2);
  machine.RaiseBit(5);
  machine.RaiseBit(0);
  stage.RunFor(500);
  stage.Snap("FrontEnd", "error");
  stage.Type(Key::F9);
  stage.RunFor(500);
  stage.Type(Key::Down);
  stage.RunFor(500);
  stage.Snap("MessageForm");
  stage.Type(Key::Up);
  stage.RunFor(500);
  stage.Type(Key::H);
  stage.Snap("MessageForm", "help");
  stage.Type(Key::X);
  machine.ClearMessages();
  stage.RunFor(300);
}

void BatchCounter(PictureStage& stage) {
  auto& memory = stage.Controller().Memory();
  memory.SetVariable(82, 7);
  memory.SetVariable(83, 120);
  memory.SetVariable(84, 18);
  memory.SetVariable(85, 5);
  stage.Type(Key::F4);
  stage.Type(Key::B);
  stage.RunFor(300);
  stage.Snap("BatchForm");
  stage.Type(Key::S);
  stage.RunFor(100);
  stage.Snap("BatchForm", "editing");
  stage.Type(Key::C);
  memory.SetVariable(85, 20);
  stage.RunFor(300);
  stage.Snap("BatchForm", "more-than-wanted");
  stage.Type(Key::X);
  stage.Type(Key::X);
}

void UserKeys(PictureStage& stage, const char* state) {
  stage.Type(Key::F5);
  stage.RunFor(500);
  stage.Type(Key::D);
  stage.RunFor(300);
  stage.Snap("UserForm", state);
  stage.Type(Key::X);
}

/// A jog key held for that long, ms; the picture is taken while it is down.
void HoldJog(PictureStage& stage, Key arrow, int ms, const char* state) {
  stage.Desk().PressKey(toolkit::KeyStroke(arrow));
  stage.RunFor(ms);
  if (state != nullptr) stage.Snap("XYJogForm", state);
  stage.Desk().ReleaseKey(toolkit::KeyStroke(arrow));
  stage.RunFor(300);
}

void Jog(PictureStage& stage) {
  constexpr int HeldMs = 2000;
  stage.Type(Key::J);
  stage.RunFor(300);
  stage.Snap("XYJogForm");
  HoldJog(stage, Key::Right, HeldMs, "held");
  HoldJog(stage, Key::Left, HeldMs, nullptr);
  stage.Type(Key::D);
  stage.Type(Key::K);
  stage.Snap("XYJogForm", "distance");
  stage.Type(Key::G);
  stage.Type(Key::J);
  stage.Type(Key::X);
}

void MachineScreens(PictureStage& stage) {
  auto& memory = stage.Controller().Memory();
  memory.SetVariable(86, 1250);
  memory.SetVariable(87, 96.5);
  memory.SetVariable(88, 12.25);
  memory.SetVariable(89, 1187.75);
  stage.Type(Key::F3);
  stage.RunFor(300);
  stage.Snap("MachineForm");
  stage.Type(Key::R);
  stage.Type(static_cast<Key>('2'));
  stage.Snap("MachineForm", "asked-for");
  stage.Type(static_cast<Key>('3'));
  stage.RunFor(300);
  stage.Type(Key::R);
  stage.RunFor(3000);
  stage.Type(Key::L);
  stage.RunFor(300);
  stage.Snap("LoadForm");
  stage.Type(Key::X);
  stage.Type(Key::M);
  stage.Snap("MoveForm");
  stage.Type(Key::X);
  Jog(stage);
  stage.Type(Key::E);
}

void Run(PictureStage& stage) {
  auto& machine = stage.Controller().TheMachine();
  machine.CycleStart();
  stage.RunFor(30000);
  stage.Snap("FrontEnd");
  StatusScreens(stage);
  Laser(stage);
  UserKeys(stage, "running");
  SimulatorPanel panel(stage.Loop(), stage.Controller(), stage.System().Colours);
  panel.DockAt(stage.Desk());
  stage.RunFor(100);
  stage.Snap("SimulatorPanel");
  machine.FeedHold();
  stage.RunFor(500);
  stage.Snap("FrontEnd", "held");
  machine.RaiseError(3);
  stage.RunFor(500);
  stage.Snap("SimulatorPanel", "held");
  if (auto* faults = dynamic_cast<toolkit::Button*>(panel.Window().Find("FaultsButton"))) {
    faults->Press();
    stage.RunFor(100);
    stage.Snap("SimulatorPanel", "faults");
  }
  machine.ClearMessages();
  stage.WhenShows("WarningForm", [&stage] {
    stage.Snap("WarningForm", "refused");
    stage.Type(Key::O);
  });
  stage.Type(Key::F11);
  machine.Stop();
  machine.Release();
  stage.RunFor(500);
}

/// A name into one of the two boxes of the program screen.
void SetName(PictureStage& stage, const char* box, const char* name) {
  if (auto* combo = dynamic_cast<toolkit::PickBox*>(ControlOf(stage, "ProgramForm", box)))
    combo->SetText(name);
}

void ListsAndSearch(PictureStage& stage) {
  stage.Type(Key::F1);
  stage.Type(Key::L);
  stage.Type(Key::Down);
  stage.Snap("ProgListForm");
  stage.Type(Key::V);
  stage.Snap("ProgListForm", "view");
  stage.Type(Key::O);
  stage.Type(Key::C);
  SetName(stage, "DirectoryCombo", "");
  SetName(stage, "ProgramCombo", "e");
  stage.Type(Key::R);
  stage.RunFor(100);
  stage.Type(Key::Down);
  stage.Snap("SearchForm");
  stage.Type(Key::C);
}

void Editor(PictureStage& stage) {
  SetName(stage, "DirectoryCombo", "SHOP");
  SetName(stage, "ProgramCombo", "NEST");
  stage.Type(Key::E);
  stage.Type(Key::Down);
  stage.Snap("EditProgForm", "fresh");
  stage.Type(Key::W);
  stage.Type(Key::D);
  stage.Snap("EditProgForm");
  stage.Type(Key::C);
  stage.Type(Key::X);
}

void MarkSome(PictureStage& stage) {
  for (int line = 0; line < 3; ++line) {
    stage.Type(Key::Space);
    stage.Type(Key::Down);
  }
}

void FileActions(PictureStage& stage) {
  struct Row {
    char Number;
    const char* Screen;
    const char* State;  ///< empty for the picture of the documents
  };
  constexpr Row Rows[] = {{'1', "FileForm", "delete"},      {'2', "FileForm", "rename"},
                          {'3', "FileForm", "copy-as"},     {'4', "FileForm", ""},
                          {'5', "FileForm", "copy-to"},     {'6', "DirectoryForm", "create"},
                          {'7', "DirectoryForm", "delete"}, {'8', "DirectoryForm", ""}};
  stage.Type(Key::F6);
  stage.Snap("FileHandleForm");
  for (const Row& row : Rows) {
    stage.Type(static_cast<Key>(row.Number));
    if (row.Screen == std::string("FileForm")) MarkSome(stage);
    stage.Snap(row.Screen, row.State);
    stage.Type(Key::C);
    stage.RunFor(50);
  }
  stage.Type(Key::X);
}

void Graphics(PictureStage& stage) {
  stage.Type(Key::F7);
  stage.Type(Key::K);
  stage.Type(Key::L);
  stage.RunFor(100);
  stage.Snap("FrontEnd", "graphics");
  stage.Type(Key::K);
  stage.Type(Key::L);
  stage.Type(Key::X);
  stage.RunFor(100);
}

void TypeTimes(PictureStage& stage, int times, Key key) {
  for (int i = 0; i < times; ++i) stage.Type(key);
}

void ZoomAndPan(PictureStage& stage) {
  stage.Type(Key::F7);
  stage.Type(Key::Z);
  TypeTimes(stage, 12, Key::Left);
  TypeTimes(stage, 12, Key::Down);
  stage.Snap("FrontEnd", "zoom-first-corner");
  stage.Type(Key::S);
  TypeTimes(stage, 16, Key::Right);
  TypeTimes(stage, 12, Key::Up);
  stage.Snap("FrontEnd", "zoom-opposite-corner");
  stage.Type(Key::S);
  stage.Snap("FrontEnd", "zoomed");
  stage.Type(Key::P);
  TypeTimes(stage, 10, Key::Right);
  stage.Snap("FrontEnd", "pan");
  stage.Type(Key::S);
  stage.Snap("FrontEnd", "panned");
  stage.Type(Key::R);
  stage.Type(Key::O);
  stage.Snap("FrontEnd", "zoomed-out");
  stage.Type(Key::R);
  stage.Type(Key::X);
  stage.RunFor(100);
}

/// The program is stopped in the middle of an arc.
void StopInAnArc(PictureStage& stage) {
  constexpr int Record = 27;
  stage.Select("SHOP", "BRACKET-40");
  auto& machine = stage.Controller().TheMachine();
  machine.StopAt(Record, 60);
  machine.CycleStart();
  stage.RunFor(120000);
}

/// RestartForm stands, and the lamp of the machine has just gone on or out.
void AwaitLamp(PictureStage& stage, bool lit) {
  const auto isLit = [&] {
    return (stage.System().State.StatusWord & core::StatusBit::RestartReady) != 0;
  };
  stage.RunFor(300);
  for (int i = 0; i < 40 && isLit() == lit; ++i) stage.RunFor(50);
  for (int i = 0; i < 40 && isLit() != lit; ++i) stage.RunFor(50);
  stage.RunFor(100);
}

void RestartOfABlock(PictureStage& stage) {
  stage.WhenShows("BlockStartForm", [&stage] {
    stage.Snap("BlockStartForm", "fresh");
    stage.Type(Key::D);
    stage.Type(Key::D);
    TypeTimes(stage, 3, Key::Down);
    stage.Snap("BlockStartForm");
    stage.Type(Key::S);
  });
  stage.Type(Key::F1);
  stage.Type(Key::B);
  AwaitLamp(stage, false);
  stage.Snap("RestartForm", "block");
  stage.Type(Key::C);
  stage.RunFor(300);
}

void RestartOnThePlot(PictureStage& stage) {
  stage.Type(Key::F1);
  stage.Type(Key::V);
  stage.RunFor(100);
  stage.Snap("FrontEnd", "restart-first");
  TypeTimes(stage, 25, Key::N);
  stage.Snap("FrontEnd", "restart-marked");
  stage.Type(Key::T);
  TypeTimes(stage, 17, Key::N);
  stage.Snap("FrontEnd", "restart-split");
  stage.Type(Key::S);
  AwaitLamp(stage, false);
  stage.Snap("RestartForm");
  AwaitLamp(stage, true);
  stage.Snap("RestartForm", "lamp");
  stage.Type(Key::C);
  stage.RunFor(300);
}

void Restarts(PictureStage& stage) {
  StopInAnArc(stage);
  RestartOfABlock(stage);
  RestartOnThePlot(stage);
}

void LongNames(PictureStage& stage) {
  stage.Select("SHOP", LongName);
  stage.Type(Key::F11);
  stage.RunFor(300);
  stage.Snap("FrontEnd", "empty-slot");
  stage.Select("SHOP", "INCH-PLATE");
  stage.Snap("FrontEnd", "long-name");
}

/// A refusal: nothing is marked.
void DeleteNothing(PictureStage& stage) {
  stage.Type(static_cast<Key>('1'));
  stage.WhenShows("WarningForm", [&stage] {
    stage.Snap("WarningForm", "one-line");
    stage.Type(Key::O);
  });
  stage.Type(Key::O);
  stage.Type(Key::C);
}

/// A question: the name is taken.
void CopyOverAnother(PictureStage& stage) {
  stage.Type(static_cast<Key>('3'));
  stage.Type(Key::Down);
  stage.WhenShows("KeyboardForm", [&stage] {
    stage.TypeText("star");
    stage.Type(Key::Enter);
  });
  stage.Type(Key::Tab);
  stage.RunFor(300);
  stage.WhenShows("WarningForm", [&stage] {
    stage.WhenShows("WarningForm", [&stage] {
      stage.Snap("WarningForm");
      stage.Type(Key::C);
    });
    stage.Type(Key::O);
  });
  stage.Type(Key::O);
  stage.RunFor(300);
}

/// What the console says and asks by itself: a picture never shows a text that it does not have.
void Dialogs(PictureStage& stage) {
  stage.Type(Key::F6);
  DeleteNothing(stage);
  CopyOverAnother(stage);
  stage.Type(Key::X);
  stage.WhenShows("ShutdownForm", [&stage] {
    stage.Snap("ShutdownForm");
    stage.Type(Key::C);
  });
  stage.Type(Key::F12);
  stage.WhenShows("WarningForm", [&stage] {
    stage.Snap("WarningForm", "link-failure");
    stage.Controller().SetFaults({});
    stage.Type(Key::C);
  });
  simulator::FaultSettings silent;
  silent.Rate(simulator::FaultKind::Silence) = 1;
  stage.Controller().SetFaults(silent);
  stage.RunFor(30000);
}

/// A send then waits for the operator.
void WithoutHandshake(const std::filesystem::path& settings) {
  std::ifstream in(settings, std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  const std::string wires = "RTS/CTS";
  if (const auto at = text.find(wires); at != std::string::npos)
    text.replace(at, wires.size(), "NONE");
  std::ofstream(settings, std::ios::binary) << text;
}

}  // namespace

void PrepareInstallation(const std::string& folder) {
  namespace fs = std::filesystem;
  WithoutHandshake(fs::path(folder) / "Control.cms");
  const fs::path shop = fs::path(folder) / "Programs" / "SHOP";
  fs::copy_file(shop / "GASKET.prg", shop / (std::string(LongName) + ".prg"));
  // The lists show dates: the same ones in every picture.
  const std::chrono::system_clock::time_point noon =
      std::chrono::sys_days{std::chrono::year{2026} / 3 / 4} + std::chrono::hours{12};
  for (const auto& file : fs::recursive_directory_iterator(fs::path(folder) / "Programs"))
    fs::last_write_time(file.path(), fs::file_time_type::clock::from_sys(noon));
}

void PlayScenes(PictureStage& stage) {
  stage.Start();
  stage.Snap("FrontEnd", "empty");
  ProgramScreen(stage);
  stage.Select("SHOP", "NEST");
  stage.Snap("FrontEnd", "selected");
  UserKeys(stage, "");
  BatchCounter(stage);
  MachineScreens(stage);
  ListsAndSearch(stage);
  Editor(stage);
  FileActions(stage);
  Run(stage);
  Graphics(stage);
  ZoomAndPan(stage);
  Restarts(stage);
  Send(stage);
  Receive(stage);
  Messages(stage);
  LongNames(stage);
  Dialogs(stage);
}

}  // namespace torvane::tools
