#include "partprogram/Report.h"

#include "core/General.h"

namespace torvane::partprogram {

std::string ReportTime(const platform::LocalTime& time) {
  using core::PadInteger;
  return PadInteger(time.Day, 2) + "/" + PadInteger(time.Month, 2) + "/" +
         PadInteger(time.Year, 2) + " " + PadInteger(time.Hour, 2) + ":" +
         PadInteger(time.Minute, 2);
}

std::string ReportHead(std::string_view program, std::string_view directory,
                       const platform::LocalTime& time) {
  std::string text;
  text.append("PROGRAM   :  ").append(program).append("\r\n");
  text.append("DIRECTORY :  ").append(directory).append("\r\n");
  text.append("TIME      :  ").append(ReportTime(time)).append("\r\n");
  return text;
}

std::string ReportEntry(std::string_view block, std::string_view message, bool critical) {
  std::string text = "\r\n";
  text += critical ? "****** CRITICAL ERROR ******\r\n" : "****** WARNING ERROR ******\r\n";
  text.append(core::Trim(message)).append("\r\n");
  text.append(core::Trim(block).substr(0, LongestReportBlock)).append("\r\n");
  return text;
}

void WriteError(ConversionResult& result, const ProgramError& error) {
  result.Report += ReportEntry(error.Block, error.Message, error.Critical);
  if (error.Critical) ++result.CriticalErrors;
  result.Errors.push_back(error);
}

void WriteLateError(ConversionResult& result, const ProgramError& error) {
  if (result.Report.ends_with(ReportEnd)) {
    result.Report.resize(result.Report.size() - ReportEnd.size());
  }
  WriteError(result, error);
  result.Report += ReportEnd;
}

}  // namespace torvane::partprogram
