#include "core/TransferFile.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

#include "core/ConfigText.h"
#include "core/General.h"
#include "core/PortText.h"

namespace torvane::core {

namespace {

constexpr std::size_t LongestCodeString = 65536;
constexpr double HighestReserved1 = 65535;

struct StartWord {
  std::string_view Word;
  StartMode Mode;
};

/// Searched from the first: a line that holds several words means the first of them here.
constexpr std::array<StartWord, 7> StartWords = {{{"AUTO", StartMode::Character},
                                                  {"FORCE", StartMode::Force},
                                                  {"IMMEDIATE", StartMode::Force},
                                                  {"EVENT", StartMode::Event},
                                                  {"DSR", StartMode::Dsr},
                                                  {"CTS", StartMode::Cts},
                                                  {"ANY", StartMode::AnyData}}};

StartMode ReadStartMode(std::string_view text) {
  const std::string words = UpperCase(text);
  const auto* const found =
      std::find_if(StartWords.begin(), StartWords.end(),
                   [&](const StartWord& row) { return HoldsWord(words, row.Word); });
  return found == StartWords.end() ? StartMode::Never : found->Mode;
}

/// The character of a decimal code; nothing where the text is empty or the code out of range.
std::optional<char> CharacterOf(std::string_view code) {
  if (Trim(code).empty()) return std::nullopt;
  const std::int32_t number = TruncateToInt32(LeadingNumber(code));
  if (number < 0 || number > std::numeric_limits<unsigned char>::max()) return std::nullopt;
  return static_cast<char>(static_cast<unsigned char>(number));
}

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

std::string ReadStartCharacter(std::string_view text) {
  if (text.empty()) return {};
  if (!IsDigit(text.front())) return std::string(text.substr(0, 1));
  const auto character = CharacterOf(text);
  return character ? std::string(1, *character) : std::string();
}

/// Cuts the text before the next comma off `rest`. False where no comma is left: `field` is all the
/// rest then.
bool TakeField(std::string_view& rest, std::string_view& field) {
  const auto comma = rest.find(',');
  field = rest.substr(0, comma);
  rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
  return comma != std::string_view::npos;
}

}  // namespace

std::string ReadCodeString(std::string_view text) {
  std::string joined;
  std::string_view count;
  std::string_view code;
  while (TakeField(text, count)) {
    const bool more = TakeField(text, code);
    const int times = std::max<int>(0, TruncateToInt16(LeadingNumber(count)));
    const auto room = LongestCodeString - joined.size();
    if (const auto character = CharacterOf(code)) {
      joined.append(std::min(static_cast<std::size_t>(times), room), *character);
    }
    if (!more) break;
  }
  return joined;
}

CharacterSet ReadCodeList(std::string_view text) {
  CharacterSet set;
  std::string_view code;
  for (bool more = true; more;) {
    more = TakeField(text, code);
    if (const auto character = CharacterOf(code)) set.Add(*character);
  }
  return set;
}

TransferSettings ReadTransferFile(std::string_view text) {
  LineReader lines(text, {});
  const auto value = [&lines] { return AfterColon(lines.Optional().value_or("")); };
  TransferSettings settings;
  value();  // the title
  settings.CommsPort = RoundToInt16(LeadingNumber(value()));
  settings.CommsSettings = value();
  for (int field = 0; field < 3; ++field) settings.CommsSettings.append(",").append(value());
  const HandshakeWords handshake = ReadHandshakeWords(value());
  settings.CommsHandshake = handshake.Handshaking;
  settings.CommsDtrKeyword = handshake.Dtr;
  settings.CommsStartMode = ReadStartMode(value());
  settings.CommsStartChar = ReadStartCharacter(value());
  settings.CommsPreamble = ReadCodeString(value());
  settings.CommsEndOfLine = ReadCodeString(value());
  settings.CommsPostamble = ReadCodeString(value());
  settings.CommsReceiveMark = ReadCodeString(value());
  settings.CommsSendFilter = ReadCodeList(value());
  settings.CommsReceiveFilter = ReadCodeList(value());
  settings.CommsReserved1 = RoundToInt32(std::clamp(LeadingNumber(value()), 0.0, HighestReserved1));
  settings.CommsReserved2 = RoundToInt32(LeadingNumber(value()));
  return settings;
}

}  // namespace torvane::core
