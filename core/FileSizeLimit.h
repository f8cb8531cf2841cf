#pragma once

namespace pellar::FileSizeLimit {

// A write beyond the largest size that the process may give a file (ulimit -f) is an error from now on; the
// system would end the process. Programs started later have the system's behaviour. Called once, at the
// start.
void makeAnError();

}  // namespace pellar::FileSizeLimit
