// One walk of the conversion pass: its state and the handlers of its words. Used by ReverseModule
// alone; the handlers are in ReverseModule, Motion and PointRecords.
#pragma once

#include <cstdint>
#include <string_view>

#include "partprogram/ArcMotion.h"
#include "partprogram/Block.h"
#include "partprogram/CommonOfWalk.h"
#include "partprogram/ErrorMessages.h"
#include "partprogram/ModalState.h"
#include "partprogram/MotionSteps.h"
#include "partprogram/ProgramHeader.h"
#include "partprogram/Report.h"
#include "partprogram/ReverseModule.h"
#include "partprogram/Walker.h"
#include "partprogram/WordValues.h"

namespace torvane::partprogram {

class ReversePass {
 public:
  /// `input` and `result.Subs` must outlive the pass.
  ReversePass(const ConversionInput& input, ConversionResult& result);

  /// Walks the program; records, report and totals go into the result.
  void Run();

 private:
  /// How a handler leaves its block.
  enum class Flow : std::uint8_t {
    GoOn,  ///< the next row of the order is tested
    Done,  ///< the block ends here
    Stop,  ///< the program ends here
  };

  /// When a row of the order acts: on one of its words, on its letter, on the running mode in a
  /// block with position words, or always.
  struct Row {
    WordSet Words;
    Flow (ReversePass::*Act)();
    char Letter = '\0';
    std::int16_t Mode = -1;
    bool Always = false;
  };
  static const std::array<Row, 30> Order;

  [[nodiscard]] bool Applies(const Row& row) const;
  Flow TakeBlock();
  Flow RunOrder();
  void Begin();
  void Finish();

  // Calls, jumps and modal words: ReverseModule.
  Flow CallG98();
  Flow CallQ();
  Flow Call(std::string_view numberKey, bool turned);
  Flow TakeIf();
  Flow TakeGoto();
  Flow TakeLeave();
  Flow TakeParameters();
  Flow TakeFeed();
  Flow TakeSkipLevel();
  Flow TakeG90();
  Flow TakeG91();
  Flow TakeG70();
  Flow TakeG71();
  Flow TakeMirror();
  Flow TakeProfiling();
  void SettleUnits(bool imperial);
  Flow JumpTo();

  // Positions, lines, arcs: Motion.
  Flow TakePosition();
  Flow TakeG00();
  Flow TakeG01();
  Flow TakeG02();
  Flow TakeG03();
  void MakeLine(bool rapid);
  void MakeArc(bool clockwise);
  void PutArc(const ArcGeometry& arc, bool clockwise);
  void CheckLimits(double x, double y);
  void CheckArcLimits(const DrawRecord& arc);
  void CheckLimitsEachTime();
  void AddGap(const DrawRecord& record);

  // Records at a position: PointRecords.
  Flow TakeSettings();
  void MakeSettings(std::int16_t mode);
  Flow TakeG56();
  Flow TakeG53();
  Flow TakeG92();
  Flow TakeKerf();
  Flow TakeG04();
  Flow TakeG95();
  Flow TakeM50();
  Flow TakeM55();
  Flow TakeM87();
  Flow TakeM00();

  /// Appends a cleared record with code, name, block numbers, feed, skip level, stored settings and
  /// the states of its beam. It stays where it is until the next one.
  DrawRecord& AddRecord(const RecordKind& kind, Beam beam);
  /// The same with the position in `CentrePoint`.
  DrawRecord& AddPointRecord(const RecordKind& kind);
  /// Finishes the record added last and numbers it.
  void PutRecord(DrawRecord& record);
  /// The same for one that the head travels to: the way there counts.
  void PutPlace(DrawRecord& record);
  void Error(std::string_view message, bool critical);

  [[nodiscard]] const Block& Words() const { return walker_.CurrentBlock(); }
  [[nodiscard]] bool InSubroutine() const { return walker_.Depth() > 0; }

  const ConversionInput& input_;
  const core::MachineData& machine_;
  ConversionResult& result_;
  Walker walker_;
  Parameters parameters_;
  WordReader reader_{parameters_};
  ModalState state_;
  ProgramHeader header_;
  double kerfWidth_ = 0;
  bool unitsSettled_ = false;
  bool imperialProgram_ = false;
  LimitCheck limitCheck_;
  LineRounding rounding_;
  Point3 last_;           ///< last recorded end
  float moveLength_ = 0;  ///< mm, a single as the total is
  float profileLength_ = 0;
  CommonOfWalk common_;
};

}  // namespace torvane::partprogram
