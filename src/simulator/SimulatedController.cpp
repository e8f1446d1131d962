#include "simulator/SimulatedController.h"

#include <algorithm>

#include "core/General.h"

namespace torvane::simulator {

SimulatedController::SimulatedController(ControllerOptions options)
    : options_(std::move(options)),
      faults_(options_.Faults),
      machine_(memory_, options_.Machine),
      line_(memory_) {
  ApplyPresets();
}

void SimulatedController::ApplyPresets() {
  for (const auto& preset : options_.Presets) memory_.SetVariable(preset.Number, preset.Value);
}

void SimulatedController::PowerCycle() {
  memory_.PowerOn();
  ApplyPresets();
  line_.Clear();
  answers_.clear();
  machine_.PowerOn();
}

void SimulatedController::Advance(double seconds) {
  if (!(seconds > 0)) return;
  now_ += seconds;
  machine_.Advance(seconds * options_.Speed);
  if (now_ - heardAt_ > options_.QuietSeconds) machine_.LineQuiet();
}

void SimulatedController::SetSilent(bool silent) {
  silent_ = silent;
  line_.Clear();
  answers_.clear();
}

void SimulatedController::Receive(std::string_view bytes) {
  if (silent_) return;
  const auto whole = [this](const ReceivedLine& line) { Obey(line); };
  if (faults_.Settings().Rates[static_cast<std::size_t>(FaultKind::Lose)] > 0) {
    line_.Receive(faults_.Spoil(bytes, false), whole);
  } else {
    line_.Receive(bytes, whole);
  }
}

bool SimulatedController::Refused(std::string_view line) {
  for (auto text = refusals_.begin(); text != refusals_.end(); ++text) {
    if (!core::EqualNoCase(line.substr(0, text->size()), *text)) continue;
    refusals_.erase(text);
    return true;
  }
  return false;
}

void SimulatedController::Obey(const ReceivedLine& line) {
  heardAt_ = now_;
  if (watcher_) watcher_(line.Text);
  if (faults_.Strikes(FaultKind::Silence)) return;
  const bool refuse = faults_.Strikes(FaultKind::Percent) || Refused(line.Text);
  Send(refuse ? line_.Refuse(line) : line_.Answer(line));
}

void SimulatedController::Send(std::string_view answer) {
  constexpr std::size_t LongestPiece = 4;
  std::string bytes = faults_.Spoil(answer, true);
  double due = now_ + options_.ReplySeconds;
  if (faults_.Strikes(FaultKind::Late)) due += faults_.Settings().LateSeconds;
  // Answers keep their order: nothing overtakes a late one.
  if (!answers_.empty()) due = std::max(due, answers_.back().Due);
  if (!faults_.Strikes(FaultKind::Pieces)) {
    answers_.push_back({due, std::move(bytes)});
    return;
  }
  for (std::size_t at = 0; at < bytes.size();) {
    const auto size = 1 + static_cast<std::size_t>(faults_.Share() * LongestPiece);
    answers_.push_back({due, bytes.substr(at, size)});
    at += size;
    due += faults_.Share() * faults_.Settings().PieceSeconds;
  }
}

std::string SimulatedController::TakeOutput() {
  std::string output;
  while (!answers_.empty() && answers_.front().Due <= now_ + 1e-9) {
    output += answers_.front().Bytes;
    answers_.pop_front();
  }
  return output;
}

std::optional<double> SimulatedController::OutputDueIn() const {
  if (answers_.empty()) return std::nullopt;
  return std::max(0.0, answers_.front().Due - now_);
}

}  // namespace torvane::simulator
