// Meeting points of offset elements.
#include <bit>
#include <cmath>
#include <limits>
#include <ostream>
#include <random>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "partprogram/Intersection.h"
#include "support/ChordWalk.h"

namespace torvane::partprogram {

void PrintTo(const Intersection& found, std::ostream* out) {
  *out << static_cast<int>(found.Kind) << " at " << found.Point.X << ", " << found.Point.Y;
}

bool operator==(const Intersection& a, const Intersection& b) {
  return a.Kind == b.Kind &&
         std::bit_cast<std::uint64_t>(a.Point.X) == std::bit_cast<std::uint64_t>(b.Point.X) &&
         std::bit_cast<std::uint64_t>(a.Point.Y) == std::bit_cast<std::uint64_t>(b.Point.Y);
}

namespace {

ChordArc Arc(double x, double y, double radius, double start, double sweep, int perDegree = 10) {
  return {{x, y},
          radius,
          start,
          sweep,
          static_cast<std::int64_t>(std::trunc(std::fabs(sweep))) * perDegree};
}

TEST(LinesMeeting, InsideBoth) {
  const Intersection found = IntersectLines({{0, 0}, {10, 0}}, {{5, -5}, {5, 5}});
  EXPECT_EQ(found.Kind, Meeting::Inside);
  EXPECT_EQ(found.Point.X, 5);
  EXPECT_EQ(found.Point.Y, 0);
}

TEST(LinesMeeting, BeyondAnEndIsAnExtension) {
  const Intersection found = IntersectLines({{0, 0}, {10, 0}}, {{12, 5}, {12, 1}});
  EXPECT_EQ(found.Kind, Meeting::Extension);
  EXPECT_EQ(found.Point.X, 12);
}

TEST(LinesMeeting, APointUpToOneLengthBehindAStartCountsAsInside) {
  // t is -0.5: behind the start of the first line.
  EXPECT_EQ(IntersectLines({{0, 0}, {10, 0}}, {{-5, -5}, {-5, 5}}).Kind, Meeting::Inside);
  EXPECT_EQ(IntersectLines({{0, 0}, {10, 0}}, {{-11, -5}, {-11, 5}}).Kind, Meeting::Extension);
}

TEST(LinesMeeting, ParallelAndCollinearLinesMeetNowhere) {
  for (const Segment& second :
       {Segment{{0, 1}, {10, 1}}, Segment{{20, 0}, {30, 0}}, Segment{{3, 3}, {3, 3}}}) {
    const Intersection found = IntersectLines({{0, 0}, {10, 0}}, second);
    EXPECT_EQ(found.Kind, Meeting::None);
    EXPECT_EQ(found.Point.X, -999);
    EXPECT_EQ(found.Point.Y, -999);
  }
}

TEST(Chords, AreCountedByTheWholeDegreesOfTheSweep) {
  DrawRecord arc;
  arc[Figure::Radius] = 5;
  arc[Figure::Sweep] = -90.9F;
  EXPECT_EQ(ChordsOf(arc, 10).Chords, 900);
  EXPECT_EQ(ChordsOf(arc, 0).Chords, 900);
  EXPECT_EQ(ChordsOf(arc, 32767).Chords, 90 * 32767);
  arc[Figure::Sweep] = 0.9F;
  EXPECT_EQ(ChordsOf(arc, 10).Chords, 0);
  arc[Figure::Sweep] = std::numeric_limits<float>::infinity();
  EXPECT_EQ(ChordsOf(arc, 10).Chords, 0);
}

TEST(LineAndArc, MeetWhereTheCircleIsCrossed) {
  const Segment line{{-20, 3}, {20, 3}};
  const Intersection fromEnd = IntersectLineArc(line, Arc(0, 0, 5, 0, 180));
  EXPECT_EQ(fromEnd.Kind, Meeting::Inside);
  EXPECT_NEAR(fromEnd.Point.X, -4, 1e-4);  // walked from its end: the far crossing comes first
  const Intersection fromStart = IntersectArcLine(Arc(0, 0, 5, 0, 180), line);
  EXPECT_EQ(fromStart.Kind, Meeting::Inside);
  EXPECT_NEAR(fromStart.Point.X, 4, 1e-4);
}

TEST(LineAndArc, TheBoxOfTheLineCountsInBothOrders) {
  // The circle is crossed one length behind the line's start: |t| is at most 1, the box says no.
  const Segment line{{-3, 3}, {4, 3.001}};
  const ChordArc arc = Arc(0, 0, 5, 90, 89.5);  // its only crossing lies near (-4, 3)
  EXPECT_EQ(IntersectLineArc(line, arc).Kind, Meeting::Extension);
  EXPECT_EQ(IntersectArcLine(arc, line).Kind, Meeting::Extension);
}

TEST(LineAndArc, WithoutAHitTheLastChordOfTheWalkDecides) {
  const Segment line{{-20, 9}, {20, 9}};
  const ChordArc arc = Arc(0, 0, 5, 0, 90);
  const Intersection found = IntersectArcLine(arc, line);
  EXPECT_EQ(found.Kind, Meeting::Extension);
  const Intersection last = IntersectLines({arc.Point(899), arc.Point(900)}, line);
  EXPECT_EQ(found.Point.X, last.Point.X);
  const Intersection first = IntersectLines(line, {arc.Point(1), arc.Point(0)});
  EXPECT_EQ(IntersectLineArc(line, arc).Point.X, first.Point.X);
}

TEST(LineAndArc, AnArcWithoutChordsMeetsNothing) {
  EXPECT_EQ(IntersectLineArc({{0, 0}, {1, 1}}, Arc(0, 0, 5, 0, 0.9)).Kind, Meeting::None);
  EXPECT_EQ(IntersectLineArc({{0, 0}, {1, 1}}, Arc(0, 0, 0, 0, 90)).Kind, Meeting::None);
  EXPECT_EQ(IntersectArcLine(Arc(0, 0, 5, 0, 90), {{1, 1}, {1, 1}}).Kind, Meeting::None);
}

TEST(LineAndArc, ALineThatIsNoNumberMeetsNothing) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(IntersectLineArc({{0, none}, {1, 1}}, Arc(0, 0, 5, 0, 90)).Kind, Meeting::None);
}

TEST(LineAndArc, AHugeNumberOfChordsTakesNoTimeAndNoMemory) {
  const ChordArc arc = Arc(0, 0, 50, 0, 360, 32767);
  const Intersection found = IntersectArcLine(arc, {{-60, 30}, {60, 30}});
  EXPECT_EQ(found.Kind, Meeting::Inside);
  EXPECT_NEAR(found.Point.X, 40, 1e-6);
}

TEST(TwoArcs, MeetWhereTheCirclesCross) {
  const Intersection found = IntersectArcs(Arc(0, 0, 5, 0, 180), Arc(6, 0, 5, 180, -180));
  EXPECT_EQ(found.Kind, Meeting::Inside);
  EXPECT_NEAR(found.Point.X, 3, 1e-3);
  EXPECT_NEAR(found.Point.Y, 4, 1e-3);
}

TEST(TwoArcs, AHugeNumberOfChordsTakesNoTimeAndNoMemory) {
  const Intersection found =
      IntersectArcs(Arc(0, 0, 50, 0, 180, 32767), Arc(60, 0, 50, 180, -180, 32767));
  EXPECT_EQ(found.Kind, Meeting::Inside);
  EXPECT_NEAR(found.Point.Y, 40, 1e-4);
}

TEST(Elements, MeetByTheirKinds) {
  DrawRecord line;
  line.Code = RecordCode::LineProfile;
  line.StartPoint = {-20, 3, 0};
  line.EndPoint = {20, 3, 0};
  DrawRecord arc;
  arc.Code = RecordCode::ArcProfile;
  arc[Figure::Radius] = 5;
  arc[Figure::Sweep] = 180;
  EXPECT_LT(FindIntersection(line, arc, 10).Point.X, 0);
  EXPECT_GT(FindIntersection(arc, line, 10).Point.X, 0);
  EXPECT_EQ(FindIntersection(line, line, 10).Kind, Meeting::None);
  DrawRecord other = arc;
  other.CentrePoint.X = 6;
  EXPECT_NEAR(FindIntersection(arc, other, 10).Point.X, 3, 1e-3);
  line.EndPoint.X = std::numeric_limits<float>::infinity();
  EXPECT_EQ(FindIntersection(line, arc, 10).Kind, Meeting::None);
}

// ---- the search gives what the walk gives ----

/// Numbers as records hold them: singles, with round ones and coincidences among them.
class Generator {
 public:
  explicit Generator(std::uint64_t seed) : random_(seed) {}

