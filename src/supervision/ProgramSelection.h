// From a name to a program that the machine can run: the whole road of a selection.
#pragma once

#include <string>
#include <string_view>

#include "partprogram/Pipeline.h"
#include "partprogram/SplittingModule.h"
#include "platform/Clock.h"
#include "supervision/ActiveStore.h"
#include "supervision/ProgramParts.h"

namespace torvane::supervision {

class ProgramSelection {
 public:
  ProgramSelection(const ProgramParts& parts, ActiveStore& store, partprogram::SplitCycle& split,
                   const platform::Clock& clock)
      : parts_(parts), store_(store), split_(split), clock_(clock) {}

  /// Selects a program into the slot in force. The texts are those of the two boxes, as typed. True
  /// when the slot holds the program and its first lines are with the controller. Every refusal has
  /// had its dialog; those behind the first tests leave the slot empty, as does a fault of the
  /// disk, which is thrown on (RuntimeFault). In the middle of a refill of the table the selection
  /// begins behind the refill, and false is returned at once.
  bool SelectProgram(std::string_view directoryText, std::string_view programText);

 private:
  [[nodiscard]] bool Select(const std::string& directory, const std::string& program);
  /// The first tests; false after a dialog.
  [[nodiscard]] bool Accept(const std::string& directory, const std::string& program);
  [[nodiscard]] bool FillSlot(const std::string& directory, const std::string& program);
  void BeginSlot(const std::string& directory, const std::string& program);
  [[nodiscard]] std::string CopyProgram();
  void CopyLaserSettings();
  /// False after the dialog of a program that the passes refuse.
  [[nodiscard]] bool Convert(const std::string& squeezed);
  void SaveSlot();
  void PutInForce();
  void Warn(const std::string& text);
  [[nodiscard]] core::ActiveProgram& Slot() { return parts_.System.Active(); }
  [[nodiscard]] std::string SlotFile(std::string_view extension) const;

  ProgramParts parts_;
  ActiveStore& store_;
  partprogram::SplitCycle& split_;
  const platform::Clock& clock_;
};

}  // namespace torvane::supervision
