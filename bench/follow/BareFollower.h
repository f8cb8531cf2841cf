#pragma once

namespace pellar::bench {

// The least a follower can do, as the measure of the rest: an override-redirect window over the active
// window's frame, moved from ConfigureNotify and drawn, one rectangle, on a change of title. Runs until the X
// server or its parent is gone. Returns the exit code.
int runBareFollower();

}  // namespace pellar::bench
