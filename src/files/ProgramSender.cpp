#include "files/ProgramSender.h"

#include <algorithm>
#include <memory>

#include "core/General.h"
#include "core/LastFile.h"
#include "files/FaultNote.h"
#include "files/ReceivedProgram.h"
#include "files/SendProgress.h"
#include "files/TransferPort.h"
#include "platform/RuntimeFault.h"

namespace torvane::files {

using core::SendPhase;
using core::StartMode;
using platform::LineEvent;

namespace {

/// Other events of the loop get their turn at least after so many characters of the file.
constexpr std::size_t CharactersPerBreath = 64;
/// How often the operator sees the figures of the rest change, ms.
constexpr std::int64_t RemainingMs = 250;
/// The driver does not tell when it has sent something: it is asked so often, ms.
constexpr double LongestLookMs = 20;

/// A quarter of the time that the output queue lasts, so that it never runs dry.
int LookPeriodMs(std::string_view settings) {
  constexpr double BitsPerCharacter = 10;
  constexpr double MsPerSecond = 1000;
  const double baud = std::max(1.0, core::LeadingNumber(settings));
  const double queueMs = SendQueueLimit * BitsPerCharacter * MsPerSecond / baud;
  return static_cast<int>(std::clamp(queueMs / 4, 1.0, LongestLookMs));
}

}  // namespace

ProgramSender::ProgramSender(core::System& system, platform::EventLoop& loop,
                             platform::FileSystem& files, platform::SerialPort& port)
    : system_(system), state_(system.Transfer), loop_(loop), files_(files), port_(port) {}

void ProgramSender::OpenPort(bool discardNulls) {
  if (port_.Open(TransferPort(system_.Comms, discardNulls))) return;
  NoteFault(files_, system_.Directories,
            "port " + std::to_string(system_.Comms.CommsPort) + " cannot be opened for sending");
}

void ProgramSender::SendProgram(const SendItem& item, SendScreen& screen) {
  state_.SendStart = false;
  state_.SendAbort = false;
  screen.ShowSendText(item.Name + "\n\n" + std::to_string(item.Size) + " Characters");
  screen.ShowWaitingForStart();
  if (!WaitForStart(screen)) return;
  std::string text;
  const bool there = ReadProgram(item, text);
  if (there) SendFrameAndBody(item, text, screen);
  port_.Close();
  screen.ShowSendText("");
  screen.HideProgress();
  if (!there) screen.WarnCannotSend(item.Name);
}

bool ProgramSender::WaitForStart(SendScreen& screen) {
  const auto& comms = system_.Comms;
  state_.SendPhase = SendPhase::WaitingForStart;
  const bool wires = comms.CommsHandshake >= static_cast<int>(platform::Handshake::RtsCts);
  if (wires && comms.CommsStartMode == StartMode::Force) state_.SendStart = true;
  OpenPort(false);
  loop_.WaitUntil([this] { return state_.SendStart || state_.SendAbort; });
  port_.Close();
  if (!Aborted()) return true;
  screen.ShowSendText("");
  return false;
}

bool ProgramSender::ReadProgram(const SendItem& item, std::string& text) {
  try {
    core::NoteLastFile(files_, system_.Directories, item.Path);
    text = files_.ReadFile(item.Path);
    return true;
  } catch (const platform::RuntimeFault& fault) {
    NoteFault(files_, system_.Directories, fault.what());
    return false;
  }
}

void ProgramSender::SendFrameAndBody(const SendItem& item, std::string_view text,
                                     SendScreen& screen) {
  const auto& comms = system_.Comms;
  // The driver's queue empties without an event: this timer lets the waits look at it.
  const auto look = loop_.MakeTimer([] {});
  look->Start(LookPeriodMs(comms.CommsSettings));
  OpenPort(true);
  state_.SendPhase = SendPhase::Sending;
  screen.ShowSending(SendProgress(item.Size).Maximum());
  SendString(comms.CommsPreamble);
  if (state_.SendHeader) {
    SendString(std::string(1, DirectoryMark) + item.Directory + comms.CommsEndOfLine);
    SendString(std::string(1, NameMark) + item.Name + comms.CommsEndOfLine);
  }
  SendBody(text, item, screen);
  state_.SendPhase = SendPhase::Postamble;
  SendString(comms.CommsPostamble);
  WaitUntilSent();
}

void ProgramSender::SendBody(std::string_view text, const SendItem& item, SendScreen& screen) {
  SendProgress progress(item.Size, loop_.NowMs());
  std::int64_t shown = loop_.NowMs();
  for (std::size_t at = 0; at < text.size() && !Aborted(); ++at) {
    SendCharacter(text[at]);
    const bool last = at + 1 == text.size();
    if (const auto value = progress.Count(last)) screen.ShowProgress(*value);
    if (last || loop_.NowMs() - shown >= RemainingMs) {
      shown = loop_.NowMs();
      screen.ShowRemaining(progress.Percent(), progress.SecondsLeft(shown).value_or(-1));
    }
    if ((at + 1) % CharactersPerBreath == 0) Breathe();
  }
}

void ProgramSender::SendCharacter(char character) {
  if (character == '\n') return;
  if (character == '\r') return SendString(system_.Comms.CommsEndOfLine);
  if (!system_.Comms.CommsSendFilter.Holds(character)) SendString({&character, 1});
}

void ProgramSender::SendString(std::string_view text) {
  for (const char character : text) {
    loop_.WaitUntil([this] { return Aborted() || port_.BytesQueued() < SendQueueLimit; });
    if (Aborted()) return;
    port_.Write({&character, 1});
  }
}

void ProgramSender::Breathe() {
  const auto turned = std::make_shared<bool>(false);
  loop_.Post([turned] { *turned = true; });
  loop_.WaitUntil([turned] { return *turned; });
}

void ProgramSender::WaitUntilSent() {
  loop_.WaitUntil([this] { return Aborted() || port_.BytesQueued() == 0; });
}

void ProgramSender::Force() {
  if (state_.SendPhase == SendPhase::WaitingForStart) state_.SendStart = true;
}

void ProgramSender::Abort() { state_.SendAbort = true; }

void ProgramSender::HandleReceived() {
  const std::string came = port_.ReadAll();
  if (state_.SendPhase != SendPhase::WaitingForStart || came.empty()) return;
  const std::string& wanted = system_.Comms.CommsStartChar;
  switch (system_.Comms.CommsStartMode) {
    case StartMode::Character:
      if (!wanted.empty() && came.find(wanted) != std::string::npos) Force();
      break;
    case StartMode::AnyData:
    case StartMode::Event:
    case StartMode::Force:
      Force();
      break;
    default:
      break;
  }
}

void ProgramSender::HandleLineEvent(LineEvent event) {
  const StartMode mode = system_.Comms.CommsStartMode;
  if (state_.SendPhase == SendPhase::WaitingForStart) {
    const bool any = mode == StartMode::Event || mode == StartMode::Force;
    const bool cts = mode == StartMode::Cts && event == LineEvent::CtsChanged;
    const bool dsr = mode == StartMode::Dsr && event == LineEvent::DsrChanged;
    if (any || cts || dsr) Force();
  } else if (state_.SendPhase == SendPhase::Postamble) {
    const bool ends = event == LineEvent::Break || event == LineEvent::CtsTimeout ||
                      event == LineEvent::DsrTimeout;
    if (ends) Abort();
  }
}

}  // namespace torvane::files
