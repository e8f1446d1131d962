// What the office sends, as its line lets it go: at a rate, in chunks, with pauses.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace torvane::simulator {

class OfficeOutbox {
 public:
  /// Bits per second, ten to a byte; 0 for a line that takes no time.
  void SetBaud(double baud) { bytesPerMs_ = baud / 10 / 1000; }

  /// Puts bytes after those that wait, in chunks of `chunk` (0: all at once) with `pauseMs` before
  /// each but the first.
  void Put(std::string_view bytes, std::size_t chunk = 0, double pauseMs = 0);
  /// Drops all that has not gone.
  void Clear();
  [[nodiscard]] bool Empty() const { return parts_.empty(); }
  [[nodiscard]] std::size_t Waiting() const;

  /// While held, nothing goes.
  void Hold(bool held) { held_ = held; }
  [[nodiscard]] bool Held() const { return held_; }

  void Advance(double ms);
  /// The bytes whose time has come.
  [[nodiscard]] std::string Take();
  /// Ms until there are some, 0 when there are; nothing when none wait, or all are held.
  [[nodiscard]] std::optional<double> DueInMs() const;

 private:
  struct Part {
    double WaitMs = 0;
    std::string Bytes;
  };

  std::deque<Part> parts_;
  double bytesPerMs_ = 0;
  double budget_ = 0;  ///< bytes that the time past has room for
  bool held_ = false;
};

}  // namespace torvane::simulator
