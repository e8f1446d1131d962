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
  /// had its dialog; those after the first tests leave the slot empty, as does a fault of the
  /// disk, which is thrown on (RuntimeFault). False without a dialog while another selection or a
  /// change of program is under way.
  bool SelectProgram(std::string_view directoryText, std::string_view programText);

 private:
  /// The first tests; false after a dialog.
  [[nodiscard]] bool Accept(const std::string& directory, const std::string& program);
  /// What the program is refused for; null when the slot holds it.
  [[nodiscard]] const char* FillSlotOrClear(const std::string& directory,
                                            const std::string& program);
  [[nodiscard]] const char* FillSlot(const std::string& directory, const std::string& program);
  void BeginSlot(const std::string& directory, const std::string& program);
  [[nodiscard]] std::string CopyProgram();
  void CopyLaserSettings();
  [[nodiscard]] const char* Convert(const std::string& squeezed);
  void SaveSlot();
  void PutInForce();
  [[nodiscard]] core::ActiveProgram& Slot() { return parts_.System.Active(); }
  [[nodiscard]] std::string SlotFile(std::string_view extension) const;

  ProgramParts parts_;
  ActiveStore& store_;
  partprogram::SplitCycle& split_;
  const platform::Clock& clock_;
};

}  // namespace torvane::supervision
