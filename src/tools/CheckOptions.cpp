#include "tools/CheckOptions.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <utility>

#include "core/General.h"
#include "platform/NativePaths.h"

namespace torvane::tools {

namespace {

/// Largest side of a picture, pixels.
constexpr int LargestPicture = 20000;

template <typename Number>
bool ReadWhole(std::string_view text, Number& value) {
  const auto* const end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, value);
  return error == std::errc() && stopped == end;
}

/// Both sides of the first `divider`; false where there is none or a side is no number.
template <typename Number>
bool ReadPair(std::string_view text, char divider, Number& first, Number& second) {
  const auto at = text.find(divider);
  return at != std::string_view::npos && ReadWhole(text.substr(0, at), first) &&
         ReadWhole(text.substr(at + 1), second);
}

void ReadPictureSize(const std::string& text, CheckOptions& options) {
  const bool read = ReadPair(text, 'x', options.PlotWidth, options.PlotHeight);
  const auto fits = [](int side) { return side > 0 && side <= LargestPicture; };
  if (!read || !fits(options.PlotWidth) || !fits(options.PlotHeight)) {
    throw WrongUse("--size takes a width and a height in pixels, such as 1200x900, not " + text);
  }
}

/// True for a name that ends in ".png" or ".svg", in any case.
bool IsPictureName(const std::string& path) {
  const auto ending = std::filesystem::path(path).extension().string();
  return core::EqualNoCase(ending, ".png") || core::EqualNoCase(ending, ".svg");
}

/// The name as the system keeps it, without ".prg".
std::string ProgramName(const std::string& argument) {
  auto name = platform::ToSystemName(argument);
  constexpr std::string_view Extension = ".prg";
  if (name.size() > Extension.size() &&
      core::EqualNoCase(std::string_view(name).substr(name.size() - Extension.size()), Extension)) {
    name.resize(name.size() - Extension.size());
  }
  return name;
}

struct Texts {
  std::string Load;
  std::string Size;
  std::string Restart;
  std::string Remaining;
  std::string Skip;
};

/// "14", "14:3" or "all".
void ReadRestartBlock(const std::string& text, RestartQuestion& question) {
  question.Asked = RestartQuestion::Kind::Block;
  if (text == "all") {
    question.Asked = RestartQuestion::Kind::All;
    return;
  }
  const bool whole = text.find(':') == std::string::npos
                         ? ReadWhole(text, question.Block)
                         : ReadPair(text, ':', question.Block, question.SubBlock);
  if (!whole || question.Block < 1 || question.SubBlock < 0) {
    throw WrongUse(
        "--restart takes a block, a block and a line of its subroutine, or all, such as "
        "14 or 14:3, not " +
        text);
  }
}

/// "12.5" or "whole".
void ReadRemaining(const std::string& text, RestartQuestion& question) {
  if (text == "whole") return;
  double remaining = 0;
  if (!ReadWhole(text, remaining) || !std::isfinite(remaining) || remaining <= 0) {
    throw WrongUse("--remaining takes mm of a line, degrees of an arc, or whole, not " + text);
  }
  question.Remaining = remaining;
}

void DescribeRestart(CLI::App& app, RestartQuestion& question, Texts& texts) {
  app.add_option("--restart", texts.Restart,
                 "Rehearses a restart at this block (BLOCK or BLOCK:SUB), or at all")
      ->check(CheckNotEmpty);
  auto* const record =
      app.add_option("--restart-record", question.Record,
                     "Rehearses a restart inside the line or arc of this compensated record")
          ->check(CLI::Range(2, 32767));
  app.add_option("--remaining", texts.Remaining,
                 "What of it is still to be cut: mm, degrees of an arc, or whole")
      ->needs(record)
      ->check(CheckNotEmpty);
  app.add_option("--sent", question.Sent, "Table lines that the controller has received")
      ->check(CLI::Range(0, 32767));
  app.add_option("--active", question.Active, "Takes the files of this slot as they are")
      ->check(CLI::Range(1, 2));
}

void FinishRestart(const Texts& texts, CheckOptions& options) {
  RestartQuestion& question = options.Restart;
  if (question.Record > 0) question.Asked = RestartQuestion::Kind::Record;
  if (!texts.Restart.empty()) {
    if (question.Record > 0) throw WrongUse("--restart and --restart-record exclude each other");
    ReadRestartBlock(texts.Restart, question);
  }
  if (!texts.Remaining.empty()) ReadRemaining(texts.Remaining, question);
  const bool asked = question.Asked != RestartQuestion::Kind::None;
  if (!asked && (question.Active > 0 || question.Sent)) {
    throw WrongUse("--active and --sent go with --restart or --restart-record");
  }
  if (question.Active > 0) {
    if (!options.Directory.empty()) throw WrongUse("--active takes no directory and no program");
    return;
  }
  if (options.Directory.empty()) throw WrongUse("DIRECTORY is required");
  if (!asked) return;
  if (options.Programs.size() != 1) throw WrongUse("a restart is rehearsed for one program");
  if (question.Asked == RestartQuestion::Kind::All && !options.Plot.empty()) {
    throw WrongUse("--plot takes one restart, not all");
  }
}

void DescribeEstimate(CLI::App& app, EstimateQuestion& question, Texts& texts) {
  constexpr double HighestOverride = 200;  // percent
  constexpr int MostContours = 32767;
  auto* const asked =
      app.add_flag("--estimate", question.Asked, "Says how long the run of each program takes");
  app.add_option("--machine", question.Machine,
                 "File of the machine's figures; without it the simulated machine's")
      ->needs(asked)
      ->check(CheckNotEmpty);
  app.add_option("--override", question.OverridePercent, "Feed override of the estimate, percent")
      ->needs(asked)
      ->check(CLI::Range(1.0, HighestOverride))
      ->check(CheckNumber)
      ->capture_default_str();
  app.add_option("--skip", texts.Skip, "Block skips that are on in it: 1, 2 or 1,2")
      ->needs(asked)
      ->check(CheckNotEmpty);
  app.add_option("--contours", question.Contours, "How many of the longest contours it lists")
      ->needs(asked)
      ->check(CLI::Range(0, MostContours))
      ->capture_default_str();
}

/// "1", "2" or both, divided by a comma.
void ReadSkips(const std::string& text, EstimateQuestion& question) {
  int first = 0;
  int second = 0;
  if (!ReadPair(text, ',', first, second) && !ReadWhole(text, first)) first = 0;
  const auto level = [](int value) { return value == 1 || value == 2; };
  if (!level(first) || (second != 0 && !level(second)) || first == second) {
    throw WrongUse("--skip takes 1, 2 or 1,2, not " + text);
  }
  question.Skip1 = first == 1 || second == 1;
  question.Skip2 = first == 2 || second == 2;
}

void FinishEstimate(const Texts& texts, CheckOptions& options) {
  if (!texts.Skip.empty()) ReadSkips(texts.Skip, options.Estimate);
  if (options.Estimate.Asked && options.Restart.Asked != RestartQuestion::Kind::None) {
    throw WrongUse("--estimate takes whole programs, not a restart");
  }
}

void DescribeOptions(CLI::App& app, CheckOptions& options, Texts& texts) {
  app.add_option("DIRECTORY", options.Directory, "Directory under the programs root");
  app.add_option("PROGRAM", options.Programs, "Programs of it; without any, all of them");
  app.add_option("--root", options.Root, "The installation: the folder with Control.cfg")
      ->check(CheckNotEmpty)
      ->capture_default_str();
  app.add_option("--slot", options.Slot, "Slot that the table lines are made for")
      ->check(CLI::Range(1, 2))
      ->capture_default_str();
  app.add_option("--load", texts.Load, "Load position X,Y in mm, in place of Machine.dat's")
      ->check(CheckNotEmpty);
  app.add_option("--out", options.Out,
                 "Folder for the slot's files and Reverse.txt; of several programs, one folder "
                 "each in it")
      ->check(CheckNotEmpty);
  app.add_option("--plot", options.Plot,
                 "Draws the plot to this .png or .svg; of several programs, with the program in "
                 "the name")
      ->check(CheckNotEmpty);
  app.add_flag("--kerf", options.PlotKerf, "Draws the compensated path over the plot");
  app.add_option("--size", texts.Size, "Size of the plot in pixels, 1200x900 unless given")
      ->check(CheckNotEmpty);
  app.add_flag("--json", options.Json, "Prints JSON in place of the report");
  app.add_flag("--report", options.Report, "Prints Reverse.txt after each program");
  app.add_option("--jobs", options.Jobs, "Programs checked at once; 0: one a core")
      ->check(CLI::Range(0, 1024))
      ->capture_default_str();
  DescribeRestart(app, options.Restart, texts);
  DescribeEstimate(app, options.Estimate, texts);
  app.footer(
      "Exit status: 0 every program is good, 1 at least one is refused or the block of a restart "
      "was not met, 2 wrong use.");
}

}  // namespace

