// A whole console without windows: an installation on disk, a controller that answers as told, and
// screens that write down what was asked of them, all on virtual time.
#pragma once

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "app/Shutdown.h"
#include "app/StartUp.h"
#include "core/SettingsModule.h"
#include "core/SlotFiles.h"
#include "core/System.h"
#include "files/CommsModule.h"
#include "link/Downloads.h"
#include "link/Trio.h"
#include "partprogram/DrawRecord.h"
#include "platform/DiskFileSystem.h"
#include "platform/ScriptedPort.h"
#include "platform/SessionEnd.h"
#include "platform/VirtualLoop.h"
#include "supervision/ActiveStore.h"
#include "supervision/MessageList.h"
#include "supervision/PollScreens.h"
#include "supervision/PollTrio.h"
#include "supervision/ProgramScreens.h"
#include "support/Faults.h"
#include "support/RecordingFiles.h"
#include "support/TempDirectory.h"

namespace torvane::tests {

using namespace torvane::app;

using Events = std::vector<std::string>;

/// Every interface that the floors below ask their screens for.
class RecordedScreens final : public StartScreens,
                              public link::LinkScreens,
                              public supervision::ProgramScreens,
                              public supervision::PollScreens,
                              public supervision::PlotStage,
                              public platform::SessionEnd {
 public:
  RecordedScreens(Events& events, core::System& system, platform::FileSystem& files)
      : events_(events), system_(system), files_(files) {}

  bool FrontEndUp = false;
  bool WarningAnswer = false;
  std::function<void()> OnServiceShutdown;
  std::function<void()> OnSplash;
  std::map<int, std::string> Captions;
  int PressedSlot = 0;

  // StartScreens
  void ShowSplash() override {
    Note("show SplashForm");
    if (OnSplash) OnSplash();
  }
  void UnloadSplash() override { Note("unload SplashForm"); }
  void SystemMessageBox(std::string_view title, std::string_view text) override {
    Note("box " + std::string(title) + " | " + std::string(text));
  }
  void ShowFrontEnd() override {
    FrontEndUp = true;
    Note("show FrontEnd");
  }
  [[nodiscard]] bool FrontEndVisible() const override { return FrontEndUp; }
  void UnloadFrontEnd() override {
    FrontEndUp = false;
    Note("unload FrontEnd");
  }
  void LoadPlotConfig() override {
    core::LoadPlotConfig(files_, system_.Directories, system_.Plot, system_.Console);
  }

  // LinkScreens
  bool ShowWarning(std::string_view text, link::WarningMode, link::WarningStyle) override {
    Note("warning " + std::string(text.substr(0, text.find('\n'))));
    return WarningAnswer;
  }
  void LockForms(bool locked, std::string_view) override { Note(locked ? "lock" : "unlock"); }
  void ShutdownToService() override {
    if (OnServiceShutdown) OnServiceShutdown();
  }
  void SetBusy(bool busy) override { Note(busy ? "busy" : "ready"); }
  void Beep() override {}

  // ProgramScreens
  [[nodiscard]] std::vector<std::string> VisibleForms() const override { return {}; }
  void SetProgramCaption(core::Slot slot, std::string_view caption) override {
    Captions[slot.Number()] = caption;
    Note("caption " + std::string(caption));
  }
  void PressProgramButton(core::Slot slot) override {
    PressedSlot = slot.Number();
    Note("press program " + std::to_string(slot.Number()));
  }
  void OpenSetupForm() override {}
  void UnloadProgramForm() override {}

  // PollScreens
  [[nodiscard]] bool Offers(supervision::PollStage) const override { return false; }
  void RunStage(supervision::PollStage stage) override {
    if (stage == supervision::PollStage::Batch) Note("show batch");
  }
  void ShowFigure(int, std::string_view) override {}
  [[nodiscard]] std::uint32_t MessageButtonBackground() const override { return 0; }
  void PaintMessageButton(std::uint32_t, std::uint32_t) override {}
  void MarkMessageButton(supervision::MessageState) override {}

  // PlotStage
  void RealTimePlot() override {}
  void RefreshPlot(core::Slot slot) override { Note("plot " + std::to_string(slot.Number())); }
  void ShowPlotBox(core::Slot) override {}

  // SessionEnd
  void EndSession() override { Note("end session"); }
  void StartProgram(std::string_view path) override { Note("start " + std::string(path)); }
  void EndProcess() override { Note("end process"); }

 private:
  void Note(const std::string& what) { events_.push_back(what); }

  Events& events_;
  core::System& system_;
  platform::FileSystem& files_;
};

class AppFixture : public ::testing::Test {
 public:
  tests::TempDirectory Temp;
  platform::DiskFileSystem Disk{Temp.Path()};
  Events Log;
  tests::RecordingFiles Files{Disk, Log};
  platform::VirtualLoop Loop;
  platform::ScriptedPort Port{Loop};
  core::System System;
  RecordedScreens Screens{Log, System, Files};
  link::Trio Trio{Loop, Port, Files, System.Link, System.Directories, Screens};
  link::Downloads Downloads{Trio, Files, System.Directories, System.Programs};
  supervision::MessageList Messages;
  supervision::Poll Poll{System, Trio, Downloads, Files, Screens, Screens, Messages};
  supervision::ActiveStore Store{{System, Trio, Downloads, Files, Screens, Screens, Screens, Poll}};
  platform::ScriptedPort SecondPort{Loop};
  files::CommsModule Comms{System, Loop, Files, SecondPort};
  Shutdown End{{System, Files, Trio, Poll, Comms, Screens, Screens}};

