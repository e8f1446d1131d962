#include "link/JogLine.h"

#include "link/Variables.h"

namespace torvane::link {

JogLine::~JogLine() {
  if (words_ != stopped_) trio_.WriteLastLine(CommandLine::StopJog);
}

void JogLine::Jog(Hold hold, std::string_view word) {
  if (!Holds(hold)) return;
  ++words_;
  static_cast<void>(trio_.DownloadJogWord(word, [this] { Stop(); }));
}

void JogLine::Stop() {
  ++hold_;
  trio_.WithdrawJogWords();
  owed_ = true;
  if (stopping_) return;
  trio_.Loop().Start([this] { SendStops(); });
}

/// One activity sends all of them: a stop that is asked for while one is under way follows it, as a
/// word may have gone out between.
void JogLine::SendStops() {
  struct Mark {
    bool& Flag;
    explicit Mark(bool& flag) : Flag(flag) { Flag = true; }
    ~Mark() { Flag = false; }
    Mark(const Mark&) = delete;
    Mark& operator=(const Mark&) = delete;
  } const mark(stopping_);
  Asker asker = Asker::Poll;
  while (owed_) {
    owed_ = false;
    const std::uint64_t answers = trio_.Answers();
    const std::uint64_t words = words_;
    if (trio_.DownloadUrgent(CommandLine::StopJog, asker)) {
      asker = Asker::Poll;
      stopped_ = words;
      continue;
    }
    if (trio_.Ending()) {
      // The program's last word to the machine, once.
      if (asker != Asker::End)
        static_cast<void>(trio_.DownloadUrgent(CommandLine::StopJog, Asker::End));
      return;
    }
    // One dialog for one failure of the line, however often the stop has to be repeated.
    asker = Asker::Silent;
    trio_.Loop().WaitUntil(
        [this, answers] { return trio_.Answers() != answers || trio_.Ending(); });
    owed_ = true;
  }
}

}  // namespace torvane::link
