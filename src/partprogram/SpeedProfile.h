// How long a path takes that is run without a stop, when the machine cannot change its speed at
// once.
#pragma once

#include <span>

namespace torvane::partprogram {

/// One element of such a path.
struct SpeedLeg {
  double Length = 0;   ///< mm, above 0; one of no length takes no time
  double Speed = 0;    ///< mm/s, above 0: never faster than this
  double Seconds = 0;  ///< what it takes, set by TimeLegs
};

/// Sets the seconds of all legs, from rest at the start of the first to rest at the end of the
/// last. Within the path a joint is passed at the lower speed of its two legs, or at what can be
/// reached and braked down from. `acceleration` mm/s², 0: every speed is there at once.
///
/// From v to w over a length s at the acceleration a: w² = v² + 2as. A leg from v0 to v1 has its
/// highest speed p at p² = as + (v0² + v1²) / 2, where it cannot reach its own.
void TimeLegs(std::span<SpeedLeg> legs, double acceleration);

}  // namespace torvane::partprogram
