#include "link/Downloads.h"

#include <algorithm>
#include <limits>

#include "core/General.h"
#include "core/LastFile.h"
#include "core/SlotFiles.h"
#include "link/Variables.h"
#include "platform/RuntimeFault.h"

namespace torvane::link {

namespace {

/// The front end's own parameters in a parameter file: never sent.
constexpr std::string_view SystemWord = "SYS";

struct SystemParameter {
  std::string_view Key;
  void (*Store)(core::LinkSettings& link, double value);
};

constexpr std::array<SystemParameter, 3> SystemParameters = {{
    {"SYS(1)",
     [](core::LinkSettings& link, double value) { link.Sys1 = static_cast<float>(value); }},
    {"SYS(2)",
     [](core::LinkSettings& link, double value) { link.Sys2 = static_cast<float>(value); }},
    {"SYS(3)", [](core::LinkSettings& link, double value) { link.JogMaxSpeed = value; }},
}};

bool Holds(std::string_view text, std::string_view word) {
  return text.find(word) != std::string_view::npos;
}

/// The plain value after `key` and the equals sign; -999 where there is none.
double SystemValue(std::string_view line, std::string_view key) {
  std::string_view rest = core::Trim(line.substr(line.find(key) + key.size()));
  if (rest.starts_with('=')) rest = core::Trim(rest.substr(1));
  constexpr std::string_view Sign = "=";
  return core::GetPlainValue(std::string(Sign).append(rest), Sign).Value;
}

}  // namespace

void Downloads::DownParameters(std::string_view directory, std::string_view fileName) {
  if (!trio_.Settings().TrioLinkEnabled) return;
  const std::string_view name = core::Trim(fileName);
  const std::string path = std::string(core::Trim(directory)).append(name);
  if (!files_.FileExists(path)) return;
  const BulkSend bulk(trio_);
  core::NoteLastFile(files_, directories_, path);
  const std::string text = files_.ReadFile(path);
  // What a power cut leaves of a file: the controller would wait for the rest of such a line.
  if (text.find('\0') != std::string::npos) {
    throw platform::RuntimeFault(path, "holds a byte 0 and is no text");
  }
  for (const std::string_view line : core::SplitLines(text)) SendParameterLine(line);
  trio_.LogTrioExchange("DownParameters", name, {}, false);
}

void Downloads::SendParameterLine(std::string_view line) {
  const std::string upper = core::UpperCase(core::Trim(line));
  const std::string_view command = core::SemicolonPart(upper);
  if (command.empty()) return;
  if (Holds(command, SystemWord)) {
    for (const auto& parameter : SystemParameters) {
      if (!Holds(command, parameter.Key)) continue;
      parameter.Store(trio_.Settings(), SystemValue(command, parameter.Key));
    }
  } else if (!Holds(command, "!")) {
    trio_.Download(command);
  }
}

void Downloads::DownTable(core::Slot slot, std::int16_t& sent, std::int16_t target,
                          bool pausePoll) {
  SendTable(slot, sent, target, {.PausePoll = pausePoll});
}

void Downloads::SendTable(core::Slot slot, std::int16_t& sent, std::int16_t target,
                          const TableSend& how) {
  if (!trio_.Settings().TrioLinkEnabled) return;
  const std::int16_t last = std::min(target, programs_[slot].TableLines);
  if (sent >= last) return;
  struct Paused {
    Paused(Trio& trio, bool pause) : Of(trio), Pause(pause) {
      if (Pause) Of.StopPolling(false);
    }
    ~Paused() {
      if (Pause && Of.Settings().PollingWanted) Of.StartPolling(false);
    }
    Paused(const Paused&) = delete;
    Paused& operator=(const Paused&) = delete;
    Trio& Of;
    bool Pause;
  } const paused(trio_, how.PausePoll);
  SendRecords(core::SlotFile(directories_, slot, core::Extension::Table), sent, last, how);
}

void Downloads::SendRecords(const std::string& path, std::int16_t& sent, std::int16_t target,
                            const TableSend& how) {
  core::NoteLastFile(files_, directories_, path);
  const auto records = files_.OpenRecords(path, TableRecordSize);
  std::array<char, TableRecordSize> record{};
  const int before = std::max<int>(sent, 0);
  for (int number = before + 1; number <= target; ++number) {
    const bool read = records->Read(static_cast<std::uint32_t>(number), record);
    if (!read || !core::IsTableLine({record.data(), record.size()})) {
      sent = static_cast<std::int16_t>(number - 1);
      throw platform::RuntimeFault(
          path, "record " + std::to_string(number) + (read ? " is no table line" : " is missing"));
    }
    trio_.Download({record.data(), record.size()}, how.From);
    if (sent < before || (how.Overtaken && how.Overtaken())) return;
  }
  sent = target;
}

void Downloads::TopUpTable(core::Slot activeSlot, std::int16_t running, std::int16_t& sent,
                           const std::function<bool()>& overtaken) {
  const int wanted = int{running} + trio_.Settings().TableLeadLines;
  const int gap = wanted - sent;
  if (gap <= 0) return;
  constexpr int Most = std::numeric_limits<std::int16_t>::max();
  SendTable(activeSlot, sent, static_cast<std::int16_t>(std::min(wanted, Most)),
            {.PausePoll = true, .From = Asker::Poll, .Overtaken = overtaken});
}

void Downloads::DownBatch(const core::Batch& counters) {
  if (!trio_.Settings().TrioLinkEnabled) return;
  const BulkSend bulk(trio_);
  trio_.Download(Assignment(Variable::PartsPerSheet, core::LongText(counters.PartsPerSheet)));
  trio_.Download(Assignment(Variable::PartsRequired, core::LongText(counters.PartsRequired)));
  trio_.Download(Assignment(Variable::SheetsRequired, core::LongText(counters.SheetsRequired)));
  trio_.Download(Assignment(Variable::SheetsCompleted, core::LongText(counters.SheetsCompleted)));
}

void Downloads::DownToolOffsets(const core::Station& activeStation) {
  if (!trio_.Settings().TrioLinkEnabled) return;
  const BulkSend bulk(trio_);
  trio_.Download(Assignment(Variable::HeadOffsetX, core::NumberText(activeStation.OffsetX, -1)));
  trio_.Download(Assignment(Variable::HeadOffsetY, core::NumberText(activeStation.OffsetY, -1)));
  trio_.Download(Assignment(Variable::HeadOffsetZ, core::NumberText(activeStation.OffsetZ, -1)));
}

}  // namespace torvane::link
