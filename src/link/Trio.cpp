#include "link/Trio.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
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

/// A whole value of the type, or 0 where it does not fit.
template <typename Integer>
Integer TruncateOrZero(double value) {
  const double whole = std::trunc(value);
  if (whole < static_cast<double>(std::numeric_limits<Integer>::min())) return 0;
  if (whole > static_cast<double>(std::numeric_limits<Integer>::max())) return 0;
  return static_cast<Integer>(whole);
}

/// Screens locked, in one of the two ways, and poll stopped; at its end unlocked, and the poll
/// started again if it is wanted.
class BulkLock {
 public:
  using Way = void (*)(LinkScreens&, bool);
  BulkLock(LinkScreens& screens, PollControl& poll, Way way)
      : screens_(screens), poll_(poll), way_(way) {
    way_(screens_, true);
    poll_.Stop(false);
  }
  ~BulkLock() {
    way_(screens_, false);
    poll_.Resume();
  }
  BulkLock(const BulkLock&) = delete;
  BulkLock& operator=(const BulkLock&) = delete;

 private:
  LinkScreens& screens_;
  PollControl& poll_;
  Way way_;
};

void LockForBulk(LinkScreens& screens, bool locked) { screens.LockForms(locked, LinkLockName); }
void LockForPause(LinkScreens& screens, bool locked) { screens.PauseForms(locked); }

}  // namespace

class Trio::Impl {
 public:
  Impl(platform::EventLoop& loop, platform::SerialPort& port, platform::FileSystem& files,
       core::LinkSettings& settings, const core::DirectorySet& directories, LinkScreens& screens)
      : Loop(loop),
        Port(port),
        Settings(settings),
        Screens(screens),
        Trace(files, directories),
        Poll(loop, settings),
        Queue(loop, port, settings) {}
  ~Impl() { Loop.GiveUpWaits(); }

  /// A query drops what has come before it; a command takes it for the begin of its reply.
  enum class Kind { Command, Query };

  void Open(bool& linkEnabled);
  struct Manner {
    Kind What = Kind::Command;
    Asker From = Asker::Operator;
    LinePlace Place = LinePlace::Last;
    bool MayBeWithdrawn = false;
    std::function<void()> Failed = {};  ///< runs when the exchange fails, before its recovery
  };

  LineReply Exchange(std::string_view line, const Manner& manner);
  LineReply Command(std::string_view line, const Manner& manner);
  double Query(std::string_view tag, std::string_view expression, Asker asker);
  void Log(std::string_view tag, std::string_view query, std::string_view reply, bool status);
  void Report(std::string_view lastComms, std::string_view text);
  void Pause(int ms);

  platform::EventLoop& Loop;
  platform::SerialPort& Port;
  core::LinkSettings& Settings;
  LinkScreens& Screens;
  LinkTrace Trace;
  PollControl Poll;
  LineQueue Queue;
  std::uint64_t Answers = 0;
  std::array<std::uint64_t, 4> Failures{};  ///< by Asker
  bool Ending = false;
  std::optional<std::int64_t> UnansweredSince;  ///< Loop's time of the first line without a reply

 private:
  bool OpenPort();
  LineReply Ask(std::string_view line, Kind kind);
  void Recover(std::unique_ptr<LineQueue::Turn> turn);
  void ReportAndRecover(std::unique_ptr<LineQueue::Turn> turn, const std::string& line,
                        const LineReply& reply, Asker asker);
  void ReportFailure(const std::string& line, const LineReply& reply, Asker asker);
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
  Ending = false;
  UnansweredSince.reset();
  Queue.Open();
  LineQueue::Turn turn(Queue);
  if (!turn.Await()) {
    linkEnabled = false;
    return;
  }
  Queue.FlushTrioInput();
  Queue.Send({});
  const LineReply reply = Queue.Collect(false);
  Queue.FlushTrioInput();
  if (reply.TimedOut || reply.Aborted) linkEnabled = false;
}

LineReply Trio::Impl::Ask(std::string_view line, Kind kind) {
  if (kind == Kind::Query) Queue.FlushTrioInput();
  if (!UnansweredSince) UnansweredSince = Loop.NowMs();
  Queue.Send(line);
  if (!line.empty()) Pause(Settings.CommandDelayMs);
  LineReply reply = Queue.Collect(line.empty());
  if (!reply.TimedOut && !reply.Aborted) UnansweredSince.reset();
  return reply;
}