  double Single(double low, double high) {
    return static_cast<float>(std::uniform_real_distribution<double>(low, high)(random_));
  }
  int Whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }

  double Coordinate() { return Whole(0, 1) == 0 ? Whole(-20, 20) : Single(-20, 20); }
  core::Vector2 Point(double offset) { return {offset + Coordinate(), Coordinate()}; }

  double Radius() {
    switch (Whole(0, 5)) {
      case 0:
        return Whole(0, 12);
      case 1:
        return static_cast<float>(std::pow(10.0, Single(-9, 3)));
      default:
        return Single(0.01, 25);
    }
  }
  double Angle() { return Whole(0, 1) == 0 ? Whole(0, 24) * 15.0 : Single(0, 360); }
  double Sweep(double most) {
    const double size = Whole(0, 1) == 0 ? Whole(0, 24) * most / 24 : Single(0, most);
    return static_cast<float>(Whole(0, 1) == 0 ? size : -size);
  }
  ChordArc AnyArc(double offset, double mostSweep, int mostPerDegree) {
    const core::Vector2 centre = Point(offset);
    return Arc(centre.X, centre.Y, Radius(), Angle(), Sweep(mostSweep), Whole(1, mostPerDegree));
  }
  double Offset() { return Whole(0, 3) == 0 ? 2000.0 : 0.0; }

