// The conversation with the motion controller: one line out, one reply to its prompt.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "core/DirectorySet.h"
#include "core/LinkSettings.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"
#include "platform/SerialPort.h"

namespace torvane::link {

/// What the link needs of the screens above it.
class LinkScreens {
 public:
  virtual ~LinkScreens() = default;

  /// The one modal dialog; true unless the first button or another way of closing answered.
  virtual bool ShowWarning(std::string_view text, int mode, int style) = 0;

  /// Locks or unlocks all screens but those that stay live and the exempt one. Never waits.
  virtual void LockForms(bool locked, std::string_view exempt) = 0;

  /// Orderly end to the service program.
  virtual void ShutdownToService() = 0;
};

/// The name under which this layer locks the screens.
inline constexpr std::string_view LinkLockName = "LockAllForms";

/// Exchanges in one queue: an exchange that starts while another waits for its prompt lets that one
/// finish first, and no byte goes to a stranger. All waits sleep in the loop.
///
/// A failed exchange is reported in the frame that asked for it, with the line free for others;
/// then a bare carriage return asks for a clean prompt. Where others already wait, that request
/// goes out ahead of them and the report follows when their frames are through.
class Trio {
 public:
  /// Takes the port's received handler for as long as it lives.
  Trio(platform::EventLoop& loop, platform::SerialPort& port, platform::FileSystem& files,
       core::LinkSettings& settings, const core::DirectorySet& directories, LinkScreens& screens);
  ~Trio();
  Trio(const Trio&) = delete;
  Trio& operator=(const Trio&) = delete;

  /// Opens the port, three attempts, and asks for a prompt. Clears `linkEnabled` when the port or
  /// the controller does not answer; does nothing when it is already false.
  void OpenTrioPort(bool& linkEnabled);

  /// Ends the conversation: exchanges that stand, and all later ones, return at once without a
  /// report, as if they had failed.
  void CloseTrioPort();

  /// Sends one command line and waits for its prompt. A failure is reported and nothing else.
  void Download(std::string_view line);

  /// Typed queries: zero or false with the link off, after a failure, and where the value does not
  /// fit the type.
  [[nodiscard]] bool GetRspnsBln(std::string_view expression);
  [[nodiscard]] std::int16_t GetRspnsInt(std::string_view expression);
  [[nodiscard]] std::int32_t GetRspnsLng(std::string_view expression);
  /// `decimals` below 0: as it stands; otherwise rounded before the narrowing.
  [[nodiscard]] float GetRspnsSngl(std::string_view expression, int decimals = -1);

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
  Trio& trio_;
};

}  // namespace torvane::link