  std::map<std::string, std::string> Values;  ///< by expression; others answer 0
  std::int64_t ReplyMs = 0;                   ///< how long the controller takes over a line
  bool Silent = false;
  std::string SilentFrom;  ///< silent from the line that holds this
  std::string Line;

  AppFixture() {
    Port.SetPeer([this](std::string_view bytes) { Receive(bytes); });
    Screens.OnServiceShutdown = [this] { End.ShutdownToService(); };
    PutInstallation();
  }

  bool Start() { return StartUp({System, Loop, Files, Trio, Downloads, Store, Comms, Screens}); }

  /// The event list without the notes of LastFile.txt.
  [[nodiscard]] Events WithoutNotes() const {
    Events events;
    std::copy_if(Log.begin(), Log.end(), std::back_inserter(events),
                 [](const std::string& event) { return !event.starts_with("note "); });
    return events;
  }
  /// The lines that reached the controller.
  [[nodiscard]] Events Sent() const {
    Events lines;
    for (const auto& event : Log) {
      if (event.starts_with("send ")) lines.push_back(event.substr(5));
    }
    return lines;
  }
  [[nodiscard]] bool Happened(std::string_view event) const {
    return std::find(Log.begin(), Log.end(), event) != Log.end();
  }

  /// The smallest installation that starts.
  void PutInstallation() const {
    Temp.Put("Control.cfg", ".\\\r\n.\\Programs\\\r\nSHOP\r\n1\r\n******\r\n");
    Temp.MakeDirectory("Programs/SHOP");
    std::string machine = "Name : TEST\r\nType : 1\r\nY : 1\r\n";
    for (int line = 4; line <= 18; ++line) machine += line == 8 ? "77\r\n" : "0\r\n";
    Temp.Put("Data/Machine.dat", machine);
    Temp.Put("Data/Machine.stn", "1,LASER,1,1.5,2.5,12.5,0\r\n******\r\n");
    Temp.Put("Data/Machine.prm", "; parameters\r\nSYS(3)=20000\r\nVR(59)=1000\r\n!VR(60)=1\r\n");
    Temp.Put("Messages/IO.msg", "1,One\r\n******\r\n");
    Temp.Put("Messages/Logic.msg", "0,Zero,\r\n******\r\n");
    Temp.Put("Control.cms", "Transfer\r\n2\r\n9600\r\nN\r\n8\r\n1\r\nNONE\r\n");
    Temp.Put("Trio.cms", "Controller\r\n1\r\n9600\r\nN\r\n8\r\n1\r\nNONE\r\n");
  }

  /// A selected program of `tableLines` lines in a slot.
  void PutProgram(int slot, const std::string& name, int tableLines, float loadY = 5.5F) const {
    const std::string base = "Actvprg" + std::to_string(slot) + ".";
    core::ActiveProgram program;
    program.ProgramName = name;
    program.DirectoryName = "SHOP";
    program.SourcePath = ".\\Programs\\SHOP\\" + name;
    program.BodyLines = 1;
    program.TableLines = static_cast<std::int16_t>(tableLines);
    program.LoadY = loadY;
    Temp.Put(base + "cfg", core::SlotConfigText(program));
    Temp.Put(base + "prg", "G00 X0 Y0\r\n");
    Temp.Put(base + "rnd", std::string(80, ' '));
    std::string table;
    for (int line = 1; line <= tableLines; ++line) {
      std::string record = "TABLE(" + std::to_string(slot) + "," + std::to_string(line) + ")";
      record.resize(80, ' ');
      table += record;
    }
    Temp.Put(base + "tbl", table);
    partprogram::DrawRecord header;
    header.Code = 100;
    header[partprogram::Mark::RecordCount] = 1;
    std::array<char, partprogram::DrawRecordSize> bytes{};
    partprogram::EncodeRecord(header, bytes);
    Temp.Put(base + "drw", std::string_view(bytes.data(), bytes.size()));
    Temp.Put(base + "krw", std::string_view(bytes.data(), bytes.size()));
    Temp.Put(base + "btc", core::BatchText({1, 2, 3, 4, 5}));
  }

 private:
  void Receive(std::string_view bytes) {
    for (const char byte : bytes) {
      if (byte != '\r') {
        Line += byte;
        continue;
      }
      const std::string line = std::exchange(Line, {});
      Log.push_back("send " + line);
      if (!SilentFrom.empty() && line.find(SilentFrom) != std::string::npos) Silent = true;
      if (!Silent) Loop.After(ReplyMs, [this, reply = Reply(line)] { Port.Deliver(reply); });
    }
  }
  [[nodiscard]] std::string Reply(const std::string& line) const {
    std::string reply = line + "\r\n";
    if (line.starts_with("? ")) {
      const auto value = Values.find(line.substr(2));
      reply += (value == Values.end() ? "0" : value->second) + "\r\n";
    }
    return reply + ">>";
  }
};

}  // namespace torvane::tests