 private:
  std::mt19937_64 random_;
};

/// A line at a place of the arc where results hang on the last digit: a tangent, a chord of it, a
/// line that ends on it, one through its centre.
Segment DelicateLine(Generator& make, const ChordArc& arc) {
  const auto index = make.Whole(0, static_cast<int>(arc.Chords));
  const core::Vector2 at = arc.Chords > 0 ? arc.Point(index) : arc.Centre;
  const double dx = (at.X - arc.Centre.X) * make.Single(-3, 3);
  const double dy = (at.Y - arc.Centre.Y) * make.Single(-3, 3);
  const auto single = [](core::Vector2 p) {
    return core::Vector2{static_cast<float>(p.X), static_cast<float>(p.Y)};
  };
  switch (make.Whole(0, 4)) {
    case 0:
      return {single({at.X - dy, at.Y + dx}), single({at.X + dy, at.Y - dx})};
    case 1:
      return {single(at), single({at.X + dx, at.Y + dy})};
    case 2:
      return {single({at.X + dx, at.Y + dy}), single(at)};
    case 3:
      return {arc.Chords > 0 ? arc.Point(0) : at, at};
    default:
      return {arc.Centre, {arc.Centre.X + make.Whole(-9, 9), arc.Centre.Y}};
  }
}

TEST(IntersectionSearch, LineAndArcGiveTheBitsOfTheWalk) {
  Generator make(1);
  int inside = 0;
  for (int i = 0; i < 6000; ++i) {
    const double offset = make.Offset();
    const ChordArc arc = make.AnyArc(offset, 360, 12);
    const Segment line =
        i % 2 == 0 ? DelicateLine(make, arc) : Segment{make.Point(offset), make.Point(offset)};
    const Intersection expected = tests::WalkLineArc(line, arc);
    ASSERT_EQ(IntersectLineArc(line, arc), expected) << i;
    ASSERT_EQ(IntersectArcLine(arc, line), tests::WalkArcLine(arc, line)) << i;
    inside += expected.Kind == Meeting::Inside ? 1 : 0;
  }
  EXPECT_GT(inside, 1000);  // the pairs do cross
}

