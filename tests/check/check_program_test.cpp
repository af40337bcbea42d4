#include "engine/check_program.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "check/check_samples.h"
#include "engine/check_cobol.h"
#include "support/temp_folder.h"

namespace quorva {
namespace {

using test::kCobolProgram;
using test::kEasytrieveProgram;

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  if (at != std::string::npos) text.replace(at, from.size(), to);
  return text;
}

CheckReport check_text(const std::string& name, CheckLanguage language, const std::string& text) {
  CheckOptions options;
  options.compile = false;
  return check_program_text(name, language, text, options);
}

TEST(CheckProgramTest, CleanSamplesHaveNoFinding) {
  EXPECT_EQ(format_findings(check_text("PGMORD", CheckLanguage::kCobol, kCobolProgram)), "");
  EXPECT_EQ(format_findings(check_text("EZTORD", CheckLanguage::kEasytrieve, kEasytrieveProgram)),
            "");
}

struct PlantedFault {
  const char* what;
  bool cobol;
  const char* from;
  const char* to;
  int line;
  const char* message;
};

const PlantedFault kFaults[] = {
    {"text past column 72", true, "DISPLAY 'SQLCODE ' SQLCODE",
     "DISPLAY 'SQLCODE ' SQLCODE                                  X", 57,
     "COBOL text past column 72 (column 75)"},
    {"tab", true, "           MOVE 1 TO ORD-ID.", "\tMOVE 1 TO ORD-ID.", 48, "tab character"},
    {"sequence area", true, "       PROCEDURE DIVISION.", "000100 PROCEDURE DIVISION.", 44,
     "sequence area"},
    {"unreplaced placeholder", true, "PROGRAM-ID. PGMORD.", "PROGRAM-ID. <++++++>.", 18,
     "\"<++++++>\", written by the program name"},
    {"user data", true, "ORDERS AND LOOKS", "<NOME-COGNOME> LOOKS", 19, "quorva user set name="},
    {"column expansion", true, "MOVE 1 TO ORD-ID.", "MOVE 1 TO CAMPO-ALL.", 48,
     "\"CAMPO-ALL\", written by the DB2 column expansion"},
    {"unknown column", true, "MOVE 1 TO ORD-ID.", "MOVE 1 TO *PIC_not_found*.", 48,
     "not in the DCLGEN member"},
    {"stray hash", true, "MOVE 1 TO ORD-ID.", "MOVE # TO ORD-ID.", 48, "\"#\""},
    {"missing DD", true, "//ORDIN    DD DSN", "//ORDINX   DD DSN", 3,
     "no DD statement for the program's file ORDIN"},
    {"missing SYSIN", true, "//SYSIN    DD *", "//SYSINX   DD *", 3, "no SYSIN DD"},
    {"indented data cards", true, " RUN PROGRAM(PGMORD) PLAN(PLANORD) LIB('USER.LOADLIB')",
     "       RUN PROGRAM(PGMORD) -\n       LIB('USER.LOADLIB')", 3, "names no PLAN"},
    {"missing PLAN", true, " PLAN(PLANORD)", "", 3, "names no PLAN"},
    {"bad continuation column", true, "//            SPACE=(TRK", "//                  SPACE=(TRK",
     7, "begin between columns 4 and 16"},
    {"continuation without comma", true, "DISP=(NEW,CATLG,DELETE),", "DISP=(NEW,CATLG,DELETE)", 7,
     "continues nothing"},
    {"comma without continuation", true, "CLASS=A,MSGCLASS=X,\n//             NOTIFY=&SYSUID",
     "CLASS=A,MSGCLASS=X,\n//*            NOTIFY=&SYSUID\n/*", 1, "no \"//\" continuation"},
    {"new data set without SPACE", true, "SPACE=(TRK,(10,5),RLSE),", "", 6, "needs SPACE="},
    {"new data set without LRECL", true, ",DCB=(RECFM=FB,LRECL=80)", ",DCB=(RECFM=FB)", 6,
     "record length"},
    {"default NEW without SPACE", true,
     "DISP=(NEW,CATLG,DELETE),\n//            SPACE=(TRK,(10,5),RLSE),",
     "DISP=(,CATLG,DELETE),\n//           ", 6, "needs SPACE="},
    {"bad DISP", true, "DISP=SHR\n//ORDOUT", "DISP=OLDX\n//ORDOUT", 5, "invalid DISP=OLDX"},
    {"bad JCL name", true, "//STEPLIB  DD", "//1STEPLIB DD", 4, "invalid JCL name"},
    {"no JOB", true,
     "//PGMORDJ  JOB (ACCT),'ORDERS',CLASS=A,MSGCLASS=X,\n//             NOTIFY=&SYSUID\n", "", 1,
     "does not begin with a JOB"},
    {"unbalanced END-IF", false, "  END-IF\n", "", 19, "IF is not closed by END-IF"},
    {"END-IF without IF", false, "  IF IN-ID > 0\n", "  DO WHILE IN-ID > 0\n", 25,
     "END-IF where END-DO is expected"},
    {"undefined file", false, "PUT ORDOUT", "PUT ORDOUX", 21, "file ORDOUX has no FILE statement"},
    {"FILE after JOB", false, "  PRINT ORDREP\n", "FILE LATE\n", 26, "FILE statement after"},
    {"logic after REPORT", false, "  LINE 1 IN-ID IN-NAME\n",
     "  LINE 1 IN-ID IN-NAME\n  WS-COUNT = 0\n", 31, "activity logic after a REPORT"},
    {"PARM not first", false, "PARM LINK(EZTORD R)\n* ORDERS REPORT\n",
     "* ORDERS REPORT\nFILE EXTRA\nPARM LINK(EZTORD R)\n", 12, "PARM must be the first"},
    {"field after JOB", false, "  PRINT ORDREP\n", "LATE-FIELD W 5 N\n", 26,
     "field definition after the first activity"},
    {"unknown report", false, "  PRINT ORDREP\n", "  PRINT ORDREPX\n", 26,
     "report ORDREPX has no REPORT statement"},
    {"Easytrieve past column 72", false, "     DISPLAY 'ZERO ID ' +",
     "     DISPLAY 'ZERO ID '                                                     +", 23,
     "Easytrieve text past column 72"},
    {"missing DD of a symbolic program", false,
     "EXEC PGM=EZTPA00\n//STEPLIB  DD DSN=EZT.LOADLIB,DISP=SHR\n//ORDIN ",
     "EXEC PGM=&RUNPGM\n// SET RUNPGM=EZTPA00\n//ORDINX", 2,
     "no DD statement for the program's file ORDIN"},
    {"Easytrieve missing DD", false, "//ORDOUT   DD DSN=&&ORDOUT", "//ORDOUX   DD DSN=&&ORDOUT", 2,
     "no DD statement for the program's file ORDOUT"},
};

TEST(CheckProgramTest, EachPlantedFaultIsReportedOnItsLine) {
  for (const PlantedFault& fault : kFaults) {
    SCOPED_TRACE(fault.what);
    std::string text =
        replaced(fault.cobol ? kCobolProgram : kEasytrieveProgram, fault.from, fault.to);
    CheckReport report =
        check_text(fault.cobol ? "PGMORD" : "EZTORD",
                   fault.cobol ? CheckLanguage::kCobol : CheckLanguage::kEasytrieve, text);
    ASSERT_FALSE(report.findings.empty());
    bool found = false;
    for (const CheckFinding& finding : report.findings)
      if (finding.line == fault.line && finding.message.find(fault.message) != std::string::npos)
        found = true;
    EXPECT_TRUE(found) << format_findings(report);
  }
}

TEST(CheckProgramTest, FindingsNameFileLineAndShowTheLine) {
  CheckReport report =
      check_text("PGMORD", CheckLanguage::kCobol, replaced(kCobolProgram, "PGMORD.", "<++++++>."));
  report.file = "/src/PGMORD.txt";
  EXPECT_EQ(format_findings(report),
            "/src/PGMORD.txt:18: unreplaced placeholder \"<++++++>\", written by the program name: "
            "quorva program set name=...\n           PROGRAM-ID. <++++++>.\n");
}

TEST(CheckProgramTest, LanguageIsDetectedFromTheDivisions) {
  EXPECT_EQ(detect_language(kCobolProgram), CheckLanguage::kCobol);
  EXPECT_EQ(detect_language(kEasytrieveProgram), CheckLanguage::kEasytrieve);
}

// The compiler cases: the program and its DCLGEN member in a folder, the shipped SQLCA.
class CheckCobolTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!cobol_compiler_available()) GTEST_SKIP() << "cobc is not installed";
    test::write_text(folder_.path() / "src" / "ORDERS.DCL", test::kOrdersMember);
    std::filesystem::copy_file(
        std::filesystem::path(QUORVA_SOURCE_DIR) / "skeleton" / "Resource" / "SQLCA.cpy",
        folder_.path() / "Resource" / "SQLCA.cpy");
  }
  CheckReport check(const std::string& text) {
    test::write_text(folder_.path() / "src" / "PGMORD.txt", text);
    CheckOptions options;
    options.folders.resource_folder = "Resource";
    return check_program_file("src/PGMORD.txt", CheckLanguage::kCobol, options);
  }
  test::TempWorkingFolder folder_;
};

