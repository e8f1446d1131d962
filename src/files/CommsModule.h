// The second serial port: a receiver that always listens, and the operator's sends. Both use the
// one port, never at the same time.
#pragma once

#include <string>
#include <vector>

#include "core/System.h"
#include "files/ProgramSender.h"
#include "files/Receiver.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"
#include "platform/SerialPort.h"

namespace torvane::files {

class CommsModule {
 public:
  /// All of it outlives this.
  CommsModule(core::System& system, platform::EventLoop& loop, platform::FileSystem& files,
              platform::SerialPort& port);
  ~CommsModule();
  CommsModule(const CommsModule&) = delete;
  CommsModule& operator=(const CommsModule&) = delete;

  /// Reads Control.cms. Throws RuntimeFault where it is missing.
  void LoadSettings();
  /// The receive state, and the port opened where it is used.
  void SetUpReceiver();

  /// The port is there to be used: its number is 1 or more, and not that of the controller.
  [[nodiscard]] bool PortUsed() const;

  // The sending screen
  /// At its load: nothing is received while it is open; a program that is half there is dropped.
  void BeginSending();
  /// Sends the programs one after another; waits. An abort ends one program only. Nothing while
  /// another call is under way.
  void SendPrograms(const std::vector<SendItem>& items, SendScreen& screen);
  void Force() { sender_.Force(); }
  void Abort() { sender_.Abort(); }
  /// At its unload: the receiver listens again.
  void EndSending();

  /// The end of the program: a send ends at once, the port is closed, Receive.tmp goes.
  void Close();

  [[nodiscard]] Receiver& Reception() { return receiver_; }
  [[nodiscard]] const Receiver& Reception() const { return receiver_; }

 private:
  class Sending;

  void OpenReceiver();
  void HandleReceived();

  core::System& system_;
  platform::FileSystem& files_;
  platform::SerialPort& port_;
  Receiver receiver_;
  ProgramSender sender_;
  bool screenUp_ = false;  ///< the sending screen is open, so nothing is received
  bool sending_ = false;   ///< SendPrograms is under way
  bool closed_ = false;
};

}  // namespace torvane::files
