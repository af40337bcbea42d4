#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>

#include "tagfile/disk.h"

// Implementation details: the temporary file is created next to the target (a rename is
// atomic only within one file system) with O_EXCL under a name no other writer uses, and
// is removed on every failure path. fdatasync before the rename makes sure that a crash
// after it finds the new contents, not an empty file under the old name.

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

std::string temporary_name(const std::string& path) {
  static std::atomic<unsigned> counter{0};
  const size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "" : path.substr(0, slash + 1);
  const std::string base = slash == std::string::npos ? path : path.substr(slash + 1);
  return folder + "." + base + ".tmp" + std::to_string(::getpid()) + "_" +
         std::to_string(counter.fetch_add(1));
}

class PosixDisk : public Disk {
 public:
  FileRead read(const std::string& path) override {
    FileRead result;
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
      result.status = errno == ENOENT || errno == ENOTDIR ? FileRead::kMissing : FileRead::kFailed;
      result.error = reason();
      return result;
    }
    struct stat st {};
    if (::fstat(fd, &st) == 0 && S_ISDIR(st.st_mode)) {
      ::close(fd);
      result.status = FileRead::kFailed;
      result.error = std::strerror(EISDIR);
      return result;
    }
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

  FileWrite replace(const std::string& path, std::string_view text) override {
    FileWrite result;
    auto fail = [&result](FileWrite::Status status, int code) {
      result.status = status;
      result.error = std::strerror(code);
      return result;
    };
    if (path.empty()) return fail(FileWrite::kOpenFailed, ENOENT);
    struct stat old {};
    const bool existed = ::stat(path.c_str(), &old) == 0;
    if (existed && S_ISDIR(old.st_mode)) return fail(FileWrite::kOpenFailed, EISDIR);
    // A rename would replace a read-only file that an open for writing refuses: a file
    // marked read-only stays so, even for root, who is refused nothing else.
    if (existed && ((old.st_mode & 0222) == 0 || ::access(path.c_str(), W_OK) != 0))
      return fail(FileWrite::kOpenFailed, EACCES);
    const std::string temporary = temporary_name(path);
    int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0) return fail(FileWrite::kOpenFailed, errno);
    int code = 0;
    if ((existed && ::fchmod(fd, old.st_mode & 07777) != 0) || !write_all(fd, text) ||
        ::fdatasync(fd) != 0)
      code = errno;
    if (::close(fd) != 0 && code == 0) code = errno;
    if (code == 0 && ::rename(temporary.c_str(), path.c_str()) != 0) code = errno;
    if (code == 0) return result;
    ::unlink(temporary.c_str());
    return fail(FileWrite::kWriteFailed, code);
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

Disk& real_disk() {
  static PosixDisk disk;
  return disk;
}

}  // namespace quorva
