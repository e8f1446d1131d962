// Sends programs over the second port, one at a time, under the eye of the operator.
//
//   phase            event                                              next
//   Idle, Postamble  a program is offered                               WaitingForStart
//   WaitingForStart  the start condition of Control.cms, or FORCE       Sending
//   WaitingForStart  ABORT                                              stays; port closed
//   Sending          the program's last character, or ABORT             Postamble
//   Postamble        the postamble has left, a break, a time-out, ABORT stays; port closed
//   any              the sending screen loads                           Idle
//
// Nobody acknowledges and nothing is repeated: the handshake of the port paces the line, and the
// length of the output queue paces the program, so that an abort acts soon.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/System.h"
#include "files/SendScreen.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"
#include "platform/SerialPort.h"

namespace torvane::files {

/// The output queue is kept below this many characters.
inline constexpr std::size_t SendQueueLimit = 64;

/// A program as the list shows it.
struct SendItem {
  std::string Directory;
  std::string Name;
  std::string Path;        ///< of its ".prg"
  std::uint64_t Size = 0;  ///< characters
};

class ProgramSender {
 public:
  ProgramSender(core::System& system, platform::EventLoop& loop, platform::FileSystem& files,
                platform::SerialPort& port);

  /// Offers, sends and closes; waits. Not to be called while a program is under way.
  void SendProgram(const SendItem& item, SendScreen& screen);

  /// Starts what waits for its start, whatever the start mode.
  void Force();
  /// Ends the program in hand.
  void Abort();

  // Events of the port
  void HandleReceived();
  void HandleLineEvent(platform::LineEvent event);

 private:
  [[nodiscard]] bool Aborted() const { return state_.SendAbort; }
  /// A port that does not open is noted and no more: the operator sees that nothing starts.
  void OpenPort(bool discardNulls);
  /// False when it was ended first.
  bool WaitForStart(SendScreen& screen);
  /// False where the file cannot be read; that is noted.
  bool ReadProgram(const SendItem& item, std::string& text);
  void SendFrameAndBody(const SendItem& item, std::string_view text, SendScreen& screen);
  void SendBody(std::string_view text, const SendItem& item, SendScreen& screen);
  void SendCharacter(char character);
  void SendString(std::string_view text);
  /// The loop handles what waits in it, whether the line has room or not.
  void Breathe();
  void WaitUntilSent();

  core::System& system_;
  core::TransferState& state_;
  platform::EventLoop& loop_;
  platform::FileSystem& files_;
  platform::SerialPort& port_;
};

}  // namespace torvane::files
