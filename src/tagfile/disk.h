#pragma once

#include <string>
#include <string_view>

namespace quorva {

/// What reading a whole file found. A missing file is an outcome of its own: most tag
/// files are optional, while a file that exists but cannot be read is a failure.
struct FileRead {
  enum Status { kRead, kMissing, kFailed };
  Status status = kMissing;
  std::string text;   ///< the bytes, when read
  std::string error;  ///< the platform's reason, when missing or failed
};

/// How replacing a file failed: its temporary could not be made (the folder is missing or
/// protected), or writing, flushing or renaming it failed (a full disk).
struct FileWrite {
  enum Status { kDone, kOpenFailed, kWriteFailed };
  Status status = kDone;
  std::string error;  ///< the platform's reason, when not done
  bool ok() const { return status == kDone; }
};

/// The store's side effects on the disk, behind one small interface so that a test can put
/// a disk that fills up or refuses writes in place of the real one.
class Disk {
 public:
  virtual ~Disk() = default;

  virtual FileRead read(const std::string& path) = 0;
  /// Replaces the file whole: the text is written beside it under a temporary name, flushed
  /// to the disk, then renamed over it, so a reader sees the old file or the new one and a
  /// failure leaves the old one as it was. An existing file keeps its permissions.
  virtual FileWrite replace(const std::string& path, std::string_view text) = 0;
  /// Appends to the file, creating it; for logs only, which need no atomicity.
  virtual bool append(const std::string& path, std::string_view text, std::string& error) = 0;
  virtual bool remove(const std::string& path, std::string& error) = 0;
  virtual bool exists(const std::string& path) = 0;
};

/// The disk in use: the real one unless a test installed another.
Disk& disk();
/// The platform's disk.
Disk& real_disk();

/// Installs `replacement` for the life of this object.
class ScopedDisk {
 public:
  explicit ScopedDisk(Disk& replacement);
  ~ScopedDisk();
  ScopedDisk(const ScopedDisk&) = delete;
  ScopedDisk& operator=(const ScopedDisk&) = delete;

 private:
  Disk* previous_;
};

}  // namespace quorva
