#pragma once

#include <chrono>
#include <string>

#include "port/status.h"

namespace quorva {

/// The lock file of the working folder; its text names the process that holds it.
constexpr const char* kLockFile = "temp/quorva.lock";

/// One writer at a time in the working folder: held around every read-modify-write of its
/// files and around GO, so the desktop application, the command line and a second command
/// line never lose each other's changes. Advisory (a lock on kLockFile) between processes,
/// a mutex between the threads of one process; the thread that holds it may take it again.
/// A folder without temp/ has nothing to guard and is locked between threads only.
class FolderLock {
 public:
  /// Waits for the lock. After `notice_after` it says, through the port's status text,
  /// which process holds it; after `give_up_after` it stops waiting and fails.
  explicit FolderLock(std::chrono::milliseconds notice_after = std::chrono::seconds(3),
                      std::chrono::milliseconds give_up_after = std::chrono::seconds(60));
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

  /// Done when the lock is held; else the message the person was given.
  const Status& status() const { return status_; }
  bool held() const { return status_.ok(); }

  /// How this process is named to a process that waits for it ("quorva generate").
  static void set_holder_description(const std::string& description);

 private:
  Status status_;
};

/// The message of a lock that could not be taken, naming its holder.
std::string lock_failure_message(const std::string& holder);
/// The status text shown while waiting.
std::string lock_wait_message(const std::string& holder);

}  // namespace quorva
