// A root directory with the files of a slot, made by hand.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/DirectorySet.h"
#include "partprogram/DrawRecord.h"
#include "platform/DiskFileSystem.h"
#include "support/TempDirectory.h"

namespace torvane::tests {

struct SlotMaker {
  tests::TempDirectory Temp;
  platform::DiskFileSystem Files{Temp.Path(), {{'C', Temp.Path()}}};
  core::DirectorySet Directories;

  SlotMaker() {
    for (const char* name : {"Service", "Settings", "Subs/One", "Subs/Two", "Programs/SHOP"}) {
      Temp.MakeDirectory(name);
    }
    SetDirectories(Directories);
  }

  static void SetDirectories(core::DirectorySet& directories) {
    directories.RootDirectory = "C:\\";
    directories.ServiceDirectory = "C:\\Service\\";
    directories.SettingsDirectory = "C:\\Settings\\";
    directories.MessageDirectory = "C:\\Messages\\";
    directories.MessageHelpDirectory = "C:\\Messages\\Help\\";
    directories.SubsDirectory = {"C:\\Subs\\One\\", "C:\\Subs\\Two\\"};
    directories.ProgramRoot = "C:\\Programs\\";
    directories.ProgramDirectoryName = "SHOP";
    directories.ProgramDirectory = "C:\\Programs\\SHOP\\";
  }

  /// A line as a record of 80 bytes.
  static std::string Padded(std::string_view line) {
    std::string record(line);
    record.resize(80, ' ');
    return record;
  }

  static void Append(std::string& bytes, const partprogram::DrawRecord& record) {
    const std::size_t at = bytes.size();
    bytes.resize(at + partprogram::DrawRecordSize);
    partprogram::EncodeRecord(record, std::span<char, partprogram::DrawRecordSize>(
                                          bytes.data() + at, partprogram::DrawRecordSize));
  }

  static std::string Name(int slot, std::string_view extension) {
    return "Actvprg" + std::to_string(slot) + "." + std::string(extension);
  }

  /// A header and one line record for each block number.
  void PutRecords(int slot, std::string_view extension, const std::vector<std::int16_t>& blocks) {
    partprogram::DrawRecord header;
    header.Code = partprogram::RecordCode::Sheet;
    header.ChangeCommon().Material = partprogram::PadText<72>("Mild steel");
    header[partprogram::Figure::SheetX] = 1000;
    header[partprogram::Figure::SheetY] = 500;
    for (std::size_t clamp = 0; clamp < 4; ++clamp) {
      header[partprogram::ClampFigure(clamp)] = 10.0F * static_cast<float>(clamp + 1);
    }
    header[partprogram::Figure::KerfWidth] = 0.2F;
    header[partprogram::Mark::RecordCount] = static_cast<std::int16_t>(blocks.size() + 1);
    header[partprogram::Mark::Imperial] = -1;
    std::string bytes;
    Append(bytes, header);
    for (const auto block : blocks) {
      partprogram::DrawRecord record;
      record.Code = partprogram::RecordCode::LineProfile;
      record.BlockNumber = block;
      Append(bytes, record);
    }
    Temp.Put(Name(slot, extension), bytes);
  }

  /// All six files of a slot with `tableLines` lines "TABLE(<slot>,<n>)".
  void PutSlot(int slot, const std::string& program, int tableLines) {
    Temp.Put(Name(slot, "cfg"), program + "\r\nSHOP\r\nC:\\Programs\\SHOP\\" + program +
                                    "\r\n2\r\n" + std::to_string(tableLines) +
                                    "\r\n125.5\r\n******\r\n");
    Temp.Put(Name(slot, "prg"), "G00 X1\r\nM30\r\n");
    Temp.Put(Name(slot, "rnd"), Padded("G00 X1") + Padded("M30"));
    PutRecords(slot, "drw", {1, 2});
    PutRecords(slot, "krw", {1, 2, 2});
    std::string table;
    for (int n = 1; n <= tableLines; ++n) table += Padded(TableLine(slot, n));
    Temp.Put(Name(slot, "tbl"), table);
  }
  static std::string TableLine(int slot, int n) {
    return "TABLE(" + std::to_string(slot) + "," + std::to_string(n) + ")";
  }

  /// Names of the slot's files that stand.
  [[nodiscard]] std::vector<std::string> SlotFiles(int slot) const {
    return Files.ListFiles("C:\\" + Name(slot, "*"));
  }
};

}  // namespace torvane::tests
