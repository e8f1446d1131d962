// Walks a cleaned program as the machine would and keeps the state it would be in. Unlike the
// conversion it makes no records: it stops wherever its caller wants to know the state.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/MachineData.h"
#include "partprogram/Block.h"
#include "partprogram/ModalState.h"
#include "partprogram/MotionSteps.h"
#include "partprogram/Walker.h"
#include "partprogram/WordValues.h"
#include "restart/GatherState.h"

namespace torvane::restart {

/// One problem met on the way. It ends nothing.
struct GatherFault {
  bool Critical = false;
  std::string Message;
  std::string Block;             ///< the line, left of the comment, trimmed
  std::int16_t BlockNumber = 0;  ///< line of the main file
};

/// Where the walk finds its subroutines.
struct GatherBodies {
  /// The text of "<number>.sub". Throws RuntimeFault where there is none.
  std::function<std::string(std::int16_t number)> ReadSub;
  /// The one file that holds the bodies of all subroutines, where it exists: subroutine 7 begins at
  /// its block number 7000. It goes before ReadSub.
  std::optional<std::string> Together;
};

class GatherWalk {
 public:
  /// `converted` is the ".cnv"; it and the machine's data must outlive the walk.
  GatherWalk(std::string_view converted, GatherBodies bodies, const core::MachineData& machine);

  /// Reads the next block. False at the end of the walk: of the main file, at an IF with ABORT that
  /// holds there, and where the program has no end.
  [[nodiscard]] bool Next();

  /// Carries out the block read last.
  void Execute();

  /// Line of the main file, and of the running subroutine; 0 for the latter in the main file.
  [[nodiscard]] std::int16_t MainLine() const { return walker_.MainLine(); }
  [[nodiscard]] std::int16_t SubLine() const;

  /// True at the main file's line `targetBlock` with a `targetSubBlock` of 0, or in a subroutine at
  /// its line `targetSubBlock` while the main file is at `targetBlock`.
  [[nodiscard]] bool AtTargetBlock(std::int16_t targetBlock, std::int16_t targetSubBlock) const;

  /// The state in front of the block read last; `Gathered` and `BlockNo` are left at 0.
  [[nodiscard]] GatherState State() const;

  [[nodiscard]] const std::vector<GatherFault>& Faults() const { return faults_; }

 private:
  /// How a handler leaves its block.
  enum class Flow : std::uint8_t { GoOn, Done };

  /// When a row of the order acts: on one of its words, on its letter, in a block that goes on in
  /// the running mode, or always.
  struct Row {
    partprogram::WordSet Words;
    Flow (GatherWalk::*Act)();
    char Letter = '\0';
    std::int16_t Mode = -1;
    bool Always = false;
  };
  static const std::array<Row, 22> Order;

  [[nodiscard]] bool Applies(const Row& row) const;

  Flow CallRepeated();
  Flow CallOnce();
  Flow Call(std::int16_t repeats);
  void LoadSub(std::int16_t number);
  Flow TakeIf();
  Flow TakeParameters();
  Flow TakeCoordinates();
  Flow TakeUnits();
  Flow TakePosition();
  Flow TakeG56();
  Flow TakeG53();
  Flow TakeG92();
  Flow TakeKerf();
  Flow TakeKeptParameters();
  Flow TakeG00();
  Flow TakeG01();
  Flow TakeG02();
  Flow TakeG03();
  Flow TakeG04();
  Flow TakeRapidMode();
  Flow TakeBeam();
  Flow TakeMirror();
  Flow TakeM50();
  Flow TakeM00();

  void RoundLine(partprogram::Word own);
  void ProveArc(bool clockwise);
  void Error(std::string_view message, bool critical);
  void Warn(std::string_view message) { Error(message, false); }

  [[nodiscard]] const partprogram::Block& Words() const { return walker_.CurrentBlock(); }
  [[nodiscard]] bool InSubroutine() const { return walker_.Depth() > 0; }

  const core::MachineData& machine_;
  GatherBodies bodies_;
  std::map<std::int16_t, std::string> texts_;  ///< subroutines read so far
  partprogram::Walker walker_;
  partprogram::Parameters parameters_;
  partprogram::WordReader reader_{parameters_};
  partprogram::ModalState state_;
  partprogram::LineRounding rounding_;
  partprogram::LimitCheck limitCheck_;
  GatherState kept_;  ///< offsets, beam, parameters; the rest comes from the modal state
  std::vector<GatherFault> faults_;
  bool ended_ = false;
};

}  // namespace torvane::restart
