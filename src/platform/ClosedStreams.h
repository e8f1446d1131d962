// The three standard streams of a process that was started without some of them.
#pragma once

namespace torvane::platform {

/// Puts nothing in the place of a standard stream that was closed before the start; the first thing
/// that a main does. Otherwise the number of that stream would be the next device's that is opened,
/// and what is said to somebody would go to the controller. Writing to it fails, as before.
void FillClosedStreams();

}  // namespace torvane::platform
