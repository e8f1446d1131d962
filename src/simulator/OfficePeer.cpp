#include "simulator/OfficePeer.h"

#include "core/Text.h"
#include "files/ReceivedProgram.h"

namespace torvane::simulator {

namespace {

constexpr char Xon = 17;
constexpr char Xoff = 19;

std::string WithNuls(std::string_view bytes, std::size_t every) {
  if (every == 0) return std::string(bytes);
  std::string text;
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    text += bytes[at];
    if ((at + 1) % every == 0) text += '\0';
  }
  return text;
}

}  // namespace

std::string LineText(std::string_view program, std::string_view endOfLine) {
  std::string text;
  std::string_view line;
  while (core::TakeLine(program, line)) text.append(line).append(endOfLine);
  return text;
}

OfficePeer::OfficePeer(const core::TransferSettings& frame)
    : frame_(frame), postamble_(frame.CommsPostamble) {}

void OfficePeer::Say(const std::string& text) const {
  if (listener_) listener_(text);
}

std::string OfficePeer::Framed(std::string_view program) const {
  std::string text;
  if (Manner.Preamble) text += frame_.CommsPreamble;
  if (!Manner.Directory.empty() || !Manner.Name.empty()) {
    text += files::DirectoryMark + Manner.Directory + frame_.CommsEndOfLine;
    text += files::NameMark + Manner.Name + frame_.CommsEndOfLine;
  }
  text += LineText(program, frame_.CommsEndOfLine);
  if (Manner.Postamble) text += frame_.CommsPostamble;
  return text;
}

void OfficePeer::Send(const std::vector<std::string>& programs) {
  std::string text;
  for (const std::string& program : programs) text += Framed(program);
  text = WithNuls(text, Manner.NulEvery);
  if (Manner.StopAfter > 0) text.resize(std::min(text.size(), Manner.StopAfter));
  SendRaw(text);
}

void OfficePeer::SendRaw(std::string_view bytes) {
  outbox_.Put(bytes, Manner.ChunkBytes, Manner.PauseMs);
  told_ = false;
}

void OfficePeer::SendEndless(std::string_view text) {
  endless_ = LineText(text, frame_.CommsEndOfLine);
  if (endless_.empty()) return;
  if (Manner.Preamble) SendRaw(frame_.CommsPreamble);
  SendRaw(endless_);
}

void OfficePeer::Halt() {
  endless_.clear();
  outbox_.Clear();
  told_ = true;
}

void OfficePeer::SendReady() { SendRaw(frame_.CommsStartChar); }

void OfficePeer::AskToHold(bool hold) { outbox_.Put({hold ? &Xoff : &Xon, 1}); }

void OfficePeer::Advance(double ms) { outbox_.Advance(ms); }

void OfficePeer::Receive(std::string_view bytes) {
  // First, so that whoever reads that a program has come finds it whole in the log.
  if (bytesListener_) bytesListener_(bytes);
  const bool codes = (frame_.CommsHandshake & static_cast<int>(platform::Handshake::XonXoff)) != 0;
  for (const char byte : bytes) {
    if (codes && (byte == Xon || byte == Xoff)) {
      outbox_.Hold(byte == Xoff);
      continue;
    }
    log_ += byte;
    if (!postamble_.Take(byte)) continue;
    Say("program of " + std::to_string(log_.size() - programStart_) + " bytes received");
    programStart_ = log_.size();
  }
}

std::string OfficePeer::TakeOutput() {
  std::string bytes = outbox_.Take();
  sent_ += bytes.size();
  if (!outbox_.Empty()) return bytes;
  if (!endless_.empty()) {
    outbox_.Put(endless_, Manner.ChunkBytes, Manner.PauseMs);
  } else if (!told_) {
    told_ = true;
    Say("sent, " + std::to_string(sent_) + " bytes in all");
  }
  return bytes;
}

std::string OfficePeer::Describe() const {
  std::string text = "office: " + std::to_string(sent_) + " bytes sent, " +
                     std::to_string(outbox_.Waiting()) + " wait, " + std::to_string(log_.size()) +
                     " received";
  if (outbox_.Held()) text += ", held by the console";
  if (deaf_) text += ", deaf";
  if (!lines_.Cts) text += ", CTS off";
  if (!lines_.Dsr) text += ", DSR off";
  return text;
}

}  // namespace torvane::simulator
