#pragma once

#include <filesystem>
#include <string>

namespace quorva::test {

/// A fresh temporary folder made the current directory for the test's lifetime, with
/// Resource/ and temp/ (and English messages unless asked otherwise), so the relative
/// names of the tag files resolve inside it. Removed afterwards.
class TempWorkingFolder {
 public:
  explicit TempWorkingFolder(const std::string& language = "ENG");
  ~TempWorkingFolder();
  TempWorkingFolder(const TempWorkingFolder&) = delete;
  TempWorkingFolder& operator=(const TempWorkingFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path previous_;
  std::filesystem::path path_;
};

/// Whole contents of a file ("" when missing).
std::string read_text(const std::filesystem::path& file);
/// Writes `text` as the whole file, creating folders as needed.
void write_text(const std::filesystem::path& file, const std::string& text);

/// A new empty folder under the temporary folder, its name beginning with `prefix`.
std::filesystem::path make_temp_folder(const std::string& prefix);

}  // namespace quorva::test
