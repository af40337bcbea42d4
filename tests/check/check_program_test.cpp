#include "check/check_program.h"

#include <gtest/gtest.h>

#include <sstream>

#include <filesystem>
#include <span>
#include <string>

#include "check/check_cobol.h"
#include "check/check_samples.h"
#include "support/run_command.h"
#include "support/temp_folder.h"

namespace quorva::test {
namespace {

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  if (at != std::string::npos) text.replace(at, from.size(), to);
  return text;
}

CheckReport check_text(CheckLanguage language, const std::string& text) {
  return check_program_text(language == CheckLanguage::kCobol ? "PGMORD" : "EZTORD", language, text,
                            {.compile = false});
}

TEST(CheckProgramTest, CleanSamplesHaveTheirLanguageAndNoFinding) {
  for (const auto& [text, language] : {std::pair{kCobolProgram, CheckLanguage::kCobol},
                                       {kEasytrieveProgram, CheckLanguage::kEasytrieve}}) {
    EXPECT_EQ(detect_language(text), language);
    EXPECT_EQ(format_findings(check_text(language, text)), "");
  }
}

// A fault planted in a clean sample: the text replaced, its replacement, and the line and
// words of the finding it must give.
struct PlantedFault {
  const char *from, *to;
  int line;
  const char* message;
};

const PlantedFault kCobolFaults[] = {
    {"DISPLAY 'SQLCODE ' SQLCODE", "DISPLAY 'SQLCODE ' SQLCODE                                  X",
     51, "COBOL text past column 72 (column 75)"},
    {"           MOVE 1 TO ORD-ID.", "\tMOVE 1 TO ORD-ID.", 43, "tab character"},
    {"       PROCEDURE DIVISION.", "000100 PROCEDURE DIVISION.", 39, "sequence area"},
    {"PROGRAM-ID. PGMORD.", "PROGRAM-ID. <++++++>.", 17,
     "\"<++++++>\", written by the program name: quorva program set name=..."},
    {"MOVE 1 TO ORD-ID.", "MOVE 1 TO CAMPO-ALL.", 43,
     "\"CAMPO-ALL\", written by the DB2 column expansion"},
    {"MOVE 1 TO ORD-ID.", "MOVE 1 TO *PIC_not_found*.", 43, "not in the DCLGEN member"},
    {"MOVE 1 TO ORD-ID.", "MOVE # TO ORD-ID.", 43, "\"#\""},
    {"//ORDIN    DD DSN", "//ORDINX   DD DSN", 3, "no DD statement for the program's file ORDIN"},
    {"//SYSIN    DD *", "//SYSINX   DD *", 3, "no SYSIN DD"},
    {" RUN PROGRAM(PGMORD) PLAN(PLANORD) LIB('USER.LOADLIB')",
     "       RUN PROGRAM(PGMORD) -\n       LIB('USER.LOADLIB')", 3, "names no PLAN"},
    {" PLAN(PLANORD)", "", 3, "names no PLAN"},
    {"//            SPACE=(TRK", "//                  SPACE=(TRK", 7,
     "begin between columns 4 and 16"},
    {"DISP=(NEW,CATLG,DELETE),", "DISP=(NEW,CATLG,DELETE)", 7, "continues nothing"},
    {"CLASS=A,MSGCLASS=X,\n//             NOTIFY=&SYSUID",
     "CLASS=A,MSGCLASS=X,\n//*            NOTIFY=&SYSUID\n/*", 1, "no \"//\" continuation"},
    {"SPACE=(TRK,(10,5),RLSE),", "", 6, "needs SPACE="},
    {",DCB=(RECFM=FB,LRECL=80)", ",DCB=(RECFM=FB)", 6, "record length"},
    {"DISP=(NEW,CATLG,DELETE),\n//            SPACE=(TRK,(10,5),RLSE),",
     "DISP=(,CATLG,DELETE),\n//           ", 6, "needs SPACE="},
    {"DISP=SHR\n//ORDOUT", "DISP=OLDX\n//ORDOUT", 5, "invalid DISP=OLDX"},
    {"//STEPLIB  DD", "//1STEPLIB DD", 4, "invalid JCL name"},
    {"//PGMORDJ  JOB (ACCT),'ORDERS',CLASS=A,MSGCLASS=X,\n//             NOTIFY=&SYSUID\n", "", 1,
     "does not begin with a JOB"},
    {"DISP=SHR\n//ORDOUT", "DISP=SHR\n//ORDIN    DD DUMMY\n//ORDOUT", 6,
     "step STEP010: DD ORDIN is given twice (first on line 5)"},
    {"//STEP010  EXEC PGM=IKJEFT01",
     "// SET RUNPGM=PGMORD\n// SET RUNPGM=IKJEFT01\n//STEP010  EXEC PGM=&RUNPGM", 4,
     "symbol RUNPGM is SET twice (first on line 3)"},
    {"USER.LOADLIB,DISP=SHR\n//ORDIN",
     "USER.LOADLIB,DISP=SHR\n//  DD DSN=DSN.SDSNLOAD,DISP=SHR\n//  DD "
     "DSN=DSN.SDSNEXIT,DISP=SHR\n//ORDIN",
     6, "SDSNEXIT must come before SDSNLOAD"},
    {"ACCEPT WS-DATE.", "ACCEPT WS-DATE.\n           ACCEPT WS-DATE FROM SYSIN.", 3,
     "ACCEPTs 2 SYSIN cards but the SYSIN DD holds 1"},
    {"EXEC SQL COMMIT END-EXEC.", "EXEC SQL\n                DELETE FROM PROD.ORDERS END-EXEC.", 57,
     "changes DB2 but never rolls back"},
    {"STOP RUN.", "GOBACK.", 56, "a routine must not COMMIT"},
    {"SELECT CUSTOMER, NOTE", "SELECT", 45, "select list is empty"},
    {"INTO :CUSTOMER, :NOTE", "INTO , :CUSTOMER, :NOTE", 46, "INTO list begins with a comma"},
    {"WHERE ORD_ID =", "WHERE AND ORD_ID =", 48, "WHERE condition begins with AND"},
    {"WHERE ORD_ID = :DCLORDERS.ORD-ID", "WHERE", 48, "WHERE without a condition"},
    {"EXEC SQL COMMIT END-EXEC.", "EXEC SQL UPDATE PROD.ORDERS SET NOTE = 'X' END-EXEC.", 56,
     "UPDATE without WHERE changes every row"},
};

const PlantedFault kEasytrieveFaults[] = {
    {"  END-IF\n", "", 17, "IF is not closed by END-IF"},
    {"  IF IN-ID > 0\n", "  DO WHILE IN-ID > 0\n", 23, "END-IF where END-DO is expected"},
    {"PUT ORDOUT", "PUT ORDOUX", 19, "file ORDOUX has no FILE statement"},
    {"  PRINT ORDREP\n", "FILE LATE\n", 24, "FILE statement after"},
    {"  LINE 1 IN-ID IN-NAME\n", "  LINE 1 IN-ID IN-NAME\n  WS-COUNT = 0\n", 27,
     "activity logic after a REPORT"},
    {"PARM LINK(EZTORD R)\n* ORDERS REPORT\n", "* ORDERS REPORT\nFILE EXTRA\nPARM LINK(EZTORD R)\n",
     10, "PARM must be the first"},
    {"  PRINT ORDREP\n", "LATE-FIELD W 5 N\n", 24, "field definition after the first activity"},
    {"  PRINT ORDREP\n", "  PRINT ORDREPX\n", 24, "report ORDREPX has no REPORT statement"},
    {"WS-COUNT     W  5 P 0\n", "WS-COUNT     W  5 P 0\nWS-HALF  WS-COUNT  2  3 P 0\n", 16,
     "the offset into WS-COUNT must be signed (+1 for position 2)"},
    {"  PRINT ORDREP\n", "  SQL DELETE FROM PROD.ORDERS +\n    WHERE ( +\n    )\n  PRINT ORDREP\n",
     25, "WHERE without a condition"},
    {"     DISPLAY 'ZERO ID ' +",
     "     DISPLAY 'ZERO ID '                                                     +", 21,
     "Easytrieve text past column 72"},
    {"EXEC PGM=EZTPA00\n//STEPLIB  DD DSN=EZT.LOADLIB,DISP=SHR\n//ORDIN ",
     "EXEC PGM=&RUNPGM\n// SET RUNPGM=EZTPA00\n//ORDINX", 2,
     "no DD statement for the program's file ORDIN"},
};

TEST(CheckProgramTest, EachPlantedFaultIsReportedOnItsLine) {
  using Faults = std::span<const PlantedFault>;
  for (const auto& [language, sample, faults] :
       {std::tuple{CheckLanguage::kCobol, kCobolProgram, Faults(kCobolFaults)},
        {CheckLanguage::kEasytrieve, kEasytrieveProgram, Faults(kEasytrieveFaults)}}) {
    for (const PlantedFault& fault : faults) {
      SCOPED_TRACE(std::string(fault.message) + " <- " + fault.to);
      CheckReport report = check_text(language, replaced(sample, fault.from, fault.to));
      bool found = false;
      for (const CheckFinding& finding : report.findings)
        found |=
            finding.line == fault.line && finding.message.find(fault.message) != std::string::npos;
      EXPECT_TRUE(found) << format_findings(report);
    }
  }
}

// NAME.jcl beside NAME.txt is checked against the program's files and must be its JCL.
TEST(CheckProgramTest, JclBesideTheProgramIsCheckedAsItsOwnFile) {
  TempWorkingFolder folder;
  const std::string program = kCobolProgram;
  const std::string jcl = program.substr(0, program.find("       IDENTIFICATION"));
  const struct {
    std::string jcl;
    const char* finding;  // "" none
  } cases[] = {
      {jcl, ""},
      {replaced(jcl, "//ORDIN ", "//ORDINX"),
       "src/PGMORD.jcl:3: step STEP010: no DD statement for the program's file ORDIN"},
      {jcl + "//ORDOUT   DD DUMMY\n", "src/PGMORD.jcl: this is not the JCL of PGMORD.txt"},
      {replaced(jcl, "USER.ORDERS.IN", "<----->.ORDERS.IN"),
       "src/PGMORD.jcl:5: unreplaced placeholder \"<----->\""},
  };
  write_text("src/PGMORD.txt", program);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.finding);
    write_text("src/PGMORD.jcl", c.jcl);
    // The program file holds the JCL as it was generated, so only that one is its own.
    const std::string report = format_findings(
        check_program_file("src/PGMORD.txt", CheckLanguage::kCobol, {.compile = false}));
    if (*c.finding == '\0')
      EXPECT_EQ(report, "");
    else
      EXPECT_NE(report.find(c.finding), std::string::npos) << report;
  }
}

