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
#include "platform/RuntimeFault.h"

namespace torvane::graphics::testing {

using partprogram::DrawRecord;
using platform::CanvasCall;
using platform::CanvasCallKind;
using platform::Overlay;
using platform::RecordingCanvas;

/// Files in memory. `Log` holds "open NAME", "write NAME" and "read N" in order.
class MemoryFiles final : public platform::FileSystem {
 public:
  std::map<std::string, std::string> Files;
  mutable std::vector<std::string> Log;

  [[nodiscard]] bool FileExists(std::string_view path) const override {
    return Files.contains(std::string(path));
  }
  [[nodiscard]] bool DirectoryExists(std::string_view) const override { return true; }
  void MakeDirectory(std::string_view) override {}
  void RemoveDirectory(std::string_view) override {}
  [[nodiscard]] std::string ReadFile(std::string_view path) const override {
    const auto found = Files.find(std::string(path));
    if (found == Files.end()) throw platform::RuntimeFault(std::string(path), "not found");
    return found->second;
  }
  void ReplaceFile(std::string_view path, std::string_view bytes) override { Write(path, bytes); }
  void OverwriteFile(std::string_view path, std::string_view bytes) override { Write(path, bytes); }
  void AppendFile(std::string_view path, std::string_view bytes) override {
    Write(path, Files[std::string(path)] + std::string(bytes));
  }
  [[nodiscard]] std::uint64_t FileSize(std::string_view path) const override {
    return ReadFile(path).size();
  }
  void DeleteFile(std::string_view path) override { Files.erase(std::string(path)); }
  void CopyFile(std::string_view from, std::string_view to) override { Write(to, ReadFile(from)); }
  void RenameFile(std::string_view from, std::string_view to) override {
    CopyFile(from, to);
    DeleteFile(from);
  }
  [[nodiscard]] std::vector<std::string> ListFiles(std::string_view) const override { return {}; }
  [[nodiscard]] std::vector<std::string> ListDirectories(std::string_view) const override {
    return {};
  }
  [[nodiscard]] std::unique_ptr<platform::RecordFile> OpenRecords(
      std::string_view path, std::size_t recordSize) const override {
    Log.push_back("open " + std::string(path));
    return std::make_unique<MemoryRecords>(*this, ReadFile(path), recordSize);
  }

  [[nodiscard]] int Opened(std::string_view path) const {
    int count = 0;
    for (const auto& entry : Log) count += entry == "open " + std::string(path) ? 1 : 0;
    return count;
  }

 private:
  class MemoryRecords final : public platform::RecordFile {
   public:
    MemoryRecords(const MemoryFiles& owner, std::string bytes, std::size_t size)
        : owner_(owner), bytes_(std::move(bytes)), size_(size) {}
    bool Read(std::uint32_t number, std::span<char> bytes) override {
      owner_.Log.push_back("read " + std::to_string(number));
      const std::size_t from = (number - 1) * size_;
      if (from + size_ > bytes_.size()) return false;
      bytes_.copy(bytes.data(), size_, from);
      return true;
    }

   private:
    const MemoryFiles& owner_;
    std::string bytes_;
    std::size_t size_;
  };

  void Write(std::string_view path, std::string_view bytes) {
    Log.push_back("write " + std::string(path));
    Files[std::string(path)] = std::string(bytes);
  }
};

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
  record.BeamState1.On = -1;
  return record;
}

inline DrawRecord MoveTo(float x1, float y1, float x2, float y2) {
  auto record = Cut(x1, y1, x2, y2);
  record.Code = partprogram::RecordCode::Move;
  record.BeamState1.On = 0;
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
  record.BeamState1.On = -1;
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
  [[nodiscard]] core::PlotView& View(int slot) {
    return System.Views[static_cast<std::size_t>(slot)];
  }
  [[nodiscard]] core::ActiveProgram& Program(int slot) {
    return System.Programs[static_cast<std::size_t>(slot)];
  }
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

}  // namespace torvane::graphics::testing
