#include <gtest/gtest.h>

#include "support/run_command.h"
#include "support/temp_folder.h"

namespace quorva {
namespace {

constexpr const char* kMember =
    "           EXEC SQL DECLARE OWN.EMP TABLE\n"
    "           ( EMP_ID     INTEGER NOT NULL,\n"
    "             EMP_NAME   CHAR(20)\n"
    "           ) END-EXEC.\n"
    "       01  DCLEMP.\n"
    "           10 EMP-ID     PIC S9(9) USAGE COMP.\n"
    "           10 EMP-NAME   PIC X(20).\n";

class DclgenCommandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    test::write_text(folder_.path() / "Resource/User.dat",
                     "sourcedirectory=" + (folder_.path() / "src").string() + "/\n");
    test::write_text(folder_.path() / "src/EMP.DCL", kMember);
    test::write_text(folder_.path() / "temp/key2value.dat", "INCLU-1F=EMP\n");
  }
  test::CommandResult quorva(const std::string& arguments) {
    return test::run_command(test::shell_quote(QUORVA_BINARY) + " --home " +
                             test::shell_quote(folder_.path().string()) + " " + arguments);
  }
  test::TempWorkingFolder folder_;
};

TEST_F(DclgenCommandTest, ShowsMemberColumnsAndProblems) {
  test::CommandResult shown = quorva("dclgen show EMP");
  EXPECT_EQ(shown.status, 0) << shown.output;
  EXPECT_NE(shown.output.find("1  EMP_NAME  CHAR        (20)      YES   X(20)."), std::string::npos)
      << shown.output;
  EXPECT_NE(shown.output.find("Tot.<1> problems found parsing DCLgen!!!"), std::string::npos);
  EXPECT_EQ(quorva("dclgen show MISSING").status, 1);
}

TEST_F(DclgenCommandTest, SetShowAndClearSelection) {
  test::CommandResult rejected = quorva("columns set fetch 1 query EMP_ID NOPE");
  EXPECT_EQ(rejected.status, 1);
  EXPECT_NE(rejected.output.find("I've not found the researched field:NOPE"), std::string::npos);
  EXPECT_EQ(test::read_text(folder_.path() / "temp/col_fetch.dat"), "");

  EXPECT_EQ(quorva("columns set fetch 1 query --all --null EMP_ID --prefix WS-").status, 0);
  test::CommandResult shown = quorva("columns show fetch 1 query");
  EXPECT_NE(shown.output.find("0  EMP_ID  INTEGER  NULL 1  WS-EMP-ID  PIC S9(9) COMP."),
            std::string::npos)
      << shown.output;
  EXPECT_NE(shown.output.find("Structure: DCLEMP"), std::string::npos);
  EXPECT_EQ(quorva("columns set delete 1 where EMP_ID").status, 1);  // no INCLU-1D

  EXPECT_EQ(quorva("columns clear fetch 1 query").status, 0);
  EXPECT_NE(quorva("columns show fetch 1 query").output.find("No columns selected."),
            std::string::npos);
}

}  // namespace
}  // namespace quorva
