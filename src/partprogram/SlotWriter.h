// What the passes made, on its way into the files of a slot while the next pass runs.
#pragma once

#include <string>
#include <string_view>

#include "partprogram/Pipeline.h"
#include "platform/FileBatch.h"

namespace torvane::partprogram {

/// Writes "Actvprg<slot>." with bdy, cnv, drw, krw, tbl, tbx and rnd in `RootDirectory`, the
/// subroutines in the slot's directory, and the report. Nothing is in its place before Finish; then
/// each file replaces its old one whole, in an order that never changes.
class SlotWriter {
 public:
  using Threads = platform::FileBatch::Threads;

  /// All must outlive the writer, `result` without a change of what a pass has finished.
  SlotWriter(platform::FileSystem& files, const core::DirectorySet& directories, core::Slot slot,
             const PassResult& result, Threads threads);

  /// Takes the files that are final after this pass. The outcome is that of the pass.
  void After(Pass pass);

  /// Puts all in place. After an outcome other than Good those that exist: the caller empties the
  /// slot. Throws RuntimeFault for the first file, in the order of their places, that cannot be
  /// written.
  void Finish();

 private:
  [[nodiscard]] std::string File(std::string_view extension) const;
  void AddDraw();

  platform::FileSystem& files_;
  const core::DirectorySet& directories_;
  core::Slot slot_;
  const PassResult& result_;
  platform::FileBatch batch_;
};

/// Runs all passes over a squeezed program and leaves the files of the slot. Throws RuntimeFault
/// where a file cannot be written.
[[nodiscard]] PassResult MakeSlotFiles(platform::FileSystem& files,
                                       const core::DirectorySet& directories,
                                       std::string_view squeezedProgram, const PassInput& input,
                                       SlotWriter::Threads threads = SlotWriter::Threads::Two);

}  // namespace torvane::partprogram
