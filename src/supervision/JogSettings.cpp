#include "supervision/JogSettings.h"

#include <algorithm>
#include <limits>

#include "core/General.h"
#include "link/Variables.h"

namespace torvane::supervision {

namespace {

namespace Variable = link::Variable;

using TwoLines = std::array<std::string_view, 2>;
constexpr TwoLines Step001 = {"VR(11)=1", "VR(12)=0.01"};
constexpr TwoLines Step01 = {"VR(11)=1", "VR(12)=0.1"};
constexpr TwoLines Step1 = {"VR(11)=1", "VR(12)=1"};
constexpr TwoLines Step10 = {"VR(11)=1", "VR(12)=10"};
constexpr TwoLines Step50 = {"VR(11)=1", "VR(12)=50"};
constexpr TwoLines Step100 = {"VR(11)=1", "VR(12)=100"};
constexpr std::array<std::string_view, 1> Continuous = {"VR(11)=0"};

constexpr double DefaultSpeedLimit = 20000;
constexpr int SpeedDecimalsRead = 1;
constexpr int SpeedDecimalsSent = 2;

/// A stored step of this length or less is taken for the index of an option, mm.
constexpr int LastStepIndex = 6;

}  // namespace

const std::array<JogDistance, 7>& JogDistances() {
  static constexpr std::array<JogDistance, 7> Table = {{
      {"0.01 (&A)", Step001},
      {"0.1 (&B)", Step01},
      {"1 (&C)", Step1},
      {"10 (&D)", Step10},
      {"50 (&E)", Step50},
      {"100 (&F)", Step100},
      {"CONT (&G)", Continuous},
  }};
  return Table;
}

const std::array<JogSpeed, 7>& JogSpeeds() {
  static constexpr std::array<JogSpeed, 7> Table = {{
      {"1 (&H)", 1, 4},
      {"5 (&I)", 5, 8},
      {"10 (&J)", 10, 20},
      {"25 (&K)", 25, 40},
      {"50 (&L)", 50, 60},
      {"75 (&M)", 75, 80},
      {"100 (&N)", 100, std::numeric_limits<double>::infinity()},
  }};
  return Table;
}

double JogSpeedLimit(double jogMaxSpeed) {
  return jogMaxSpeed > 0 ? jogMaxSpeed : DefaultSpeedLimit;
}

int JogSpeedOption(double percent) {
  const auto& speeds = JogSpeeds();
  const auto found = std::find_if(speeds.begin(), speeds.end(),
                                  [&](const JogSpeed& speed) { return percent <= speed.UpTo; });
  return found == speeds.end() ? static_cast<int>(speeds.size())
                               : static_cast<int>(found - speeds.begin()) + 1;
}

void JogSettings::SendDistance(int option) {
  for (const std::string_view line :
       JogDistances().at(static_cast<std::size_t>(option - 1)).Lines) {
    trio_.Download(line);
  }
}

void JogSettings::SendSpeed(int option) {
  const double percent = JogSpeeds().at(static_cast<std::size_t>(option - 1)).Percent;
  const double speed = percent * JogSpeedLimit(link_.JogMaxSpeed) / 100;
  trio_.Download(link::Assignment(Variable::JogSpeed, core::NumberText(speed, SpeedDecimalsSent)));
}

JogSettings::Held JogSettings::Read() {
  Held held;
  held.BySteps = trio_.GetRspnsBln(Variable::JogBySteps);
  held.Distance = trio_.GetRspnsInt(Variable::JogStep);
  const double speed = trio_.GetRspnsSngl(Variable::JogSpeed, SpeedDecimalsRead);
  held.Percent = speed / JogSpeedLimit(link_.JogMaxSpeed) * 100;
  return held;
}

int JogSettings::DistanceOptionFor(const Held& held) {
  if (held.BySteps) return ContinuousJog;
  if (held.Distance >= 1 && held.Distance <= LastStepIndex) return held.Distance;
  for (const std::string_view line : link::Sequence::ResetJogStep) trio_.Download(line);
  return ContinuousJog;
}

}  // namespace torvane::supervision
