// Feeds arbitrary column-file text to the column-file reader and rewriter: a block read,
// rewritten with what was read and read again must come back the same (same member, same
// access line, same columns), and every other block must read as it did before.
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "engine/column_file.h"
#include "tagfile/disk.h"

namespace {

const char* const kFile = "temp/col_select.dat";

// The files in memory: no disk flush per run, so the fuzzer tries many more inputs. The
// column file goes through the same seam either way.
class MemoryDisk : public quorva::Disk {
 public:
  quorva::FileRead read(const std::string& path) override {
    auto found = files_.find(path);
    if (found == files_.end()) return {quorva::FileRead::kMissing, "", "missing"};
    return {quorva::FileRead::kRead, found->second, ""};
  }
  quorva::FileWrite replace(const std::string& path, std::string_view text) override {
    files_[path] = std::string(text);
    return {};
  }
  bool append(const std::string& path, std::string_view text, std::string&) override {
    files_[path] += text;
    return true;
  }
  bool remove(const std::string& path, std::string&) override { return files_.erase(path) > 0; }
  bool exists(const std::string& path) override { return files_.count(path) > 0; }

 private:
  std::map<std::string, std::string> files_;
};

MemoryDisk memory;

void write(const std::string& text) {
  if (!memory.replace(kFile, text).ok()) __builtin_trap();
}

std::string read() {
  return memory.read(kFile).text;
}

// The same columns, but for the null indicators, which the rewrite numbers afresh.
bool same_columns(const quorva::ColumnBlock& a, const quorva::ColumnBlock& b) {
  if (a.columns.size() != b.columns.size()) return false;
  for (size_t i = 0; i < a.columns.size(); ++i) {
    quorva::DclgenColumn left = a.columns[i];
    left.null_indicator = b.columns[i].null_indicator;
    if (!(left == b.columns[i])) return false;
  }
  return true;
}

std::optional<quorva::ColumnBlock> block(const char* master, quorva::Selection selection) {
  return quorva::Leggi_colonne_treedb2(kFile, master, selection, false);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  auto dir = std::filesystem::temp_directory_path() /
             ("quorva-fuzz-columns-" + std::to_string(::getpid()));
  std::filesystem::create_directories(dir / "Resource");
  std::filesystem::create_directories(dir / "temp");
  std::filesystem::current_path(dir);
  static quorva::ScopedDisk in_memory(memory);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using quorva::Selection;
  const std::string text(reinterpret_cast<const char*>(data), size);
  for (Selection selection : {Selection::kQuery, Selection::kWhere}) {
    write(text);
    const auto first = block("SELECT1", selection);
    if (!first) continue;
    const auto other_before = block("SELECT2", Selection::kQuery);
    const bool rewritten =
        quorva::Riscrivi_tag_treedb2(kFile, "SELECT1", selection, true, first->member,
                                     first->access_text, first->columns)
            .ok();
    if (!rewritten) {
      // Refused (a field the file cannot hold): the file is left as it was.
      if (read() != text) __builtin_trap();
      continue;
    }
    const auto second = block("SELECT1", selection);
    if (!second || !same_columns(*first, *second)) __builtin_trap();
    if (!first->columns.empty() &&
        (second->member != first->member || second->access_text != first->access_text))
      __builtin_trap();
    const auto other_after = block("SELECT2", Selection::kQuery);
    if (other_before.has_value() != other_after.has_value()) __builtin_trap();
    if (other_before && (other_before->member != other_after->member ||
                         other_before->access_text != other_after->access_text ||
                         other_before->columns != other_after->columns))
      __builtin_trap();
    // A second round changes nothing more.
    const std::string settled = read();
    if (!quorva::Riscrivi_tag_treedb2(kFile, "SELECT1", selection, true, second->member,
                                      second->access_text, second->columns))
      __builtin_trap();
    if (read() != settled) __builtin_trap();
  }
  return 0;
}
