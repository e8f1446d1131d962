// The whole of the supervision over a scripted controller, on a loop with virtual time.
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "RecordingScreens.h"
#include "SlotMaker.h"
#include "core/System.h"
#include "link/Downloads.h"
#include "link/LinkFixture.h"
#include "link/Trio.h"
#include "platform/ScriptedPort.h"
#include "platform/VirtualLoop.h"
#include "supervision/ActiveStore.h"
#include "supervision/MessageList.h"
#include "supervision/PollTrio.h"
#include "supervision/ProgramChange.h"

namespace torvane::tests {

using namespace torvane::supervision;

using Lines = std::vector<std::string>;

struct Bench : SlotMaker {
  Events Log;
  core::System System;
  platform::VirtualLoop Loop;
  platform::ScriptedPort Port{Loop};
  tests::FakeController Controller{Loop, Port};
  tests::FakeScreens LinkScreens;
  link::Trio Trio{Loop, Port, Files, System.Link, System.Directories, LinkScreens};
  link::Downloads Downloads{Trio, Files, System.Directories, System.Programs};
  RecordingDialogs Dialogs{Log};
  RecordingPollScreens Screens{Log};
  RecordingProgramScreens ProgramScreens{Log};
  RecordingPlot Plot{System, Trio, Log};
  MessageList Messages;
  supervision::Poll Poll{System, Trio, Downloads, Files, Screens, Plot, Messages};
  ProgramParts Parts{System, Trio, Downloads, Files, Dialogs, ProgramScreens, Plot, Poll};
  ActiveStore Store{Parts};
  ProgramChange Change{Parts, Store};

  Bench() {
    SetDirectories(System.Directories);
    System.Link.TrioLinkEnabled = true;
    System.Machine.LoadPositionY = 77.25F;
    static_cast<void>(Port.Open({}));
    Controller.OnLine = [this](const std::string& line) { Log.push_back("> " + line); };
  }

  /// The lines that have gone out since the last call.
  Lines Sent() { return std::exchange(Controller.Received, {}); }

  /// Everything that has happened since the last call.
  Events Happened() { return std::exchange(Log, {}); }

  /// The slot holds a program of `tableLines` lines, with all its files.
  void Select(int slot, const std::string& name, int tableLines) {
    PutSlot(slot, name, tableLines);
    auto& program = System.Programs[slot];
    program.Selected = true;
    program.ProgramName = name;
    program.DirectoryName = "SHOP";
    program.TableLines = static_cast<std::int16_t>(tableLines);
    program.BodyLines = 2;
    program.LoadY = 125.5F;
  }

  /// "TABLE(slot,first)" to "TABLE(slot,last)".
  static Lines Table(int slot, int first, int last) {
    Lines lines;
    for (int n = first; n <= last; ++n) lines.push_back(TableLine(slot, n));
    return lines;
  }
  static Lines Join(std::initializer_list<Lines> parts) {
    Lines all;
    for (const auto& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
  }
};

}  // namespace torvane::tests
