// A link on a loop with virtual time, a controller that answers as told, and screens that write
// down what was asked of them.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "core/DirectorySet.h"
#include "core/LinkSettings.h"
#include "link/Trio.h"
#include "platform/ScriptedPort.h"
#include "platform/VirtualLoop.h"
#include "support/MemoryFiles.h"

namespace torvane::tests {

using namespace torvane::link;

using Lines = std::vector<std::string>;

/// The controller's end of the line. It echoes, answers values from a table, and notes a line that
/// comes before the reply to the last one has gone out whole.
class FakeController {
 public:
  FakeController(platform::VirtualLoop& loop, platform::ScriptedPort& port)
      : loop_(loop), port_(port) {
    port_.SetPeer([this](std::string_view bytes) { Receive(bytes); });
  }

  Lines Received;
  std::map<std::string, std::string> Values;   ///< by expression; others answer 0
  std::map<std::string, std::string> Replies;  ///< whole replies, by line
  int ByteDelayMs = 0;                         ///< 0: a reply comes in one piece, at once
  bool Silent = false;
  int Overlaps = 0;  ///< lines that came into a reply that was still going out
  std::function<void(const std::string&)> OnLine;  ///< sees each line before it is answered

  [[nodiscard]] std::string Reply(const std::string& line) const {
    const auto special = Replies.find(line);
    if (special != Replies.end()) return special->second;
    std::string reply = line + "\r\n";
    if (line.rfind("? ", 0) == 0) {
      const auto value = Values.find(line.substr(2));
      reply += (value == Values.end() ? "0" : value->second) + "\r\n";
    }
    return reply + ">>";
  }

  void Send(const std::string& reply) {
    if (ByteDelayMs == 0) return port_.Deliver(reply);
    int at = 0;
    for (const char byte : reply) {
      ++pending_;
      loop_.After(at += ByteDelayMs, [this, byte] {
        --pending_;
        port_.Deliver({&byte, 1});
      });
    }
  }

 private:
  void Receive(std::string_view bytes) {
    for (const char byte : bytes) {
      if (byte != '\r') {
        line_ += byte;
        continue;
      }
      if (pending_ > 0) ++Overlaps;
      const std::string line = std::exchange(line_, {});
      Received.push_back(line);
      if (OnLine) OnLine(line);
      if (!Silent) Send(Reply(line));
    }
  }

  platform::VirtualLoop& loop_;
  platform::ScriptedPort& port_;
  std::string line_;
  int pending_ = 0;
};

class FakeScreens final : public LinkScreens {
 public:
  Lines Calls;
  Lines Warnings;
  bool Answer = false;
  std::function<void()> DuringDialog;
  std::function<void()> OnShutdown;

  bool ShowWarning(std::string_view text, WarningMode mode, WarningStyle style) override {
    if (up_) {
      ++Busy;
      return false;
    }
    up_ = true;
    Warnings.emplace_back(text);
    Calls.push_back("ShowWarning " + std::to_string(static_cast<int>(mode)) + " " +
                    std::to_string(static_cast<int>(style)));
    if (DuringDialog) DuringDialog();
    up_ = false;
    return Answer;
  }
  void LockForms(bool locked, std::string_view exempt) override {
    Calls.push_back((locked ? "lock " : "unlock ") + std::string(exempt));
  }
  void SetBusy(bool) override {}
  void Beep() override {}
  void ShutdownToService() override {
    Calls.emplace_back("ShutdownToService");
    if (OnShutdown) OnShutdown();
  }

  int Busy = 0;  ///< warnings refused because one was up

 private:
  bool up_ = false;
};

struct LinkFixture {
  platform::VirtualLoop Loop;
  platform::ScriptedPort Port{Loop};
  FakeController Controller{Loop, Port};
  tests::MemoryFiles Files;
  FakeScreens Screens;
  core::LinkSettings Settings;
  core::DirectorySet Directories;
  Trio Link{Loop, Port, Files, Settings, Directories, Screens};

  LinkFixture() {
    Directories.RootDirectory = "C:\\ROOT\\";
    Directories.DataDirectory = "C:\\ROOT\\Data\\";
    Directories.ServiceDirectory = "C:\\ROOT\\Service\\";
    Settings.CommPort = 1;
    Settings.PortSettings = "9600,N,8,1";
    Settings.TrioLinkEnabled = true;
    static_cast<void>(Port.Open({}));
  }

  [[nodiscard]] std::string PollLog() const { return Files.Text("C:\\ROOT\\Service\\Polling.txt"); }
  [[nodiscard]] std::string ErrorLog() const { return Files.Text("C:\\ROOT\\Service\\Errors.txt"); }
};

class LinkTest : public ::testing::Test, protected LinkFixture {};

}  // namespace torvane::tests