LoadPoint ReadLoadPoint(const std::string& text) {
  LoadPoint point;
  if (!ReadPair(text, ',', point.X, point.Y) || !std::isfinite(point.X) ||
      !std::isfinite(point.Y)) {
    throw WrongUse("--load takes X,Y in mm, such as 1250,0, not " + text);
  }
  return point;
}

bool NeedsQt(const std::vector<std::string>& arguments) {
  return std::any_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
    return argument.starts_with("--plot") || argument.starts_with("--json");
  });
}

CheckOptions ReadCheckOptions(std::vector<std::string> arguments, std::string& help) {
  CheckOptions options;
  Texts texts;
  CLI::App app("Checks part programs by the same passes as the console, without a machine.",
               "torvane-check");
  DescribeOptions(app, options, texts);
  if (!ReadArguments(app, std::move(arguments), help)) return options;
  options.Directory = platform::ToSystemName(options.Directory);
  for (auto& program : options.Programs) program = ProgramName(program);
  FinishRestart(texts, options);
  FinishEstimate(texts, options);
  if (!texts.Load.empty()) options.Load = ReadLoadPoint(texts.Load);
  if (!texts.Size.empty()) ReadPictureSize(texts.Size, options);
  if (!options.Plot.empty() && !IsPictureName(options.Plot)) {
    throw WrongUse("--plot takes the name of a .png or an .svg file, not " + options.Plot);
  }
  return options;
}

}  // namespace torvane::tools
