#include "support/temp_folder.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace quorva::test {

TempWorkingFolder::TempWorkingFolder(const std::string& language)
    : previous_(fs::current_path()), path_(make_temp_folder("quorva-test-")) {
  fs::create_directories(path_ / "Resource");
  fs::create_directories(path_ / "temp" / "default");
  if (!language.empty())
    write_text(path_ / "Resource" / "QVconfig.ini", "target_language=" + language + "\n");
  fs::current_path(path_);
}

TempWorkingFolder::~TempWorkingFolder() {
  std::error_code ec;
  fs::current_path(previous_, ec);
  fs::remove_all(path_, ec);
}

std::string read_text(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

void write_text(const fs::path& file, const std::string& text) {
  if (file.has_parent_path()) fs::create_directories(file.parent_path());
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  out << text;
}

fs::path make_temp_folder(const std::string& prefix) {
  std::string name = (fs::temp_directory_path() / (prefix + "XXXXXX")).string();
  if (!::mkdtemp(name.data()))
    throw fs::filesystem_error("mkdtemp", name, std::error_code(errno, std::generic_category()));
  return name;
}

}  // namespace quorva::test
