#pragma once

#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "tagfile/disk.h"

namespace quorva::test {

/// The real disk, except that replacing or appending to a file whose path holds
/// `fragment` fails as a full disk does (an empty fragment: every file), unless `fail` is
/// false and it only counts. Installed for its lifetime, as a disk that fills up while the
/// program runs.
class FaultyDisk : public Disk {
 public:
  explicit FaultyDisk(std::string fragment = "", bool fail = true)
      : fragment_(std::move(fragment)), fail_(fail), scope_(*this) {}

  FileRead read(const std::string& path) override { return real_disk().read(path); }
  FileWrite replace(const std::string& path, std::string_view text) override {
    if (!fails(path)) return real_disk().replace(path, text);
    ++attempts;
    if (!fail_) return real_disk().replace(path, text);
    ++refused;
    return {FileWrite::kWriteFailed, std::strerror(ENOSPC)};
  }
  bool append(const std::string& path, std::string_view text, std::string& error) override {
    // The logs stay writable: a full disk that also ate the log would hide what the test checks.
    if (!fails(path) || path.ends_with(".log")) return real_disk().append(path, text, error);
    ++attempts;
    if (!fail_) return real_disk().append(path, text, error);
    ++refused;
    error = std::strerror(ENOSPC);
    return false;
  }
  bool remove(const std::string& path, std::string& error) override {
    return real_disk().remove(path, error);
  }
  bool exists(const std::string& path) override { return real_disk().exists(path); }

  int attempts = 0;  ///< writes asked for matching files
  int refused = 0;   ///< of those, refused

 private:
  bool fails(const std::string& path) const { return path.find(fragment_) != std::string::npos; }

  std::string fragment_;
  bool fail_;
  ScopedDisk scope_;
};

}  // namespace quorva::test
