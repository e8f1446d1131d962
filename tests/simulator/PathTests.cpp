// Told the root directory, the machine follows the records: its position lies on the plot.
#include <cmath>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "ReadOnlyFiles.h"
#include "RunRig.h"

namespace torvane::simulator {

using namespace tests;
namespace {

using partprogram::DrawRecord;
namespace RecordCode = partprogram::RecordCode;

partprogram::Point3 Single(double x, double y) {
  return {static_cast<float>(x), static_cast<float>(y), 0};
}

double Places4(double value) { return core::RoundPlaces(value, 4); }

/// Records and the rows that belong to them, as the front end makes them.
class Program {
 public:
  void Move(double x, double y) {
    DrawRecord record = Begin(RecordCode::Move, x, y);
    Finish(record, "0," + Text(x) + "," + Text(y) + ",0,0,0,0");
  }

  void Cut(double x, double y, double feed) {
    const double startX = x_;
    const double startY = y_;
    DrawRecord record = Begin(RecordCode::LineProfile, x, y);
    lastX_ = x;
    lastY_ = y;
    Finish(record, "1," + Text(startX) + "," + Text(startY) + ",0,0," + Text(feed) + ",0");
  }

  void Arc(double centreX, double centreY, double sweep, double feed) {
    const double radius = std::hypot(x_ - centreX, y_ - centreY);
    const double start = std::atan2(y_ - centreY, x_ - centreX) * 180 / M_PI;
    const double end = (start + sweep) * M_PI / 180;
    const double startX = x_;
    const double startY = y_;
    const double x = Places4(centreX + radius * std::cos(end));
    const double y = Places4(centreY + radius * std::sin(end));
    DrawRecord record = Begin(RecordCode::ArcProfile, x, y);
    record.CentrePoint = Single(centreX, centreY);
    record[partprogram::Figure::Length] = static_cast<float>(radius);
    record[partprogram::Figure::Angle] = static_cast<float>(start);
    record[partprogram::Figure::Sweep] = static_cast<float>(sweep);
    lastX_ = x - startX;
    lastY_ = y - startY;
    Finish(record, std::string(sweep < 0 ? "2," : "3,") + Text(x - startX) + "," +
                       Text(y - startY) + "," + Text(centreX - startX) + "," +
                       Text(centreY - startY) + ",0," + Text(feed) + ",0");
  }

  void Point(std::int16_t code, const std::string& action) {
    DrawRecord record = Begin(code, x_, y_);
    Finish(record, "0," + Text(lastX_) + "," + Text(lastY_) + ",0," + action + ",0,0");
  }

  void Reposition() {
    DrawRecord record = Begin(RecordCode::Reposition, x_, y_);
    Finish(record, "9," + Text(lastX_) + "," + Text(lastY_) + ",0,99,0,0");
  }

  void Settings() {
    DrawRecord record = Begin(RecordCode::Settings, x_, y_);
    Rows.push_back("5,1,2,3,4,5,6");
    Finish(record, "1,2,3,4,5,0");
  }

  std::vector<DrawRecord> Records{1};
  std::vector<std::string> Rows;

 private:
  static std::string Text(double value) { return core::NumberText(Places4(value), -1); }

  DrawRecord Begin(std::int16_t code, double x, double y) {
    DrawRecord record;
    record.Code = code;
    record.StartPoint = record.ProfileStart = Single(x_, y_);
    record.EndPoint = record.ProfileEnd = Single(x, y);
    record.CentrePoint = Single(x, y);
    x_ = x;
    y_ = y;
    return record;
  }

  void Finish(DrawRecord& record, const std::string& row) {
    Rows.push_back(row);
    record.TableLine = static_cast<std::int16_t>(Rows.size());
    Records.push_back(record);
  }

