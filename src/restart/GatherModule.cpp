#include "restart/GatherModule.h"

#include "core/General.h"
#include "core/LastFile.h"
#include "core/SlotFiles.h"
#include "partprogram/Block.h"
#include "partprogram/WordValues.h"
#include "platform/RuntimeFault.h"
#include "restart/GatherReport.h"

namespace torvane::restart {

std::int16_t BlockNumberOf(std::string_view blockText) {
  const partprogram::Block block(blockText);
  partprogram::ReadFault fault = partprogram::ReadFault::None;
  const core::WordValue number = partprogram::GetWordInteger(block.Text(), "N", &fault);
  if (!number.Found || fault != partprogram::ReadFault::None || number.Value < 0) return 0;
  return static_cast<std::int16_t>(number.Value);
}

GatherResult WalkToBlock(GatherWalk& walk, const GatherTarget& target) {
  GatherResult result;
  result.Met = walk.AtTargetBlock(target.Block, target.SubBlock);
  while (!result.Met && walk.Next()) {
    result.Met = walk.AtTargetBlock(target.Block, target.SubBlock);
    if (!result.Met) walk.Execute();
  }
  result.State = walk.State();
  result.State.Gathered = GatherMark::Reached;
  result.State.BlockNo = BlockNumberOf(target.Text);
  result.Faults = GatherEntries(walk.Faults());
  return result;
}

std::string GatherTextFile(const core::DirectorySet& directories) {
  return directories.RootDirectory + "Gather.rep";
}

namespace {

std::string ReadNoted(platform::FileSystem& files, const core::DirectorySet& directories,
                      const std::string& path) {
  core::NoteLastFile(files, directories, path);
  return files.ReadFile(path);
}

}  // namespace

GatherBodies SlotBodies(platform::FileSystem& files, const core::DirectorySet& directories,
                        core::Slot slot) {
  GatherBodies bodies;
  const std::string together = core::SlotFile(directories, slot, "M2");
  if (files.FileExists(together)) bodies.Together = ReadNoted(files, directories, together);
  bodies.ReadSub = [&files, &directories, slot](std::int16_t number) {
    return ReadNoted(files, directories,
                     directories.SubsDirectory[slot] + core::IntegerText(number) + ".sub");
  };
  return bodies;
}

void GatherModule::GatherToBlock(std::string_view programName, std::string_view directoryName,
                                 core::Slot slot, const GatherTarget& target, GatherState& result) {
  const std::string report = directories_.ServiceDirectory + "Gather.txt";
  const std::string rest = GatherTextFile(directories_);
  ClearGatherState(result, machine_);
  files_.OverwriteFile(report, GatherHead(programName, directoryName, clock_.Now()));
  files_.OverwriteFile(rest, "");

  const std::string converted =
      ReadNoted(files_, directories_, core::SlotFile(directories_, slot, "cnv"));
  GatherWalk walk(converted, SlotBodies(files_, directories_, slot), machine_);
  GatherResult gathered;
  try {
    gathered = WalkToBlock(walk, target);
  } catch (const platform::RuntimeFault&) {
    files_.AppendFile(report, GatherEntries(walk.Faults()));
    throw;
  }
  files_.AppendFile(rest, "******\r\n");
  files_.AppendFile(report, gathered.Faults + GatherEnd(gathered.State));
  result = gathered.State;
}

}  // namespace torvane::restart
