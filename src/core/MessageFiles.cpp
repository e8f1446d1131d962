#include "core/MessageFiles.h"

#include "core/ConfigText.h"
#include "core/General.h"

namespace torvane::core {

void ReadIoMessages(std::string_view text, IoMessageTable& messages) {
  messages.fill({});
  LineReader lines(text, {});
  while (const auto row = lines.Row()) {
    const auto comma = row->find(',');
    if (comma == std::string_view::npos) return;
    const auto code = RoundToInt32(LeadingNumber(row->substr(0, comma)));
    if (code < 1 || code > 64) return;
    messages[static_cast<std::size_t>(code)] = Trim(row->substr(comma + 1));
  }
}

void ReadLogicMessages(std::string_view text, LogicMessageTable& messages) {
  messages.fill({});
  LineReader lines(text, {});
  while (const auto row = lines.Row()) {
    const auto first = row->find(',');
    if (first == std::string_view::npos) return;
    const auto second = row->find(',', first + 1);
    if (second == std::string_view::npos) return;
    const auto bit = TruncateToInt32(LeadingNumber(row->substr(0, first)));
    if (bit < 0 || bit > 31) return;
    messages[static_cast<std::size_t>(bit)] = Trim(row->substr(first + 1, second - first - 1));
  }
}

}  // namespace torvane::core
