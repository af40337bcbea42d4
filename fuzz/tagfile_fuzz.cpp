// Feeds arbitrary file contents and tags to the read/modify/delete operations, and arbitrary
// lines, tags and values to the column-preserving replacement.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include "tagfile/tag_file.h"

namespace {

// Splits the input at its first two 0x00 bytes: file contents (or line), tag, value.
void split(const uint8_t* data, size_t size, std::string& a, std::string& b, std::string& c) {
  std::string all(reinterpret_cast<const char*>(data), size);
  size_t first = all.find('\0');
  size_t second = first == std::string::npos ? std::string::npos : all.find('\0', first + 1);
  a = all.substr(0, first);
  b = first == std::string::npos ? "" : all.substr(first + 1, second - first - 1);
  c = second == std::string::npos ? "" : all.substr(second + 1);
}

void write(const std::string& name, const std::string& text) {
  std::FILE* f = std::fopen(name.c_str(), "wb");
  std::fwrite(text.data(), 1, text.size(), f);
  std::fclose(f);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  auto dir = std::filesystem::temp_directory_path() / ("quorva-fuzz-" + std::to_string(::getpid()));
  std::filesystem::create_directories(dir / "Resource");
  std::filesystem::current_path(dir);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string contents, tag, value;
  split(data, size, contents, tag, value);

  write("f.dat", contents);
  quorva::Leggi_tag("f.dat", false, tag);
  quorva::Leggi_tag_int("f.dat", false, tag);
  quorva::Leggi_tag_onoff("f.dat", false, tag);
  const bool modified = quorva::Modifica_tag("f.dat", false, true, tag, value).ok();
  // After a modification with the add flag the tag reads back as its value (or missing
  // when the value is empty). The store refuses a tag or a value that holds a line break,
  // and a refused write leaves the file as it was.
  if (modified) {
    auto read = quorva::Leggi_tag("f.dat", false, tag);
    if (!value.empty() && (!read || *read != value)) __builtin_trap();
  } else if (!quorva::has_line_break(tag) && !quorva::has_line_break(value)) {
    __builtin_trap();
  } else if (quorva::read_whole_file("f.dat") != contents) {
    __builtin_trap();
  }
  // After a deletion the tag is not found.
  if (quorva::Cancella_tag("f.dat", false, tag).ok() && quorva::Leggi_tag("f.dat", false, tag))
    __builtin_trap();
  quorva::Trim_spazi(contents);

  std::string line = contents;
  const size_t before = line.size();
  bool absorbed = quorva::Sostituisci_in_colonna(line, tag, value);
  if (absorbed && value.size() >= tag.size() && line.size() > before && !tag.empty() &&
      tag != value)
    __builtin_trap();  // a "true" result promises the line did not grow
  return 0;
}