/// What comes of it is dropped, and its failure goes unreported. A stop goes first.
void Trio::Impl::Recover(std::unique_ptr<LineQueue::Turn> turn) {
  while (turn == nullptr || Queue.UrgentWaiting()) {
    turn.reset();
    turn = std::make_unique<LineQueue::Turn>(Queue, LinePlace::Recovery);
    if (!turn->Await()) return;
  }
  Queue.FlushTrioInput();
  static_cast<void>(Ask({}, Kind::Query));
  Queue.FlushTrioInput();
}

LineReply Trio::Impl::Exchange(std::string_view line, const Manner& manner) {
  LineReply notSent{.Text = {}, .TimedOut = false, .Aborted = true};
  const bool ending = manner.From == Asker::End;
  if (Ending && !ending) return notSent;
  const std::string text(line);
  auto turn = std::make_unique<LineQueue::Turn>(Queue, manner.Place, manner.MayBeWithdrawn);
  if (!turn->Await()) return notSent;
  LineReply reply = Ask(text, manner.What);
  if (reply.Aborted) return reply;
  if (!reply.Failed()) {
    ++Answers;
    return reply;
  }
  ++Failures[static_cast<std::size_t>(manner.From)];
  Queue.FlushTrioInput();
  if (manner.Failed) manner.Failed();
  if (ending || Ending) {
    ReportFailure(text, reply, Asker::End);
    Queue.Close();
  } else {
    ReportAndRecover(std::move(turn), text, reply, manner.From);
  }
  return reply;
}

/// The line is recovered in the turn of the exchange that failed, with the report beside it, where
/// somebody waits for the line or for the value. Otherwise the operator answers first.
void Trio::Impl::ReportAndRecover(std::unique_ptr<LineQueue::Turn> turn, const std::string& line,
                                  const LineReply& reply, Asker asker) {
  if (asker == Asker::Operator && !Queue.Waiting()) {
    turn.reset();
    const std::uint64_t aborts = Queue.Aborts();
    ReportFailure(line, reply, asker);
    if (Queue.Aborts() == aborts) Recover(nullptr);
    return;
  }
  const auto answered = std::make_shared<bool>(false);
  Loop.Start([this, line, reply, asker, answered] {
    ReportFailure(line, reply, asker);
    *answered = true;
  });
  Recover(std::move(turn));
  if (asker == Asker::Operator) Loop.WaitUntil([answered] { return *answered; });
}

/// A reply can both run out of time and hold the error mark: two reports, the second of them
/// without a last line, as the first has used it up.
void Trio::Impl::ReportFailure(const std::string& line, const LineReply& reply, Asker asker) {
  std::string lastComms = line;
  const auto report = [&](std::string_view what) {
    const std::string text = std::string(what) + reply.Text;
    if (asker == Asker::End) {
      Trace.AppendError(lastComms, text);
    } else if (asker != Asker::Silent && Settings.ReportCommsErrors) {
      Report(lastComms, text);
    }
    lastComms.clear();
    Settings.LastComms.clear();
  };
  if (reply.TimedOut) report("GetTrio Timeout : ");
  if (reply.HasErrorMark()) report("GetTrio Error : ");
}

void Trio::Impl::Report(std::string_view lastComms, std::string_view text) {
  const bool shutdown = Screens.ShowWarning(FailureText(lastComms, text), WarningMode::OkCancel,
                                            WarningStyle::Warning);
  Trace.AppendError(lastComms, text);
  if (shutdown) Screens.ShutdownToService();
}

void Trio::Impl::Log(std::string_view tag, std::string_view query, std::string_view reply,
                     bool status) {
  if (!Settings.PollLogEnabled) return;
  if (!Trace.AppendExchange(tag, query, reply, status)) Settings.PollLogEnabled = false;
}

double Trio::Impl::Query(std::string_view tag, std::string_view expression, Asker asker) {
  if (!Settings.TrioLinkEnabled) return 0;
  std::string query("? ");
  query += core::Trim(expression);
  const LineReply reply = Exchange(query, {.What = Kind::Query, .From = asker});
  if (reply.Aborted) return 0;
  Log(tag, query, reply.Text, !reply.Failed());
  return reply.Failed() ? 0 : ReadReplyValue(query, reply.Text);
}