/// A second arc that stands in a delicate way to the first: one centre, one radius, touching
/// outside or inside, on one axis, the same arc backwards.
ChordArc DelicateArc(Generator& make, const ChordArc& first, double sweep) {
  const double start = make.Angle();
  const int perDegree = make.Whole(1, 3);
  const double radius = make.Radius();
  const core::Vector2 c = first.Centre;
  switch (make.Whole(0, 6)) {
    case 0:
      return Arc(c.X, c.Y, first.Radius, start, sweep, perDegree);
    case 1:
      return Arc(c.X, c.Y, first.Radius + make.Single(-0.1, 0.1), start, sweep, perDegree);
    case 2:
      return Arc(c.X + first.Radius + radius, c.Y, radius, start, sweep, perDegree);
    case 3:
      return Arc(c.X, c.Y + first.Radius - radius, radius, start, sweep, perDegree);
    case 4:
      return Arc(c.X + make.Whole(-40, 40), c.Y, first.Radius, first.Start, sweep, perDegree);
    case 5:
      return Arc(c.X + 1e-9, c.Y, first.Radius, start, sweep, perDegree);
    default:
      return Arc(c.X, c.Y, first.Radius, first.Start + first.Sweep, -first.Sweep, perDegree);
  }
}

TEST(IntersectionSearch, TwoArcsGiveTheBitsOfTheWalk) {
  Generator make(2);
  int inside = 0;
  for (int i = 0; i < 2500; ++i) {
    const double offset = make.Offset();
    const ChordArc first = make.AnyArc(offset, 360, 3);
    const ChordArc second =
        i % 2 == 0 ? DelicateArc(make, first, make.Sweep(360)) : make.AnyArc(offset, 360, 3);
    const Intersection expected = tests::WalkArcs(first, second);
    ASSERT_EQ(IntersectArcs(first, second), expected) << i;
    inside += expected.Kind == Meeting::Inside ? 1 : 0;
  }
  EXPECT_GT(inside, 300);
}

TEST(IntersectionSearch, ChordsInOneLineFarApartGiveTheBitsOfTheWalk) {
  // The second arc is the first one pushed along one of its chords: that pair of chords is parallel
  // but for the last digits.
  Generator make(3);
  for (int i = 0; i < 20000; ++i) {
    const core::Vector2 centre = make.Point(make.Offset());
    const ChordArc first =
        Arc(centre.X, centre.Y, make.Single(1, 30), make.Single(0, 360), make.Single(4, 12), 1);
    const auto index = make.Whole(0, static_cast<int>(first.Chords) - 1);
    const core::Vector2 from = first.Point(index);
    const core::Vector2 to = first.Point(index + 1);
    const double lengths = make.Whole(0, 1) == 0 ? make.Whole(33, 60) : make.Single(9, 60);
    ChordArc second = first;
    second.Centre = {centre.X + lengths * (to.X - from.X), centre.Y + lengths * (to.Y - from.Y)};
    ASSERT_EQ(IntersectArcs(first, second), tests::WalkArcs(first, second)) << i;
  }
}

RC_GTEST_PROP(IntersectionSearch, HalfCirclesOfTheMachineGiveTheBitsOfTheWalk,
              (std::uint64_t seed)) {
  Generator make(seed);
  const double offset = make.Offset();
  const double turn = make.Whole(0, 1) == 0 ? 180 : -180;
  const core::Vector2 a = make.Point(offset);
  const core::Vector2 b = make.Point(offset);
  const int perDegree = make.Whole(0, 19) == 0 ? 10 : 3;
  const ChordArc first = Arc(a.X, a.Y, make.Single(1, 30), make.Angle(), turn, perDegree);
  const ChordArc second = Arc(b.X, b.Y, make.Single(1, 30), make.Angle(), -turn, perDegree);
  RC_ASSERT(IntersectArcs(first, second) == tests::WalkArcs(first, second));
}

TEST(IntersectionSearch, AnArcThatGoesRoundManyTimesGivesTheBitsOfTheWalk) {
  const Segment line{{-7, 3}, {3, -7}};
  for (const double sweep : {700.0, -719.5, 1500.0, -3000.0}) {
    const ChordArc arc = Arc(1, 2, 5, 33, sweep, 2);
    EXPECT_EQ(IntersectArcLine(arc, line), tests::WalkArcLine(arc, line));
    EXPECT_EQ(IntersectLineArc(line, arc), tests::WalkLineArc(line, arc));
    const ChordArc other = Arc(3, 3, 4, 12, 90, 2);
    EXPECT_EQ(IntersectArcs(arc, other), tests::WalkArcs(arc, other));
  }
}

}  // namespace
}  // namespace torvane::partprogram
