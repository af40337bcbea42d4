#include "store/program_jcl.h"

#include <gtest/gtest.h>

#include "store/program_name.h"

namespace quorva::test {
namespace {

TEST(ProgramJcl, TheProgramAloneIsTheFileLessItsJclLines) {
  const char* jcl = "//J JOB\n//S EXEC PGM=P\n";
  const struct {
    const char* program;
    const char* jcl;
    std::optional<std::string> alone;
  } cases[] = {
      {"       PROGRAM.\n//J JOB\n//S EXEC PGM=P\n", jcl, "       PROGRAM.\n"},
      // A template may put its JCL anywhere; a program line equal to a JCL line before it
      // stays, as the JCL is matched from the end.
      {"//S EXEC PGM=P\n//J JOB\n  A.\n//S EXEC PGM=P\n  B.\n", jcl,
       "//S EXEC PGM=P\n  A.\n  B.\n"},
      {"  A.\r\n//J JOB\r\n//S EXEC PGM=P\r\n", jcl, "  A.\r\n"},
      {"  A.\n//J JOB\n//S EXEC PGM=Q\n", jcl, std::nullopt},  // edited since
      {"  A.\n", jcl, std::nullopt},                           // a JCL of another program
      {"  A.\n", "", "  A.\n"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(program_without_jcl(c.program, c.jcl), c.alone) << c.program;
}

TEST(ProgramJcl, NamesAndLibraries) {
  EXPECT_EQ(jcl_file_of("/home/u/programs/PAYROLL.txt"), "/home/u/programs/PAYROLL.jcl");
  EXPECT_EQ(jcl_file_of("/home/u.v/PAYROLL"), "/home/u.v/PAYROLL.jcl");
  for (const char* good : {"HLQ.JCL", "'USER01.PROD.JCL'", "a.b", "SYS1.PROCLIB", "A$#@-1.B"})
    EXPECT_TRUE(is_library_name(good)) << good;
  for (const char* bad :
       {"", "HLQ..JCL", "HLQ.JCL(MEMBER)", "1HLQ.JCL", "HLQ.-JCL", "HLQ JCL", "'HLQ.JCL",
        "HLQ.ABCDEFGHI", "A.B.C.D.E.F.G.H.I.J.K.L.M.N.O.P.Q.R.S.T.U.V.W"})
    EXPECT_FALSE(is_library_name(bad)) << bad;
}

}  // namespace
}  // namespace quorva::test
