#include "tools/ContractRun.h"

#include <algorithm>
#include <cmath>

#include "core/General.h"
#include "core/MachineState.h"
#include "link/Variables.h"

namespace torvane::tools {

namespace {

namespace Variable = link::Variable;
namespace StatusBit = core::StatusBit;

constexpr int FirstIndex = 750;  // of slot 2
constexpr int Rounds = 6;
constexpr double StepMm = 1;
/// So long that the head is seen there, however slow the line is.
constexpr double DwellSeconds = 0.4;
constexpr int LookMs = 50;
constexpr int StopSeconds = 60;
/// The run is through so long after its last line has gone out, and several times so: it takes
/// six seconds.
constexpr int SpareMs = 20000;

/// What brings a machine to rest.
struct RestWish {
  OperatorWish Wish;
  const char* Text;
};
constexpr RestWish StopWish = {OperatorWish::Stop,
                               "The machine does not come to rest. Press stop."};
/// Outside a cycle the stop does not end a hold. It comes first all the same: a controller may not
/// show the cycle that it holds.
constexpr RestWish ReleaseWish = {OperatorWish::Release,
                                  "The machine is held. Press stop, then release the feed hold."};
constexpr RestWish UnknownWish = {
    OperatorWish::Stop, "The controller does not say whether the machine rests. Press stop."};

bool OnlyHeld(int status) {
  constexpr int InCycle = StatusBit::Running | StatusBit::Cycle | StatusBit::Beam;
  return (status & StatusBit::Feedhold) != 0 && (status & InCycle) == 0;
}

/// Looks, and asks for what the machine wants; each wish once.
class RestWatch {
 public:
  explicit RestWatch(ContractSession& session) : session_(session) {}

  bool Rests() {
    try {
      fault_ = Look();
    } catch (const std::exception&) {
      if (asked_.empty()) Ask(UnknownWish);
      throw;
    }
    return fault_.empty();
  }

  [[nodiscard]] const std::string& Fault() const { return fault_; }

 private:
  std::string Look() {
    const int status = session_.Status();
    auto fault = NotAtRest(status);
    if (!fault.empty()) Ask(OnlyHeld(status) ? ReleaseWish : StopWish);
    return fault;
  }

  void Ask(const RestWish& wish) {
    if (std::find(asked_.begin(), asked_.end(), wish.Wish) != asked_.end()) return;
    asked_.push_back(wish.Wish);
    session_.Ask(wish.Wish, wish.Text);
  }

  ContractSession& session_;
  std::vector<OperatorWish> asked_;
  std::string fault_;
};

class RunWatch {
 public:
  RunWatch(ContractSession& session, const HarmlessProgram& program)
      : session_(session), program_(program) {
    seen_.SecondsBefore = session_.Number(Variable::RunTime);
    recordBefore_ = session_.Number(Variable::RunningRecord);
  }

  RunSeen Watch() {
    try {
      AwaitStart();
      WatchRun();
    } catch (const std::exception&) {
      WithdrawWish();
      throw;
    }
    WithdrawWish();
    Finish();
    return seen_;
  }

 private:
  void WatchRun() {
    auto end = session_.Line().NowMs() + SpareMs;
    for (Look(); !Over() && session_.Line().NowMs() < end; Look()) {
      if (SendLines()) end = session_.Line().NowMs() + SpareMs;
      session_.Line().Sleep(LookMs);
    }
  }

  /// What was in force before is put back after a start that did not come: then one that comes late
  /// would start a program of the owner's. What was taken for the start may have been none.
  void WithdrawWish() {
    if (started_) return;
    session_.Ask(OperatorWish::NoCycleStart, "Do not press cycle start any more.");
  }

  void AwaitStart() {
    session_.Ask(OperatorWish::CycleStart,
                 "The head goes " + core::NumberText(StepMm, -1) +
                     " mm to and fro with the beam off, for about six seconds. Press cycle start.");
    const bool any =
        session_.Await(session_.Settings().StartSeconds * 1000, [this] { return SomethingRuns(); });
    if (!any) throw NotTried("no cycle start came");
  }

  bool SomethingRuns() {
    return (Status() & (StatusBit::Running | StatusBit::Beam)) != 0 || Record() > recordBefore_ ||
           session_.Number(Variable::RunTime) != seen_.SecondsBefore || Away() > FarthestAllowed;
  }

  int Status() {
    const int status = session_.Status();
    started_ = started_ || (status & StatusBit::Running) != 0;
    return status;
  }

  double Record() {
    const double record = session_.Number(Variable::RunningRecord);
    started_ = started_ || record > recordBefore_;
    return record;
  }

  [[nodiscard]] bool Over() const { return seen_.Ended || !seen_.Danger.empty(); }