// The compiler cases: the program and its DCLGEN member in a folder, the shipped SQLCA.
class CheckCobolTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!cobol_compiler_available()) GTEST_SKIP() << "cobc is not installed";
    write_text("src/ORDERS.DCL", kOrdersMember);
    write_text("Resource/SQLCA.cpy",
               read_text(std::filesystem::path(QUORVA_SOURCE_DIR) / "skeleton/Resource/SQLCA.cpy"));
  }
  CheckReport check(const std::string& text, bool compile = true) {
    write_text("src/PGMORD.txt", text);
    CheckOptions options;
    options.compile = compile;
    options.folders.resource_folder = "Resource";
    return check_program_file("src/PGMORD.txt", CheckLanguage::kCobol, options);
  }
  TempWorkingFolder folder_;
};

TEST_F(CheckCobolTest, CleanProgramCompiles) {
  CheckReport report = check(kCobolProgram);
  EXPECT_TRUE(report.notes.empty());
  EXPECT_EQ(format_findings(report), "");
  // The same member saved from an ISPF listing, every card numbered.
  std::istringstream cards(kOrdersMember);
  std::string numbered, card;
  for (int n = 1; std::getline(cards, card); ++n)
    numbered +=
        std::string(6 - std::to_string(n).size(), '0') + std::to_string(n) + " " + card + "\n";
  write_text("src/ORDERS.DCL", numbered);
  EXPECT_EQ(format_findings(check(kCobolProgram)), "");
}

