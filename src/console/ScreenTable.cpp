#include "console/ScreenTable.h"

#include "console/BatchForm.h"
#include "console/BlockStartForm.h"
#include "console/DirectoryForm.h"
#include "console/EditProgForm.h"
#include "console/FileForm.h"
#include "console/FileHandleForm.h"
#include "console/FrontEnd.h"
#include "console/KeyboardForm.h"
#include "console/LaserStatusForm.h"
#include "console/LoadForm.h"
#include "console/MachineForm.h"
#include "console/MessageForm.h"
#include "console/MoveForm.h"
#include "console/NumberForm.h"
#include "console/PositionForms.h"
#include "console/ProgListForm.h"
#include "console/ProgramForm.h"
#include "console/RestartForm.h"
#include "console/SearchForm.h"
#include "console/SendForm.h"
#include "console/SetupForm.h"
#include "console/ShutdownForm.h"
#include "console/SplashForm.h"
#include "console/StatusMenuForm.h"
#include "console/UserForm.h"
#include "console/ViewProgForm.h"
#include "console/WarningForm.h"
#include "console/XYJogForm.h"
#include "core/ScreenNames.h"
#include "supervision/WarningBox.h"

namespace torvane::console {

namespace {

namespace Names = core::ScreenNames;

template <class Kind>
std::unique_ptr<Screen> Make(const ScreenStart& start) {
  return std::make_unique<Kind>(start);
}

/// Pads and dialogs take every key themselves and leave CurrentForm alone.
ScreenTraits Modal(const char* name, const char* panel, const char* title) {
  ScreenTraits traits{.Name = name, .PanelName = panel, .Title = title};
  traits.Keys = GlobalKeys::None;
  traits.Current = false;
  return traits;
}

ScreenTraits Dialog(const char* name, const char* panel, const char* title) {
  ScreenTraits traits = Modal(name, panel, title);
  traits.Centred = true;
  return traits;
}

/// The characters of the caption are the pad's own keys.
ScreenTraits Pad(const char* name, const char* panel, const char* title) {
  ScreenTraits traits = Modal(name, panel, title);
  traits.Accelerators = false;
  return traits;
}

constexpr KeyMask BlockStartKeys = GlobalKeys::NoSlots.Without({toolkit::Key::F1});

ScreenTraits WarningTraits() {
  ScreenTraits traits = Dialog(Names::WarningForm, "WarningPanel", supervision::WarningHeader);
  traits.Accelerators = false;
  traits.LiveWhileLocked = true;
  return traits;
}

/// The lists, the search and the editor: the operator stays in them until he has done.
ScreenTraits ProgramChild(const char* name, const char* panel, const char* title) {
  ScreenTraits traits{.Name = name, .PanelName = panel, .Title = title};
  traits.Parent = Names::ProgramForm;
  traits.LocksOthers = true;
  traits.SwallowsTyping = true;
  return traits;
}

ScreenTraits EditorTraits() {
  ScreenTraits traits = ProgramChild(Names::EditProgForm, "EditProgPanel", "PROGRAM EDIT");
  traits.SwallowsTyping = false;
  // A program in the editor cannot be left for the program screens.
  traits.Keys = {toolkit::Key::K,  toolkit::Key::F2, toolkit::Key::F3, toolkit::Key::F4,
                 toolkit::Key::F6, toolkit::Key::F7, toolkit::Key::F9, toolkit::Key::F12};
  return traits;
}

/// Screens that belong together.
using Family = std::vector<ScreenRow>;

/// The main screen, dialogs, pads and messages.
Family FrameRows() {
  return {
      {{.Name = Names::FrontEnd,
        .Current = false,
        .Backdrop = true,
        .Accelerators = false,
        .LiveWhileLocked = true},
       Make<FrontEnd>},
      {Dialog(Names::SplashForm, "", ""), Make<SplashForm>},
      {WarningTraits(), Make<WarningForm>},
      {Dialog(Names::ShutdownForm, "ShutdownPanel", "TORVANE 32"), Make<ShutdownForm>},
      {Pad(Names::NumberForm, "NumberPanel", "NUMBER PAD"), Make<NumberForm>},
      {Pad(Names::KeyboardForm, "KeyboardPanel", "KEY PAD"), Make<KeyboardForm>},
      {{.Name = Names::MessageForm,
        .PanelName = "MessagePanel",
        .Title = "MESSAGES",
        .Accelerators = false,
        .LiveWhileLocked = true},
       Make<MessageForm>},
  };
}

/// Programs: selection, their lists and editor, restarts.
Family ProgramRows() {
  return {
      {{.Name = Names::ProgramForm, .PanelName = "ProgramPanel", .Title = "PROGRAM"},
       Make<ProgramForm>},
      {{.Name = Names::SetupForm,
        .PanelName = "SetupPanel",
        .Title = "PROGRAM INFORMATION",
        .Keys = GlobalKeys::NoSlots},
       Make<SetupForm>},
      {{.Name = Names::BlockStartForm,
        .PanelName = "BlockStartPanel",
        .Title = "BLOCK RESTART",
        .Keys = BlockStartKeys,
        .Current = false},
       Make<BlockStartForm>},
      {{.Name = Names::RestartForm,
        .PanelName = "RestartPanel",
        .Title = "RESTART",
        .Keys = KeyMask{toolkit::Key::F2, toolkit::Key::F9},
        .Centred = true,
        .LocksOthers = true},
       Make<RestartForm>},
      {ProgramChild(Names::ProgListForm, "ProgramPanel", "PROGRAMS"), Make<ProgListForm>},
      {ProgramChild(Names::SearchForm, "SearchPanel", "SEARCH"), Make<SearchForm>},
      {EditorTraits(), Make<EditProgForm>},
  };
}

/// Moving the machine, and the keypad of the installation.
Family MachineRows() {
  return {
      {{.Name = Names::MachineForm, .PanelName = "MachinePanel", .Title = "MACHINE"},
       Make<MachineForm>},
      {{.Name = Names::LoadForm, .PanelName = "LoadPanel", .Title = "LOAD POSITION"},
       Make<LoadForm>},
      {{.Name = Names::MoveForm, .PanelName = "MovePanel", .Title = "MOVE", .SwallowsTyping = true},
       Make<MoveForm>},
      {{.Name = Names::XYJogForm,
        .PanelName = "JogPanel",
        .Title = "X Y  JOG",
        .Keys = GlobalKeys::AllButK},
       Make<XYJogForm>},
      {{.Name = Names::UserForm,
        .PanelName = "UserPanel",
        .Title = "KEYPAD",
        .Keys = GlobalKeys::AllButK},
       Make<UserForm>},
  };
}

/// What is read from the machine while it works.
Family StatusRows() {
  return {
      {{.Name = Names::StatusMenuForm, .PanelName = "StatusPanel", .Title = "STATUS"},
       Make<StatusMenuForm>},
      {{.Name = Names::XYPositionForm, .PanelName = "PositionPanel", .Title = "POSITION"},
       Make<XYPositionForm>},
      {{.Name = Names::AuxPositionForm, .PanelName = "PositionPanel", .Title = "AUXILLARY"},
       Make<AuxPositionForm>},
      {{.Name = Names::ViewProgForm,
        .PanelName = "ViewProgPanel",
        .Title = "PROGRAM",
        .Keys = GlobalKeys::NoSlots},
       Make<ViewProgForm>},
      {{.Name = Names::LaserStatusForm,
        .PanelName = "StatusPanel",
        .Title = "LASER",
        .Keys = GlobalKeys::NoSlots},
       Make<LaserStatusForm>},
      {{.Name = Names::BatchForm,
        .PanelName = "BatchPanel",
        .Title = "BATCH",
        .Keys = GlobalKeys::NoSlots},
       Make<BatchForm>},
  };
}

/// Files and the second port.
Family FileRows() {
  return {
      {{.Name = Names::FileHandleForm, .PanelName = "FilePanel", .Title = "FILE HANDLING"},
       Make<FileHandleForm>},
      {{.Name = Names::FileForm, .PanelName = "FilePanel", .Parent = Names::FileHandleForm},
       Make<FileForm>},
      {{.Name = Names::DirectoryForm,
        .PanelName = "DirectoryPanel",
        .Parent = Names::FileHandleForm},
       Make<DirectoryForm>},
      {{.Name = Names::SendForm,
        .PanelName = "SendPanel",
        .Title = "RS232 COMMS - SEND PROGRAM",
        .Parent = Names::FileHandleForm,
        .SwallowsTyping = true},
       Make<SendForm>},
  };
}

}  // namespace

const std::vector<ScreenRow>& ScreenTable() {
  static const Family Table = [] {
    Family all;
    for (const auto family : {FrameRows, ProgramRows, MachineRows, StatusRows, FileRows}) {
      const Family rows = family();
      all.insert(all.end(), rows.begin(), rows.end());
    }
    return all;
  }();
  return Table;
}

}  // namespace torvane::console
