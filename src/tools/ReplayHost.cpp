#include "tools/ReplayHost.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <utility>
#include <vector>

#include "core/General.h"
#include "platform/DiskFileSystem.h"
#include "platform/RuntimeFault.h"

namespace torvane::tools {

namespace {

constexpr int HeartbeatMs = 100;
constexpr std::size_t MostRemarks = 10;

std::vector<simulator::TraceFile> ReadTrace(const std::vector<std::string>& paths) {
  const platform::DiskFileSystem files(".");
  std::vector<simulator::TraceFile> read;
  read.reserve(paths.size());
  for (const std::string& path : paths) {
    const auto slash = path.find_last_of('/');
    read.push_back({slash == std::string::npos ? path : path.substr(slash + 1),
                    files.ReadFile(platform::DiskFileSystem::ToSystemPath(path))});
  }
  return read;
}

/// A line of the console for a person: bytes that no terminal shows are written as \xNN.
std::string Shown(std::string_view line) {
  constexpr std::string_view Digits = "0123456789ABCDEF";
  std::string text;
  text.reserve(line.size());
  for (const char character : line) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte >= ' ' && byte < 0x7F) {
      text += character;
    } else {
      text.append("\\x").append(1, Digits[byte >> 4U]).append(1, Digits[byte & 15U]);
    }
  }
  return text;
}

std::string Counted(std::size_t count, std::string_view one, std::string_view more) {
  return std::to_string(count).append(" ").append(count == 1 ? one : more);
}

}  // namespace

ReplayHost::ReplayHost(const SimOptions& options, int input, std::ostream& out)
    : trace_(ReadTrace(options.Replay)),
      controller_(trace_, options.Controller.ReplySeconds),
      line_(SimLine::Open(options.PtyLink, options.Device, options.Baud)),
      out_(out),
      input_(input),
      last_(std::chrono::steady_clock::now()),
      session_(options.Session > 0 ? options.Session - 1 : 0),
      end_(options.Session > 0 ? options.Session : trace_.Sessions().size()) {
  if (trace_.Sessions().empty()) {
    throw platform::RuntimeFault(options.Replay.back(), "holds no exchange with a controller");
  }
  if (end_ > trace_.Sessions().size()) {
    throw WrongUse("the trace has " +
                   Counted(trace_.Sessions().size(), "session, not ", "sessions, not ") +
                   std::to_string(options.Session));
  }
  controller_.OnDifference(
      [this](const simulator::ReplayDifference& difference) { Tell(difference); });
  Say("listening on " + (options.PtyLink.empty() ? options.Device : options.PtyLink));
  TellTrace();
  BeginSession(session_);
}

void ReplayHost::TellTrace() {
  const auto& remarks = trace_.Remarks();
  for (std::size_t i = 0; i < std::min(remarks.size(), MostRemarks); ++i) {
    Say("left out: " + remarks[i].What + " (" + trace_.PlaceText(remarks[i].Place) + ")");
  }
  if (remarks.size() > MostRemarks) {
    Say("left out: " + std::to_string(remarks.size() - MostRemarks) + " more");
  }
}

void ReplayHost::BeginSession(std::size_t session) {
  session_ = session;
  const auto& wanted = trace_.Sessions()[session];
  controller_.Begin(session);
  told_ = false;
  std::string text = "session " + std::to_string(session + 1) + " of " +
                     std::to_string(trace_.Sessions().size()) + ": " +
                     Counted(wanted.End - wanted.First, "exchange", "exchanges") + " from " +
                     trace_.PlaceText(trace_.Exchanges()[wanted.First].Place);
  if (!wanted.HasStart) text += "; its start is not in the trace";
  Say(text);
}

bool ReplayHost::Step(int longestMs) {
  if (!input_.Wait(line_, true, WaitMs(longestMs))) finished_ = true;
  const auto now = std::chrono::steady_clock::now();
  controller_.Advance(std::chrono::duration<double>(now - last_).count());
  last_ = now;
  const bool gone = line_.ConsoleGone();
  const std::string bytes = line_.Read();
  if (!bytes.empty()) {
    line_.WatchConsole();
    controller_.Receive(bytes);
  }
  for (const std::string& typed : input_.TakeLines()) Obey(core::Trim(typed));
  line_.Write(controller_.TakeOutput());
  if (gone && !finished_) EndSession();
  if (finished_ && session_ < end_) {
    // Asked to end in the middle of a session: what it came to is told all the same.
    controller_.EndSession();
    Say(CountText());
    good_ = good_ && controller_.Count().Good() && session_ + 1 == end_;
    session_ = end_;
  }
  return !finished_;
}

void ReplayHost::EndSession() {
  controller_.EndSession();
  Say(CountText());
  good_ = controller_.Count().Good();
  line_.AwaitConsole();
  if (good_ && session_ + 1 < end_) {
    BeginSession(session_ + 1);
  } else {
    session_ = end_;
    finished_ = true;
  }
}

void ReplayHost::Obey(std::string_view word) {
  if (word == "quit") {
    finished_ = true;
  } else if (word == "next") {
    EndSession();
  } else if (word == "state") {
    Say(CountText());
  } else if (!word.empty()) {
    Say("commands: state, next, quit");
  }
}

/// The first in full; those after it mostly follow from it, and are counted.
void ReplayHost::Tell(const simulator::ReplayDifference& difference) {
  if (std::exchange(told_, true)) return;
  Say("exchange " + std::to_string(difference.Exchange) + " differs (" +
      trace_.PlaceText(difference.Place) + ")");
  Say("  recorded: " + Shown(difference.Recorded));
  Say("  came:     " + Shown(difference.Came));
}

std::string ReplayHost::CountText() const {
  const auto& count = controller_.Count();
  std::string text = "session " + std::to_string(session_ + 1) + ": " +
                     std::to_string(count.Answered) + " of " +
                     Counted(count.Recorded, "exchange", "exchanges") + " asked for, " +
                     Counted(count.Different, "line", "lines") + " different";
  if (count.Before > 0) {
    text += ", " + Counted(count.Before, "line", "lines") + " before the trace begins";
  }
  if (count.After > 0) text += ", " + Counted(count.After, "line", "lines") + " after its end";
  return text;
}

int ReplayHost::WaitMs(int longestMs) const {
  constexpr double MsPerSecond = 1000;
  const auto due = controller_.OutputDueIn();
  return due ? std::min(longestMs, static_cast<int>(std::ceil(*due * MsPerSecond))) : longestMs;
}

int ReplayHost::Status() const { return good_ ? ExitStatus::Good : ExitStatus::Refused; }

void ReplayHost::Say(std::string_view text) { out_ << text << '\n' << std::flush; }

int RunReplay(const SimOptions& options, int input, std::ostream& out) {
  ReplayHost host(options, input, out);
  while (host.Step(HeartbeatMs)) {
  }
  return host.Status();
}

}  // namespace torvane::tools