TEST_F(CheckCobolTest, UndefinedHostVariablesAreReportedOnTheirLines) {
  std::string text = replaced(kCobolProgram, ":DCLORDERS.ORD-ID", ":DCLORDERS.ORD-IDX");
  // Indicators as the generator writes them, after a blank, and with INDICATOR.
  text = replaced(text, ":NOTE:WS-NULL-NOTE", ":NOTE :WS-NULL-NOT");
  text = replaced(text, "INTO :ORD-ID END-EXEC", "INTO :ORD-ID INDICATOR :WS-NID END-EXEC");
  // Found by the check itself, with the compiler or without, each once.
  for (const bool compile : {true, false}) {
    CheckReport report = check(text, compile);
    ASSERT_EQ(report.findings.size(), 3u) << format_findings(report);
    const std::pair<int, const char*> expected[] = {{46, ":WS-NULL-NOT is not defined"},
                                                    {48, ":DCLORDERS.ORD-IDX is not defined"},
                                                    {54, ":WS-NID is not defined"}};
    for (size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(report.findings[i].line, expected[i].first);
      EXPECT_NE(report.findings[i].message.find(expected[i].second), std::string::npos)
          << report.findings[i].message;
    }
  }
}

// Host variables declared in a copybook are the program's own; one not found is a note, not a
// fault of the program.
TEST_F(CheckCobolTest, HostVariablesOfACopybook) {
  const std::string text =
      replaced(kCobolProgram, "       01  WS-NULL-NOTE            PIC S9(4) COMP.",
               "           COPY WSNULL.");
  for (const bool present : {true, false}) {
    if (present)
      write_text("src/WSNULL.cpy", "       01  WS-NULL-NOTE            PIC S9(4) COMP.\n");
    else
      std::filesystem::remove("src/WSNULL.cpy");
    CheckReport report = check(text, false);
    EXPECT_EQ(format_findings(report), "") << present;
    EXPECT_EQ(report.notes.size(), present ? 0u : 1u) << present;
    if (!present) EXPECT_NE(report.notes[0].find("WSNULL"), std::string::npos);
  }
}

