#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

#include "port/user_interface.h"
#include "support/temp_folder.h"

namespace quorva::test {

/// Records everything the core shows and answers questions from a script (No when the
/// script runs out). Installs itself for its lifetime.
class RecordingUi : public UserInterface {
 public:
  RecordingUi() : scope_(*this) {}

  void answer(bool yes) { answers_.push_back(yes); }

  void show_message(const std::string& text) override { messages.push_back(text); }
  bool ask_yes_no(const std::string& title, const std::string& text) override {
    questions.push_back(title + "|" + text);
    if (answers_.empty()) return false;
    const bool yes = answers_.front();
    answers_.pop_front();
    return yes;
  }
  void open_file(const std::string& path) override { opened.push_back(path); }
  void set_progress(const std::string& bar, int position, int range) override {
    progress.push_back(bar + ":" + std::to_string(position) + "/" + std::to_string(range));
  }
  void set_status(const std::string& text) override { statuses.push_back(text); }

  std::vector<std::string> messages;
  std::vector<std::string> questions;  ///< title + "|" + text
  std::vector<std::string> statuses;
  std::vector<std::string> opened;
  std::vector<std::string> progress;  ///< bar + ":" + position + "/" + range

 private:
  std::deque<bool> answers_;
  ScopedUserInterface scope_;
};

/// The usual start of a test: a temporary working folder and a recording user interface.
class FolderTest : public ::testing::Test {
 protected:
  TempWorkingFolder folder_;
  RecordingUi ui_;
};

/// A FolderTest whose user data names its src/ folder as the source folder.
class SourceFolderTest : public FolderTest {
 protected:
  void SetUp() override {
    write_text("Resource/User.dat", "sourcedirectory=" + source() + "\n");
    std::filesystem::create_directories(source());
  }
  std::string source() const { return (folder_.path() / "src").string() + "/"; }
};

}  // namespace quorva::test
