// What the simulated controller remembers: its variables, named values, table, outputs and axes.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "core/Slot.h"

namespace torvane::simulator {

inline constexpr int VariableCount = 1024;
inline constexpr int NamedValueCount = 1000;  ///< M0 to M999
inline constexpr int TableCells = 65536;
inline constexpr int OutputCount = 64;
inline constexpr int AxisCount = 5;  ///< X is 0, Y is 1, the third axis is 4

/// Variables of the contract that the machine itself reads or keeps.
namespace Vr {
inline constexpr int JogSpeed = 10;  ///< mm per minute
inline constexpr int JogBySteps = 11;
inline constexpr int JogStep = 12;  ///< mm
inline constexpr int IoMessage = 16;
inline constexpr int LogicMessages = 17;
inline constexpr int FrontEndUp = 18;
inline constexpr int Status = 19;
inline constexpr int MoveTargetX = 22;
inline constexpr int MoveTargetY = 23;
inline constexpr int FeedRate = 25;  ///< mm per minute, as it is now
inline constexpr int Command = 48;
inline constexpr int RunTime = 52;  ///< s
inline constexpr int Scale = 59;    ///< position units per mm; 0 counts as 1
inline constexpr int ActualPower = 65;
inline constexpr int FeedRequest = 68;   ///< percent
inline constexpr int PowerRequest = 69;  ///< percent
inline constexpr int ProgrammedPower = 70;
inline constexpr int RunningLine = 81;
inline constexpr int PartsPerSheet = 82;
inline constexpr int PartsRequired = 83;
inline constexpr int SheetsRequired = 84;
inline constexpr int SheetsCompleted = 85;
inline constexpr int LoadAX = 86;
inline constexpr int LoadAY = 87;
inline constexpr int LoadBX = 88;
inline constexpr int LoadBY = 89;
inline constexpr int TableInForce = 91;
inline constexpr int BlockSkip1 = 92;
inline constexpr int BlockSkip2 = 93;
inline constexpr int MoveTargetZ = 95;
inline constexpr int FeedOverride = 98;  ///< percent, in force
}  // namespace Vr

/// Positions that a line may ask for, in controller units.
enum class AxisQuantity { Measured, Demand, EndOfMove, FollowingError, Count };

/// Hears what a command line has written. The machine's own changes are not reported.
class MemoryListener {
 public:
  virtual ~MemoryListener() = default;
  virtual void VariableWritten(int number, double before) = 0;
  virtual void TableWritten(int index, int count) = 0;
  /// The restart table was closed: so many lines of the program has the front end sent.
  virtual void RestartMarkWritten(int linesSent) = 0;
  virtual void OutputWritten(int output, double value) = 0;
  /// The start line of a restart: the slot, and the digits after its point (empty without one).
  /// False when there is nothing to go on with.
  virtual bool RestartRequested(core::Slot slot, std::string_view fraction) = 0;
};

/// Every number outside a range is answered with false or 0: nothing here throws.
class ControllerMemory {
 public:
  /// Variables are at what they hold after switching on.
  ControllerMemory();

  /// Everything as after switching on; the listener stays.
  void PowerOn();

  void SetListener(MemoryListener* listener) { listener_ = listener; }
  [[nodiscard]] MemoryListener* Listener() const { return listener_; }

  [[nodiscard]] static bool IsVariable(int number) { return number >= 0 && number < VariableCount; }
  /// 0 for a number out of range.
  [[nodiscard]] double Variable(int number) const;
  /// The machine's own write.
  void SetVariable(int number, double value);
  /// A command line's write; false when the number is out of range.
  bool WriteVariable(int number, double value);
  /// The variable's integer part as the 32 bits of a word, held within the range of 32 bits.
  [[nodiscard]] int Word(int number) const;

  [[nodiscard]] double NamedValue(int number) const;
  bool WriteNamedValue(int number, double value);

  [[nodiscard]] double TableValue(int index) const;
  [[nodiscard]] std::span<const double> TableRange(int index, int count) const;
  /// Writes all of `values` from `index` on, or nothing when they do not fit.
  bool WriteTable(int index, std::span<const double> values);
  /// The mark that closes a restart table. False, with nothing written, outside the table.
  bool WriteRestartMark(int index, double mark);

  [[nodiscard]] double Output(int output) const;
  bool WriteOutput(int output, double value);
  /// The machine's own change of an output.
  void SetOutput(int output, double value);

  [[nodiscard]] double Axis(AxisQuantity quantity, int axis) const;
  void SetAxis(AxisQuantity quantity, int axis, double value);

 private:
  std::array<double, VariableCount> variables_{};
  std::array<double, NamedValueCount> namedValues_{};
  std::array<double, OutputCount> outputs_{};
  std::array<std::array<double, AxisCount>, static_cast<std::size_t>(AxisQuantity::Count)> axes_{};
  std::vector<double> table_;
  MemoryListener* listener_ = nullptr;
};

}  // namespace torvane::simulator
