// The conditions that the machine reports: the code in VR(16) and the bits of VR(17).
#pragma once

#include "simulator/ControllerMemory.h"

namespace torvane::simulator {

/// Bits of VR(17) that the machine raises by itself.
namespace LogicBit {
inline constexpr int NotReferenced = 0;
inline constexpr int WaitingForTable = 4;
inline constexpr int Rollers = 5;  ///< raised and cleared by the front end
inline constexpr int ProgramStop = 8;
inline constexpr int SheetCountReached = 9;
inline constexpr int Refused = 10;          ///< an action or a cycle start was refused
inline constexpr int TableIncomplete = 11;  ///< a line of the table is missing
inline constexpr int RestartUnknown = 12;   ///< no block to go on with
inline constexpr int Count = 31;
}  // namespace LogicBit

class MessageBoard {
 public:
  explicit MessageBoard(ControllerMemory& memory) : memory_(memory) {}

  void Set(int bit, bool on);
  [[nodiscard]] bool IsSet(int bit) const;

  /// An IO message, 1 to 64, lasts until cleared; 0 takes it away.
  void SetCode(int code);
  [[nodiscard]] int Code() const { return code_; }

  /// A bit from the operator panel, which lasts until cleared.
  void RaiseBit(int bit);

  /// Raises a bit for some seconds.
  void RaiseFor(int bit, double seconds);

  /// Takes away the code, the raised bits and the timed ones.
  void Clear();

  /// As after switching on; the words themselves are the memory's.
  void PowerOn();

  void Advance(double seconds);

  /// True while there is anything that the operator must look at; this bars moves and restarts.
  [[nodiscard]] bool InError() const;

 private:
  ControllerMemory& memory_;
  int code_ = 0;
  unsigned raised_ = 0;  ///< bits from the panel
  unsigned timed_ = 0;
  double secondsLeft_ = 0;
};

}  // namespace torvane::simulator
