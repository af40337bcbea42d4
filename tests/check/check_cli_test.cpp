#include <gtest/gtest.h>

#include <string>

#include "check/check_samples.h"
#include "support/run_command.h"
#include "support/temp_folder.h"

namespace quorva::test {
namespace {

// `quorva check` on the current program of a working folder made by `quorva init`.
class CheckCommandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    home_ = (folder_.path() / "home").string();
    source_ = (folder_.path() / "src").string() + "/";
    ASSERT_EQ(run("init " + shell_quote(home_)).status, 0);
    write_text(home_ + "/Resource/User.dat", "sourcedirectory=" + source_ + "\n");
    write_text(home_ + "/temp/Parbase.dat", "nomeprogr=EZTORD\nlinguaggio=easytrieve\n");
  }
  CommandResult run(const std::string& arguments) {
    return run_command(shell_quote(QUORVA_BINARY) + " --home " + shell_quote(home_) + " " +
                       arguments);
  }
  TempWorkingFolder folder_;
  std::string home_, source_;
};

TEST_F(CheckCommandTest, CurrentProgramCleanThenFaulty) {
  write_text(source_ + "EZTORD.txt", kEasytrieveProgram);
  CommandResult clean = run("check");
  EXPECT_EQ(clean.status, 0) << clean.output;
  EXPECT_NE(clean.output.find("no finding"), std::string::npos);

  std::string faulty = kEasytrieveProgram;
  faulty.erase(faulty.find("  END-IF\n"), 9);
  write_text(source_ + "EZTORD.txt", faulty);
  CommandResult found = run("check");
  EXPECT_EQ(found.status, 1);
  EXPECT_NE(found.output.find(source_ + "EZTORD.txt:19: IF is not closed by END-IF\n"
                                        "      IF IN-ID > 0\n"),
            std::string::npos)
      << found.output;
}

TEST_F(CheckCommandTest, NamedProgramAndMissingFile) {
  write_text(source_ + "EZTORD.txt", kEasytrieveProgram);
  EXPECT_EQ(run("check EZTORD").status, 0);
  // A relative file name is the shell's, not the working folder's.
  write_text(folder_.path() / "elsewhere" / "EZTORD.txt", kEasytrieveProgram);
  CommandResult relative = run("check elsewhere/EZTORD.txt");
  EXPECT_EQ(relative.status, 0) << relative.output;
  CommandResult missing = run("check NOSUCH");
  EXPECT_EQ(missing.status, 1);
  EXPECT_NE(missing.output.find("cannot be read"), std::string::npos) << missing.output;
}

}  // namespace
}  // namespace quorva::test
