// Faults of the line, on demand: each with a rate, drawn from a seeded sequence.
#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace torvane::simulator {

enum class FaultKind {
  Lose,     ///< a byte, either way, goes missing; per byte
  Noise,    ///< a byte that nobody sent comes in front of one of an answer; per byte
  Pieces,   ///< an answer comes in many pieces with pauses between; per line
  Percent,  ///< a good line is refused with "%" and not carried out; per line
  Silence,  ///< a line is never answered nor carried out; per line
  Late,     ///< an answer comes late; per line
  Count
};

struct FaultSettings {
  std::array<double, static_cast<std::size_t>(FaultKind::Count)> Rates{};  ///< 0 to 1
  double LateSeconds = 2;
  double PieceSeconds = 0.005;  ///< longest pause between pieces
  std::uint32_t Seed = 1;

  [[nodiscard]] double& Rate(FaultKind kind) { return Rates[static_cast<std::size_t>(kind)]; }
};

/// Sets what "KIND=RATE" says: lose, noise, pieces, percent, silence or late, and a rate from 0
/// to 1. False, with nothing changed, for any other text.
bool ParseFault(std::string_view text, FaultSettings& settings);

/// The same seed gives the same faults.
class FaultSource {
 public:
  explicit FaultSource(const FaultSettings& settings)
      : settings_(settings), random_(settings.Seed) {}

  /// True as often as the rate of the kind says. Draws nothing at a rate of 0.
  bool Strikes(FaultKind kind);
  /// From 0 up to below 1.
  double Share();
  /// The bytes that are left of `bytes`, with what noise adds to them.
  [[nodiscard]] std::string Spoil(std::string_view bytes, bool noise);

  [[nodiscard]] const FaultSettings& Settings() const { return settings_; }

 private:
  FaultSettings settings_;
  std::mt19937 random_;
};

}  // namespace torvane::simulator
