#include "tools/ContractClauses.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <utility>

#include "core/General.h"
#include "link/Variables.h"
#include "tools/ContractMove.h"
#include "tools/ContractRest.h"
#include "tools/ContractRun.h"

namespace torvane::tools {

namespace {

namespace Variable = link::Variable;

/// A variable that any whole or broken number may be written to for a while.
constexpr std::string_view Scratch = Variable::PartsPerSheet;
constexpr int SoonMs = 2000;

/// The run, made when the first clause asks for it.
struct Trial {
  ContractSession& Session;
  std::unique_ptr<HarmlessProgram> Program = nullptr;
  std::unique_ptr<RunSeen> Seen = nullptr;
  std::string RunFault = {};  ///< why there is none
  RunProgress Progress = {};  ///< of the run, and before it
  bool Filled = false;        ///< slot 2 has taken the first lines of the program
  bool InForce = false;       ///< and slot 2 is in force
  std::optional<double> CommandRest = std::nullopt;  ///< VR(48) before anything was written to it
};

// ---- lines and values ----

std::string TryErrorMark(Trial& trial) {
  auto& session = trial.Session;
  if (session.Command("THIS IS NO LINE")) return "a line that means nothing gave no \"%\"";
  if (session.Command("? VR(")) return "\"? VR(\" gave no \"%\"";
  if (!session.Command("? VR(19)")) return "a good query after it gave \"%\" too";
  return {};
}

std::string TryValues(Trial& trial) {
  auto& session = trial.Session;
  for (const double value : {0.0, 7.0, -12.25, 123456.5, 2097152.0}) {
    if (!session.Change(Scratch, value)) return "a number was refused: " + FigureText(value);
    const Exchange exchange = session.Send("? " + std::string(Scratch));
    const std::string_view answer = AnswerOf(exchange);
    const double found = core::LeadingNumber(answer);
    if (std::abs(found - value) > 1e-6) return Instead(Scratch, found, value);
    const auto end = answer.find_first_of("\r\n");
    if (end == std::string_view::npos || !answer.substr(end).starts_with("\r\n")) {
      return "no CR LF after the value of \"" + exchange.Line + "\"";
    }
  }
  return {};
}

constexpr std::string_view Queries[] = {
    Variable::IoMessage,       Variable::LogicMessages,   Variable::Status,
    Variable::RunTime,         Variable::PositionDivisor, Variable::RunningRecord,
    Variable::FeedOverride,    Variable::FeedRate,        Variable::JogSpeed,
    Variable::JogBySteps,      Variable::JogStep,         Variable::LoadPositionAX,
    Variable::LoadPositionAY,  Variable::LoadPositionBX,  Variable::LoadPositionBY,
    Variable::PartsPerSheet,   Variable::PartsRequired,   Variable::SheetsRequired,
    Variable::SheetsCompleted, Variable::BlockSkip1,      Variable::BlockSkip2,
    Variable::PowerOverride,   Variable::ProgrammedPower, Variable::ActualPower};

std::string TryQueries(Trial& trial) {
  std::vector<std::string_view> all(std::begin(Queries), std::end(Queries));
  for (const auto& value : link::LaserStatusValues) all.push_back(value.Name);
  for (const auto& axes :
       {link::MeasuredPosition, link::DemandPosition, link::EndOfMove, link::FollowingError}) {
    all.insert(all.end(), axes.begin(), axes.end());
  }
  for (const auto expression : all) {
    if (!trial.Session.Value(expression)) return std::string(expression) + " gives no number";
  }
  return {};
}

std::string TryExpressions(Trial& trial) {
  auto& session = trial.Session;
  const std::string name(Scratch);
  session.Change(Scratch, 5);
  const struct {
    const char* Tail;
    double Value;
  } steps[] = {{" OR 32", 37}, {"-32", 5}};
  for (const auto& step : steps) {
    std::string line = name + "=";
    line += name + step.Tail;
    if (!session.Command(line)) return line + " was refused";
    const double found = session.Number(Scratch);
    if (found != step.Value) return Instead("after " + line + " it", found, step.Value);
  }
  return {};
}

std::string TryBlockSkips(Trial& trial) {
  for (const auto skip : {Variable::BlockSkip1, Variable::BlockSkip2}) {
    for (const double value : {1.0, 0.0}) {
      if (!trial.Session.Change(skip, value)) return std::string(skip) + " was refused";
      const double found = trial.Session.Number(skip);
      if (found != value) return Instead(skip, found, value);
    }
  }
  return {};
}

std::string TryFeedOverride(Trial& trial) {
  auto& session = trial.Session;
  constexpr double Asked = 90;
  if (!session.Change(Variable::FeedOverrideRequest, Asked)) return "VR(68) was refused";
  double found = 0;
  const bool came = session.Await(SoonMs, [&] {
    found = session.Number(Variable::FeedOverride);
    return std::abs(found - Asked) < 0.5;
  });
  return came ? std::string() : Instead("with VR(68) at 90, VR(98)", found, Asked);
}

// ---- the table, the command word and the run ----

/// What stands behind the first lines are rows of the owner's. A controller that does not wait for
/// the next line would run them, so each is made an end first.
std::string MakeEnds(ContractSession& session, std::size_t from, std::size_t to) {
  for (std::size_t i = from; i < to; ++i) {
    const auto line = HarmlessProgram::EndAfter(i);
    if (!session.Command(line)) return line + " was refused";
  }
  return {};
}

std::string TryTableAtRest(Trial& trial) {
  auto& session = trial.Session;
  trial.Program = std::make_unique<HarmlessProgram>(session.Position(0), session.Position(1));
  const auto& lines = trial.Program->Lines;
  auto refused = MakeEnds(session, LinesAhead, lines.size());
  if (!refused.empty()) return refused;
  for (auto& taken = trial.Progress.Taken; taken < LinesAhead; ++taken) {
    if (!session.Command(lines[taken])) return lines[taken] + " was refused";
  }
  trial.Filled = true;
  return {};
}

std::string TryTableInForce(Trial& trial) {
  auto& session = trial.Session;
  constexpr double Slot = 2;
  if (!trial.Filled) throw NotTried("the table has not taken its lines");
  if (!session.Change(Variable::TableInForce, Slot)) return "VR(91)=2 was refused";
  const double slot = session.Number(Variable::TableInForce);
  if (slot != Slot) return Instead("after VR(91)=2 it", slot, Slot);
  double found = 0;
  const bool zero = session.Await(SoonMs, [&] {
    found = session.Number(Variable::RunningRecord);
    return found == 0;
  });
  if (!zero) return Instead("with another table in force VR(81)", found, 0);
  trial.InForce = true;
  return {};
}

std::string TryCommandWord(Trial& trial) {
  return MoveToWhereTheHeadIs(trial.Session, trial.CommandRest);
}

/// A cycle start is asked for only where it can start nothing but the harmless program, and that
/// from the place where it begins, measured and demanded. Throws NotTried.
void RequireHarmlessStart(Trial& trial) {
  auto& session = trial.Session;
  if (!trial.InForce) throw NotTried("slot 2 is not known to hold the program and be in force");
  if (!session.Notes().Beam.empty()) throw NotTried("the beam was on");
  RequireRest(session);
  session.ForgetDivisor();
  const double away =
      std::max(trial.Program->DistanceTo(session.Position(0), session.Position(1)),
               trial.Program->DistanceTo(session.DemandPosition(0), session.DemandPosition(1)));
  if (away <= PositionSlack) return;
  throw NotTried("the head is " + FigureText(away) + " mm from where the program begins");
}

/// The run, also one that was stopped because of what it did; throws NotTried where it cannot be
/// had.
const RunSeen& AnyRun(Trial& trial) {
  auto& session = trial.Session;
  if (!trial.Seen && trial.RunFault.empty()) {
    trial.RunFault = "the run broke off";
    try {
      RequireHarmlessStart(trial);
      session.Change(Variable::PartsPerSheet, 1);
      session.Change(Variable::PartsRequired, 1000);
      session.Change(Variable::SheetsRequired, 1000);
      session.Change(Variable::SheetsCompleted, 0);
      trial.Seen =
          std::make_unique<RunSeen>(RunHarmlessProgram(session, *trial.Program, trial.Progress));
    } catch (const NotTried& fault) {
      trial.RunFault = fault.what();
      throw;
    }
  }
  if (!trial.Seen) throw NotTried(trial.RunFault);
  return *trial.Seen;
}

/// The same, of a run that went as it should as far as was seen.
const RunSeen& Run(Trial& trial) {
  const RunSeen& seen = AnyRun(trial);
  if (!seen.Danger.empty()) throw NotTried("the run was stopped: " + seen.Danger);
  return seen;
}

const RunSeen& EndedRun(Trial& trial) {
  const RunSeen& seen = Run(trial);
  if (!seen.Ended) throw NotTried("the run did not come to its end");
  return seen;
}

std::string TryRowsTaken(Trial& trial) {
  const auto& refused = Run(trial).Refused;
  return refused.empty() ? std::string() : refused + " was refused while the program ran";
}

/// VR(81) of a run to its end: between two looks the last line may have come and gone.
double LeastRecord(const Trial& trial) {
  return static_cast<double>(trial.Program->Lines.size()) - 2;
}

std::string TryRowsRun(Trial& trial) {
  const RunSeen& seen = Run(trial);
  if (!seen.Refused.empty()) throw NotTried("they were refused");
  // A controller may end a run early, as if its last line had come.
  if (seen.Ended && seen.Record >= LeastRecord(trial)) return {};
  if (seen.Ended && seen.Record == 0) throw NotTried("VR(81) does not tell how far it came");
  return "the run came to line " + FigureText(seen.Record) + " of " +
         std::to_string(trial.Program->Lines.size()) + " and no further";
}

std::string TryStatusWord(Trial& trial) {
  if (!Run(trial).RunningSeen) return "bit 16384 was never there while the program ran";
  return EndedRun(trial).RunningLeft ? "bit 16384 stays after the end of the program"
                                     : std::string();
}

std::string TryRunningRecord(Trial& trial) {
  const RunSeen& seen = Run(trial);
  if (seen.RecordFell) return "VR(81) went back while the program ran";
  const double least = seen.Ended ? LeastRecord(trial) : 1;
  return seen.Record >= least ? std::string() : Instead("VR(81)", seen.Record, least);
}

std::string TryRunTime(Trial& trial) {
  const RunSeen& seen = Run(trial);
  if (seen.SecondsFell) return "VR(52) went back while the program ran";
  if (!seen.SecondsRose) return "VR(52) stood still in the run";
  if (!seen.Ended) return {};
  const double least = trial.Program->DwellSeconds * 0.9;
  return seen.SecondsAfter >= least ? std::string()
                                    : Instead("after a run with dwells of that time VR(52)",
                                              seen.SecondsAfter, trial.Program->DwellSeconds);
}

std::string TryPositions(Trial& trial) {
  constexpr double LeastWay = 0.5;  // mm; what it goes may fall between two looks in part
  const double farthest = AnyRun(trial).Farthest;
  if (farthest > FarthestAllowed) return "the head was " + FigureText(farthest) + " mm away";
  const double end = EndedRun(trial).EndDistance;
  if (farthest < LeastWay) {
    return "MPOS went " + FigureText(farthest) + " mm at most in a run of a millimetre to and fro";
  }
  return end <= PositionSlack ? std::string()
                              : "the head ended " + FigureText(end) + " mm from where it began";
}

std::string TryBatchCount(Trial& trial) {
  const double counted = EndedRun(trial).Counted;
  return counted == 1 ? std::string() : Instead("after one sheet VR(85)", counted, 1);
}

// ---- what every exchange shows ----

std::string TryPrompt(Trial& trial) {
  const Exchange empty = trial.Session.Send("");
  const auto& note = trial.Session.Notes().Prompt;
  if (!note.empty()) return note;
  return empty.Reply == ">>" ? std::string() : "an empty line gave more than the prompt";
}
std::string TryEcho(Trial& trial) { return trial.Session.Notes().Echo; }
std::string TryReplyTime(Trial& trial) { return trial.Session.Notes().Late; }
std::string TryBeamOff(Trial& trial) {
  const auto& note = trial.Session.Notes().Beam;
  if (note.empty()) (void)trial.Session.Status();
  return note;
}

struct Clause {
  const char* Name;
  const char* Says;
  std::string (*Try)(Trial&);  ///< what was seen instead; empty: it holds
  bool NeedsRun;
  bool OnlyAtRest = false;                 ///< what it writes could change a program that runs
  std::string LineNotes::*Note = nullptr;  ///< of any exchange, that it fails by
};

/// In the order in which they are tried: the last look back over all exchanges.
constexpr Clause Clauses[] = {
    {"error mark", "a line at fault is answered with %, the next one is good again", TryErrorMark,
     false},
    {"values", "a number that was written is read as it was, CR LF after it", TryValues, false},
    {"queries", "every variable and position of the contract gives a number", TryQueries, false},
    {"expressions", "OR and - on a right side", TryExpressions, false},
    {"block skips", "VR(92) and VR(93) keep what they are set to", TryBlockSkips, false, true},
    {"feed override", "VR(68) comes back in VR(98)", TryFeedOverride, false, true},
    {"table at rest", "table lines are taken while nothing runs", TryTableAtRest, true, true},
    {"table in force", "VR(91) stays at the slot that is written, VR(81) goes to 0",
     TryTableInForce, true, true},
    {"command word", "VR(48) goes back to its rest value after an action", TryCommandWord, true,
     true},
    {"rows taken", "table lines are taken while the program runs", TryRowsTaken, true},
    {"rows run", "lines that came while it ran are run", TryRowsRun, true},
    {"status word", "bit 16384 of VR(19) is there in the run and gone after it", TryStatusWord,
     true},
    {"running record", "VR(81) counts up to the last line", TryRunningRecord, true},
    {"run time", "VR(52) counts the seconds of the run", TryRunTime, true},
    {"positions", "MPOS follows the head", TryPositions, true},
    {"batch count", "VR(85) counts the sheet", TryBatchCount, true},
    {"prompt", "every reply ends with >>, an empty line gives nothing else", TryPrompt, false,
     false, &LineNotes::Prompt},
    {"echo", "every line comes back with CR LF in front of its answer", TryEcho, false, false,
     &LineNotes::Echo},
    {"reply time", "every reply comes in time", TryReplyTime, false, false, &LineNotes::Late},
    {"beam off", "the beam was never on", TryBeamOff, false, false, &LineNotes::Beam},
};

void TryClause(const Clause& clause, Trial& trial, ClauseResult& result) {
  try {
    if (clause.OnlyAtRest) RequireRest(trial.Session);
    result.Text = clause.Try(trial);
    result.State = result.Text.empty() ? ClauseState::Holds : ClauseState::Fails;
  } catch (const NotTried& fault) {
    result.Text = fault.what();
  }
}

/// A clause that has failed keeps its text.
void Fail(ContractResult& result, std::string_view name, const std::string& text) {
  for (auto& clause : result.Clauses) {
    if (clause.Name != name || clause.State == ClauseState::Fails) continue;
    clause.State = ClauseState::Fails;
    clause.Text = text;
  }
}

void TryAll(Trial& trial, ContractResult& result) {
  for (const auto& clause : Clauses) {
    if (clause.NeedsRun && !trial.Session.Settings().Run) continue;
    result.Clauses.push_back({clause.Name, clause.Says, ClauseState::NotTried, "not reached"});
  }
  auto at = result.Clauses.begin();
  try {
    for (const auto& clause : Clauses) {
      if (clause.NeedsRun && !trial.Session.Settings().Run) continue;
      TryClause(clause, trial, *at);
      ++at;
    }
  } catch (const ControllerSilent& silence) {
    at->Text = silence.what();
    Fail(result, "reply time", silence.what());
  } catch (const std::exception& end) {  // an interruption, or what nobody has thought of
    at->Text = end.what();
  }
}

/// What was noted of any exchange fails its clause, also one that was not reached.
void FailByNotes(const LineNotes& notes, ContractResult& result) {
  for (const auto& clause : Clauses) {
    if (clause.Note != nullptr && !(notes.*clause.Note).empty()) {
      Fail(result, clause.Name, notes.*clause.Note);
    }
  }
}

/// Variables that say what runs: written into a running machine they could change its program.
bool OnlyAtRest(std::string_view variable) {
  return variable == Variable::TableInForce || variable == Variable::BlockSkip1 ||
         variable == Variable::BlockSkip2;
}

/// Why the machine is left alone; empty at rest.
std::string BarredNow(ContractSession& session) {
  constexpr double RestartTable = 3;
  auto barred = BarredBy(session.Status());
  // The lamp of a restart blinks: half of the time the status does not show it.
  if (barred.empty() && session.Value(Variable::TableInForce) == RestartTable) {
    barred = "the machine is not at rest: a restart waits for its cycle start, VR(91) is 3";
  }
  return barred;
}

/// What the machine still does; empty at rest. Without a run nobody is asked for anything.
std::string RestFault(ContractSession& session, RunLeft left) {
  return session.Settings().Run ? AwaitRest(session, std::move(left)) : NotAtRest(session.Status());
}

/// Nothing more goes out where the beam was on: another program may run.
RunLeft WhatIsLeft(const Trial& trial) {
  if (!trial.Program) return {};
  auto left = LeftOf(*trial.Program, trial.Progress);
  if (!trial.Session.Notes().Beam.empty()) left.EndLine.clear();
  return left;
}

/// VR(48) is no value to be put back: to write it is to act.
void NameCommandWord(Trial& trial, ContractResult& result) {
  const auto rest = std::exchange(trial.CommandRest, {});
  if (!rest) return;
  const double found = trial.Session.Number(Variable::Command);
  if (found == *rest) return;
  result.NotPutBack.push_back("VR(48) to " + FigureText(*rest) + ": it is " + FigureText(found));
}

/// The machine at rest first, then everything that was written; while it is not known to rest, only
/// what does no harm to a run.
void PutAllBack(Trial& trial, ContractResult& result) {
  auto& session = trial.Session;
  auto left = WhatIsLeft(trial);
  const auto rested = [&] {
    try {
      session.Line().Settle();
      const auto fault = RestFault(session, std::exchange(left, {}));
      if (!fault.empty()) result.NotPutBack.push_back(fault);
      if (fault.empty()) NameCommandWord(trial, result);
      return fault.empty();
    } catch (const std::exception& fault) {
      result.NotPutBack.emplace_back(fault.what());
      return false;
    }
  };
  const bool rests = rested();
  bool started = false;
  const auto lost = session.PutBack([&](std::string_view variable) {
    if (!OnlyAtRest(variable)) return true;
    if (!rests) return false;
    started = started || !AtRest(session);
    return !started;
  });
  result.NotPutBack.insert(result.NotPutBack.end(), lost.begin(), lost.end());
  if (started) (void)rested();  // nobody leaves it running
}

}  // namespace

bool ContractResult::Holds() const {
  return Barred.empty() && NotPutBack.empty() &&
         std::all_of(Clauses.begin(), Clauses.end(),
                     [](const ClauseResult& clause) { return clause.State == ClauseState::Holds; });
}

ContractResult TryContract(const ContractParts& parts, const ContractSettings& settings,
                           const std::function<void(std::function<void()>)>& interrupt) {
  ContractResult result;
  ContractSession session(parts, settings);
  if (interrupt) interrupt([&session] { session.Line().Interrupt(); });
  try {
    (void)session.Send("");
    result.Barred = BarredNow(session);
  } catch (const std::runtime_error& fault) {
    result.Barred = fault.what();
  }
  if (result.Barred.empty()) {
    Trial trial{session};
    TryAll(trial, result);
    FailByNotes(session.Notes(), result);
    PutAllBack(trial, result);
    LineNotes late;  // an interruption may have left the other ones amiss
    late.Beam = session.Notes().Beam;
    FailByNotes(late, result);
  }
  if (interrupt) interrupt({});
  return result;
}

}  // namespace torvane::tools
