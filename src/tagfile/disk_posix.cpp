#include <fcntl.h>
#include <stdio.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <memory>

#include "tagfile/disk.h"

// Implementation details: the temporary file is created next to the target (a rename is
// atomic only within one file system) with O_EXCL under a name no other writer uses, and
// is removed on every failure path. fdatasync before the rename makes sure that a crash
// after it finds the new contents, not an empty file under the old name.
// A replacement begun with begin_replace (a generated program) writes instead over the
// file the previous replacement put aside, .NAME.prev, and exchanges it with the file in
// one rename: its blocks are already there, so neither their allocation nor the freeing of
// the old file's blocks is waited for, and the previous contents stay aside until the next
// replacement. The file put aside is locked while it is written; when it is taken, or the
// system cannot exchange two names, the temporary file is used as for any other file.

namespace quorva {
namespace {

std::string reason() {
  return std::strerror(errno);
}

bool write_all(int fd, std::string_view text) {
  while (!text.empty()) {
    ssize_t n = ::write(fd, text.data(), text.size());
    if (n < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    text.remove_prefix(static_cast<size_t>(n));
  }
  return true;
}

// A hidden file beside `path`: .NAME + suffix in the same folder.
std::string hidden_beside(const std::string& path, const std::string& suffix) {
  const size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "" : path.substr(0, slash + 1);
  const std::string base = slash == std::string::npos ? path : path.substr(slash + 1);
  return folder + "." + base + suffix;
}

std::string temporary_name(const std::string& path) {
  static std::atomic<unsigned> counter{0};
  return hidden_beside(
      path, ".tmp" + std::to_string(::getpid()) + "_" + std::to_string(counter.fetch_add(1)));
}

// Reads into buffer[0, size) until the end or the buffer is full; the bytes read, -1 on
// an error (errno tells).
ssize_t read_up_to(int fd, char* buffer, std::size_t size) {
  std::size_t filled = 0;
  while (filled < size) {
    ssize_t n = ::read(fd, buffer + filled, size - filled);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return -1;
    if (n == 0) break;
    filled += static_cast<std::size_t>(n);
  }
  return static_cast<ssize_t>(filled);
}

// The file a replacement of `path` puts its previous contents in: .NAME.prev beside it.
std::string aside_name(const std::string& path) {
  return hidden_beside(path, ".prev");
}

class PosixReplacement : public Replacement {
 public:
  PosixReplacement(const std::string& path, bool put_aside) : path_(path) {
    if (path.empty()) {
      refuse(ENOENT);
      return;
    }
    struct stat old {};
    const bool existed = ::stat(path.c_str(), &old) == 0;
    if (existed && S_ISDIR(old.st_mode)) {
      refuse(EISDIR);
      return;
    }
    // A rename would replace a read-only file that an open for writing refuses: a file
    // marked read-only stays so, even for root, who is refused nothing else.
    if (existed && ((old.st_mode & 0222) == 0 || ::access(path.c_str(), W_OK) != 0)) {
      refuse(EACCES);
      return;
    }
#ifdef RENAME_EXCHANGE
    if (put_aside && existed && open_aside(old)) return;
#else
    (void)put_aside;
#endif
    temporary_ = temporary_name(path);
    fd_ = ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd_ < 0) {
      refuse(errno);
      temporary_.clear();
      return;
    }
    if (existed && ::fchmod(fd_, old.st_mode & 07777) != 0) code_ = errno;
  }

  ~PosixReplacement() override {
    if (fd_ >= 0) ::close(fd_);
    if (!temporary_.empty()) ::unlink(temporary_.c_str());
  }

  PosixReplacement(const PosixReplacement&) = delete;
  PosixReplacement& operator=(const PosixReplacement&) = delete;

  void write(std::string_view text) override {
    if (fd_ < 0 || code_ != 0) return;
    if (!write_all(fd_, text)) code_ = errno;
  }

  FileWrite commit() override {
    FileWrite result;
    if (fd_ < 0) {
      result.status = FileWrite::kOpenFailed;
      result.error = std::strerror(code_);
      return result;
    }
    // Written over an older text: what lies past the new end goes.
    if (!aside_.empty() && code_ == 0) {
      const off_t end = ::lseek(fd_, 0, SEEK_CUR);
      if (end < 0 || ::ftruncate(fd_, end) != 0) code_ = errno;
    }
    if (code_ == 0 && ::fdatasync(fd_) != 0) code_ = errno;
    if (!aside_.empty()) return exchange();
    if (::close(fd_) != 0 && code_ == 0) code_ = errno;
    fd_ = -1;
    if (code_ == 0 && ::rename(temporary_.c_str(), path_.c_str()) != 0) code_ = errno;
    if (code_ == 0) {
      temporary_.clear();
      return result;
    }
    result.status = FileWrite::kWriteFailed;
    result.error = std::strerror(code_);
    return result;
  }

 private:
  void refuse(int code) {
    code_ = code;
  }

#ifdef RENAME_EXCHANGE
  // Opens the file put aside for writing from its start, locked against another writer.
  bool open_aside(const struct stat& old) {
    const std::string aside = aside_name(path_);
    const int fd = ::open(aside.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666);
    if (fd < 0) return false;
    struct stat st {};
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0 || ::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode) ||
        ::fchmod(fd, old.st_mode & 07777) != 0) {
      ::close(fd);
      return false;
    }
    fd_ = fd;
    aside_ = aside;
    return true;
  }
#endif

