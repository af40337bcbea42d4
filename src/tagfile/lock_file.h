#pragma once

#include <string>

// The operating system's side of FolderLock: the lock file itself. Used by FolderLock alone,
// only ever by the thread that holds FolderLock's mutex.

namespace quorva::lock_file {

/// Opens kLockFile, creating it; false when it cannot be (no temp/: nothing to guard).
bool open();

enum class Attempt { kTaken, kBusy, kUnsupported };
/// Tries to take the lock without waiting.
Attempt try_lock();

/// Who holds the lock, as its holder described itself; "another process" when unknown.
std::string holder();
/// Describes this process to whoever waits: "process PID (description)".
void describe(const std::string& description);

/// Releases the lock if taken and closes the file.
void close();

}  // namespace quorva::lock_file
