#pragma once

#include <cstddef>
#include <span>

namespace quorva {

/// One file or folder of the shipped working-folder skeleton, compiled into the binary.
struct SkeletonEntry {
  const char* path;  ///< relative to the working folder, "/" separated
  const unsigned char* data;
  std::size_t size;
  bool directory;
};

/// Every entry, folders before the files inside them.
std::span<const SkeletonEntry> skeleton_entries();

}  // namespace quorva
