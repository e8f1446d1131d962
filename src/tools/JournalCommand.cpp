#include "tools/JournalCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <ostream>
#include <system_error>
#include <utility>

#include "core/General.h"
#include "platform/DiskFileSystem.h"
#include "platform/DiskFiles.h"
#include "platform/RuntimeFault.h"
#include "tools/Arguments.h"
#include "tools/JournalReport.h"

namespace torvane::tools {

namespace {

struct JournalOptions {
  std::string Place = ".";
  std::string By;
  std::string From;
  std::string To;
  std::string Format = "text";
};

/// Empty for a day such as 2026-03-04, otherwise what is wrong.
std::string CheckDay(const std::string& text) {
  constexpr std::string_view Form = "0000-00-00";
  bool good = text.size() == Form.size();
  for (std::size_t i = 0; good && i < Form.size(); ++i) {
    good = Form[i] == '0' ? text[i] >= '0' && text[i] <= '9' : text[i] == Form[i];
  }
  return good ? std::string() : "a day is written as 2026-03-04, not " + text;
}

void DescribeOptions(CLI::App& app, JournalOptions& options) {
  app.add_option("PLACE", options.Place,
                 "The installation (the folder with Control.cfg), or a journal's file")
      ->check(CheckNotEmpty)
      ->capture_default_str();
  app.add_option("--by", options.By, "Sums by day or by program alone; without it by both")
      ->check(CLI::IsMember({"day", "program"}));
  app.add_option("--from", options.From, "Runs that began on this day or later")->check(CheckDay);
  app.add_option("--to", options.To, "Runs that began on this day or earlier")->check(CheckDay);
  app.add_option("--format", options.Format, "text, csv or json")
      ->check(CLI::IsMember({"text", "csv", "json"}))
      ->capture_default_str();
}

/// Where `place` is, and whether it is a folder. Throws RuntimeFault where nobody can tell.
std::pair<std::filesystem::path, bool> Locate(const std::string& place) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::file_status status = fs::status(place, error);
  if (error && status.type() != fs::file_type::not_found) {
    platform::ThrowFileFault(place, error.value());
  }
  fs::path whole = fs::absolute(place, error);
  if (error) throw platform::RuntimeFault(place, "the working directory is not there");
  return {std::move(whole), fs::is_directory(status)};
}

/// The journal of an installation lies in its service directory, whatever the case of the names.
std::string ReadText(const std::string& place) {
  const auto [path, folder] = Locate(place);
  if (folder) {
    const platform::DiskFileSystem files(path.string());
    return files.ReadFile("Service\\Journal.csv");
  }
  const platform::DiskFileSystem files(path.parent_path().string());
  return files.ReadFile(platform::DiskFileSystem::ToSystemPath(path.filename().string()));
}

JournalReport ReportOf(const JournalOptions& options) {
  JournalRuns read = ReadJournal(ReadText(options.Place));
  const auto outside = [&](const supervision::RunLine& run) {
    const std::string day = DayOf(run);
    return (!options.From.empty() && day < options.From) ||
           (!options.To.empty() && day > options.To);
  };
  std::erase_if(read.Runs, outside);
  JournalReport report;
  report.Keys = {options.By != "program", options.By != "day"};
  report.Sums = SumUp(read.Runs, report.Keys);
  report.Total = Total(read.Runs);
  report.Damaged = std::move(read.Damaged);
  return report;
}

void Print(const JournalReport& report, const std::string& format, std::ostream& out) {
  if (format == "csv") {
    out << JournalCsvReport(report);
  } else if (format == "json") {
    out << JournalJsonReport(report);
  } else {
    out << JournalTextReport(report);
  }
  out << std::flush;
}

void TellDamage(const JournalReport& report, std::ostream& errors) {
  constexpr std::size_t MostNamed = 20;
  if (report.Damaged.empty()) return;
  const bool one = report.Damaged.size() == 1;
  errors << "torvane-journal: " << report.Damaged.size()
         << (one ? " damaged line is left out: line" : " damaged lines are left out: lines");
  for (std::size_t i = 0; i < std::min(report.Damaged.size(), MostNamed); ++i) {
    errors << (i == 0 ? " " : ", ") << report.Damaged[i];
  }
  errors << (report.Damaged.size() > MostNamed ? " and more\n" : "\n");
}

int Report(const JournalOptions& options, std::ostream& out, std::ostream& errors) {
  try {
    const JournalReport report = ReportOf(options);
    Print(report, options.Format, out);
    TellDamage(report, errors);
    if (!out) {
      errors << "torvane-journal: the output cannot be written\n";
      return ExitStatus::Refused;
    }
    return report.Damaged.empty() ? ExitStatus::Good : ExitStatus::Refused;
  } catch (const platform::RuntimeFault& fault) {
    errors << "torvane-journal: " << fault.what() << "\n";
    return ExitStatus::Refused;
  }
}

}  // namespace

int JournalMain(std::vector<std::string> arguments, std::ostream& out, std::ostream& errors) {
  JournalOptions options;
  CLI::App app("Sums up the run journal of an installation.", "torvane-journal");
  DescribeOptions(app, options);
  return RunCommand(app, std::move(arguments), out, errors,
                    [&] { return Report(options, out, errors); });
}

}  // namespace torvane::tools
