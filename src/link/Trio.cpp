#include "link/Trio.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "core/General.h"
#include "link/LineQueue.h"
#include "link/LinkTrace.h"
#include "link/PollControl.h"
#include "link/ReplyReader.h"
#include "platform/RuntimeFault.h"

namespace torvane::link {

namespace {

constexpr int OpenAttempts = 3;
constexpr int OkCancelMode = 2;
constexpr int WarningStyle = 1;

/// Takes a session out of the queue when its frame is left before it is done.
class SessionGuard {
 public:
  SessionGuard(LineQueue& queue, LineSession& session) : queue_(queue), session_(session) {}
  ~SessionGuard() {
    if (!session_.Done()) queue_.Remove(session_);
  }
  SessionGuard(const SessionGuard&) = delete;
  SessionGuard& operator=(const SessionGuard&) = delete;

 private:
  LineQueue& queue_;
  LineSession& session_;
};

/// "No reports" belongs to the exchange that was asked for with it, not to those that other
/// handlers start inside its wait.
class ReportScope {
 public:
  explicit ReportScope(bool& flag) : flag_(flag), wanted_(flag) {}
  ~ReportScope() { flag_ = wanted_; }
  ReportScope(const ReportScope&) = delete;
  ReportScope& operator=(const ReportScope&) = delete;

  [[nodiscard]] bool Wanted() const { return wanted_; }
  void OpenForOthers() { flag_ = true; }

 private:
  bool& flag_;
  bool wanted_;
};

/// A whole value of the type, or 0 where it does not fit.
template <typename Integer>
Integer TruncateOrZero(double value) {
  const double whole = std::trunc(value);
  if (whole < static_cast<double>(std::numeric_limits<Integer>::min())) return 0;
  if (whole > static_cast<double>(std::numeric_limits<Integer>::max())) return 0;
  return static_cast<Integer>(whole);
}

}  // namespace

class Trio::Impl final : public PauseHandler {
 public:
  Impl(platform::EventLoop& loop, platform::SerialPort& port, platform::FileSystem& files,
       core::LinkSettings& settings, const core::DirectorySet& directories, LinkScreens& screens)
      : Loop(loop),
        Port(port),
        Settings(settings),
        Screens(screens),
        Trace(files, directories),
        Poll(loop, settings),
        Queue(loop, port, settings, *this) {}

  /// A query tolerates every fault of its own steps: it gives zero.
  enum class Kind { Command, Query };

  struct Outcome {
    bool Success = false;
    bool Aborted = false;
    std::string Reply;
  };

  void Open(bool& linkEnabled);
  Outcome Exchange(std::string_view line, Kind kind);
  double Query(std::string_view tag, std::string_view expression);
  void Log(std::string_view tag, std::string_view query, std::string_view reply, bool status);
  void Report(std::string_view lastComms, std::string_view text, Kind kind);

  void PauseBegins() override;
  void PauseEnds() override;

  platform::EventLoop& Loop;
  platform::SerialPort& Port;
  core::LinkSettings& Settings;
  LinkScreens& Screens;
  LinkTrace Trace;
  PollControl Poll;
  LineQueue Queue;

