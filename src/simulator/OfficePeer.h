// The office at the other end of the second port: it sends programs as offices do, well and badly,
// and writes down what comes from the console.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/PrefixMatcher.h"
#include "core/TransferSettings.h"
#include "platform/SerialPort.h"
#include "simulator/OfficeOutbox.h"

namespace torvane::simulator {

/// How the next programs are sent.
struct OfficeManner {
  std::string Directory;  ///< of the header; as it is, good or evil
  std::string Name;       ///< likewise; without both there is no header
  bool Preamble = true;
  bool Postamble = true;
  std::size_t ChunkBytes = 0;  ///< 0: each write in one piece
  double PauseMs = 0;          ///< between chunks
  std::size_t StopAfter = 0;   ///< bytes of a write that go out, the rest never; 0: all
  std::size_t NulEvery = 0;    ///< bytes after which a NUL comes in between; 0: none
};

/// Works on a clock of its own, moved by Advance. Its frame (preamble, end of line, postamble,
/// start character, handshake) is that of a port file.
class OfficePeer {
 public:
  explicit OfficePeer(const core::TransferSettings& frame);

  OfficeManner Manner;

  // ---- what the operator of the office does ----
  /// One write of all these programs, framed by Manner.
  void Send(const std::vector<std::string>& programs);
  /// Bytes as they are.
  void SendRaw(std::string_view bytes);
  /// What came from the console, as it came.
  void SendBack() { SendRaw(log_); }
  /// A program whose text never ends, until Halt.
  void SendEndless(std::string_view text);
  /// Nothing more goes out, what waits is dropped.
  void Halt();
  /// The start character: the office is ready to receive.
  void SendReady();
  /// Asks the console to wait (XOFF), or to go on (XON).
  void AskToHold(bool hold);
  /// The modem lines as the console sees them.
  void SetLines(const platform::PortLines& lines) { lines_ = lines; }
  void SendBreak() { ++breaks_; }
  /// Reads nothing until it is told otherwise.
  void SetDeaf(bool deaf) { deaf_ = deaf; }

  // ---- the line ----
  void SetBaud(double baud) { outbox_.SetBaud(baud); }
  void Advance(double ms);
  /// Bytes from the console.
  void Receive(std::string_view bytes);
  [[nodiscard]] std::string TakeOutput();
  [[nodiscard]] std::optional<double> OutputDueInMs() const { return outbox_.DueInMs(); }
  [[nodiscard]] const platform::PortLines& Lines() const { return lines_; }
  [[nodiscard]] int Breaks() const { return breaks_; }
  [[nodiscard]] bool Deaf() const { return deaf_; }

  /// Called with one line of text about each program received and each write that has gone.
  void OnEvent(std::function<void(const std::string&)> listener) {
    listener_ = std::move(listener);
  }
  /// Called with each piece that comes.
  void OnBytes(std::function<void(std::string_view)> listener) {
    bytesListener_ = std::move(listener);
  }

  /// All that came from the console.
  [[nodiscard]] const std::string& Log() const { return log_; }
  /// One line: what has come and gone, and what holds it up.
  [[nodiscard]] std::string Describe() const;

 private:
  [[nodiscard]] std::string Framed(std::string_view program) const;
  void Say(const std::string& text) const;

  core::TransferSettings frame_;
  core::PrefixMatcher postamble_;
  OfficeOutbox outbox_;
  std::string log_;
  std::string endless_;           ///< what goes out again and again; empty: nothing
  std::size_t programStart_ = 0;  ///< in the log, of the program that comes
  std::size_t sent_ = 0;
  platform::PortLines lines_{true, true, true};
  int breaks_ = 0;
  bool deaf_ = false;
  bool told_ = true;  ///< that all has gone
  std::function<void(const std::string&)> listener_;
  std::function<void(std::string_view)> bytesListener_;
};

/// The text of a program as it goes over the line: each line end, CR LF or LF alone, becomes the
/// frame's end of line.
[[nodiscard]] std::string LineText(std::string_view program, std::string_view endOfLine);

}  // namespace torvane::simulator