  // The new text takes the file's name and the file goes aside, in one rename; a file
  // system that cannot exchange names gets the plain rename.
  FileWrite exchange() {
    FileWrite result;
#ifdef RENAME_EXCHANGE
    if (code_ == 0 &&
        ::renameat2(AT_FDCWD, aside_.c_str(), AT_FDCWD, path_.c_str(), RENAME_EXCHANGE) != 0) {
      if (errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP) {
        if (::rename(aside_.c_str(), path_.c_str()) != 0) code_ = errno;
      } else {
        code_ = errno;
      }
    }
#endif
    if (::close(fd_) != 0 && code_ == 0) code_ = errno;  // the lock goes with it
    fd_ = -1;
    if (code_ == 0) return result;
    result.status = FileWrite::kWriteFailed;
    result.error = std::strerror(code_);
    return result;
  }

  std::string path_;
  std::string aside_;
  std::string temporary_;
  int fd_ = -1;
  int code_ = 0;
};

// Opens a file for reading, refusing a folder; -1 with `status` and `error` set otherwise.
template <typename Result>
int open_for_reading(const std::string& path, Result& result, struct stat& st) {
  int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) {
    result.status = errno == ENOENT || errno == ENOTDIR ? FileRead::kMissing : FileRead::kFailed;
    result.error = reason();
    return -1;
  }
  if (::fstat(fd, &st) != 0) st = {};
  if (S_ISDIR(st.st_mode)) {
    ::close(fd);
    result.status = FileRead::kFailed;
    result.error = std::strerror(EISDIR);
    return -1;
  }
  return fd;
}

class PosixDisk : public Disk {
 public:
  FileRead read(const std::string& path) override {
    FileRead result;
    struct stat st {};
    const int fd = open_for_reading(path, result, st);
    if (fd < 0) return result;
    // Read straight into the text, one byte more than the size so the end is seen in
    // the same call; a file that grew meanwhile is read on in larger steps.
    std::size_t filled = 0;
    result.text.resize(st.st_size > 0 ? static_cast<std::size_t>(st.st_size) + 1 : 4096);
    for (;;) {
      if (filled == result.text.size()) result.text.resize(result.text.size() * 2);
      ssize_t n = ::read(fd, result.text.data() + filled, result.text.size() - filled);
      if (n < 0 && errno == EINTR) continue;
      if (n < 0) {
        result.status = FileRead::kFailed;
        result.error = reason();
        result.text.clear();
        ::close(fd);
        return result;
      }
      if (n == 0) break;
      filled += static_cast<std::size_t>(n);
    }
    result.text.resize(filled);
    ::close(fd);
    result.status = FileRead::kRead;
    return result;
  }

  FileRead read_head(const std::string& path, std::size_t bytes) override {
    FileRead result;
    struct stat st {};
    const int fd = open_for_reading(path, result, st);
    if (fd < 0) return result;
    result.text.resize(bytes);
    const ssize_t n = read_up_to(fd, result.text.data(), bytes);
    const int code = errno;
    ::close(fd);
    if (n < 0) {
      result.status = FileRead::kFailed;
      result.error = std::strerror(code);
      result.text.clear();
      return result;
    }
    result.text.resize(static_cast<std::size_t>(n));
    result.status = FileRead::kRead;
    return result;
  }

  // The buffer is left unset and backed in one call before the read fills it: for a large
  // template, zeroing it and faulting its pages in one by one cost more than the read.
  FileBytes read_bytes(const std::string& path) override {
    FileBytes result;
    struct stat st {};
    const int fd = open_for_reading(path, result, st);
    if (fd < 0) return result;
    const std::size_t room = st.st_size > 0 ? static_cast<std::size_t>(st.st_size) + 1 : 0;
    std::shared_ptr<char[]> buffer = std::make_shared_for_overwrite<char[]>(room);
    prefault(buffer.get(), room);
    const ssize_t n = read_up_to(fd, buffer.get(), room);
    const int code = errno;
    ::close(fd);
    if (n < 0) {
      result.status = FileRead::kFailed;
      result.error = std::strerror(code);
      return result;
    }
    // Empty as stat said, or grown meanwhile: the plain read sees it to its end.
    if (static_cast<std::size_t>(n) == room) return Disk::read_bytes(path);
    result.status = FileRead::kRead;
    result.data = std::move(buffer);
    result.size = static_cast<std::size_t>(n);
    return result;
  }

  FileWrite replace(const std::string& path, std::string_view text) override {
    PosixReplacement replacement(path, false);
    replacement.write(text);
    return replacement.commit();
  }

  std::unique_ptr<Replacement> begin_replace(const std::string& path) override {
    return std::make_unique<PosixReplacement>(path, true);
  }

  bool append(const std::string& path, std::string_view text, std::string& error) override {
    int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (fd < 0) {
      error = reason();
      return false;
    }
    bool ok = write_all(fd, text);
    if (!ok) error = reason();
    if (::close(fd) != 0 && ok) {
      ok = false;
      error = reason();
    }
    return ok;
  }

  bool remove(const std::string& path, std::string& error) override {
    if (::unlink(path.c_str()) == 0) return true;
    error = reason();
    return false;
  }

  bool exists(const std::string& path) override {
    if (path.empty()) return false;
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return false;
    ::close(fd);
    return true;
  }
};

}  // namespace

void prefault(void* begin, std::size_t bytes) {
#ifdef MADV_POPULATE_WRITE
  static const std::size_t page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  const auto start = reinterpret_cast<std::uintptr_t>(begin);
  const std::uintptr_t first = (start + page - 1) & ~(page - 1);
  const std::uintptr_t last = (start + bytes) & ~(page - 1);
  // Small buffers and older kernels (EINVAL) go on faulting page by page.
  if (last > first && last - first >= 16 * page)
    (void)::madvise(reinterpret_cast<void*>(first), last - first, MADV_POPULATE_WRITE);
#else
  (void)begin;
  (void)bytes;
#endif
}

Disk& real_disk() {
  static PosixDisk disk;
  return disk;
}

}  // namespace quorva