void Trio::Impl::Pause(int ms) {
  if (ms <= 0) return;
  const BulkLock locked(Screens, Poll, LockForPause);
  bool over = false;
  const auto timer = Loop.MakeTimer([&over] { over = true; });
  timer->Start(ms);
  Loop.WaitUntil(
      [this, &over, aborts = Queue.Aborts()] { return over || Queue.Aborts() != aborts; });
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

void Trio::BeginEnd() {
  impl_->Ending = true;
  impl_->Queue.AbortAll();
}

bool Trio::Ending() const { return impl_->Ending; }

LineReply Trio::Impl::Command(std::string_view line, const Manner& manner) {
  const std::string text(core::Trim(line));
  LineReply reply = Exchange(text, manner);
  if (!reply.Aborted) Log("Download", text, reply.Text, !reply.Failed());
  return reply;
}

void Trio::Download(std::string_view line, Asker asker) {
  if (impl_->Settings.TrioLinkEnabled) static_cast<void>(impl_->Command(line, {.From = asker}));
}

LineFate Trio::DownloadJogWord(std::string_view line, std::function<void()> failed) {
  if (!impl_->Settings.TrioLinkEnabled) return LineFate::NotSent;
  const LineReply reply = impl_->Command(
      line, {.From = Asker::Poll, .MayBeWithdrawn = true, .Failed = std::move(failed)});
  if (reply.Aborted) return LineFate::NotSent;
  return reply.Failed() ? LineFate::Failed : LineFate::Answered;
}

void Trio::WithdrawJogWords() { impl_->Queue.Withdraw(); }

bool Trio::DownloadUrgent(std::string_view line, Asker asker) {
  if (!impl_->Settings.TrioLinkEnabled) return true;  // nobody is there to move anything
  const LineReply reply = impl_->Command(line, {.From = asker, .Place = LinePlace::Urgent});
  return !reply.Aborted && !reply.Failed();
}

void Trio::WriteLastLine(std::string_view line) {
  if (!impl_->Settings.TrioLinkEnabled || !impl_->Port.IsOpen()) return;
  impl_->Port.Write(std::string(line) + '\r');
}

std::uint64_t Trio::Answers() const { return impl_->Answers; }

std::uint64_t Trio::Failures(Asker asker) const {
  return impl_->Failures[static_cast<std::size_t>(asker)];
}

std::int64_t Trio::UnansweredMs() const {
  return impl_->UnansweredSince ? impl_->Loop.NowMs() - *impl_->UnansweredSince : 0;
}

bool Trio::GetRspnsBln(std::string_view expression, Asker asker) {
  return impl_->Query("GetRspnsBln", expression, asker) != 0;
}

std::int16_t Trio::GetRspnsInt(std::string_view expression, Asker asker) {
  return TruncateOrZero<std::int16_t>(impl_->Query("GetRspnsInt", expression, asker));
}

std::int32_t Trio::GetRspnsLng(std::string_view expression, Asker asker) {
  return TruncateOrZero<std::int32_t>(impl_->Query("GetRspnsLng", expression, asker));
}

float Trio::GetRspnsSngl(std::string_view expression, int decimals, Asker asker) {
  constexpr int MostDecimals = 15;
  double value = impl_->Query("GetRspnsSngl", expression, asker);
  if (decimals >= 0) value = core::RoundPlaces(value, std::min(decimals, MostDecimals));
  const double largest = std::numeric_limits<float>::max();
  return std::abs(value) <= largest ? static_cast<float>(value) : 0.0F;
}

void Trio::LockAllForms(int ms) { impl_->Pause(ms); }

void Trio::SetPollTick(std::function<void()> tick) { impl_->Poll.SetTick(std::move(tick)); }
void Trio::StartPolling(bool setWanted) { impl_->Poll.Start(setWanted); }
void Trio::StopPolling(bool clearWanted) { impl_->Poll.Stop(clearWanted); }

void Trio::LogTrioExchange(std::string_view tag, std::string_view query, std::string_view reply,
                           bool status) {
  impl_->Log(tag, query, reply, status);
}

void Trio::RotateLog() {
  if (!impl_->Settings.PollLogEnabled) return;
  if (!impl_->Trace.Rotate()) impl_->Settings.PollLogEnabled = false;
}

void Trio::ReportTrioError(std::string_view text) {
  core::LinkSettings& settings = impl_->Settings;
  if (settings.ReportCommsErrors) impl_->Report(std::string(settings.LastComms), text);
  settings.LastComms.clear();
}

core::LinkSettings& Trio::Settings() { return impl_->Settings; }
LinkScreens& Trio::Screens() { return impl_->Screens; }
platform::EventLoop& Trio::Loop() { return impl_->Loop; }

class BulkSend::Impl : public BulkLock {
 public:
  using BulkLock::BulkLock;
};

BulkSend::BulkSend(Trio& trio)
    : impl_(std::make_unique<Impl>(trio.impl_->Screens, trio.impl_->Poll, LockForBulk)) {}

BulkSend::~BulkSend() = default;

}  // namespace torvane::link
