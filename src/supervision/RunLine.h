// One run of a program as the run journal keeps it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/Clock.h"

namespace torvane::supervision {

/// How a run began.
enum class RunBegin : std::uint8_t {
  Start,    ///< the operator's cycle start
  Restart,  ///< going on in a stopped run, at a block of it
  Found     ///< the console came up while the machine ran
};

/// How it ended.
enum class RunEnd : std::uint8_t {
  End,          ///< the end of the program
  Stop,         ///< before it
  LinkLost,     ///< while nothing was heard of the controller
  ConsoleEnded  ///< the console ended, in order or not, while the machine ran
};

/// A place in a program. 0 where it is not known.
struct RunPlace {
  int Block = 0;   ///< line of the listing
  int Record = 0;  ///< table line that the controller had reached, VR(81)
  double X = 0;    ///< of the head, mm
  double Y = 0;
};

struct RunStop {
  platform::LocalTime At;
  RunPlace Place;
  std::string Cause;
};

/// A line lists so many stops; RunLine::StopCount goes on counting.
inline constexpr std::size_t MostStops = 100;

/// No line holds more seconds, mm or sheets than this.
inline constexpr std::int32_t MostOfAFigure = 1'000'000'000;
/// Numbers of runs that are read again; a higher one is damage, so that there is always a next.
inline constexpr std::int32_t MostRuns = 1'000'000'000;

struct RunLine {
  std::int32_t Number = 0;  ///< from 1 on, one more with each run
  platform::LocalTime Start;
  platform::LocalTime End;
  RunBegin Begin = RunBegin::Start;
  int FromBlock = 0;  ///< of a restart: the line of the listing; 0 otherwise
  std::string Directory;
  std::string Program;
  std::string Digest;  ///< SHA-256 of the slot's program text, 64 hex digits; empty: not known
  int Slot = 0;
  std::string Material;
  int Sheets = 0;      ///< counted by the controller
  double Seconds = 0;  ///< by the machine's run time
  double Length = 0;   ///< cut, mm
  RunEnd Ended = RunEnd::ConsoleEnded;
  RunPlace Last;  ///< where it ended
  int StopCount = 0;
  std::vector<RunStop> Stops;
};

}  // namespace torvane::supervision
