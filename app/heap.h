#pragma once

namespace fleetor {

/// From here on a freed block of a megabyte or more is returned to the system at once. Otherwise glibc keeps
/// up to 64 MB a thread after a few large answers. Call it before other threads are started.
void returnLargeBlocks();

/// Returns what is free between the blocks in use to the system. Takes some milliseconds. Any thread.
void returnFreeMemory();

}  // namespace fleetor
