#pragma once

#include <cstddef>
#include <memory>
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

/// A whole file read into a buffer that views into it share (a template of many thousand
/// lines is split into views, not copied line by line).
struct FileBytes {
  FileRead::Status status = FileRead::kMissing;
  std::shared_ptr<const char[]> data;
  std::size_t size = 0;
  std::string error;  ///< the platform's reason, when missing or failed
  std::string_view text() const { return {data.get(), size}; }
};

/// How replacing a file failed: its temporary could not be made (the folder is missing or
/// protected), or writing, flushing or renaming it failed (a full disk).
struct FileWrite {
  enum Status { kDone, kOpenFailed, kWriteFailed };
  Status status = kDone;
  std::string error;  ///< the platform's reason, when not done
  bool ok() const { return status == kDone; }
};

/// A file being replaced whole, its text given piece by piece: nothing changes under its
/// name until commit(), which does what Disk::replace does with the whole text. Dropped
/// without a commit, it leaves the old file as it was.
class Replacement {
 public:
  virtual ~Replacement() = default;
  virtual void write(std::string_view text) = 0;
  virtual FileWrite commit() = 0;
};

/// The store's side effects on the disk, behind one small interface so that a test can put
/// a disk that fills up or refuses writes in place of the real one.
class Disk {
 public:
  virtual ~Disk() = default;

  virtual FileRead read(const std::string& path) = 0;
  /// The file's first `bytes` at most, the whole file when shorter: a header's look-up
  /// needs no more. By default read() cut short.
  virtual FileRead read_head(const std::string& path, std::size_t bytes);
  /// read() into a shared buffer. By default read()'s text, shared.
  virtual FileBytes read_bytes(const std::string& path);
  /// Replaces the file whole: the text is written beside it under a temporary name, flushed
  /// to the disk, then renamed over it, so a reader sees the old file or the new one and a
  /// failure leaves the old one as it was. An existing file keeps its permissions.
  virtual FileWrite replace(const std::string& path, std::string_view text) = 0;
  /// replace() for a text made as it is written, so that a long one need not be held
  /// whole. By default the pieces are kept and given to replace() by commit(). The real
  /// disk keeps the replaced contents aside (.NAME.prev, hidden beside the file) and writes
  /// the next replacement over them, so that a file replaced again and again, as a program
  /// generated again, costs no fresh allocation.
  virtual std::unique_ptr<Replacement> begin_replace(const std::string& path);
  /// Appends to the file, creating it; for logs only, which need no atomicity.
  virtual bool append(const std::string& path, std::string_view text, std::string& error) = 0;
  virtual bool remove(const std::string& path, std::string& error) = 0;
  virtual bool exists(const std::string& path) = 0;
};

/// The disk in use: the real one unless a test installed another.
Disk& disk();
/// The platform's disk.
Disk& real_disk();

/// Asks the system to back [begin, begin + bytes) with memory now, in one call, rather than
/// one page fault at a time as a large buffer is first written; a hint only.
void prefault(void* begin, std::size_t bytes);

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
