#include <windows.h>

#include <mutex>
#include <thread>

#include "port/user_interface.h"
#include "tagfile/folder_lock.h"
#include "tagfile/messages.h"

// Implementation details: as on POSIX, the process opens the lock file once for its first
// holder and counts nested holders under a recursive mutex; LockFileEx guards the file.

namespace quorva {
namespace {

std::recursive_timed_mutex threads;
int depth = 0;
HANDLE lock_handle = INVALID_HANDLE_VALUE;
std::string holder_description = "quorva";

}  // namespace

void FolderLock::set_holder_description(const std::string& description) {
  std::lock_guard<std::recursive_timed_mutex> guard(threads);
  holder_description = description;
}

FolderLock::FolderLock(std::chrono::milliseconds notice_after,
                       std::chrono::milliseconds give_up_after) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point start = Clock::now();
  if (!threads.try_lock_until(start + give_up_after)) {
    status_ = Status::failure(lock_failure_message("another task of this program"));
    Mostra_popup(status_.message());
    return;
  }
  if (depth++ > 0) return;
  lock_handle =
      CreateFileA(kLockFile, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                  nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (lock_handle == INVALID_HANDLE_VALUE) return;
  bool noticed = false;
  OVERLAPPED whole{};
  while (!LockFileEx(lock_handle, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                     &whole)) {
    const Clock::duration waited = Clock::now() - start;
    if (waited >= give_up_after) {
      status_ = Status::failure(lock_failure_message("another process"));
      Mostra_popup(status_.message());
      CloseHandle(lock_handle);
      lock_handle = INVALID_HANDLE_VALUE;
      --depth;
      threads.unlock();
      return;
    }
    if (!noticed && waited >= notice_after) {
      ui().set_status(lock_wait_message("another process"));
      noticed = true;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
}

FolderLock::~FolderLock() {
  if (!status_.ok()) return;
  if (--depth == 0 && lock_handle != INVALID_HANDLE_VALUE) {
    OVERLAPPED whole{};
    UnlockFileEx(lock_handle, 0, 1, 0, &whole);
    CloseHandle(lock_handle);
    lock_handle = INVALID_HANDLE_VALUE;
  }
  threads.unlock();
}

}  // namespace quorva
