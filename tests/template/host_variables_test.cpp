// Host variables as a z/OS shop's members give them: fields renamed by NAMES(...) or by hand
// (columns named like COBOL words), and two members with a field of the same name. The
// program generated with them passes the check and compiles with the members as they are.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "check/check_finding.h"
#include "check/check_program.h"
#include "support/run_command.h"
#include "support/temp_folder.h"

namespace quorva::test {
namespace {

namespace fs = std::filesystem;

// DCLGEN with NAMES(AC) and no COLSUFFIX: the fields are numbered.
constexpr const char* kAccount =
    R"(      ******************************************************************
      * DCLGEN TABLE(BANKDB.ACCOUNT)                                   *
      *        LIBRARY(BANK.DCLGEN(ACCOUNT))                           *
      *        LANGUAGE(COBOL)                                         *
      *        NAMES(AC)                                               *
      *        QUOTE                                                   *
      * ... IS THE DCLGEN COMMAND THAT MADE THE FOLLOWING STATEMENTS   *
      ******************************************************************
           EXEC SQL DECLARE BANKDB.ACCOUNT TABLE
           ( ACCT_NO                        CHAR(12) NOT NULL,
             BRANCH_ID                      INTEGER NOT NULL,
             HOLDER                         VARCHAR(60) NOT NULL,
             BALANCE                        DECIMAL(13, 2)
           ) END-EXEC.
      ******************************************************************
      * COBOL DECLARATION FOR TABLE BANKDB.ACCOUNT                     *
      ******************************************************************
       01  DCLACCOUNT.
           10 AC1                  PIC X(12).
           10 AC2                  PIC S9(9) USAGE COMP.
           10 AC3.
              49 AC3-LEN           PIC S9(4) USAGE COMP.
              49 AC3-TEXT          PIC X(60).
           10 AC4                  PIC S9(11)V9(2) USAGE COMP-3.
      ******************************************************************
      * THE NUMBER OF COLUMNS DESCRIBED BY THIS DECLARATION IS 4       *
      ******************************************************************
)";

// Columns named like COBOL reserved words, their fields renamed by hand; LAST-UPD-TS is
// also a field of ACCTHIST.
constexpr const char* kBranch =
    R"(      ******************************************************************
      * DCLGEN TABLE(BANKDB.BRANCH)                                    *
      *        LIBRARY(BANK.DCLGEN(BRANCH))                            *
      *        LANGUAGE(COBOL)                                         *
      *        QUOTE                                                   *
      * ... IS THE DCLGEN COMMAND THAT MADE THE FOLLOWING STATEMENTS   *
      ******************************************************************
           EXEC SQL DECLARE BANKDB.BRANCH TABLE
           ( BRANCH_ID                      INTEGER NOT NULL,
             STATUS                         CHAR(1) NOT NULL,
             SECTION                        CHAR(4),
             LAST_UPD_TS                    TIMESTAMP NOT NULL
           ) END-EXEC.
      ******************************************************************
      * COBOL DECLARATION FOR TABLE BANKDB.BRANCH                      *
      ******************************************************************
       01  DCLBRANCH.
           10 BRANCH-ID            PIC S9(9) USAGE COMP.
           10 BR-STATUS            PIC X(1).
           10 BR-SECTION           PIC X(4).
           10 LAST-UPD-TS          PIC X(26).
      ******************************************************************
      * THE NUMBER OF COLUMNS DESCRIBED BY THIS DECLARATION IS 4       *
      ******************************************************************
)";

constexpr const char* kAcctHist =
    R"(      ******************************************************************
      * DCLGEN TABLE(BANKDB.ACCTHIST)                                  *
      *        LIBRARY(BANK.DCLGEN(ACCTHIST))                          *
      *        LANGUAGE(COBOL)                                         *
      *        QUOTE                                                   *
      * ... IS THE DCLGEN COMMAND THAT MADE THE FOLLOWING STATEMENTS   *
      ******************************************************************
           EXEC SQL DECLARE BANKDB.ACCTHIST TABLE
           ( ACCT_NO                        CHAR(12) NOT NULL,
             TXN_DATE                       DATE NOT NULL,
             AMOUNT                         DECIMAL(11, 2),
             TXN_TEXT                       VARCHAR(80),
             LAST_UPD_TS                    TIMESTAMP
           ) END-EXEC.
      ******************************************************************
      * COBOL DECLARATION FOR TABLE BANKDB.ACCTHIST                    *
      ******************************************************************
       01  DCLACCTHIST.
           10 ACCT-NO              PIC X(12).
           10 TXN-DATE             PIC X(10).
           10 AMOUNT               PIC S9(9)V9(2) USAGE COMP-3.
           10 TXN-TEXT.
              49 TXN-TEXT-LEN      PIC S9(4) USAGE COMP.
              49 TXN-TEXT-TEXT     PIC X(80).
           10 LAST-UPD-TS          PIC X(26).
      ******************************************************************
      * THE NUMBER OF COLUMNS DESCRIBED BY THIS DECLARATION IS 5       *
      ******************************************************************
)";

class HostVariablesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    write_text(home_.path / "programs/ACCOUNT.DCL", kAccount);
    write_text(home_.path / "programs/BRANCH.DCL", kBranch);
    write_text(home_.path / "programs/ACCTHIST.DCL", kAcctHist);
    expect_steps(
        &home_,
        {{"user set ip=127.0.0.1 library=BANK.SOURCE user=QVUSER password=PW name=Tester "
          "company=Tests folder=" +
              shell_quote(home_.path.string() + "/programs/"),
          0, ""},
         {"program set name=ACCTUPD language=cobol kind=batch select=2 fetch=1 update=1 "
          "insert=1",
          0, ""},
         {"db2 select 1 --include ACCOUNT --owner BANKDB --table ACCOUNT", 0, ""},
         {"db2 select 2 --include BRANCH --owner BANKDB --table BRANCH", 0, ""},
         {"db2 fetch 1 --include ACCTHIST --owner BANKDB --table ACCTHIST --cursor CSRHIST", 0, ""},
         {"db2 update 1 --include BRANCH --owner BANKDB --table BRANCH", 0, ""},
         {"db2 insert 1 --include ACCTHIST --owner BANKDB --table ACCTHIST", 0, ""},
         {"columns set select 1 query HOLDER BALANCE BRANCH_ID", 0, ""},
         {"columns set select 1 where ACCT_NO", 0, ""},
         {"columns set select 2 query --all", 0, ""},
         {"columns set select 2 where BRANCH_ID", 0, ""},
         {"columns set fetch 1 query --all", 0, ""},
         {"columns set fetch 1 where ACCT_NO", 0, ""},
         {"columns set update 1 query STATUS SECTION LAST_UPD_TS", 0, ""},
         {"columns set update 1 where BRANCH_ID", 0, ""},
         {"columns set insert 1 query --all", 0, ""}});
  }

  std::string generate() {
    expect_steps(&home_, {{"--yes generate", 0, "ACCTUPD.txt"}});
    return read_text(home_.path / "programs/ACCTUPD.txt");
  }

  CheckReport check(const std::string& text, bool compile) {
    write_text(home_.path / "programs/CHECKED.txt", text);
    CheckOptions options;
    options.compile = compile;
    options.folders = {home_.path / "programs", home_.path / "Resource"};
    return check_program_file((home_.path / "programs/CHECKED.txt").string(), CheckLanguage::kCobol,
                              options);
  }

  QuorvaHome home_;
};

TEST_F(HostVariablesTest, MembersOwnFieldsQualifiedWhereShared) {
  const std::string program = generate();
  for (const char* expected :
       {"ACCT_NO   = :AC1", ":AC3", ":AC4", ":AC2", "BRANCH_ID = :BRANCH-ID", ":BR-STATUS",
        ":BR-SECTION", "LAST_UPD_TS = :DCLBRANCH.LAST-UPD-TS", ":DCLACCTHIST.LAST-UPD-TS",
        "INITIALIZE LAST-UPD-TS OF DCLACCTHIST", ":TXN-TEXT", "ACCT_NO   = :ACCT-NO"})
    EXPECT_NE(program.find(expected), std::string::npos) << expected;
  for (const char* never : {"AC-ACCT-NO", ":HOLDER", ":STATUS", ":SECTION", ":LAST-UPD-TS"})
    EXPECT_EQ(program.find(never), std::string::npos) << never;
  EXPECT_EQ(program.find("INCLUDE BRANCH"), program.rfind("INCLUDE BRANCH"));

  const CheckReport checked = check(program, true);
  EXPECT_EQ(format_findings(checked), "");
  if (!cobol_compiler_available()) GTEST_SKIP() << "cobc is not installed";
  EXPECT_TRUE(checked.notes.empty()) << checked.notes.front();
}

