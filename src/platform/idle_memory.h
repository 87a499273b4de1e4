#pragma once

namespace ostrova::platform {

/// Gives back to the system what a process that waits for days has no use for: free heap, and the
/// pages of program code that it has touched so far. The code is read again, from the system's page
/// cache or the file, when it runs next. Call it before a long wait, with no other thread running.
/// Does nothing where the system knows no such thing.
void ReleaseIdleMemory();

}  // namespace ostrova::platform