  double x_ = 0;
  double y_ = 0;
  double lastX_ = 0;
  double lastY_ = 0;
};

struct PathRig {
  explicit PathRig(const Program& program) : Rows(program.Rows) {
    Files.Put("R\\Actvprg1.krw", EncodeAll(program.Records));
    MachineOptions options;
    options.RootDirectory = "R\\";
    options.Files = &Files;
    Rig = std::make_unique<RunRig>(options);
    Rows.emplace_back("-999");
    Send(20);
    Rig->Select();
  }
  void Send(std::size_t until) {
    for (; Sent < std::min(until, Rows.size()); ++Sent) Rig->Row(Rows[Sent]);
  }
  void Tick(double seconds) {
    Rig->Run.Advance(seconds);
    Send(static_cast<std::size_t>(Rig->Vr(Vr::RunningLine)) + 15);
  }

  ReadOnlyFiles Files;
  std::vector<std::string> Rows;
  std::size_t Sent = 0;
  std::unique_ptr<RunRig> Rig;
};

double Coordinate() { return *rc::gen::inRange(-200000, 200000) / 100.0; }

Program RandomProgram() {
  Program program;
  const auto kinds = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 8));
  for (const int kind : kinds) {
    const double feed = *rc::gen::inRange(0, 20000);
    switch (kind) {
      case 0:
        program.Move(Coordinate(), Coordinate());
        break;
      case 1:
      case 2:
        program.Cut(Coordinate(), Coordinate(), feed);
        break;
      case 3:
      case 4:
        program.Arc(Coordinate(), Coordinate(),
                    *rc::gen::inRange(1, 361) * (*rc::gen::arbitrary<bool>() ? 1.0 : -1.0), feed);
        break;
      case 5:
        program.Point(RecordCode::Dwell, "0.25");
        break;
      case 6:
        program.Reposition();
        break;
      default:
        program.Settings();
        break;
    }
  }
  return program;
}

/// How far `at` lies from the element.
double Off(const PathElement& element, const Position& at) {
  const Segment path = element.Path();
  return Distance(path.At(path.NearestDistance(at)), at);
}

RC_GTEST_PROP(Path, EveryPositionLiesOnTheRecordThatItsLineBelongsTo, ()) {
  const Program program = RandomProgram();
  PathRig rig(program);
  PathFile path;
  RC_ASSERT(path.Load(rig.Files, "R\\Actvprg1.krw"));
  const double tick = *rc::gen::inRange(1, 500) / 1000.0;
  rig.Rig->Run.CycleStart();
  for (int i = 0; i < 20000 && rig.Rig->Running(); ++i) {
    rig.Tick(tick);
    if (!rig.Rig->Running()) break;
    const PathElement* element = path.OfLine(rig.Rig->Run.Line());
    RC_ASSERT(element != nullptr);
    RC_ASSERT(Off(*element, rig.Rig->Run.At()) < 0.002);
  }
  RC_ASSERT(rig.Rig->Count(EventKind::PathRefused) == 0);
}

TEST(Path, WithoutRecordsALineOnlyGoesToItsStart) {
  Program program;
  program.Move(10, 10);
  program.Cut(50, 10, 600);
  program.Cut(50, 50, 600);
  program.Move(0, 0);
  RunRig rig;
  for (const auto& row : program.Rows) rig.Row(row);
  rig.Run.CycleStart();
  rig.Run.Advance(0.03);
  rig.Run.Advance(3.9);
  EXPECT_NEAR(rig.Y(), 10, 1e-9) << "the second row's start is where the first line ends";
  EXPECT_GT(rig.X(), 40);
}

TEST(Path, WithRecordsALineEndsWhereItsRecordDoes) {
  Program program;
  program.Move(10, 10);
  program.Cut(50, 10, 600);
  program.Point(RecordCode::ProgramStop, "-1");
  PathRig rig(program);
  rig.Rig->Run.CycleStart();
  rig.Tick(100);
  EXPECT_EQ(rig.Rig->X(), 50);
  EXPECT_EQ(rig.Rig->Y(), 10);
}

