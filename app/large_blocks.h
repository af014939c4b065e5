#pragma once

namespace fleetor {

/// From here on a freed block of a megabyte or more goes back to the system at once, whichever thread had it.
/// glibc would keep up to 64 MB a thread after a few large answers. Before other threads are started.
void returnLargeBlocks();

}  // namespace fleetor
