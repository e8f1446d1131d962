// What a check is asked for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/Arguments.h"

namespace torvane::tools {

struct LoadPoint {
  float X = 0;
  float Y = 0;
};

/// A restart to rehearse.
struct RestartQuestion {
  enum class Kind : std::uint8_t { None, Block, Record, All };
  Kind Asked = Kind::None;
  std::int16_t Block = 0;           ///< line of the main file
  std::int16_t SubBlock = 0;        ///< line of the subroutine, 0 in the main file
  std::int16_t Record = 0;          ///< of ".krw"
  std::optional<double> Remaining;  ///< mm or degrees still to be cut; without it the whole element
  std::optional<std::int16_t> Sent;  ///< table lines that have gone out; without it the first fill
  std::int16_t Active = 0;           ///< 1 or 2: the slot's files as they are; 0: a part program
};

/// A time estimate.
struct EstimateQuestion {
  bool Asked = false;
  std::string Machine;  ///< native file of the machine's figures; empty: the simulated machine's
  double OverridePercent = 100;
  bool Skip1 = false;
  bool Skip2 = false;
  int Contours = 5;  ///< of the longest, so many are listed
};

struct CheckOptions {
  std::string Root = ".";             ///< native directory that holds Control.cfg
  std::string Directory;              ///< name under the programs root, Latin-1
  std::vector<std::string> Programs;  ///< names without extension, Latin-1; empty: all
  std::int16_t Slot = 1;              ///< 1 or 2
  std::optional<LoadPoint> Load;      ///< mm; without it Machine.dat's
  std::string Out;                    ///< native directory for the slot's files; empty: none
  std::string Plot;                   ///< native file, ".png" or ".svg"; empty: none
  bool PlotKerf = false;              ///< the compensated path over the plot
  int PlotWidth = 1200;               ///< pixels
  int PlotHeight = 900;
  bool Json = false;
  bool Report = false;  ///< the text of Reverse.txt after each program
  unsigned Jobs = 0;    ///< threads; 0: one a core
  RestartQuestion Restart;
  EstimateQuestion Estimate;
};

/// Whether the arguments of a command line, given without the name of the program, ask for a
/// picture or for JSON, which torvane-check-qt makes.
[[nodiscard]] bool NeedsQt(const std::vector<std::string>& arguments);

/// The options of a command line, given without the name of the program. Where help is asked for,
/// `help` takes its text and the options mean nothing. Throws WrongUse.
[[nodiscard]] CheckOptions ReadCheckOptions(std::vector<std::string> arguments, std::string& help);

/// "X,Y" in mm, both finite. Throws WrongUse for anything else.
[[nodiscard]] LoadPoint ReadLoadPoint(const std::string& text);

}  // namespace torvane::tools