TEST_F(CheckCobolTest, MissingOrFaultyMemberIsReported) {
  CheckReport missing = check(replaced(kCobolProgram, "INCLUDE ORDERS", "INCLUDE ORDERX"));
  ASSERT_FALSE(missing.findings.empty());
  EXPECT_EQ(missing.findings[0].line, 34);
  EXPECT_NE(missing.findings[0].message.find("ORDERX"), std::string::npos);
  // A fault in the member is shown on the member's line.
  write_text("src/ORDERS.DCL", replaced(kOrdersMember, "PIC X(30)", "PIC Q(30)"));
  CheckReport faulty = check(kCobolProgram);
  ASSERT_FALSE(faulty.findings.empty());
  EXPECT_EQ(faulty.findings[0].file, "src/ORDERS.DCL");
  EXPECT_EQ(faulty.findings[0].line, 9);
  EXPECT_EQ(faulty.findings[0].text, "           10 CUSTOMER             PIC Q(30).");
}

// The stub keeps one line per line, so the compiler's line numbers stay the program's.
TEST(StubPrecompileTest, SqlBlocksBecomeCobolLineForLine) {
  struct Case {
    std::vector<std::string> in, out;
  } cases[] = {
      {{"           EXEC SQL INCLUDE SQLCA END-EXEC."}, {"           COPY SQLCA."}},
      {{"           EXEC SQL DECLARE C1 CURSOR FOR", "                SELECT A FROM T",
        "           END-EXEC."},
       {"      *    EXEC SQL DECLARE C1 CURSOR FOR", "      *         SELECT A FROM T",
        "      *    END-EXEC."}},
      {{"           EXEC SQL SELECT A INTO :WS-A:WS-IND",
        "                FROM T WHERE K = :DCLT.K-1 AND C = 'X:Y'", "           END-EXEC"},
       {"           CALL 'SQLSTUB' USING WS-A WS-IND", "           K-1 OF DCLT", "           "}},
      // Indicators are named like any host variable, with or without INDICATOR.
      {{"           EXEC SQL FETCH C1", "                INTO :A       :IA, :B INDICATOR :IB",
        "           END-EXEC."},
       {"           CALL 'SQLSTUB'", "           USING A IA B IB", "           ."}},
      {{"           EXEC SQL COMMIT END-EXEC", "           MOVE :A TO B."},
       {"           CALL 'SQLSTUB'", "           MOVE :A TO B."}},
      {{"      *    EXEC SQL COMMIT END-EXEC"}, {"      *    EXEC SQL COMMIT END-EXEC"}},
      {{"           EXEC SQL COMMIT", "           MOVE A TO B."},
       {"           EXEC SQL COMMIT", "           MOVE A TO B."}},
      // Host variables only DB2 and IBM COBOL know get a stand-in the compiler reads.
      {{"           10 RESUME   USAGE IS SQL TYPE IS CLOB(5K).",
        "           10 ROW-ID   USAGE SQL TYPE IS ROWID.",
        "           10 INOROUT  PIC G(1) USAGE DISPLAY-1."},
       {"           10 RESUME   PIC X(8).", "           10 ROW-ID   PIC X(8).",
        "           10 INOROUT  PIC X(1)."}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.in[0]);
    EXPECT_EQ(stub_precompile(c.in), c.out);
  }
}

// `quorva check` on the current program of a working folder, a named one and a missing one.
TEST(CheckCommandTest, CurrentNamedAndMissingPrograms) {
  QuorvaHome home;
  const std::string program = (home.path / "programs/EZTORD.txt").string();
  write_text(home.path / "temp/Parbase.dat", "nomeprogr=EZTORD\nlinguaggio=easytrieve\n");
  write_text(program, kEasytrieveProgram);
  write_text("elsewhere/EZTORD.txt", kEasytrieveProgram);
  // A relative file name is the shell's, not the working folder's.
  expect_steps(&home, {{"check", 0, "no finding"},
                       {"check EZTORD", 0, ""},
                       {"check elsewhere/EZTORD.txt", 0, ""},
                       {"check NOSUCH", 1, "cannot be read"}});
  std::string faulty = kEasytrieveProgram;
  write_text(program, faulty.erase(faulty.find("  END-IF\n"), 9));
  expect_steps(&home,
               {{"check", 1, program + ":17: IF is not closed by END-IF\n      IF IN-ID > 0\n"}});
}

}  // namespace
}  // namespace quorva::test
