// The table pass: each record as a row of the controller's table, each row a command line.
#include "partprogram/TableModule.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "core/General.h"
#include "partprogram/TableRows.h"

namespace torvane::partprogram {

namespace {

/// Longest line that the fixed records of ".tbl" hold.
constexpr std::size_t LongestLine = 80;
constexpr int MostLines = std::numeric_limits<std::int16_t>::max();

/// Fifth number of a row that stands for any other record.
constexpr int OtherMark = 99;

float Rounded(double value, int places) {
  return static_cast<float>(core::RoundPlaces(value, places));
}

/// The numbers of one row, written one after the other. The indices of a slot's rows go round a
/// ring; only the start of a line is held to it, so that a row may run past the last index.
class TableLines {
 public:
  TableLines(core::Slot slot, std::size_t records)
      : first_(slot == 2 ? 750 : 500), last_(first_ + 200), pointer_(first_) {
    Result.Text.reserve(records * 48 + 32);
  }

  /// `values` are ints and singles; a single goes out as its own shortest text.
  template <class... Values>
  void Put(Values... values) {
    if (pointer_ > last_) pointer_ = first_;
    const std::size_t start = Result.Text.size();
    Result.Text += "TABLE(";
    Append(pointer_);
    ((Result.Text += ',', Append(values)), ...);
    Result.Text += ')';
    const std::size_t length = Result.Text.size() - start;
    Result.Text += "\r\n";
    pointer_ += static_cast<int>(sizeof...(values));
    lineTooLong_ = lineTooLong_ || length > LongestLine;
    ++lines_;
  }

  [[nodiscard]] int Lines() const { return lines_; }
  [[nodiscard]] bool LineTooLong() const { return lineTooLong_; }

  TableResult Result;

 private:
  void Append(int value) {
    std::array<char, 12> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    Result.Text.append(text.data(), end);
  }
  void Append(RowType type) { Append(static_cast<int>(type)); }
  void Append(float value) { core::AppendNumber(Result.Text, value, -1); }

  int first_;
  int last_;
  int pointer_;
  int lines_ = 0;
  bool lineTooLong_ = false;
};

class TablePass {
 public:
  TablePass(core::Slot slot, std::size_t records) : lines_(slot, records) {}

  TableResult Run(std::vector<DrawRecord>& kerf) {
    for (std::size_t i = 1; i < kerf.size(); ++i) {
      DrawRecord& record = kerf[i];
      if (record.Feed > 0) feed_ = record.Feed;
      skip_ = record.SkipLevel;
      WriteRow(record);
      record.TableLine = static_cast<std::int16_t>(std::min(lines_.Lines(), MostLines));
      if (lines_.LineTooLong() && lines_.Result.CutLineRecord == 0) {
        lines_.Result.CutLineRecord = static_cast<int>(i + 1);
      }
    }
    lines_.Put(static_cast<int>(core::NoValue));
    lines_.Result.TooManyLines = lines_.Lines() > MostLines;
    lines_.Result.Lines = static_cast<std::int16_t>(std::min(lines_.Lines(), MostLines));
    return std::move(lines_.Result);
  }

 private:
  void WriteRow(const DrawRecord& record) {
    switch (record.Code) {
      case RecordCode::Move:
        return WriteMove(record);
      case RecordCode::LineProfile:
        return WriteLine(record);
      case RecordCode::ArcProfile:
        return WriteArc(record);
      case RecordCode::Dwell:
        return PutPoint(RowType::Point, Rounded(record[Figure::DwellTime], 2));
      case RecordCode::ProgramStop:
        return PutPoint(RowType::Point, PointAction::Stop);
      case RecordCode::LoadPosition:
        return WriteLoadPosition(record);
      case RecordCode::OpenClamps:
        return PutPoint(RowType::Point, record[Mark::OpensClamps] != 0 ? PointAction::OpenClamps
                                                                       : PointAction::CloseClamps);
      case RecordCode::Settings:
        return WriteSettings(record);
      default:
        return PutPoint(RowType::Other, OtherMark);
    }
  }

  /// A row at the last table position.
  template <class Action>
  void PutPoint(RowType type, Action action) {
    lines_.Put(type, x_, y_, z_, action, feed_, skip_);
  }

  void WriteMove(const DrawRecord& record) {
    x_ = Rounded(record.EndPoint.X, 4);
    y_ = Rounded(record.EndPoint.Y, 4);
    PutPoint(RowType::Point, PointAction::None);
  }

  /// Where a Move's row holds its end, a Line's holds its start: the end is the start of the next.
  void WriteLine(const DrawRecord& record) {
    lines_.Put(RowType::Line, Rounded(record.ProfileStart.X, 4), Rounded(record.ProfileStart.Y, 4),
               z_, int{record.Blended}, feed_, skip_);
    x_ = Rounded(record.ProfileEnd.X, 4);
    y_ = Rounded(record.ProfileEnd.Y, 4);
  }

  /// All relative to the start. The last position becomes the increment, and a row that holds a
  /// position after an arc carries it.
  void WriteArc(const DrawRecord& record) {
    const bool negative = core::RoundPlaces(record[Figure::Sweep], 3) < 0;
    const double startX = core::RoundPlaces(record.StartPoint.X, 4);
    const double startY = core::RoundPlaces(record.StartPoint.Y, 4);
    x_ = Rounded(core::RoundPlaces(record.EndPoint.X, 4) - startX, 4);
    y_ = Rounded(core::RoundPlaces(record.EndPoint.Y, 4) - startY, 4);
    const double i = core::RoundPlaces(record.CentrePoint.X, 4) - startX;
    const double j = core::RoundPlaces(record.CentrePoint.Y, 4) - startY;
    lines_.Put(negative ? RowType::ArcNegative : RowType::ArcPositive, x_, y_,
               static_cast<float>(i), static_cast<float>(j), int{record.Blended}, feed_, skip_);
  }

  void WriteLoadPosition(const DrawRecord& record) {
    lines_.Put(RowType::Point, Rounded(record.CentrePoint.X, 3), Rounded(record.CentrePoint.Y, 3),
               z_, PointAction::None, feed_, skip_);
    x_ = record.CentrePoint.X;
    y_ = record.CentrePoint.Y;
  }

  /// Settings count from 1. The seventh and those after the sixteenth never go out.
  void WriteSettings(const DrawRecord& record) {
    if (record[Mark::SettingsMode] == 0) return lines_.Put(RowType::Settings, skip_);
    const auto setting = [&](std::size_t number) {
      return Rounded(record.Common().Settings[number - 1], 4);
    };
    lines_.Put(RowType::SettingsPair, setting(1), setting(2), setting(3), setting(4), setting(5),
               setting(6));
    if (setting(13) <= 0 || record.Common().Settings[10 - 1] != 0) {
      return lines_.Put(setting(8), record.Common().Settings[10 - 1], setting(11), setting(12),
                        setting(14), skip_);
    }
    lines_.Put(setting(8), static_cast<float>(setting(13) + 6.0), setting(14), setting(15),
               setting(16), skip_);
  }

  TableLines lines_;
  float x_ = 0;
  float y_ = 0;
  float z_ = 0;  ///< stays 0: nothing sets it but its own rows
  float feed_ = 0;
  int skip_ = 0;
};

}  // namespace

TableResult MakeTables(core::Slot slot, std::vector<DrawRecord>& kerf) {
  return TablePass(slot, kerf.size()).Run(kerf);
}

}  // namespace torvane::partprogram
