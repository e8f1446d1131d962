// Control.cnc, Trio.cfg and Trio.cms: switches, timings and port of the controller link.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/LinkSettings.h"

namespace torvane::core {

/// The two lines of Control.cnc. An empty text is as good as no file: link on, trace off.
void ReadLinkSwitches(std::string_view text, bool& linkEnabled, bool& logEnabled);

/// The timings as they are without Trio.cfg, before FinishLinkTimings.
void ResetLinkTimings(LinkSettings& link);

/// Upper limits of Trio.cfg's times, ms; a larger value becomes its limit. A poll slower than a
/// second starves a running machine of table lines, and a delay longer than 50 ms after each line
/// keeps the screens locked for most of every tick; ten minutes are longer than any reply takes.
inline constexpr std::int32_t LongestPollMs = 1000;
inline constexpr std::int32_t LongestReplyMs = 600000;
inline constexpr std::int32_t LongestCommandDelayMs = 50;

/// The nine lines of Trio.cfg, ms and record counts; a shorter text leaves the later ones.
void ReadLinkTimings(std::string_view text, LinkSettings& link);

/// The last step, file or no file: the first delay is never below the period.
void FinishLinkTimings(LinkSettings& link);

/// The seven lines of Trio.cms; a shorter text is a RuntimeFault that names `path`. A port number
/// below 1 clears `linkEnabled`, which is otherwise left.
void ReadPortFile(std::string_view text, std::string_view path, LinkSettings& link,
                  bool& linkEnabled);

}  // namespace torvane::core
