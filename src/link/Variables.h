// The contract with the controller program: the names of its variables, what they hold, and the
// lines that mean an action. Nobody writes these texts a second time.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace torvane::link {

/// Names as they are in a query ("? " name) and in an assignment (name "=" number).
namespace Variable {

// Status and messages.
inline constexpr std::string_view IoMessage = "VR(16)";        ///< 0 none, 1 to 64 into IO.msg
inline constexpr std::string_view LogicMessages = "VR(17)";    ///< bit n: line n of Logic.msg
inline constexpr std::string_view Status = "VR(19)";           ///< the status word
inline constexpr std::string_view RunTime = "VR(52)";          ///< s of the current cycle
inline constexpr std::string_view PositionDivisor = "VR(59)";  ///< of axes 0 and 1; 0 counts as 1
inline constexpr std::string_view RunningRecord = "VR(81)";    ///< table record reached
inline constexpr std::string_view FeedOverride = "VR(98)";     ///< in force, percent
inline constexpr std::string_view FeedRate = "VR(25)";         ///< mm per minute
inline constexpr std::string_view Command = "VR(48)";          ///< writing it starts an action

// Manual motion.
inline constexpr std::string_view JogSpeed = "VR(10)";
inline constexpr std::string_view JogBySteps = "VR(11)";  ///< non-zero steps, 0 continuous
inline constexpr std::string_view JogStep = "VR(12)";     ///< mm
inline constexpr std::string_view MoveTargetX = "VR(22)";
inline constexpr std::string_view MoveTargetY = "VR(23)";
inline constexpr std::string_view MoveTargetZ = "VR(95)";
inline constexpr std::string_view LoadPositionAX = "VR(86)";
inline constexpr std::string_view LoadPositionAY = "VR(87)";  ///< also the program's load Y
inline constexpr std::string_view LoadPositionBX = "VR(88)";
inline constexpr std::string_view LoadPositionBY = "VR(89)";

// Program and run.
inline constexpr std::string_view ProgramCode = "VR(90)";   ///< always 0
inline constexpr std::string_view TableInForce = "VR(91)";  ///< slot 1 or 2, 3 restart
inline constexpr std::string_view BlockSkip1 = "VR(92)";
inline constexpr std::string_view BlockSkip2 = "VR(93)";
inline constexpr std::string_view PartsPerSheet = "VR(82)";
inline constexpr std::string_view PartsRequired = "VR(83)";
inline constexpr std::string_view SheetsRequired = "VR(84)";
inline constexpr std::string_view SheetsCompleted = "VR(85)";
inline constexpr std::string_view Table = "TABLE(";  ///< index, values, ")"

// The head's offsets, mm; no VR around them.
inline constexpr std::string_view HeadOffsetX = "M848";
inline constexpr std::string_view HeadOffsetY = "M849";
inline constexpr std::string_view HeadOffsetZ = "M850";

// Laser.
inline constexpr std::string_view FeedOverrideRequest = "VR(68)";  ///< percent, back in VR(98)
inline constexpr std::string_view PowerOverride = "VR(69)";        ///< percent
inline constexpr std::string_view ProgrammedPower = "VR(70)";
inline constexpr std::string_view ActualPower = "VR(65)";

}  // namespace Variable

/// A value of the laser screen's ten status boxes, in the order of the boxes.
struct LaserStatusValue {
  std::string_view Name;
  int Decimals;  ///< shown, and read rounded to
};
inline constexpr std::array<LaserStatusValue, 10> LaserStatusValues = {{
    {"VR(71)", 0},
    {"VR(72)", 0},
    {"VR(73)", 0},
    {"VR(78)", 0},
    {"VR(74)", 0},
    {"VR(75)", 2},
    {"VR(76)", 2},
    {"VR(77)", 0},
    {"VR(30)", 0},
    {"VR(31)", 2},
}};

/// Positions in the controller's units, read unrounded; X, Y and third axis each.
using AxisExpressions = std::array<std::string_view, 3>;
inline constexpr AxisExpressions MeasuredPosition = {"MPOS AXIS(0)", "MPOS AXIS(1)",
                                                     "MPOS AXIS(4)"};
inline constexpr AxisExpressions DemandPosition = {"DPOS AXIS(0)", "DPOS AXIS(1)", "DPOS AXIS(4)"};
inline constexpr AxisExpressions EndOfMove = {"ENDMOVE AXIS(0)", "ENDMOVE AXIS(1)",
                                              "ENDMOVE AXIS(4)"};
inline constexpr AxisExpressions FollowingError = {"FE AXIS(0)", "FE AXIS(1)", "FE AXIS(4)"};

/// Whole lines that start or set one thing.
namespace CommandLine {

inline constexpr std::string_view StopJog = "VR(48)=0";
inline constexpr std::array<std::string_view, 4> Reference = {"VR(48)=10", "VR(48)=11", "VR(48)=12",
                                                              "VR(48)=13"};  ///< all, X, Y, Z
inline constexpr std::string_view Move = "VR(48)=15";  ///< to VR(22), VR(23), VR(95)
inline constexpr std::string_view LoadPositionA = "VR(48)=17";
inline constexpr std::string_view LoadPositionB = "VR(48)=18";
inline constexpr std::string_view JogXPlus = "VR(48)=19";
inline constexpr std::string_view JogXMinus = "VR(48)=20";
inline constexpr std::string_view JogYPlus = "VR(48)=21";
inline constexpr std::string_view JogYMinus = "VR(48)=22";

inline constexpr std::string_view FrontEndUp = "VR(18)=VR(18) OR 1";
inline constexpr std::string_view RestartTable = "VR(91)=3";
inline constexpr std::array<std::string_view, 2> BlockSkip1 = {"VR(92)=0", "VR(92)=1"};
inline constexpr std::array<std::string_view, 2> BlockSkip2 = {"VR(93)=0", "VR(93)=1"};

}  // namespace CommandLine

/// Lines that only mean something together and in this order.
namespace Sequence {

/// The controller clears the rollers' bit of the status word itself.
inline constexpr std::array<std::string_view, 3> RollersOn = {"VR(19)=VR(19) OR 131072",
                                                              "VR(17)=VR(17) OR 32", "OP(8,VR(9))"};

/// A subtraction, not a bit clear: it counts on the bit that RollersOn has set.
inline constexpr std::array<std::string_view, 1> RollersOff = {"VR(17)=VR(17)-32"};

inline constexpr std::array<std::string_view, 2> ResetJogStep = {"VR(11)=0", "VR(12)=10"};

}  // namespace Sequence

/// Name, "=" and a number's text.
[[nodiscard]] inline std::string Assignment(std::string_view name, std::string_view number) {
  std::string line(name);
  line += '=';
  line += number;
  return line;
}

}  // namespace torvane::link
