// What the plot's tests stand on: files in memory that tell what was asked of them, a machine, and
// records as the passes leave them.
#pragma once

#include <array>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/General.h"
#include "core/System.h"
#include "graphics/DrawingModule.h"
#include "partprogram/DrawRecord.h"
#include "platform/RecordingCanvas.h"
#include "support/MemoryFiles.h"

namespace torvane::tests {

using namespace torvane::graphics;

using partprogram::DrawRecord;
using platform::CanvasCall;
using platform::CanvasCallKind;
using platform::Overlay;
using platform::RecordingCanvas;

using tests::MemoryFiles;

inline std::string FileOf(const std::vector<DrawRecord>& records) {
  std::string bytes;
  for (const auto& record : records) {
    std::array<char, partprogram::DrawRecordSize> one{};
    partprogram::EncodeRecord(record, one);
    bytes.append(one.data(), one.size());
  }
  return bytes;
}

inline DrawRecord SheetRecord() {
  DrawRecord record;
  record.Code = partprogram::RecordCode::Sheet;
  return record;
}

/// A straight cut with the beam on.
inline DrawRecord Cut(float x1, float y1, float x2, float y2) {
  DrawRecord record;
  record.Code = partprogram::RecordCode::LineProfile;
  record.StartPoint = {x1, y1, 0};
  record.EndPoint = {x2, y2, 0};
  record.ChangeCommon().BeamState1.On = -1;
  return record;
}

inline DrawRecord MoveTo(float x1, float y1, float x2, float y2) {
  auto record = Cut(x1, y1, x2, y2);
  record.Code = partprogram::RecordCode::Move;
  record.ChangeCommon().BeamState1.On = 0;
  return record;
}

/// An arc with the beam on, its ends rounded to 4 places as the passes leave them.
inline DrawRecord Arc(double centreX, double centreY, double radius, double start, double sweep) {
  DrawRecord record;
  record.Code = partprogram::RecordCode::ArcProfile;
  record.CentrePoint = {static_cast<float>(centreX), static_cast<float>(centreY), 0};
  record[partprogram::Figure::Length] = static_cast<float>(radius);
  record[partprogram::Figure::Angle] = static_cast<float>(start);
  record[partprogram::Figure::Sweep] = static_cast<float>(sweep);
  const auto end = [&](double angle) {
    const auto offset = core::PolarToXY(radius, angle);
    return partprogram::Point3{static_cast<float>(core::RoundPlaces(centreX + offset.X, 4)),
                               static_cast<float>(core::RoundPlaces(centreY + offset.Y, 4)), 0};
  };
  record.StartPoint = end(start);
  record.EndPoint = end(start + sweep);
  record.ChangeCommon().BeamState1.On = -1;
  return record;
}

/// A console with a machine of 1000 by 500 and two canvases of 800 by 600.
struct PlotSetting {
  core::System System;
  MemoryFiles Files;
  RecordingCanvas Box1{800, 600};
  RecordingCanvas Box2{800, 600};
  DrawingModule Drawing{System, Files, {&Box1, &Box2}};

  PlotSetting() {
    System.Directories.RootDirectory = "C:\\T\\";
    System.Directories.ServiceDirectory = "C:\\T\\Service\\";
    System.Machine.YDirection = 1;
    System.Machine.TravelMinX = -50;
    System.Machine.TravelMaxX = 1050;
    System.Machine.TravelMinY = -20;
    System.Machine.TravelMaxY = 520;
    System.Link.TrioLinkEnabled = true;
  }

  [[nodiscard]] RecordingCanvas& Box(int slot) { return slot == 1 ? Box1 : Box2; }
  [[nodiscard]] core::PlotView& View(int slot) { return System.Views[slot]; }
  [[nodiscard]] core::ActiveProgram& Program(int slot) { return System.Programs[slot]; }
  [[nodiscard]] platform::Colour Ink(core::ColourName name) const { return System.Colours[name]; }

  static std::string Path(int slot, const char* extension) {
    return "C:\\T\\Actvprg" + std::to_string(slot) + extension;
  }

  /// Fills a slot as a selection does; the records stand behind the header.
  void Select(int slot, const std::vector<DrawRecord>& programmed,
              const std::vector<DrawRecord>& compensated = {}) {
    const auto store = [&](const char* extension, std::vector<DrawRecord> records) {
      records.insert(records.begin(), SheetRecord());
      Files.Files[Path(slot, extension)] = FileOf(records);
      return static_cast<std::int16_t>(records.size());
    };
    auto& program = Program(slot);
    program.Selected = true;
    program.SheetX = 1000;
    program.SheetY = 500;
    program.DrawRecords = store(".drw", programmed);
    program.KerfRecords = store(".krw", compensated);
  }

  /// The lines of a canvas in a colour.
  [[nodiscard]] std::vector<CanvasCall> LinesIn(int slot, core::ColourName name) {
    std::vector<CanvasCall> lines;
    for (const auto& call : Box(slot).CallsOf(CanvasCallKind::Line)) {
      if (call.Ink == Ink(name)) lines.push_back(call);
    }
    return lines;
  }
};

}  // namespace torvane::tests
