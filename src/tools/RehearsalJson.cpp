// A rehearsal for another program to read.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "core/General.h"
#include "tools/CheckJson.h"
#include "tools/JsonValues.h"

namespace torvane::tools {

namespace {

using restart::GatherState;

QJsonArray Texts(const std::vector<std::string>& lines) {
  QJsonArray array;
  for (const std::string& line : lines) array.append(JsonText(line));
  return array;
}

QJsonArray Point(const core::Vector2& point) {
  return {core::RoundPlaces(point.X, 4), core::RoundPlaces(point.Y, 4)};
}

QJsonObject StateObject(const GatherState& state) {
  QJsonArray parameters;
  for (std::size_t i = 0; i < restart::RestartParameters; ++i) {
    parameters.append(JsonNumber(state.ParameterValues[i]));
  }
  return {{"gathered", state.Gathered != 0},
          {"blockNo", state.BlockNo},
          {"imperial", state.Imperial},
          {"incremental", state.Incremental},
          {"g92", QJsonArray{JsonNumber(state.G92OffsetX), JsonNumber(state.G92OffsetY)}},
          {"g56", QJsonArray{JsonNumber(state.G56OffsetX), JsonNumber(state.G56OffsetY)}},
          {"mirrorCode", state.MirrorCode},
          {"profilerOn", state.ProfilerOn},
          {"kerfSide", state.KerfSide},
          {"parameters", parameters},
          {"position", QJsonArray{JsonNumber(state.XPosition), JsonNumber(state.YPosition),
                                  JsonNumber(state.ZPosition)}}};
}

QJsonValue SplitValue(const restart::Rehearsal& rehearsal) {
  if (!rehearsal.Split) return QJsonValue::Null;
  return QJsonObject{{"record", rehearsal.Split->Record},
                     {"step", core::RoundPlaces(rehearsal.Split->Step, 4)},
                     {"remaining", core::RoundPlaces(rehearsal.Split->Remaining, 4)}};
}

QJsonValue EntryValue(const restart::Rehearsal& rehearsal) {
  if (!rehearsal.Entry) return QJsonValue::Null;
  const restart::RestartEntry& entry = *rehearsal.Entry;
  return QJsonObject{{"record", entry.Record},
                     {"tableLine", entry.TableLine},
                     {"programmed", Point(entry.Programmed)},
                     {"compensated", Point(entry.Compensated)},
                     {"code", entry.Code}};
}

QJsonArray Faults(const restart::Rehearsal& rehearsal) {
  QJsonArray faults;
  for (const restart::GatherFault& fault : rehearsal.Faults) {
    faults.append(QJsonObject{{"level", fault.Critical ? "critical" : "warning"},
                              {"message", JsonText(core::Trim(fault.Message))},
                              {"block", JsonText(fault.Block)}});
  }
  return faults;
}

}  // namespace

std::string RehearsalJson(const restart::Rehearsal& rehearsal) {
  const QJsonObject object{{"kind", rehearsal.Visual ? "visual" : "block"},
                           {"block", rehearsal.Block},
                           {"subBlock", rehearsal.SubBlock},
                           {"text", JsonText(rehearsal.Text)},
                           {"met", rehearsal.Met},
                           {"state", StateObject(rehearsal.State)},
                           {"nextState", StateObject(rehearsal.NextState)},
                           {"restartTbx", Texts(rehearsal.Lines.File)},
                           {"sentNow", Texts(rehearsal.Lines.Now)},
                           {"sentAtStart", Texts(rehearsal.Lines.AtStart)},
                           {"sentOnCancel", Texts(rehearsal.Lines.OnCancel)},
                           {"split", SplitValue(rehearsal)},
                           {"entry", EntryValue(rehearsal)},
                           {"faults", Faults(rehearsal)},
                           {"gatherTxt", JsonText(rehearsal.GatherText)},
                           {"warnings", Texts(rehearsal.Warnings)}};
  return QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString() + "\n";
}

}  // namespace torvane::tools
