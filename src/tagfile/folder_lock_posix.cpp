#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <mutex>
#include <thread>

#include "port/user_interface.h"
#include "tagfile/folder_lock.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"

// Implementation details: flock() locks belong to an open file description, so a second
// open of the lock file in the same process would wait for itself; the process therefore
// opens it once, when its first holder takes the lock, and counts the nested holders under
// a recursive mutex that also keeps its other threads out.

namespace quorva {
namespace {

std::recursive_timed_mutex threads;
int depth = 0;
int lock_fd = -1;
std::string holder_description = "quorva";

std::string current_holder(int fd) {
  char buffer[256];
  ssize_t n = ::pread(fd, buffer, sizeof buffer - 1, 0);
  std::string text = n > 0 ? std::string(buffer, static_cast<size_t>(n)) : "";
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
  return text.empty() ? "another process" : text;
}

void describe_self(int fd) {
  const std::string text =
      "process " + std::to_string(::getpid()) + " (" + holder_description + ")\n";
  if (::ftruncate(fd, 0) == 0) {
    ssize_t written = ::pwrite(fd, text.data(), text.size(), 0);
    (void)written;  // the description is a courtesy to whoever waits
  }
}

}  // namespace

void FolderLock::set_holder_description(const std::string& description) {
  std::lock_guard<std::recursive_timed_mutex> guard(threads);
  holder_description = description;
}

FolderLock::FolderLock(std::chrono::milliseconds notice_after,
                       std::chrono::milliseconds give_up_after) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point start = Clock::now();
  if (!threads.try_lock_for(notice_after)) {
    ui().set_status(lock_wait_message("another task of this program"));
    if (!threads.try_lock_until(start + give_up_after)) {
      status_ = Status::failure(lock_failure_message("another task of this program"));
      Mostra_popup(status_.message());
      return;
    }
  }
  if (depth++ > 0) return;
  lock_fd = ::open(kLockFile, O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  if (lock_fd < 0) return;  // no temp/: nothing on disk to guard
  bool noticed = false;
  while (::flock(lock_fd, LOCK_EX | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK && errno != EINTR) break;  // no locking here: go on unguarded
    const Clock::duration waited = Clock::now() - start;
    if (waited >= give_up_after) {
      status_ = Status::failure(lock_failure_message(current_holder(lock_fd)));
      Mostra_popup(status_.message());
      Scrivi_log_dettaglio("Cartella di lavoro bloccata da: ", current_holder(lock_fd),
                           static_cast<int>(kNoNumber), static_cast<int>(kNoNumber),
                           LogKind::kError);
      ::close(lock_fd);
      lock_fd = -1;
      --depth;
      threads.unlock();
      return;
    }
    if (!noticed && waited >= notice_after) {
      ui().set_status(lock_wait_message(current_holder(lock_fd)));
      noticed = true;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  describe_self(lock_fd);
}

FolderLock::~FolderLock() {
  if (!status_.ok()) return;
  if (--depth == 0 && lock_fd >= 0) {
    ::flock(lock_fd, LOCK_UN);
    ::close(lock_fd);
    lock_fd = -1;
  }
  threads.unlock();
}

}  // namespace quorva
