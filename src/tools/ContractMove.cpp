#include "tools/ContractMove.h"

#include <array>
#include <cmath>
#include <string_view>

#include "link/Variables.h"
#include "tools/ContractRest.h"
#include "tools/ContractRun.h"

namespace torvane::tools {

namespace {

namespace Variable = link::Variable;

constexpr int ActionMs = 10000;

constexpr std::string_view MoveTargets[] = {Variable::MoveTargetX, Variable::MoveTargetY,
                                            Variable::MoveTargetZ};
using Place = std::array<double, std::size(MoveTargets)>;

/// Sets the targets to where the head is. A target that was not taken would send the head to the
/// owner's last one, without a cycle start.
std::string SetTargets(ContractSession& session, Place& at) {
  for (std::size_t axis = 0; axis < at.size(); ++axis) {
    at[axis] = session.Position(axis);
    if (!session.Change(MoveTargets[axis], at[axis])) return "a target was refused";
  }
  for (std::size_t axis = 0; axis < at.size(); ++axis) {
    const double found = session.Number(MoveTargets[axis]);
    if (!(std::abs(found - at[axis]) <= PositionSlack)) {
      return Instead(MoveTargets[axis], found, at[axis]);
    }
  }
  return {};
}

/// A position that was read wrong, or in a manual move, would be gone to. Throws NotTried where
/// measured and demanded position, read anew, are not the targets.
void RequireHeadAt(ContractSession& session, const Place& at) {
  session.ForgetDivisor();
  for (std::size_t axis = 0; axis < at.size(); ++axis) {
    for (const double found : {session.Position(axis), session.DemandPosition(axis)}) {
      if (std::abs(found - at[axis]) <= PositionSlack) continue;
      throw NotTried("the head is not known to be at " + FigureText(at[axis]) + ": it is at " +
                     FigureText(found));
    }
  }
}

/// The head has left its place in a move to it.
void EndMove(ContractSession& session) {
  (void)session.Command(link::CommandLine::StopJog);
  constexpr const char* Danger = "the head has moved";
  (void)StopAtOnce(session, Danger);
  throw TrialEnds(Danger);
}

/// What VR(48) is instead of its rest value after an action; empty where it rests.
std::string AwaitAction(ContractSession& session, std::string_view line, double rest,
                        const Place& at) {
  if (!session.Command(line)) return std::string(line) + " was refused";
  double found = 0;
  const bool rests = session.Await(ActionMs, [&] {
    found = session.Number(Variable::Command);
    if (std::hypot(session.Position(0) - at[0], session.Position(1) - at[1],
                   session.Position(2) - at[2]) > FarthestAllowed) {
      EndMove(session);
    }
    return found == rest;
  });
  return rests ? std::string() : Instead("after " + std::string(line) + " VR(48)", found, rest);
}

}  // namespace

std::string MoveToWhereTheHeadIs(ContractSession& session, std::optional<double>& rest) {
  const double before = session.Number(Variable::Command);
  Place at{};
  auto wrong = SetTargets(session, at);
  if (!wrong.empty()) return wrong;
  rest = before;
  wrong = AwaitAction(session, link::CommandLine::StopJog, before, at);
  if (!wrong.empty()) return wrong;
  RequireRest(session);
  RequireHeadAt(session, at);
  return AwaitAction(session, link::CommandLine::Move, before, at);
}

}  // namespace torvane::tools
