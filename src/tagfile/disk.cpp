#include "tagfile/disk.h"

#include <atomic>

namespace quorva {
namespace {

std::atomic<Disk*> current{nullptr};

class HeldReplacement : public Replacement {
 public:
  HeldReplacement(Disk& disk, const std::string& path) : disk_(disk), path_(path) {}
  void write(std::string_view text) override { text_ += text; }
  FileWrite commit() override { return disk_.replace(path_, text_); }

 private:
  Disk& disk_;
  std::string path_;
  std::string text_;
};

}  // namespace

FileRead Disk::read_head(const std::string& path, std::size_t bytes) {
  FileRead read = this->read(path);
  if (read.text.size() > bytes) read.text.resize(bytes);
  return read;
}

FileBytes Disk::read_bytes(const std::string& path) {
  FileRead read = this->read(path);
  FileBytes bytes{read.status, nullptr, read.text.size(), std::move(read.error)};
  auto owner = std::make_shared<const std::string>(std::move(read.text));
  bytes.data = std::shared_ptr<const char[]>(owner, owner->data());
  return bytes;
}

std::unique_ptr<Replacement> Disk::begin_replace(const std::string& path) {
  return std::make_unique<HeldReplacement>(*this, path);
}

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
