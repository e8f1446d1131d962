#include "tools/EstimateJson.h"

#include <QJsonArray>

#include "core/General.h"
#include "tools/CheckEstimate.h"

namespace torvane::tools {

namespace {

QJsonObject ContourJson(const partprogram::Contour& contour) {
  return {{"block", contour.Block},
          {"subBlock", contour.SubBlock},
          {"record", contour.Record},
          {"length", core::RoundPlaces(contour.Length, 4)},
          {"seconds", core::RoundPlaces(contour.Seconds, 3)}};
}

}  // namespace

QJsonObject EstimateJson(const CheckEstimate& estimate) {
  const auto& run = estimate.Run;
  QJsonArray longest;
  for (const auto& contour : estimate.Longest) longest.append(ContourJson(contour));
  QJsonObject object{{"seconds", core::RoundPlaces(run.Seconds(), 3)},
                     {"override", estimate.Switches.OverridePercent},
                     {"skip1", estimate.Switches.Skip1},
                     {"skip2", estimate.Switches.Skip2},
                     {"cutLength", core::RoundPlaces(run.CutLength, 4)},
                     {"moveLength", core::RoundPlaces(run.MoveLength, 4)},
                     {"stops", run.Stops},
                     {"skippedRows", run.Skipped},
                     {"brokenLine", run.BrokenLine},
                     {"contours", static_cast<int>(run.Contours.size())},
                     {"longestContours", longest}};
  for (const auto& share : TimeShares) object[share.Key] = core::RoundPlaces(run.*share.Field, 3);
  return object;
}

}  // namespace torvane::tools
