#include "support/failing_disk.h"

#include <cerrno>
#include <cstring>

namespace quorva::test {

FailingDisk::FailingDisk(std::string pattern, bool fail)
    : pattern_(std::move(pattern)), fail_(fail), scope_(*this) {}

FileWrite FailingDisk::replace(const std::string& path, std::string_view text) {
  if (path.find(pattern_) == std::string::npos) return real_disk().replace(path, text);
  ++attempts;
  if (!fail_) return real_disk().replace(path, text);
  ++refused;
  return FileWrite{FileWrite::kWriteFailed, std::strerror(ENOSPC)};
}

}  // namespace quorva::test
