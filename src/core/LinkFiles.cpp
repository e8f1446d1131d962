#include "core/LinkFiles.h"

#include <algorithm>
#include <array>
#include <limits>
#include <variant>

#include "core/ConfigText.h"
#include "core/General.h"
#include "core/PortText.h"

namespace torvane::core {

namespace {

/// One line of Trio.cfg: its field, its default, what a value below the limit becomes, and the
/// largest value, which anything above becomes.
struct TimingLine {
  std::variant<std::int32_t LinkSettings::*, std::int16_t LinkSettings::*> Field;
  std::int16_t Default;
  std::int16_t Limit;
  std::int16_t Instead;
  std::int32_t Most;
};

constexpr std::int32_t NoLimit16 = std::numeric_limits<std::int16_t>::max();
constexpr std::int32_t NoLimit32 = std::numeric_limits<std::int32_t>::max();

const std::array<TimingLine, 9> TimingLines = {{
    {&LinkSettings::PollPeriodMs, 50, 5, 50, LongestPollMs},
    {&LinkSettings::PollResumeMs, 0, 0, 0, LongestPollMs},
    {&LinkSettings::ReplyTimeoutMs, 10000, 0, 0, LongestReplyMs},
    {&LinkSettings::TrioReserved1, 0, 0, 0, NoLimit32},
    {&LinkSettings::CommandDelayMs, 0, 0, 0, LongestCommandDelayMs},
    {&LinkSettings::TrioReserved2, 0, 0, 0, NoLimit32},
    {&LinkSettings::TrioReserved3, 0, 0, 0, NoLimit32},
    {&LinkSettings::TableFillLines, 20, 1, 1, NoLimit16},
    {&LinkSettings::TableLeadLines, 15, 1, 1, NoLimit16},
}};

struct StoreTiming {
  LinkSettings& Link;
  double Value;
  void operator()(std::int32_t LinkSettings::*field) const { Link.*field = RoundToInt32(Value); }
  void operator()(std::int16_t LinkSettings::*field) const { Link.*field = RoundToInt16(Value); }
};

}  // namespace

void ReadLinkSwitches(std::string_view text, bool& linkEnabled, bool& logEnabled) {
  LineReader lines(text, {});
  const auto link = lines.Optional();
  const auto log = lines.Optional();
  linkEnabled = !link || UpperCase(AfterColon(*link)) != "FALSE";
  logEnabled = log && UpperCase(AfterColon(*log)) == "TRUE";
}

void ResetLinkTimings(LinkSettings& link) {
  for (const auto& line : TimingLines) {
    std::visit(StoreTiming{link, static_cast<double>(line.Default)}, line.Field);
  }
}

void ReadLinkTimings(std::string_view text, LinkSettings& link) {
  LineReader lines(text, {});
  for (const auto& row : TimingLines) {
    const auto line = lines.Optional();
    if (!line) break;
    const double value = LeadingNumber(AfterColon(*line));
    const bool tooLow = RoundToInt32(value) < row.Limit;
    const double kept = std::min(value, static_cast<double>(row.Most));
    std::visit(StoreTiming{link, tooLow ? row.Instead : kept}, row.Field);
  }
}

void FinishLinkTimings(LinkSettings& link) {
  link.PollResumeMs = std::max(link.PollResumeMs, link.PollPeriodMs);
}

void ReadPortFile(std::string_view text, std::string_view path, LinkSettings& link,
                  bool& linkEnabled) {
  LineReader lines(text, path);
  lines.Required();  // the title
  link.CommPort = RoundToInt16(LeadingNumber(AfterColon(lines.Required())));
  link.PortSettings = AfterColon(lines.Required());
  for (int field = 0; field < 3; ++field) {
    link.PortSettings += ',';
    link.PortSettings += AfterColon(lines.Required());
  }
  const HandshakeWords handshake = ReadHandshakeWords(AfterColon(lines.Required()));
  link.Handshaking = handshake.Handshaking;
  link.DtrKeyword = handshake.Dtr;
  if (link.CommPort < 1) linkEnabled = false;
}

}  // namespace torvane::core
