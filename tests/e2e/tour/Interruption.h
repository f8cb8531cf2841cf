#pragma once

namespace pellar::e2e {

// From now on a request to end (Ctrl-C, a closed terminal, a reader that went away) is noted rather than
// obeyed at once, so that the desktop can be taken down in order. A second one ends the program on the spot.
void noteInterruptions();

// Whether there was such a request.
[[nodiscard]] bool interrupted();

}  // namespace pellar::e2e