TEST(Path, AStopBehindAnArcStaysOnTheArcsEnd) {
  Program program;
  program.Move(100, 100);
  program.Arc(90, 100, 180, 600);
  program.Point(RecordCode::ProgramStop, "-1");
  PathRig rig(program);
  rig.Rig->Run.CycleStart();
  rig.Tick(100);
  EXPECT_NEAR(rig.Rig->X(), 80, 1e-4);
  EXPECT_NEAR(rig.Rig->Y(), 100, 1e-4);
}

TEST(Path, AGapBetweenRecordsIsTravelledWithTheBeamOff) {
  Program program;
  program.Cut(10, 0, 600);
  program.Cut(20, 0, 600);
  program.Records[2].StartPoint = Single(10, 5);  // offset aside by the kerf
  program.Records[2].ProfileStart = Single(10, 5);
  program.Records[2].EndPoint = Single(20, 5);
  program.Rows[1] = "1,10,5,0,0,600,0";
  PathRig rig(program);
  rig.Rig->Run.CycleStart();
  rig.Tick(1.005);
  EXPECT_EQ(rig.Rig->X(), 10);
  EXPECT_NEAR(rig.Rig->Y(), 2.5, 1e-6);
  EXPECT_FALSE(rig.Rig->Bit(StatusBit::Beam));
  rig.Tick(0.1);
  EXPECT_TRUE(rig.Rig->Bit(StatusBit::Beam));
  EXPECT_NEAR(rig.Rig->Y(), 5, 1e-6);
}

TEST(Path, ARecordThatDoesNotFitItsRowIsNotFollowed) {
  Program program;
  program.Move(10, 10);
  program.Cut(50, 10, 600);
  program.Move(0, 0);
  program.Rows[1] = "1,11,10,0,0,600,0";
  PathRig rig(program);
  rig.Rig->Run.CycleStart();
  rig.Tick(100);
  EXPECT_EQ(rig.Rig->Count(EventKind::PathRefused), 1);
  EXPECT_EQ(rig.Rig->Count(EventKind::CycleFinished), 1) << "the run goes on by the rows";
}

TEST(Path, DamagedRecordFilesAreNotFollowed) {
  Program program;
  program.Move(10, 10);
  program.Cut(50, 10, 600);
  const std::string good = EncodeAll(program.Records);
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, good.size() - 1}) {
    ReadOnlyFiles files;
    files.Put("R\\Actvprg1.krw", good.substr(0, size));
    PathFile path;
    EXPECT_FALSE(path.Load(files, "R\\Actvprg1.krw")) << size;
    EXPECT_TRUE(path.Empty());
  }
  ReadOnlyFiles files;
  PathFile path;
  EXPECT_FALSE(path.Load(files, "R\\Actvprg1.krw")) << "missing";
}

RC_GTEST_PROP(Path, RecordsOfAnyBytesLeaveTheMachineSound, (std::vector<std::uint8_t> noise)) {
  Program program;
  program.Move(10, 10);
  program.Arc(0, 10, 90, 600);
  program.Cut(50, 10, 600);
  PathRig rig(program);
  std::string bytes = EncodeAll(program.Records);
  for (std::size_t i = 0; i < noise.size(); ++i) {
    const auto at = *rc::gen::inRange<std::size_t>(0, bytes.size());
    bytes[at] = static_cast<char>(noise[i]);
  }
  rig.Files.Put("R\\Actvprg1.krw", bytes);
  rig.Rig->Run.CycleStart();
  for (int i = 0; i < 100; ++i) rig.Tick(1);
  RC_ASSERT(std::isfinite(rig.Rig->X()) && std::isfinite(rig.Rig->Y()));
  RC_ASSERT(std::isfinite(rig.Rig->Memory.Axis(AxisQuantity::Demand, 0)));
}

}  // namespace
}  // namespace torvane::simulator
