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
constexpr double DwellSeconds = 0.2;
constexpr int LookMs = 50;
constexpr int StopSeconds = 60;
/// The run is through so long after its last line has gone out, and several times so: it takes
/// three seconds.
constexpr int SpareMs = 20000;

class RunWatch {
 public:
  RunWatch(ContractSession& session, const HarmlessProgram& program)
      : session_(session), program_(program) {
    seen_.SecondsBefore = session_.Number(Variable::RunTime);
    recordBefore_ = session_.Number(Variable::RunningRecord);
  }

  RunSeen Watch() {
    AwaitStart();
    seen_.Started = true;
    auto end = session_.Line().NowMs() + SpareMs;
    while (!seen_.Ended && session_.Line().NowMs() < end) {
      if (SendNextLine()) end = session_.Line().NowMs() + SpareMs;
      Look();
      if (!seen_.Ended) session_.Line().Sleep(LookMs);
    }
    Finish();
    return seen_;
  }

 private:
  void AwaitStart() {
    session_.Ask(
        OperatorWish::CycleStart,
        "The head goes " + core::NumberText(StepMm, -1) +
            " mm to and fro with the beam off, for about five seconds. Press cycle start.");
    const bool started = session_.Await(session_.Settings().StartSeconds * 1000, [this] {
      return (session_.Status() & StatusBit::Running) != 0 ||
             session_.Number(Variable::RunningRecord) > recordBefore_ ||
             session_.Number(Variable::RunTime) != seen_.SecondsBefore;
    });
    if (!started) throw NotTried("no cycle start came");
  }

  bool SendNextLine() {
    if (sent_ >= program_.Lines.size() || !seen_.Refused.empty()) return false;
    const auto& line = program_.Lines[sent_++];
    if (!session_.Command(line)) seen_.Refused = line;
    return true;
  }

  void Look() {
    const int status = session_.Status();
    const bool running = (status & StatusBit::Running) != 0;
    seen_.RunningSeen = seen_.RunningSeen || running;
    const double seconds = session_.Number(Variable::RunTime);
    seen_.SecondsFell = seen_.SecondsFell || (lookedAt_ && seconds < seconds_);
    seen_.SecondsRose = seen_.SecondsRose || (lookedAt_ && seconds > seconds_);
    seconds_ = seconds;
    const double record = session_.Number(Variable::RunningRecord);
    const bool over = (seen_.RunningSeen && !running) ||
                      (!seen_.RunningSeen && record >= static_cast<double>(program_.Lines.size()));
    seen_.RecordFell = seen_.RecordFell || (!over && record < seen_.Record);
    seen_.Record = std::max(seen_.Record, record);
    seen_.Farthest = std::max(seen_.Farthest, Away());
    lookedAt_ = true;
    seen_.Ended = over;
  }

  /// mm from where the program begins.
  double Away() {
    const double stored = session_.Number(Variable::PositionDivisor);
    const double scale = stored == 0 ? 1 : stored;
    const double x = session_.Number(link::MeasuredPosition[0]) / scale;
    const double y = session_.Number(link::MeasuredPosition[1]) / scale;
    return std::hypot(x - program_.X, y - program_.Y);
  }

  void Finish() {
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
  std::size_t sent_ = LinesAtRest;
  double recordBefore_ = 0;
  double seconds_ = 0;
  bool lookedAt_ = false;
};

}  // namespace

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

bool AwaitRest(ContractSession& session) {
  const auto rests = [&session] { return (session.Status() & StatusBit::Running) == 0; };
  if (rests()) return true;
  session.Ask(OperatorWish::Stop, "The run does not come to its end. Press stop.");
  return session.Await(StopSeconds * 1000, rests);
}

}  // namespace torvane::tools
