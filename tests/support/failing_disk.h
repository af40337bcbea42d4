#pragma once

#include <string>
#include <string_view>

#include "tagfile/disk.h"

namespace quorva::test {

/// The real disk, except that replacing a file whose path contains `pattern` fails as a
/// full disk does (nothing written, the old file left as it was), unless `fail` is false.
/// Installed for its lifetime. Counts the replacements asked for such files.
class FailingDisk : public Disk {
 public:
  explicit FailingDisk(std::string pattern, bool fail = true);

  FileRead read(const std::string& path) override { return real_disk().read(path); }
  FileWrite replace(const std::string& path, std::string_view text) override;
  bool append(const std::string& path, std::string_view text, std::string& error) override {
    return real_disk().append(path, text, error);
  }
  bool remove(const std::string& path, std::string& error) override {
    return real_disk().remove(path, error);
  }
  bool exists(const std::string& path) override { return real_disk().exists(path); }

  int attempts = 0;  ///< replacements asked for matching files
  int refused = 0;   ///< of those, refused

 private:
  std::string pattern_;
  bool fail_;
  ScopedDisk scope_;
};

}  // namespace quorva::test
