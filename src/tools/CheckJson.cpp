// The report of a check for another program to read.
#include "tools/CheckJson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "core/General.h"
#include "tools/CheckText.h"
#include "tools/EstimateJson.h"
#include "tools/JsonValues.h"

namespace torvane::tools {

namespace {

QJsonArray Clamps(const core::ActiveProgram& slot) {
  QJsonArray clamps;
  for (const float clamp : slot.Clamps) clamps.append(JsonNumber(clamp));
  return clamps;
}

QJsonObject Kinds(const CheckCounts& counts) {
  QJsonObject kinds;
  for (const auto& kind : counts.Programmed) {
    if (kind.Count > 0) kinds[JsonText(kind.Name)] = kind.Count;
  }
  return kinds;
}

QJsonArray Errors(const CheckResult& result) {
  QJsonArray errors;
  for (const auto& error : result.Errors) {
    errors.append(QJsonObject{{"level", error.Critical ? "critical" : "warning"},
                              {"message", JsonText(core::Trim(error.Message))},
                              {"block", JsonText(error.Block)},
                              {"blockNumber", error.BlockNumber}});
  }
  return errors;
}

const char* Verdict(const CheckResult& result) {
  if (!result.Fault.empty()) return "not checked";
  return result.Good() ? "good" : "refused";
}

QJsonObject Program(const CheckResult& result) {
  QJsonObject object{{"directory", JsonText(result.Directory)},
                     {"program", JsonText(result.Program)},
                     {"verdict", Verdict(result)}};
  if (!result.Good()) object["reason"] = JsonText(RefusalText(result));
  if (!result.Fault.empty()) return object;
  const auto& slot = result.Slot;
  object["material"] = JsonText(slot.Material);
  object["sheet"] = QJsonArray{JsonNumber(slot.SheetX), JsonNumber(slot.SheetY)};
  object["clamps"] = Clamps(slot);
  object["imperial"] = slot.Imperial;
  object["kerfWidth"] = JsonNumber(slot.KerfWidth);
  object["loadY"] = JsonNumber(slot.LoadY);
  object["cutLength"] = core::RoundPlaces(result.Counts.CutLength, 4);
  object["moveLength"] = JsonNumber(slot.Totals.MoveLength);
  object["profileTotal"] = JsonNumber(slot.Totals.ProfileLength);
  object["programmedRecords"] = slot.DrawRecords;
  object["compensatedRecords"] = slot.KerfRecords;
  object["recordsByKind"] = Kinds(result.Counts);
  object["elements"] = result.Counts.Elements;
  object["cornerArcs"] = result.Counts.CornerArcs;
  object["blends"] = result.Counts.Blends;
  object["tableLines"] = slot.TableLines;
  object["bodyLines"] = slot.BodyLines;
  object["errors"] = Errors(result);
  if (result.Estimate) object["estimate"] = EstimateJson(*result.Estimate);
  return object;
}

}  // namespace

std::string ReportJson(const std::vector<CheckResult>& results) {
  QJsonArray programs;
  int good = 0;
  for (const auto& result : results) {
    programs.append(Program(result));
    good += result.Good() ? 1 : 0;
  }
  const QJsonObject whole{
      {"programs", programs}, {"checked", static_cast<int>(results.size())}, {"good", good}};
  return QJsonDocument(whole).toJson(QJsonDocument::Indented).toStdString();
}

}  // namespace torvane::tools
