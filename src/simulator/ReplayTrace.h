// What Polling.txt holds: the exchanges of one or more sessions of a console, read back.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace torvane::simulator {

/// One file of a trace as it was read.
struct TraceFile {
  std::string Name;  ///< for messages
  std::string Text;
};

/// A place in a file of the trace.
struct TracePlace {
  std::size_t File = 0;
  std::size_t Line = 0;  ///< from 1
};

/// One exchange: the line that the console sent and what came of it. The texts are trimmed, as the
/// trace holds them, and last as long as the trace.
struct TraceExchange {
  std::string_view Tag;
  std::string_view Query;
  std::string_view Reply;
  bool Good = false;       ///< the exchange succeeded
  bool LineFeeds = false;  ///< the record has lost the carriage returns of its line ends
  TracePlace Place;        ///< of the record's first line

  /// The reply came whole, to its prompt.
  [[nodiscard]] bool Whole() const;
  /// The bytes that the console received, as far as the trace holds them.
  [[nodiscard]] std::string Bytes() const;
};

/// From the start of a console to its end: exchanges `First` up to `End`, which is not one of them.
struct TraceSession {
  std::size_t First = 0;
  std::size_t End = 0;
  bool HasStart = true;  ///< false for the end of a session whose start the trace has lost
};

/// Something in the files that is no exchange, and is left out.
struct TraceRemark {
  TracePlace Place;
  std::string What;
};

/// Reads whatever it is given; what cannot be an exchange is left out with a remark. Files are in
/// the order of their making: Polling.bak goes before Polling.txt.
class ReplayTrace {
 public:
  explicit ReplayTrace(std::vector<TraceFile> files);
  ReplayTrace(const ReplayTrace&) = delete;
  ReplayTrace& operator=(const ReplayTrace&) = delete;

  [[nodiscard]] const std::vector<TraceExchange>& Exchanges() const { return exchanges_; }
  /// At least one where there are exchanges.
  [[nodiscard]] const std::vector<TraceSession>& Sessions() const { return sessions_; }
  [[nodiscard]] const std::vector<TraceRemark>& Remarks() const { return remarks_; }
  /// "Polling.txt, line 17".
  [[nodiscard]] std::string PlaceText(const TracePlace& place) const;

 private:
  void ReadFile(std::size_t file);
  void FindSessions();
  [[nodiscard]] std::size_t StartBefore(std::size_t scale) const;
  [[nodiscard]] bool ParametersBefore(std::size_t exchange) const;

  std::vector<TraceFile> files_;
  std::vector<TraceExchange> exchanges_;
  std::vector<TraceSession> sessions_;
  std::vector<TraceRemark> remarks_;
  std::vector<std::size_t> parameterEnds_;  ///< exchanges read so far at the end of each download
};

}  // namespace torvane::simulator