TEST_F(CheckCobolTest, CleanProgramCompiles) {
  CheckReport report = check(kCobolProgram);
  EXPECT_TRUE(report.notes.empty());
  EXPECT_EQ(format_findings(report), "");
}

TEST_F(CheckCobolTest, UndefinedHostVariablesAreReportedOnTheirLines) {
  std::string text = replaced(kCobolProgram, ":DCLORDERS.ORD-ID", ":DCLORDERS.ORD-IDX");
  // Indicators as the generator writes them, after a blank, and with INDICATOR.
  text = replaced(text, ":NOTE:WS-NULL-NOTE", ":NOTE :WS-NULL-NOT");
  text = replaced(text, "INTO :ORD-ID END-EXEC", "INTO :ORD-ID INDICATOR :WS-NID END-EXEC");
  CheckReport report = check(text);
  ASSERT_EQ(report.findings.size(), 3u) << format_findings(report);
  EXPECT_EQ(report.findings[0].line, 51);
  EXPECT_NE(report.findings[0].message.find("'WS-NULL-NOT' is not defined"), std::string::npos);
  EXPECT_EQ(report.findings[1].line, 53);
  EXPECT_NE(report.findings[1].message.find("ORD-IDX"), std::string::npos);
  EXPECT_EQ(report.findings[2].line, 60);
  EXPECT_NE(report.findings[2].message.find("'WS-NID' is not defined"), std::string::npos);
}

TEST_F(CheckCobolTest, MissingMemberIsReported) {
  CheckReport report = check(replaced(kCobolProgram, "INCLUDE ORDERS", "INCLUDE ORDERX"));
  ASSERT_FALSE(report.findings.empty());
  EXPECT_EQ(report.findings[0].line, 39);
  EXPECT_NE(report.findings[0].message.find("ORDERX"), std::string::npos);
}

TEST_F(CheckCobolTest, FaultInAMemberIsShownOnTheMemberLine) {
  std::string member = test::kOrdersMember;
  member.replace(member.find("PIC X(30)"), 9, "PIC Q(30)");
  test::write_text(folder_.path() / "src" / "ORDERS.DCL", member);
  CheckReport report = check(kCobolProgram);
  ASSERT_FALSE(report.findings.empty());
  EXPECT_EQ(report.findings[0].file, "src/ORDERS.DCL");
  EXPECT_EQ(report.findings[0].line, 12);
  EXPECT_EQ(report.findings[0].text, "           10 CUSTOMER             PIC Q(30).");
}

}  // namespace
}  // namespace quorva
