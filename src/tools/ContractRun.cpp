#include "tools/ContractRun.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/General.h"
#include "core/MachineState.h"
#include "link/Variables.h"

namespace torvane::tools {

namespace {

namespace Variable = link::Variable;
namespace StatusBit = core::StatusBit;

constexpr int FirstIndex = 750;  // of slot 2
constexpr int ValuesOfARow = 7;
constexpr int Rounds = 6;
constexpr double StepMm = 1;
/// So long that the head is seen there, however slow the line is.
constexpr double DwellSeconds = 0.4;
constexpr int LookMs = 50;
/// The run is through so long after its last line has gone out, and several times so: it takes
/// six seconds.
constexpr int SpareMs = 20000;
constexpr const char* SilentText = "The controller does not answer in the run. Press stop.";

class RunWatch {
 public:
  RunWatch(ContractSession& session, const HarmlessProgram& program, RunProgress& progress)
      : session_(session), program_(program), progress_(progress) {
    seen_.SecondsBefore = session_.Number(Variable::RunTime);
    recordBefore_ = session_.Number(Variable::RunningRecord);
  }

  RunSeen Watch() {
    try {
      AwaitStart();
      WatchRun();
    } catch (const ControllerSilent&) {
      if (progress_.Open) session_.Ask(OperatorWish::Stop, SilentText);
      WithdrawWish();
      throw;
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
    if (progress_.Open) return;
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
    progress_.Open = progress_.Open || (status & StatusBit::Running) != 0;
    return status;
  }

  double Record() {
    const double record = session_.Number(Variable::RunningRecord);
    progress_.Open = progress_.Open || record > recordBefore_;
    return record;
  }

  [[nodiscard]] bool Over() const { return seen_.Ended || !seen_.Danger.empty(); }

  /// One line at least, and so many that the run does not wait for them on a slow line.
  bool SendLines() {
    bool any = false;
    do {
      if (progress_.Taken >= program_.Lines.size() || !seen_.Refused.empty()) return any;
      const auto& line = program_.Lines[progress_.Taken];
      if (session_.Command(line)) {
        ++progress_.Taken;
      } else {
        seen_.Refused = line;
      }
      any = true;
    } while (static_cast<double>(progress_.Taken) < seen_.Record + LinesAhead);
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
    progress_.Strange = !seen_.Danger.empty();
    progress_.Ended = seen_.Ended;
    if (progress_.Strange) {
      progress_.Open = !StopAtOnce(session_, seen_.Danger);
      return;
    }
    if (!seen_.Ended) {
      progress_.Open = !AwaitRest(session_, LeftOf(program_, progress_)).empty();
      return;
    }
    progress_.Open = false;
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
  RunProgress& progress_;
  RunSeen seen_;
  double recordBefore_ = 0;
  double seconds_ = 0;
  bool lookedAt_ = false;
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
    index += ValuesOfARow;
  };
  for (int round = 0; round < Rounds; ++round) {
    for (const double at : {away, x}) {
      row(at, 0);
      row(at, tools::DwellSeconds);
      DwellSeconds += tools::DwellSeconds;
    }
  }
  Lines.push_back(EndAfter(Lines.size()));
}

std::string HarmlessProgram::EndAfter(std::size_t count) {
  const auto index = FirstIndex + ValuesOfARow * static_cast<int>(count);
  return "TABLE(" + std::to_string(index) + ",-999)";
}

RunLeft LeftOf(const HarmlessProgram& program, const RunProgress& progress) {
  const bool endless = progress.Taken > 0 && progress.Taken < program.Lines.size() &&
                       !progress.Ended && !progress.Strange;
  return {endless ? HarmlessProgram::EndAfter(progress.Taken) : std::string(), progress.Open};
}

RunSeen RunHarmlessProgram(ContractSession& session, const HarmlessProgram& program,
                           RunProgress& progress) {
  return RunWatch(session, program, progress).Watch();
}

}  // namespace torvane::tools
