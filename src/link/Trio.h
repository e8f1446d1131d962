// The conversation with the motion controller: one line out, one reply to its prompt.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "core/DirectorySet.h"
#include "core/LinkSettings.h"
#include "link/OperatorDialogs.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"
#include "platform/SerialPort.h"

namespace torvane::link {

/// The name under which this layer locks the screens.
inline constexpr std::string_view LinkLockName = "LockAllForms";

/// What the link needs of the screens above it.
class LinkScreens : public OperatorDialogs {
 public:
  /// Locks or unlocks all screens but those that stay live and the exempt one. Never waits.
  virtual void LockForms(bool locked, std::string_view exempt) = 0;

  /// The same for the pause after each line: what the operator holds down meanwhile stays held.
  virtual void PauseForms(bool paused) { LockForms(paused, LinkLockName); }

  /// Orderly end to the service program.
  virtual void ShutdownToService() = 0;
};

/// Who asks, and so what the failure of an exchange leads to. It is given with each exchange:
/// between two waits somebody else may have asked.
enum class Asker {
  Operator,  ///< waits for the answer to the failure dialog, and recovers the line then
  Poll,      ///< goes on at once with zero, the line recovered; the dialog is beside it
  Silent,    ///< the same without a dialog and without a record
  End        ///< the last readings of the program: a record, no dialog, and no further attempt
};

/// What became of a line that may be taken away again before it is sent.
enum class LineFate { Answered, Failed, NotSent };

/// Exchanges one after the other: one that comes while another has the line waits for its end, its
/// recovery included, and no byte goes to a stranger. All waits sleep in the loop.
///
/// A failed exchange is reported, and a bare carriage return asks for a clean prompt. Where others
/// already wait for the line, that request goes out at once, ahead of them and beside the dialog.
class Trio {
 public:
  /// Takes the port's received handler for as long as it lives. Its end gives up all waits of the
  /// loop.
  Trio(platform::EventLoop& loop, platform::SerialPort& port, platform::FileSystem& files,
       core::LinkSettings& settings, const core::DirectorySet& directories, LinkScreens& screens);
  ~Trio();
  Trio(const Trio&) = delete;
  Trio& operator=(const Trio&) = delete;

  /// Opens the port, three attempts, and asks for a prompt. Clears `linkEnabled` when the port or
  /// the controller does not answer; does nothing when it is already false.
  void OpenTrioPort(bool& linkEnabled);

  /// Ends the conversation: exchanges under way, and all later ones, return at once without a
  /// report, as if they had failed.
  void CloseTrioPort();

  /// The program ends: exchanges under way return at once without a report, and only a stop that
  /// already waits and those asked for with Asker::End go out from now on. The first of them that
  /// fails is the last.
  void BeginEnd();
  /// True from BeginEnd on, until the port is opened again.
  [[nodiscard]] bool Ending() const;

  /// Sends one command line and waits for its prompt. A failure is reported and nothing else.
  void Download(std::string_view line, Asker asker = Asker::Operator);

  // ---- for JogLine, and nobody else: lines that move the machine while a key is held ----

  /// A line that `WithdrawJogWords` takes away while it waits for the line to the controller.
  /// `failed` runs at once when it fails, ahead of the recovery that the call waits for.
  [[nodiscard]] LineFate DownloadJogWord(std::string_view line, std::function<void()> failed);
  void WithdrawJogWords();
  /// A line that goes ahead of all that wait, and of the recovery of a failed exchange. True when
  /// the controller took it.
  [[nodiscard]] bool DownloadUrgent(std::string_view line, Asker asker);
  /// Writes a line at once, into whatever is under way there, and waits for nothing: where no loop
  /// runs any more. Nothing on a closed port.
  void WriteLastLine(std::string_view line);
  /// Commands and queries answered so far without a fault: a change says that the line is alive.
  [[nodiscard]] std::uint64_t Answers() const;

  /// Exchanges for that asker that have failed so far: a change says that a value of theirs is not
  /// the controller's.
  [[nodiscard]] std::uint64_t Failures(Asker asker) const;

  /// How long the line has been without any reply although one is due, ms; 0 where none is. Giving
  /// an exchange up does not end it, a reply of any kind does.
  [[nodiscard]] std::int64_t UnansweredMs() const;

  /// Typed queries: zero or false with the link off, after a failure, and where the value does not
  /// fit the type.
  [[nodiscard]] bool GetRspnsBln(std::string_view expression, Asker asker = Asker::Operator);
  [[nodiscard]] std::int16_t GetRspnsInt(std::string_view expression,
                                         Asker asker = Asker::Operator);
  [[nodiscard]] std::int32_t GetRspnsLng(std::string_view expression,
                                         Asker asker = Asker::Operator);
  /// `decimals` below 0: as it is; otherwise rounded before the narrowing.
  [[nodiscard]] float GetRspnsSngl(std::string_view expression, int decimals = -1,
                                   Asker asker = Asker::Operator);

  /// The pause after a send: screens locked, poll stopped, the loop running. Nothing for ms <= 0.
  void LockAllForms(int ms);

  /// Poll control. The tick is set once by whoever owns it.
  void SetPollTick(std::function<void()> tick);
  void StartPolling(bool setWanted);
  void StopPolling(bool clearWanted);

  /// One record of five lines in Polling.txt when the trace is on.
  void LogTrioExchange(std::string_view tag, std::string_view query, std::string_view reply,
                       bool status);

  /// Rotates Polling.txt when the trace is on and has grown beyond its limit; at the end of every
  /// tick. A trace that is on and not there is a RuntimeFault.
  void RotateLog();

  /// The comms failure dialog and Errors.txt, unless reports are off. Empties `LastComms`.
  void ReportTrioError(std::string_view text);

  [[nodiscard]] core::LinkSettings& Settings();
  [[nodiscard]] LinkScreens& Screens();
  [[nodiscard]] platform::EventLoop& Loop();

 private:
  friend class BulkSend;
  class Impl;
  std::unique_ptr<Impl> impl_;
};

/// Around a bulk send: screens locked and poll stopped, then the screens unlocked and the poll
/// started again if it is wanted. There is no nesting count: an inner unlock counts for all.
class BulkSend {
 public:
  explicit BulkSend(Trio& trio);
  ~BulkSend();
  BulkSend(const BulkSend&) = delete;
  BulkSend& operator=(const BulkSend&) = delete;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace torvane::link
