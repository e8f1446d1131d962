#include "tools/ContractRest.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "core/MachineState.h"
#include "link/Variables.h"

namespace torvane::tools {

namespace {

namespace Variable = link::Variable;
namespace StatusBit = core::StatusBit;

constexpr int StopSeconds = 60;
/// A head in the program has moved on after so long.
constexpr int StillMs = 1000;
constexpr double StillMm = 0.05;

constexpr const char* StillRuns = "the machine still runs";

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

/// Whether neither VR(81) nor the head goes on.
bool StandsStill(ContractSession& session) {
  const auto look = [&session] {
    return std::array{session.Position(0), session.Position(1),
                      session.Number(Variable::RunningRecord)};
  };
  const auto before = look();
  session.Line().Sleep(StillMs);
  const auto after = look();
  return std::hypot(after[0] - before[0], after[1] - before[1]) <= StillMm && after[2] == before[2];
}

/// Looks, and asks for what the machine wants; each wish once.
class RestWatch {
 public:
  RestWatch(ContractSession& session, RunLeft left) : session_(session), left_(std::move(left)) {}

  void Ask(OperatorWish wish, const std::string& text) {
    if (std::find(asked_.begin(), asked_.end(), wish) != asked_.end()) return;
    asked_.push_back(wish);
    session_.Ask(wish, text);
  }

  bool Rests() {
    try {
      fault_ = Look();
    } catch (const NotTried& fault) {  // the next look may find it
      if (asked_.empty()) Ask(UnknownWish);
      fault_ = fault.what();
    } catch (const std::exception&) {
      if (asked_.empty()) Ask(UnknownWish);
      throw;
    }
    return fault_.empty();
  }

  [[nodiscard]] const std::string& Fault() const { return fault_; }

 private:
  void Ask(const RestWish& wish) { Ask(wish.Wish, wish.Text); }

  std::string Look() {
    if (!left_.EndLine.empty()) (void)session_.Command(std::exchange(left_.EndLine, {}));
    const int status = session_.Status();
    auto fault = NotAtRest(status);
    if (!fault.empty() || left_.Open) Ask(OnlyHeld(status) ? ReleaseWish : StopWish);
    if (fault.empty() && left_.Open && !StandsStill(session_)) fault = StillRuns;
    return fault;
  }

  ContractSession& session_;
  RunLeft left_;
  std::vector<OperatorWish> asked_;
  std::string fault_;
};

}  // namespace

std::string NotAtRest(int status) {
  constexpr int Busy =
      StatusBit::Running | StatusBit::Feedhold | StatusBit::Cycle | StatusBit::Beam;
  if ((status & Busy) == 0) return {};
  if (OnlyHeld(status)) return "the machine is not at rest: VR(19) is " + std::to_string(status);
  return StillRuns;
}

bool AtRest(ContractSession& session) { return NotAtRest(session.Status()).empty(); }

std::string AwaitRest(ContractSession& session, RunLeft left) {
  RestWatch watch(session, std::move(left));
  session.Await(StopSeconds * 1000, [&watch] { return watch.Rests(); });
  return watch.Fault();
}

bool StopAtOnce(ContractSession& session, const std::string& danger) {
  RestWatch watch(session, {{}, true});
  watch.Ask(OperatorWish::Stop, "This is not as it should be: " + danger + ". Press stop.");
  return session.Await(StopSeconds * 1000, [&watch] { return watch.Rests(); });
}

std::string BarredBy(int status) {
  constexpr int Busy = StatusBit::Feedhold | StatusBit::InError | StatusBit::Cycle |
                       StatusBit::Running | StatusBit::RestartReady | StatusBit::Beam;
  if ((status & Busy) == 0) return {};
  return "the machine is not at rest: VR(19) is " + std::to_string(status);
}

void RequireRest(ContractSession& session) {
  const int status = session.Status();
  const auto barred = BarredBy(status);
  if (barred.empty()) return;
  if ((status & StatusBit::Beam) == 0) throw NotTried(barred);
  constexpr const char* Danger = "the beam came on";
  (void)StopAtOnce(session, Danger);
  throw TrialEnds(Danger);
}

}  // namespace torvane::tools
