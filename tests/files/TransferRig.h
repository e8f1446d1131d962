// The second port on virtual time: a programs root on disk, disks that fail when asked to, and a
// screen that writes down what it was asked to show.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "core/System.h"
#include "core/TransferFile.h"
#include "files/CommsModule.h"
#include "platform/DiskFileSystem.h"
#include "platform/RuntimeFault.h"
#include "platform/ScriptedPort.h"
#include "platform/VirtualLoop.h"
#include "support/TempDirectory.h"

namespace torvane::tests {

using namespace torvane::files;

/// Writes to the paths that `Refuse` names are faults.
class FailingFiles final : public platform::FileSystem {
 public:
  explicit FailingFiles(platform::FileSystem& inner) : inner_(inner) {}

  std::function<bool(std::string_view path)> Refuse;

  bool FileExists(std::string_view path) const override { return inner_.FileExists(path); }
  bool DirectoryExists(std::string_view path) const override {
    return inner_.DirectoryExists(path);
  }
  void MakeDirectory(std::string_view path) override { Check(path), inner_.MakeDirectory(path); }
  void RemoveDirectory(std::string_view path) override {
    Check(path), inner_.RemoveDirectory(path);
  }
  std::string ReadFile(std::string_view path) const override { return inner_.ReadFile(path); }
  void ReplaceFile(std::string_view path, std::string_view bytes) override {
    Check(path), inner_.ReplaceFile(path, bytes);
  }
  void OverwriteFile(std::string_view path, std::string_view bytes) override {
    Check(path), inner_.OverwriteFile(path, bytes);
  }
  void AppendFile(std::string_view path, std::string_view bytes) override {
    Check(path), inner_.AppendFile(path, bytes);
  }
  std::uint64_t FileSize(std::string_view path) const override { return inner_.FileSize(path); }
  void DeleteFile(std::string_view path) override { Check(path), inner_.DeleteFile(path); }
  void CopyFile(std::string_view from, std::string_view to) override {
    Check(to), inner_.CopyFile(from, to);
  }
  void RenameFile(std::string_view from, std::string_view to) override {
    Check(to), inner_.RenameFile(from, to);
  }
  std::vector<std::string> ListFiles(std::string_view pattern) const override {
    return inner_.ListFiles(pattern);
  }
  std::vector<std::string> ListDirectories(std::string_view path) const override {
    return inner_.ListDirectories(path);
  }
  std::unique_ptr<platform::RecordFile> OpenRecords(std::string_view path,
                                                    std::size_t recordSize) const override {
    return inner_.OpenRecords(path, recordSize);
  }

 private:
  void Check(std::string_view path) const {
    if (Refuse && Refuse(path)) throw platform::RuntimeFault(std::string(path), "the disk is full");
  }

  platform::FileSystem& inner_;
};

/// What was shown, one text each.
class WrittenSendScreen final : public SendScreen {
 public:
  std::vector<std::string> Log;
  std::vector<int> Values;  ///< of the bar
  int LastPercent = -1;
  int LastSeconds = -1;

  void ShowSendText(std::string_view text) override { Log.push_back("text " + std::string(text)); }
  void ShowWaitingForStart() override { Log.emplace_back("wait"); }
  void ShowSending(int maximum) override { Log.push_back("send " + std::to_string(maximum)); }
  void ShowProgress(int value) override { Values.push_back(value); }
  void ShowRemaining(int percent, int seconds) override {
    LastPercent = percent;
    LastSeconds = seconds;
  }
  void HideProgress() override { Log.emplace_back("hide"); }
  void WarnCannotSend(std::string_view name) override {
    Log.push_back("cannot send " + std::string(name));
  }
};

struct TransferRig {
  tests::TempDirectory Temp;
  platform::DiskFileSystem Disk{Temp.Path()};
  FailingFiles Files{Disk};
  platform::VirtualLoop Loop;
  platform::ScriptedPort Port{Loop};
  core::System System;
  CommsModule Comms{System, Loop, Files, Port};
  WrittenSendScreen Screen;

  TransferRig() {
    for (const char* name : {"Service", "Messages", "Programs/SHOP"}) Temp.MakeDirectory(name);
    core::DirectorySet& set = System.Directories;
    set.RootDirectory = ".\\";
    set.ServiceDirectory = "Service\\";
    set.MessageDirectory = "Messages\\";
    set.ProgramRoot = ".\\Programs\\";
    set.ProgramDirectoryName = "SHOP";
    set.ProgramDirectory = ".\\Programs\\SHOP\\";
    System.Link.CommPort = 1;
    System.Comms.CommsPort = 2;
    System.Comms.CommsSettings = "9600,N,8,1";
    System.Comms.CommsStartMode = core::StartMode::Character;
    System.Comms.CommsStartChar = "*";
    System.Comms.CommsEndOfLine = "\r\n";
    System.Comms.CommsPostamble = "%";
  }

  /// The receiver listens.
  void Listen() { Comms.SetUpReceiver(); }
  /// Bytes come on the line, and the console has seen them.
  void Come(std::string_view bytes) {
    Port.Deliver(bytes);
    Loop.RunFor(0);
  }

  [[nodiscard]] std::string Program(const std::string& name) const {
    return Temp.Get("Programs/" + name + ".prg");
  }
  [[nodiscard]] std::string Note() const { return Temp.Get("Messages/Receive.hlp"); }
  [[nodiscard]] std::string Errors() const { return Temp.Get("Service/Errors.txt"); }
  /// Every program below the root with its text.
  [[nodiscard]] std::map<std::string, std::string> Programs() const {
    std::map<std::string, std::string> programs;
    for (const std::string& directory : Disk.ListDirectories("Programs")) {
      for (const std::string& name : Disk.ListFiles("Programs\\" + directory + "\\*.*")) {
        programs[directory + "/" + name] = Temp.Get("Programs/" + directory + "/" + name);
      }
    }
    return programs;
  }

  /// A program of the shop, as the list offers it.
  [[nodiscard]] SendItem Item(const std::string& name, std::string_view text) const {
    Temp.Put("Programs/SHOP/" + name + ".prg", text);
    return {"SHOP", name, ".\\Programs\\SHOP\\" + name + ".prg", text.size()};
  }
  /// The sending screen stands, and these programs go out.
  void Send(const std::vector<SendItem>& items) {
    Comms.BeginSending();
    Comms.SendPrograms(items, Screen);
  }
};

}  // namespace torvane::tests
