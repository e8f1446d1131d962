#include "restart/RestartWords.h"

#include <algorithm>
#include <array>

#include "core/General.h"
#include "restart/SlotProgram.h"
#include "restart/SplitPoint.h"

namespace torvane::restart {

using partprogram::DrawRecord;

namespace {

std::string PointText(double x, double y) {
  return "X" + core::NumberText(x, 2) + " Y" + core::NumberText(y, 2);
}

std::string KerfText(std::int16_t side) {
  constexpr std::array<const char*, 3> Texts = {"no kerf compensation", "kerf left", "kerf right"};
  return Texts[side >= 0 && side < 3 ? static_cast<std::size_t>(side) : 0];
}

std::string CutText(const Rehearsal& rehearsal, const DrawRecord& cut) {
  const bool arc = cut.Code == partprogram::RecordCode::ArcProfile;
  const bool here = rehearsal.Entry && cut.RecordIndex == rehearsal.Entry->Record;
  const std::string element = arc ? "arc" : "line";
  const std::string target =
      " to " + PointText(cut.EndPoint.X, cut.EndPoint.Y) + " of block " +
      core::IntegerText(cut.BlockNumber) +
      (cut.SubNumber != 0 ? ", subroutine " + core::IntegerText(cut.SubNumber) + " line " +
                                core::IntegerText(cut.SubBlock)
                          : "") +
      ".";
  if (here && rehearsal.Split) {
    return "First cut: the last " + core::NumberText(rehearsal.Split->Remaining, 2) +
           (arc ? " degrees" : " mm") + " of the " + element + target;
  }
  return "First cut: the " + element + " from " + PointText(cut.StartPoint.X, cut.StartPoint.Y) +
         target;
}

std::string StateText(const GatherState& state) {
  std::string text = "In force: ";
  text += state.Imperial ? "inches, " : "millimetres, ";
  text += state.Incremental ? "incremental, " : "absolute, ";
  text += KerfText(state.KerfSide) + ", ";
  text += state.ProfilerOn ? "beam on" : "beam off";
  constexpr std::array<const char*, 4> Mirrors = {"", ", mirrored in X", ", mirrored in Y",
                                                  ", mirrored in X and Y"};
  text += Mirrors[static_cast<std::size_t>(state.MirrorCode) & 3U];
  return text + ".";
}

}  // namespace

const DrawRecord* FirstCut(const RecordPair& records, const std::optional<RestartEntry>& entry) {
  if (!entry) return nullptr;
  const auto from = records.Draw.begin() + (entry->DrawRecord - 1);
  const auto cut = std::find_if(from, records.Draw.end(), [](const DrawRecord& record) {
    return CanSplit(record) && record.BeamOn();
  });
  return cut == records.Draw.end() ? nullptr : &*cut;
}

std::vector<std::string> RestartWords(const Rehearsal& rehearsal, const DrawRecord* firstCut) {
  std::vector<std::string> words;
  const GatherState& state = rehearsal.State;
  words.push_back("With the beam off the head goes to " +
                  PointText(state.XPosition, state.YPosition) + ".");
  words.push_back(firstCut != nullptr ? CutText(rehearsal, *firstCut)
                                      : "Nothing is cut from there on.");
  words.push_back(StateText(state));
  for (const std::string& warning : rehearsal.Warnings) {
    std::string sentence = "Note: " + warning + ".";
    words.push_back(std::move(sentence));
  }
  return words;
}

RestartOutlook OutlookOf(platform::FileSystem& files, const core::System& system,
                         const RestartStates& states, const DrawRecord& splitRecord) {
  const SlotProgram program = ReadSlotProgram(files, system.Directories, system.ActiveSlot);
  const Rehearser rehearser({program.Converted,
                             program.Bodies,
                             program.Records(),
                             program.Listing,
                             "",
                             "",
                             system.ActiveSlot,
                             system.TableSent,
                             &system.Machine,
                             {}});
  Rehearsal rehearsal;
  if (states.Record > 0 && static_cast<std::size_t>(states.Record) <= program.Draw.size()) {
    const bool arc = splitRecord.Code == partprogram::RecordCode::ArcProfile;
    rehearsal = rehearser.AtRecord(
        states.Record, splitRecord[arc ? partprogram::Figure::Sweep : partprogram::Figure::Length]);
  } else {
    rehearsal = rehearser.AtBlock(states.Block, 0);
  }
  return {RestartWords(rehearsal, FirstCut(program.Records(), rehearsal.Entry)), rehearsal.Entry};
}

}  // namespace torvane::restart