// The faults the old naming gave, caught by the check alone, on their lines.
TEST_F(HostVariablesTest, CheckCatchesUndefinedAndAmbiguousHostVariables) {
  const std::string program = generate();
  const struct {
    const char* from;
    const char* to;
    const char* says;
  } faults[] = {
      {":AC1", ":AC-ACCT-NO", "Host variable :AC-ACCT-NO is not defined"},
      {":BR-STATUS", ":STATUS", "Host variable :STATUS is not defined"},
      {":DCLBRANCH.LAST-UPD-TS", ":LAST-UPD-TS",
       "Host variable :LAST-UPD-TS is ambiguous: LAST-UPD-TS is defined in DCLBRANCH (BRANCH) "
       "and DCLACCTHIST (ACCTHIST); qualify it as :DCLBRANCH.LAST-UPD-TS"},
      {":DCLACCTHIST.LAST-UPD-TS", ":DCLACCOUNT.LAST-UPD-TS",
       "Host variable :DCLACCOUNT.LAST-UPD-TS is not defined"},
  };
  for (const auto& fault : faults) {
    const std::size_t at = program.find(fault.from);
    ASSERT_NE(at, std::string::npos) << fault.from;
    std::string faulty = program;
    faulty.replace(at, std::string(fault.from).size(), fault.to);
    const int line = static_cast<int>(std::count(program.begin(), program.begin() + at, '\n')) + 1;
    const CheckReport report = check(faulty, false);
    ASSERT_EQ(report.findings.size(), 1u) << fault.to << "\n" << format_findings(report);
    EXPECT_EQ(report.findings[0].line, line) << fault.to;
    EXPECT_NE(report.findings[0].message.find(fault.says), std::string::npos)
        << report.findings[0].message;
  }
}

// UPDATE and INSERT can write NULL: each nullable column carries its own indicator, and a
// blank one that is not a number is written as NULL (a number is compared to nothing).
TEST_F(HostVariablesTest, UpdateAndInsertCarryNullIndicators) {
  const std::string program = collapse_blanks(generate());
  for (const char* expected :
       {", SECTION = :BR-SECTION :WRK-NULL-U1Q-01 ,", "05 WRK-NULL-U1Q-01 PIC S9(4) COMP",
        "IF BR-SECTION = SPACES MOVE -1 TO WRK-NULL-U1Q-01 END-IF",
        "END-EXEC INITIALIZE WRK-IND-U1", ", :AMOUNT :WRK-NULL-I1Q-01 , :TXN-TEXT :WRK-NULL-I1Q-02",
        ", :DCLACCTHIST.LAST-UPD-TS :WRK-NULL-I1Q-03 )", "05 WRK-NULL-I1Q-03 PIC S9(4) COMP",
        "IF TXN-TEXT = SPACES MOVE -1 TO WRK-NULL-I1Q-02 END-IF",
        "IF LAST-UPD-TS OF DCLACCTHIST = SPACES MOVE -1 TO WRK-NULL-I1Q-03 END-IF"})
    EXPECT_NE(program.find(expected), std::string::npos) << expected;
  for (const char* never : {"IF AMOUNT = SPACES", ":BR-STATUS :WRK-NULL", "= :BRANCH-ID :WRK"})
    EXPECT_EQ(program.find(never), std::string::npos) << never;
}

// An Easytrieve INTO list binds an indicator to each nullable column: no -305 on a NULL.
TEST_F(HostVariablesTest, EasytrieveIntoListsCarryNullIndicators) {
  expect_steps(&home_, {{"program set language=easytrieve", 0, ""},
                        {"db2 select 1 --cursor CSRACC", 0, ""},
                        {"db2 select 2 --cursor CSRBRA", 0, ""}});
  const std::string program = collapse_blanks(generate());
  for (const char* expected :
       {"WRK-NULL-S1Q-01 W 2 B 0", ":WRK-NULL-S1Q-01 + , :WRK-READ-TS", "WRK-NULL-F1Q-03 W 2 B 0",
        ":TXN-TEXT :WRK-NULL-F1Q-02 + , :LAST-UPD-TS :WRK-NULL-F1Q-03 + , :WRK-READ-TS"})
    EXPECT_NE(program.find(expected), std::string::npos) << expected;
}

// What the bind or the precompiler would refuse is said when the program is generated.
TEST_F(HostVariablesTest, GenerationWarnsOfAForeignTableAndAMissingMember) {
  expect_steps(&home_, {{"db2 update 1 --table ACCOUNT", 0,
                         "TABLE NAME ACCOUNT of UPDATE 1 is not the table its DCLGEN member "
                         "BRANCH declares (BANKDB.BRANCH)"}});
  fs::remove(home_.path / "programs/ACCOUNT.DCL");
  const CommandResult run = home_.run("--yes generate");
  EXPECT_EQ(run.status, 0) << run.output;
  for (const char* warning :
       {"Warning: TABLE NAME ACCOUNT of UPDATE 1 is not the table its DCLGEN member BRANCH",
        "Warning: The DCLGEN member ACCOUNT of SELECT 1 cannot be read"})
    EXPECT_NE(run.output.find(warning), std::string::npos) << warning << "\n" << run.output;
  const CommandResult log = home_.run("warnings");
  EXPECT_NE(log.output.find("is not the table its DCLGEN member BRANCH"), std::string::npos)
      << log.output;
}

}  // namespace
}  // namespace quorva::test
