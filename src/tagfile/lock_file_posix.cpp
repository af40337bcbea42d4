#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "tagfile/folder_lock.h"
#include "tagfile/lock_file.h"

namespace quorva::lock_file {
namespace {

int fd = -1;

}  // namespace

bool open() {
  fd = ::open(kLockFile, O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  return fd >= 0;
}

Attempt try_lock() {
  if (::flock(fd, LOCK_EX | LOCK_NB) == 0) return Attempt::kTaken;
  return errno == EWOULDBLOCK || errno == EINTR ? Attempt::kBusy : Attempt::kUnsupported;
}

std::string holder() {
  char buffer[256];
  const ssize_t n = ::pread(fd, buffer, sizeof buffer - 1, 0);
  std::string text = n > 0 ? std::string(buffer, static_cast<size_t>(n)) : "";
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
  return text.empty() ? "another process" : text;
}

void describe(const std::string& description) {
  const std::string text = "process " + std::to_string(::getpid()) + " (" + description + ")\n";
  // Written over the last holder's text and cut only where that was longer: emptying the
  // file first costs the file system a block freed and taken again at every command.
  if (::pwrite(fd, text.data(), text.size(), 0) != static_cast<ssize_t>(text.size())) return;
  struct stat st {};
  if (::fstat(fd, &st) == 0 && st.st_size > static_cast<off_t>(text.size()))
    (void)::ftruncate(fd, static_cast<off_t>(text.size()));
  // The description is a courtesy to whoever waits: a failure is not reported.
}

void close() {
  if (fd < 0) return;
  ::flock(fd, LOCK_UN);
  ::close(fd);
  fd = -1;
}

}  // namespace quorva::lock_file
