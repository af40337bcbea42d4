#include "tagfile/disk.h"

#include <atomic>

namespace quorva {
namespace {

std::atomic<Disk*> current{nullptr};

}  // namespace

Disk& disk() {
  Disk* installed = current.load(std::memory_order_acquire);
  return installed ? *installed : real_disk();
}

ScopedDisk::ScopedDisk(Disk& replacement)
    : previous_(current.exchange(&replacement, std::memory_order_acq_rel)) {}

ScopedDisk::~ScopedDisk() {
  current.store(previous_, std::memory_order_release);
}

}  // namespace quorva