 private:
  bool OpenPort();
  void ReportFailure(const LineSession& session, std::string& lastComms, bool wanted, Kind kind);
};

bool Trio::Impl::OpenPort() {
  platform::PortSetup setup;
  setup.Number = Settings.CommPort;
  setup.Settings = Settings.PortSettings;
  setup.Handshaking = static_cast<platform::Handshake>(Settings.Handshaking & 3);
  setup.Dtr = false;  // whatever the port file's handshake words say
  setup.Rts = false;
  setup.DiscardNulls = true;
  for (int attempt = 0; attempt < OpenAttempts && !Port.IsOpen(); ++attempt) {
    static_cast<void>(Port.Open(setup));  // asked for below
  }
  return Port.IsOpen();
}

void Trio::Impl::Open(bool& linkEnabled) {
  if (!linkEnabled) return;
  if (!OpenPort()) {
    linkEnabled = false;
    return;
  }
  Queue.Open();
  LineSession session;
  session.FlushFirst = true;
  session.FlushAfter = true;
  const SessionGuard guard(Queue, session);
  Queue.Enqueue(session);
  Queue.Await(session);
  if (session.TimedOut || session.Aborted) linkEnabled = false;
}

Trio::Impl::Outcome Trio::Impl::Exchange(std::string_view line, Kind kind) {
  LineSession recovery;
  recovery.FlushFirst = true;
  recovery.FlushAfter = true;
  LineSession session;
  session.Text = line;
  session.FlushFirst = kind == Kind::Query;
  session.PauseAfterSend = true;
  session.Recovery = &recovery;
  std::string lastComms(line);
  ReportScope reports(Settings.ReportCommsErrors);
  const SessionGuard recoveryGuard(Queue, recovery);
  const SessionGuard sessionGuard(Queue, session);

  Queue.Enqueue(session);
  reports.OpenForOthers();
  Queue.Await(session);
  const bool failed = !session.Aborted && session.Failed();
  if (failed) {
    ReportFailure(session, lastComms, reports.Wanted(), kind);
    if (recovery.Phase == LineSession::State::Fresh) Queue.EnqueueFirst(recovery);
    Queue.Await(recovery);
  }
  return {.Success = !failed && !session.Aborted,
          .Aborted = session.Aborted,
          .Reply = std::move(session.Reply)};
}

/// A reply can both run out of time and hold the error mark: two reports, the second of them
/// without a last line, as the first has used it up.
void Trio::Impl::ReportFailure(const LineSession& session, std::string& lastComms, bool wanted,
                               Kind kind) {
  const auto report = [&](std::string_view what) {
    if (wanted) Report(lastComms, std::string(what) + session.Reply, kind);
    lastComms.clear();
    Settings.LastComms.clear();
  };
  if (session.TimedOut) report("GetTrio Timeout : ");
  if (!session.HasErrorMark()) return;
  Queue.FlushTrioInput();
  report("GetTrio Error : ");
}

void Trio::Impl::Report(std::string_view lastComms, std::string_view text, Kind kind) {
  const bool shutdown =
      Screens.ShowWarning(FailureText(lastComms, text), OkCancelMode, WarningStyle);
  try {
    Trace.AppendError(lastComms, text);
  } catch (const platform::RuntimeFault&) {
    if (kind != Kind::Query) throw;
  }
  if (shutdown) Screens.ShutdownToService();
}

void Trio::Impl::Log(std::string_view tag, std::string_view query, std::string_view reply,
                     bool status) {
  if (Settings.PollLogEnabled) Trace.AppendExchange(tag, query, reply, status);
}

double Trio::Impl::Query(std::string_view tag, std::string_view expression) {
  if (!Settings.TrioLinkEnabled) return 0;
  std::string query("? ");
  query += core::Trim(expression);
  const Outcome outcome = Exchange(query, Kind::Query);
  if (outcome.Aborted) return 0;
  try {
    Log(tag, query, outcome.Reply, outcome.Success);
  } catch (const platform::RuntimeFault&) {
    return 0;
  }
  return outcome.Success ? ReadReplyValue(query, outcome.Reply) : 0;
}

void Trio::Impl::PauseBegins() {
  Screens.LockForms(true, LinkLockName);
  Poll.Stop(false);
}

void Trio::Impl::PauseEnds() {
  Screens.LockForms(false, LinkLockName);
  Poll.Resume();
}

Trio::Trio(platform::EventLoop& loop, platform::SerialPort& port, platform::FileSystem& files,
           core::LinkSettings& settings, const core::DirectorySet& directories,
           LinkScreens& screens)
    : impl_(std::make_unique<Impl>(loop, port, files, settings, directories, screens)) {}

Trio::~Trio() = default;

void Trio::OpenTrioPort(bool& linkEnabled) { impl_->Open(linkEnabled); }

void Trio::CloseTrioPort() {
  impl_->Queue.Close();
  impl_->Port.Close();
}

void Trio::Download(std::string_view line) {
  if (!impl_->Settings.TrioLinkEnabled) return;
  const std::string_view text = core::Trim(line);
  const auto outcome = impl_->Exchange(text, Impl::Kind::Command);
  if (!outcome.Aborted) impl_->Log("Download", text, outcome.Reply, outcome.Success);
}

bool Trio::GetRspnsBln(std::string_view expression) {
  return impl_->Query("GetRspnsBln", expression) != 0;
}

std::int16_t Trio::GetRspnsInt(std::string_view expression) {
  return TruncateOrZero<std::int16_t>(impl_->Query("GetRspnsInt", expression));
}

std::int32_t Trio::GetRspnsLng(std::string_view expression) {
  return TruncateOrZero<std::int32_t>(impl_->Query("GetRspnsLng", expression));
}

float Trio::GetRspnsSngl(std::string_view expression, int decimals) {
  constexpr int MostDecimals = 15;
  double value = impl_->Query("GetRspnsSngl", expression);
  if (decimals >= 0) value = core::RoundPlaces(value, std::min(decimals, MostDecimals));
  const double largest = std::numeric_limits<float>::max();
  return std::abs(value) <= largest ? static_cast<float>(value) : 0.0F;
}

void Trio::LockAllForms(int ms) {
  if (ms <= 0) return;
  const BulkSend pause(*this);
  bool over = false;
  const auto timer = impl_->Loop.MakeTimer([&over] { over = true; });
  timer->Start(ms);
  impl_->Loop.WaitUntil([&over] { return over; });
}

void Trio::SetPollTick(std::function<void()> tick) { impl_->Poll.SetTick(std::move(tick)); }
void Trio::StartPolling(bool setWanted) { impl_->Poll.Start(setWanted); }
void Trio::StopPolling(bool clearWanted) { impl_->Poll.Stop(clearWanted); }

void Trio::LogTrioExchange(std::string_view tag, std::string_view query, std::string_view reply,
                           bool status) {
  impl_->Log(tag, query, reply, status);
}

void Trio::RotateLog() {
  if (impl_->Settings.PollLogEnabled) impl_->Trace.Rotate();
}

void Trio::ReportTrioError(std::string_view text) {
  core::LinkSettings& settings = impl_->Settings;
  if (settings.ReportCommsErrors) {
    impl_->Report(std::string(settings.LastComms), text, Impl::Kind::Command);
  }
  settings.LastComms.clear();
}

core::LinkSettings& Trio::Settings() { return impl_->Settings; }
LinkScreens& Trio::Screens() { return impl_->Screens; }

BulkSend::BulkSend(Trio& trio) : trio_(trio) { trio_.impl_->PauseBegins(); }
BulkSend::~BulkSend() { trio_.impl_->PauseEnds(); }

}  // namespace torvane::link
