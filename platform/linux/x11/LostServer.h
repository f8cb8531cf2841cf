#pragma once

namespace pellar::LostServer {

// Says once, in one sentence on standard error, that the X server is gone, and ends the process with code 1.
// Nothing is torn down: every file is written whole at the moment it changes.
[[noreturn]] void endProcess();

// Has Xlib, which the toolkit uses, end the process like this instead of in its own words.
void watchXlib();

}  // namespace pellar::LostServer
