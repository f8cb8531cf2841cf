#pragma once

namespace pellar::StartUpMemory {

// Gives back what only starting needed: code pages of the program and its libraries, which the system reads
// again from the file should one be wanted after all, and freed heap. Costs about a millisecond.
void release();

}  // namespace pellar::StartUpMemory
