#include "simulator/Faults.h"

#include <charconv>

namespace torvane::simulator {

namespace {

struct FaultName {
  std::string_view Name;
  FaultKind Kind;
};

constexpr FaultName FaultNames[] = {
    {"lose", FaultKind::Lose},       {"noise", FaultKind::Noise},     {"pieces", FaultKind::Pieces},
    {"percent", FaultKind::Percent}, {"silence", FaultKind::Silence}, {"late", FaultKind::Late},
};

}  // namespace

bool ParseFault(std::string_view text, FaultSettings& settings) {
  const auto equals = text.find('=');
  if (equals == std::string_view::npos) return false;
  const std::string_view number = text.substr(equals + 1);
  double rate = 0;
  const auto [end, fault] = std::from_chars(number.data(), number.data() + number.size(), rate);
  if (fault != std::errc{} || end != number.data() + number.size()) return false;
  if (!(rate >= 0 && rate <= 1)) return false;
  for (const auto& entry : FaultNames) {
    if (entry.Name != text.substr(0, equals)) continue;
    settings.Rate(entry.Kind) = rate;
    return true;
  }
  return false;
}

double FaultSource::Share() { return static_cast<double>(random_()) / 4294967296.0; }

bool FaultSource::Strikes(FaultKind kind) {
  const double rate = settings_.Rate(kind);
  return rate > 0 && Share() < rate;
}

std::string FaultSource::Spoil(std::string_view bytes, bool noise) {
  constexpr double ByteValues = 256;
  std::string left;
  left.reserve(bytes.size());
  for (const char c : bytes) {
    if (noise && Strikes(FaultKind::Noise)) left += static_cast<char>(Share() * ByteValues);
    if (!Strikes(FaultKind::Lose)) left += c;
  }
  return left;
}

}  // namespace torvane::simulator
