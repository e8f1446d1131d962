// What a check is asked for.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace torvane::tools {

/// Exit statuses of the command.
namespace CheckStatus {
inline constexpr int Good = 0;      ///< every program can be selected
inline constexpr int Refused = 1;   ///< at least one cannot
inline constexpr int WrongUse = 2;  ///< the question itself could not be answered
}  // namespace CheckStatus

struct LoadPoint {
  float X = 0;
  float Y = 0;
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
};

/// A question that cannot be answered, in one plain sentence.
class WrongUse : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The options of a command line, given without the name of the program. Where help is asked for,
/// `help` takes its text and the options mean nothing. Throws WrongUse.
[[nodiscard]] CheckOptions ReadCheckOptions(std::vector<std::string> arguments, std::string& help);

/// "X,Y" in mm, both finite. Throws WrongUse for anything else.
[[nodiscard]] LoadPoint ReadLoadPoint(const std::string& text);

}  // namespace torvane::tools
