// Motion that lasts as long as a key is held: the words that start it, and the stop that ends it.
#pragma once

#include <cstdint>
#include <string_view>

#include "link/Trio.h"

namespace torvane::link {

/// A hold is one press of a jog key, from its going down to whatever ends it: the key let go, the
/// finger sliding off, another screen, a lock, a dialog, the window losing its focus.
///
///   const auto hold = jog.BeginHold();       // key down
///   if (refused with a dialog) return;       // the hold may have ended while the dialog showed
///   jog.Jog(hold, CommandLine::JogXPlus);    // nothing for a hold that has ended
///   ...
///   jog.Stop();                              // key up, or any other end
///
/// No jog word is ever the last word. The stop, "VR(48)=0", takes away the words that still wait
/// for the line and overtakes all that waits there, the recovery of a failed exchange too; only the
/// exchange that has the line goes before it. A word whose exchange fails ends its hold, as it may
/// have reached the machine. A stop that fails is repeated as soon as the line answers anybody
/// again, until the controller has taken it; a word never is. Where the program ends by a fault,
/// with a word that no stop has answered, the stop is written as the last line of all.
class JogLine {
 public:
  using Hold = std::uint64_t;

  explicit JogLine(Trio& trio) : trio_(trio) {}
  ~JogLine();
  JogLine(const JogLine&) = delete;
  JogLine& operator=(const JogLine&) = delete;

  /// A key goes down. Any other hold has ended with that, without a stop of its own: the word that
  /// follows takes its place at the controller.
  [[nodiscard]] Hold BeginHold() { return ++hold_; }
  [[nodiscard]] bool Holds(Hold hold) const { return hold_ == hold; }

  /// Sends a word for a hold under way, and waits for its prompt. May be called again while the
  /// key repeats.
  void Jog(Hold hold, std::string_view word);

  /// Ends whatever hold is under way. Returns at once; the stop is on its way.
  void Stop();

  /// A stop is under way, or waits for the line to come back.
  [[nodiscard]] bool Stopping() const { return stopping_; }

 private:
  void SendStops();

  Trio& trio_;
  Hold hold_ = 0;
  std::uint64_t words_ = 0;    ///< that have been on their way
  std::uint64_t stopped_ = 0;  ///< of these, how many a stop has followed that the controller took
  bool owed_ = false;
  bool stopping_ = false;
};

}  // namespace torvane::link