  /// One line at least, and so many that the run does not wait for them on a slow line.
  bool SendLines() {
    bool any = false;
    do {
      if (sent_ >= program_.Lines.size() || !seen_.Refused.empty()) return any;
      const auto& line = program_.Lines[sent_++];
      if (!session_.Command(line)) seen_.Refused = line;
      any = true;
    } while (static_cast<double>(sent_) < seen_.Record + LinesAhead);
    return any;
  }

  /// What shows that it is not the harmless program that runs; empty where nothing does.
  [[nodiscard]] std::string Danger() const {
    if (!session_.Notes().Beam.empty()) return "the beam came on";
    if (seen_.Farthest <= FarthestAllowed) return {};
    return "the head was " + core::NumberText(seen_.Farthest, 1) + " mm away";
  }

  void Look() {
    const int status = Status();
    seen_.Danger = Danger();
    if (!seen_.Danger.empty()) return;
    seen_.Farthest = std::max(seen_.Farthest, Away());
    seen_.Danger = Danger();
    if (!seen_.Danger.empty()) return;
    seen_.RunningSeen = seen_.RunningSeen || (status & StatusBit::Running) != 0;
    const bool running = (status & (StatusBit::Running | StatusBit::Feedhold)) != 0;
    const double seconds = session_.Number(Variable::RunTime);
    seen_.SecondsFell = seen_.SecondsFell || (lookedAt_ && seconds < seconds_);
    seen_.SecondsRose = seen_.SecondsRose || (lookedAt_ && seconds > seconds_);
    seconds_ = seconds;
    const double record = Record();
    const bool over = (seen_.RunningSeen && !running) ||
                      (!seen_.RunningSeen && record >= static_cast<double>(program_.Lines.size()));
    seen_.RecordFell = seen_.RecordFell || (!over && record < seen_.Record);
    seen_.Record = std::max(seen_.Record, record);
    lookedAt_ = true;
    seen_.Ended = over;
  }

  double Away() { return program_.DistanceTo(session_.Position(0), session_.Position(1)); }

  void Finish() {
    if (!seen_.Danger.empty()) {
      StopAtOnce(session_, seen_.Danger);
      return;
    }
    if (!seen_.Ended) {
      AwaitRest(session_);
      return;
    }
    constexpr int CountMs = 2000;
    session_.Await(CountMs, [this] {
      seen_.Counted = session_.Number(Variable::SheetsCompleted);
      return seen_.Counted == 1;
    });
    seen_.RunningLeft = (session_.Status() & StatusBit::Running) != 0;
    seen_.SecondsAfter = session_.Number(Variable::RunTime);
    seen_.EndDistance = Away();
  }

  ContractSession& session_;
  const HarmlessProgram& program_;
  RunSeen seen_;
  std::size_t sent_ = LinesAhead;
  double recordBefore_ = 0;
  double seconds_ = 0;
  bool lookedAt_ = false;
  bool started_ = false;  ///< bit 16384 or VR(81) has shown it
};

}  // namespace

double HarmlessProgram::DistanceTo(double x, double y) const { return std::hypot(x - X, y - Y); }

HarmlessProgram::HarmlessProgram(double x, double y) : X(x), Y(y) {
  const double away = x >= StepMm ? x - StepMm : x + StepMm;
  int index = FirstIndex;
  const auto row = [&](double at, double action) {
    std::string line = "TABLE(" + std::to_string(index);
    line += ",0," + core::NumberText(at, 4);
    line += "," + core::NumberText(y, 4);
    line += ",0," + core::NumberText(action, -1);
    Lines.push_back(line + ",0,0)");
    index += 7;
  };
  for (int round = 0; round < Rounds; ++round) {
    for (const double at : {away, x}) {
      row(at, 0);
      row(at, tools::DwellSeconds);
      DwellSeconds += tools::DwellSeconds;
    }
  }
  Lines.push_back("TABLE(" + std::to_string(index) + ",-999)");
}

RunSeen RunHarmlessProgram(ContractSession& session, const HarmlessProgram& program) {
  return RunWatch(session, program).Watch();
}

std::string NotAtRest(int status) {
  constexpr int Busy =
      StatusBit::Running | StatusBit::Feedhold | StatusBit::Cycle | StatusBit::Beam;
  if ((status & Busy) == 0) return {};
  if (OnlyHeld(status)) return "the machine is not at rest: VR(19) is " + std::to_string(status);
  return "the machine still runs";
}

bool AtRest(ContractSession& session) { return NotAtRest(session.Status()).empty(); }

std::string AwaitRest(ContractSession& session) {
  RestWatch watch(session);
  session.Await(StopSeconds * 1000, [&watch] { return watch.Rests(); });
  return watch.Fault();
}

void StopAtOnce(ContractSession& session, const std::string& danger) {
  session.Ask(OperatorWish::Stop, "This is not as it should be: " + danger + ". Press stop.");
  try {
    session.Await(StopSeconds * 1000, [&session] { return AtRest(session); });
  } catch (const NotTried&) {
    // What was seen counts. Whether the machine rests is asked again before anything is put back.
  }
}

}  // namespace torvane::tools
