#include "support/faulty_disk.h"

#include <cerrno>
#include <cstring>

namespace quorva::test {

FaultyDisk::FaultyDisk(std::string fragment, bool fail)
    : fragment_(std::move(fragment)), fail_(fail), scope_(*this) {}

bool FaultyDisk::fails(const std::string& path) const {
  return path.find(fragment_) != std::string::npos;
}

FileWrite FaultyDisk::replace(const std::string& path, std::string_view text) {
  if (!fails(path)) return real_disk().replace(path, text);
  ++attempts;
  if (!fail_) return real_disk().replace(path, text);
  ++refused;
  return {FileWrite::kWriteFailed, std::strerror(ENOSPC)};
}

bool FaultyDisk::append(const std::string& path, std::string_view text, std::string& error) {
  // The logs stay writable: a full disk that also ate the log would hide what the test checks.
  if (!fails(path) || path.ends_with(".log")) return real_disk().append(path, text, error);
  ++attempts;
  if (!fail_) return real_disk().append(path, text, error);
  ++refused;
  error = std::strerror(ENOSPC);
  return false;
}

}  // namespace quorva::test
