// The shipped template: a covering matrix of definitions generated and checked, the SQL of
// those with column selections prepared in a throwaway PostgreSQL cluster against the tables
// of their DCLGEN members; the copy and two-file match programs, with their default record
// layouts and names, compiled and run on sample files.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <numeric>
#include <regex>
#include <string>

#include "check/check_cobol.h"
#include "check/check_finding.h"
#include "check/check_program.h"
#include "panels/generate_panel.h"
#include "store/config_file.h"
#include "support/postgres_cluster.h"
#include "support/recording_ui.h"
#include "support/run_command.h"
#include "support/sql_statements.h"
#include "support/temp_folder.h"
#include "template/program_definition_files.h"

namespace quorva::test {
namespace {

namespace fs = std::filesystem;

TEST(TemplateMatrixTest, EveryDefinitionGivesACleanProgram) {
  if (!cobol_compiler_available()) GTEST_SKIP() << "cobc is not installed";
  const std::vector<MatrixDefinition> matrix = covering_matrix(320);
  ASSERT_GE(matrix.size(), 300u);
  TempWorkingFolder folder;
  prepare_working_folder(folder.path());
  CheckOptions options;
  options.folders = {folder.path() / "programs", folder.path() / "Resource"};
  PostgresCluster cluster;
  if (cluster.available()) {
    std::string tables;
    for (int kind = 0; kind < 5; ++kind)
      for (int k = 1; k <= 9; ++k) tables += create_table_sql(access_member(kind, k, true)).value();
    ASSERT_EQ(cluster.run_sql(tables), "");
    // A statement PostgreSQL refuses must be seen as refused.
    ASSERT_NE(cluster.run_sql("PREPARE q AS SELECT NO_SUCH FROM QVOWN.TABS1;"), "");
  }
  for (const MatrixDefinition& d : matrix) {
    const std::string what = write_definition(folder.path(), d);
    fs::remove(folder.path() / "programs/QVTEST.txt");
    RecordingUi ui;
    GeneratePanel generator;
    generator.open();
    EXPECT_EQ(generator.go().status, GenerationResult::kDone) << what;
    const std::string program = read_text(folder.path() / "programs/QVTEST.txt");
    ASSERT_FALSE(program.empty()) << what;
    const CheckLanguage language = d.cobol ? CheckLanguage::kCobol : CheckLanguage::kEasytrieve;
    CheckReport report = check_program_text("QVTEST.txt", language, program, options);
    // The run JCL beside it, from this generation only: a routine is never a job step.
    const fs::path jcl = folder.path() / "programs/QVTEST.jcl";
    EXPECT_EQ(fs::exists(jcl), d.jcl && d.kind != 1) << what;
    if (d.kind == 1) {
      EXPECT_EQ(program.find("\n//"), std::string::npos) << what;
      // Its callers' area is a copybook beside it, which the check's compile copies.
      EXPECT_NE(program.find("COPY QVTESTL."), std::string::npos) << what;
      EXPECT_TRUE(fs::exists(folder.path() / "programs/QVTESTL.cpy")) << what;
    }
    report.file = (folder.path() / "programs/QVTEST.txt").string();
    check_jcl_beside(report, program, language);
    EXPECT_TRUE(report.findings.empty()) << what << "\n" << format_findings(report);
    if (!d.columns || !cluster.available()) continue;
    int prepared = 0;
    for (const SqlStatement& statement : sql_statements(program, d.cobol)) {
      std::optional<std::string> sql = postgres_statement(statement.text);
      if (!sql) continue;
      ++prepared;
      EXPECT_EQ(cluster.run_sql("PREPARE q AS " + *sql + ";\nDEALLOCATE q;"), "")
          << what << "\nline " << statement.line << ": " << statement.text;
    }
    // Each access has one statement to prepare: none may be missed. Without WHERE columns
    // an UPDATE or DELETE is left as a comment, as it would change every row.
    const int accesses = std::accumulate(d.accesses.begin(), d.accesses.end(), 0);
    EXPECT_EQ(prepared, d.columns == 1 ? accesses : accesses - d.accesses[2] - d.accesses[4])
        << what;
  }
}

TEST(TemplateMatrixTest, MatrixCoversEveryChoice) {
  bool easytrieve_match = false, cobol_match = false, routine = false, nine_excel_out = false,
       shared_in_two = false;
  for (const MatrixDefinition& d : covering_matrix(300)) {
    easytrieve_match |= !d.cobol && d.kind == 2;
    cobol_match |= d.cobol && d.kind == 2;
    routine |= d.kind == 1;
    nine_excel_out |= d.fileout == 9 && d.excel == 2;
    shared_in_two |= d.cobol && d.shared && d.columns &&
                     std::accumulate(d.accesses.begin(), d.accesses.end(), 0) >= 2;
  }
  EXPECT_TRUE(easytrieve_match && cobol_match && routine && nine_excel_out && shared_in_two);
}

// The usual read-then-update of one table: three accesses name one DCLGEN member and share
// columns, which must still give one INCLUDE and one declaration of each host field.
TEST(TemplateMatrixTest, AccessesSharingAMemberDeclareItOnce) {
  if (!cobol_compiler_available()) GTEST_SKIP() << "cobc is not installed";
  QuorvaHome home(QuorvaHome::kSample);
  home.set_user_data();
  expect_steps(&home, {{"program set select=2 update=1", 0, ""},
                       {"db2 select 2 --include CUSTOMER --table CUSTOMER --owner BANKDB", 0, ""},
                       {"db2 update 1 --include CUSTOMER --table CUSTOMER --owner BANKDB", 0, ""},
                       {"columns set select 2 query CUST_ID CITY BALANCE", 0, ""},
                       {"columns set select 2 where CUST_ID", 0, ""},
                       {"columns set update 1 query BALANCE CITY", 0, ""},
                       {"columns set update 1 where CUST_ID", 0, ""}});
  for (const std::string language : {"cobol", "easytrieve"}) {
    expect_steps(&home,
                 {{"program set language=" + language, 0, ""}, {"--yes generate --check", 0, ""}});
    const std::string program = read_text(home.path / "programs/CUSTMOV.txt");
    const std::string once = language == "cobol" ? "INCLUDE CUSTOMER" : "\nCITY ";
    EXPECT_EQ(program.find(once), program.rfind(once)) << language << "\n" << program;
  }
}

// The rewrites that could give other valid SQL; a statement left unprepared or refused
// shows in the matrix.
TEST(SqlStatementsTest, Db2RewritesForPostgres) {
  const struct {
    const char* db2;
    std::optional<std::string> postgres;
  } cases[] = {
      {"SELECT A , B INTO :S1-A , :S1-B :WRK-NULL-S1Q-01 FROM T WHERE K = :DCLT.K",
       "SELECT A , B FROM T WHERE K = $1"},
      {"DECLARE CURS-1F CURSOR FOR SELECT A , CURRENT TIMESTAMP FROM T WHERE K = :K",
       "SELECT A , CURRENT_TIMESTAMP FROM T WHERE K = $1"},
      {"UPDATE T SET A = :A , B = :B WHERE K = :K", "UPDATE T SET A = $1 , B = $2 WHERE K = $3"},
      {"UPDATE T SET A = :A :WRK-NULL-U1Q-01 , B = :B WHERE K = :K",
       "UPDATE T SET A = $1 , B = $2 WHERE K = $3"},
      {"INSERT INTO T ( A , B ) VALUES ( :A , :D.B INDICATOR :I )",
       "INSERT INTO T ( A , B ) VALUES ( $1 , $2 )"},
  };
  for (const auto& c : cases) EXPECT_EQ(postgres_statement(c.db2), c.postgres) << c.db2;
}

// One fixed-length 80-byte record: a 10-byte key and 70 bytes of data.
std::string record(const std::string& key, const std::string& data) {
  std::string text = key;
  text.resize(10, ' ');
  text += data;
  text.resize(80, ' ');
  return text;
}

// The count displayed at the end of the run for a label, or -1.
long displayed_count(const std::string& output, const std::string& label) {
  std::smatch match;
  if (!std::regex_search(output, match, std::regex(label + R"( *: *([0-9.,]+))"))) return -1;
  return std::stol(std::regex_replace(match[1].str(), std::regex("[.,]"), ""));
}

class TemplateRunTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!cobol_compiler_available()) GTEST_SKIP() << "cobc is not installed";
    prepare_working_folder(folder_.path());
  }

  // Generates the definition, compiles it (a routine with the driver that calls it) and runs
  // it with DD_name set to each data file.
  CommandResult build_and_run(const MatrixDefinition& d,
                              const std::vector<std::pair<std::string, std::string>>& files,
                              const std::string& driver = "") {
    write_definition(folder_.path(), d);
    std::filesystem::remove("programs/QVTEST.txt");
    RecordingUi ui;
    GeneratePanel generator;
    generator.open();
    EXPECT_EQ(generator.go().status, GenerationResult::kDone);
    write_text("run/QVTEST.cbl", read_text("programs/QVTEST.txt"));
    // Language Environment's user abend, as a test stands it in: the code shown and the run
    // ended with return code 12.
    write_text("run/CEE3ABD.cbl",
               "       IDENTIFICATION DIVISION.\n"
               "       PROGRAM-ID. CEE3ABD.\n"
               "       DATA DIVISION.\n"
               "       LINKAGE SECTION.\n"
               "       01  LK-CODE                   PIC S9(9) BINARY.\n"
               "       01  LK-TIMING                 PIC S9(9) BINARY.\n"
               "       PROCEDURE DIVISION USING LK-CODE LK-TIMING.\n"
               "           DISPLAY 'USER ABEND U' LK-CODE\n"
               "           MOVE 12 TO RETURN-CODE\n"
               "           STOP RUN.\n");
    std::string sources = "-fstatic-call run/QVTEST.cbl run/CEE3ABD.cbl";
    if (!driver.empty()) {
      write_text("run/DRIVER.cbl", driver);
      sources = "-fstatic-call run/DRIVER.cbl run/QVTEST.cbl run/CEE3ABD.cbl";
    }
    CommandResult compiled = run_command("cobc -x -std=ibm -I programs -o run/qvtest " + sources);
    EXPECT_EQ(compiled.status, 0) << compiled.output;
    std::string environment;
    for (const auto& [name, file] : files) environment += "DD_" + name + "=" + file + " ";
    return run_command("ulimit -f 2048; " + environment + "timeout 20 run/qvtest");
  }

  TempWorkingFolder folder_;
};

TEST_F(TemplateRunTest, CopyProgramCopiesEveryRecord) {
  const std::string input =
      record("K001", "FIRST") + record("K002", "SECOND") + record("K003", "THIRD");
  write_text("in.dat", input);
  CommandResult run =
      build_and_run({.filein = 1, .fileout = 1}, {{"UIN1", "in.dat"}, {"UOUT1", "out.dat"}});
  ASSERT_EQ(run.status, 0) << run.output;
  EXPECT_EQ(read_text("out.dat"), input);
  EXPECT_EQ(displayed_count(run.output, "RECORDS READ +FILEIN1"), 3) << run.output;
  EXPECT_EQ(displayed_count(run.output, "RECORDS WRITTEN +FILEOUT1"), 3) << run.output;
  EXPECT_EQ(read_text("programs/QVTEST.txt").find("DECIMAL-POINT"), std::string::npos);

  // DECIMAL-POINT IS COMMA is the shop's choice, and the counts are edited to match it.
  TagEdit config = config_edit();
  config.set(kDecimalCommaKey, "ON");
  ASSERT_TRUE(config.apply(false));
  run = build_and_run({.filein = 1, .fileout = 1}, {{"UIN1", "in.dat"}, {"UOUT1", "out.dat"}});
  ASSERT_EQ(run.status, 0) << run.output;
  EXPECT_NE(read_text("programs/QVTEST.txt").find("DECIMAL-POINT IS COMMA"), std::string::npos);
  EXPECT_EQ(read_text("out.dat"), input);
  EXPECT_EQ(displayed_count(run.output, "RECORDS READ +FILEIN1"), 3) << run.output;
}

TEST_F(TemplateRunTest, CopyProgramWithOptionsWritesTheSameRecords) {
  const MatrixDefinition d{.constants = true,
                           .thru = true,
                           .buffering = true,
                           .comments = true,
                           .filein = 1,
                           .fileout = 2,
                           .excel = 1};
  std::string input;
  for (int i = 1; i <= 700; ++i) input += record("K" + std::to_string(1000 + i), "ROW");
  write_text("in.dat", input);
  CommandResult run =
      build_and_run(d, {{"UIN1", "in.dat"}, {"UOUT1", "excel.dat"}, {"UOUT2", "out.dat"}});
  ASSERT_EQ(run.status, 0) << run.output;
  // The buffer holds 500 records: the run crosses one flush while reading.
  EXPECT_TRUE(read_text("out.dat") == input) << "the output records differ from the input";
  const std::string excel = read_text("excel.dat");
  ASSERT_EQ(excel.size(), 701u * 200u);
  EXPECT_EQ(excel.substr(0, 8), "KEY;DATA");
  EXPECT_EQ(excel.substr(200, 14), "K1001     ;ROW");
  EXPECT_EQ(displayed_count(run.output, "RECORDS WRITTEN +FILEOUT2"), 700) << run.output;
}

TEST_F(TemplateRunTest, MatchProgramProcessesTheMatchingDetails) {
  const MatrixDefinition match{.kind = 2, .filein = 2, .fileout = 1};
  write_text("master.dat", record("A", "MASTER A") + record("B", "MASTER B") +
                               record("C", "MASTER C") + record("E", "MASTER E"));
  const std::string matched =
      record("B", "DETAIL B1") + record("B", "DETAIL B2") + record("C", "DETAIL C1");
  write_text("detail.dat", matched + record("D", "DETAIL D1"));
  CommandResult run =
      build_and_run(match, {{"UIN1", "master.dat"}, {"UIN2", "detail.dat"}, {"UOUT1", "out.dat"}});
  ASSERT_EQ(run.status, 0) << run.output;
  EXPECT_EQ(read_text("out.dat"), matched);
  EXPECT_EQ(displayed_count(run.output, "DETAILS MATCHED"), 3) << run.output;
  EXPECT_EQ(displayed_count(run.output, "MASTERS WITHOUT DETAIL"), 2) << run.output;
  EXPECT_EQ(displayed_count(run.output, "DETAILS WITHOUT MASTER"), 1) << run.output;

  // With more outputs, the first takes the details with their master (through the buffer
  // too), the others the details without one.
  run = build_and_run({.kind = 2, .thru = true, .buffering = true, .filein = 2, .fileout = 3},
                      {{"UIN1", "master.dat"},
                       {"UIN2", "detail.dat"},
                       {"UOUT1", "out.dat"},
                       {"UOUT2", "alone2.dat"},
                       {"UOUT3", "alone3.dat"}});
  ASSERT_EQ(run.status, 0) << run.output;
  EXPECT_EQ(read_text("out.dat"), matched);
  EXPECT_EQ(read_text("alone2.dat"), record("D", "DETAIL D1"));
  EXPECT_EQ(read_text("alone3.dat"), record("D", "DETAIL D1"));

  // An unsorted master stops the run.
  write_text("master.dat", record("B", "MASTER B") + record("A", "MASTER A"));
  run =
      build_and_run(match, {{"UIN1", "master.dat"}, {"UIN2", "detail.dat"}, {"UOUT1", "out.dat"}});
  EXPECT_EQ(run.status, 12) << run.output;
  EXPECT_NE(run.output.find("FILEIN1 NOT SORTED"), std::string::npos) << run.output;
  EXPECT_NE(run.output.find("USER ABEND U+0000001012"), std::string::npos) << run.output;
}

// A routine is called, not run: a small driver, which takes the routine's area from the
// linkage copybook generated beside it, calls it twice with two requests. Each call starts
// afresh (its files read again from the start, its counters from zero), takes the request,
// fills the response and shows no run statistics.
TEST_F(TemplateRunTest, RoutineStartsEveryCallAfresh) {
  const std::string driver =
      "       IDENTIFICATION DIVISION.\n"
      "       PROGRAM-ID. DRIVER.\n"
      "       DATA DIVISION.\n"
      "       WORKING-STORAGE SECTION.\n"
      "           COPY QVTESTL.\n"
      "       PROCEDURE DIVISION.\n"
      "           MOVE 'REQ-1' TO QVTEST-REQUEST\n"
      "           CALL 'QVTEST' USING QVTEST-AREA\n"
      "           DISPLAY 'CALL 1 RC ' QVTEST-RETURN-CODE\n"
      "                   ' <' QVTEST-RESPONSE '>'\n"
      "           MOVE 'REQ-2' TO QVTEST-REQUEST\n"
      "           CALL 'QVTEST' USING QVTEST-AREA\n"
      "           DISPLAY 'CALL 2 RC ' QVTEST-RETURN-CODE\n"
      "                   ' <' QVTEST-RESPONSE '>'\n"
      "           STOP RUN.\n";
  const std::string input = record("K001", "FIRST") + record("K002", "SECOND");
  write_text("in.dat", input);
  const struct {
    int filein;
    std::string response1, response2;  // the record each call answers with
    std::string written;               // the output file after the second call
  } cases[] = {
      {1, record("K002", "SECOND"), record("K002", "SECOND"), input},
      {0, record("REQ-1", ""), record("REQ-2", ""), record("REQ-2", "")},
  };
  for (const auto& c : cases) {
    const MatrixDefinition routine{.kind = 1, .filein = c.filein, .fileout = 1};
    CommandResult run = build_and_run(routine, {{"UIN1", "in.dat"}, {"UOUT1", "out.dat"}}, driver);
    ASSERT_EQ(run.status, 0) << run.output;
    EXPECT_NE(run.output.find("CALL 1 RC 00 <" + c.response1 + ">"), std::string::npos)
        << run.output;
    EXPECT_NE(run.output.find("CALL 2 RC 00 <" + c.response2 + ">"), std::string::npos)
        << run.output;
    EXPECT_EQ(read_text("out.dat"), c.written) << run.output;
    EXPECT_EQ(run.output.find("STATISTICS"), std::string::npos) << run.output;
  }
}

// Host variables as a z/OS shop's members give them: fields renamed by NAMES(...) or by hand
// (columns named like COBOL words), and two members with a field of the same name. The
// program generated with them passes the check and compiles with the members as they are.

// A member of BANKDB as DCLGEN writes it, with its boxed comments: the declared columns
// (one a line), the host structure's fields, and the NAMES option when there is one.
std::string bank_member(const std::string& table, const std::string& names,
                        const std::string& columns, const std::string& fields) {
  const std::string rule = "      " + std::string(66, '*') + "\n";
  auto box = [](const std::string& text) {
    return "      * " + text + std::string(63 - text.size(), ' ') + "*\n";
  };
  std::string text = rule + box("DCLGEN TABLE(BANKDB." + table + ")") +
                     box("       LIBRARY(BANK.DCLGEN(" + table + "))") +
                     box("       LANGUAGE(COBOL)");
  if (!names.empty()) text += box("       NAMES(" + names + ")");
  text += box("       QUOTE") +
          box("... IS THE DCLGEN COMMAND THAT MADE THE FOLLOWING STATEMENTS") + rule +
          "           EXEC SQL DECLARE BANKDB." + table + " TABLE\n" + columns +
          "           ) END-EXEC.\n" + rule + box("COBOL DECLARATION FOR TABLE BANKDB." + table) +
          rule + "       01  DCL" + table + ".\n" + fields + rule;
  const auto count = std::count(columns.begin(), columns.end(), '\n');
  return text +
         box("THE NUMBER OF COLUMNS DESCRIBED BY THIS DECLARATION IS " + std::to_string(count)) +
         rule;
}

// DCLGEN with NAMES(AC) and no COLSUFFIX: the fields are numbered.
const std::string kAccount =
    bank_member("ACCOUNT", "AC", R"(           ( ACCT_NO                        CHAR(12) NOT NULL,
             BRANCH_ID                      INTEGER NOT NULL,
             HOLDER                         VARCHAR(60) NOT NULL,
             BALANCE                        DECIMAL(13, 2)
)",
                R"(           10 AC1                  PIC X(12).
           10 AC2                  PIC S9(9) USAGE COMP.
           10 AC3.
              49 AC3-LEN           PIC S9(4) USAGE COMP.
              49 AC3-TEXT          PIC X(60).
           10 AC4                  PIC S9(11)V9(2) USAGE COMP-3.
)");

// Columns named like COBOL reserved words, their fields renamed by hand; LAST-UPD-TS is
// also a field of ACCTHIST.
const std::string kBranch =
    bank_member("BRANCH", "", R"(           ( BRANCH_ID                      INTEGER NOT NULL,
             STATUS                         CHAR(1) NOT NULL,
             SECTION                        CHAR(4),
             LAST_UPD_TS                    TIMESTAMP NOT NULL
)",
                R"(           10 BRANCH-ID            PIC S9(9) USAGE COMP.
           10 BR-STATUS            PIC X(1).
           10 BR-SECTION           PIC X(4).
           10 LAST-UPD-TS          PIC X(26).
)");

const std::string kAcctHist =
    bank_member("ACCTHIST", "", R"(           ( ACCT_NO                        CHAR(12) NOT NULL,
             TXN_DATE                       DATE NOT NULL,
             AMOUNT                         DECIMAL(11, 2),
             TXN_TEXT                       VARCHAR(80),
             LAST_UPD_TS                    TIMESTAMP
)",
                R"(           10 ACCT-NO              PIC X(12).
           10 TXN-DATE             PIC X(10).
           10 AMOUNT               PIC S9(9)V9(2) USAGE COMP-3.
           10 TXN-TEXT.
              49 TXN-TEXT-LEN      PIC S9(4) USAGE COMP.
              49 TXN-TEXT-TEXT     PIC X(80).
           10 LAST-UPD-TS          PIC X(26).
)");

class HostVariablesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    write_text(home_.path / "programs/ACCOUNT.DCL", kAccount);
    write_text(home_.path / "programs/BRANCH.DCL", kBranch);
    write_text(home_.path / "programs/ACCTHIST.DCL", kAcctHist);
    home_.set_user_data();
    expect_steps(
        &home_,
        {{"program set name=ACCTUPD language=cobol kind=batch select=2 fetch=1 update=1 "
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
// blank one that is not a number is written as NULL (a number is compared to nothing). A
// VARCHAR is tested through its text, not its group (which holds the binary length), and
// goes with the length of its text less trailing blanks.
TEST_F(HostVariablesTest, UpdateAndInsertCarryNullIndicators) {
  const std::string program = collapse_blanks(generate());
  for (const char* expected :
       {", SECTION = :BR-SECTION :WRK-NULL-U1Q-01 ,", "01 WRK-NULL-U1Q-01 PIC S9(4) COMP",
        "IF BR-SECTION = SPACES MOVE -1 TO WRK-NULL-U1Q-01 END-IF",
        "END-EXEC MOVE ZERO TO WRK-NULL-U1Q-01",
        ", :AMOUNT :WRK-NULL-I1Q-01 , :TXN-TEXT :WRK-NULL-I1Q-02",
        ", :DCLACCTHIST.LAST-UPD-TS :WRK-NULL-I1Q-03 )", "01 WRK-NULL-I1Q-03 PIC S9(4) COMP",
        "IF TXN-TEXT-TEXT = SPACES MOVE -1 TO WRK-NULL-I1Q-02 END-IF",
        "MOVE ZERO TO TXN-TEXT-LEN INSPECT FUNCTION REVERSE(TXN-TEXT-TEXT) TALLYING TXN-TEXT-LEN "
        "FOR LEADING SPACE COMPUTE TXN-TEXT-LEN = LENGTH OF TXN-TEXT-TEXT - TXN-TEXT-LEN EXEC SQL",
        "IF LAST-UPD-TS OF DCLACCTHIST = SPACES MOVE -1 TO WRK-NULL-I1Q-03 END-IF"})
    EXPECT_NE(program.find(expected), std::string::npos) << expected;
  for (const char* never : {"IF AMOUNT = SPACES", ":BR-STATUS :WRK-NULL", "= :BRANCH-ID :WRK",
                            "IF TXN-TEXT = SPACES", "TO AMOUNT-LEN"})
    EXPECT_EQ(program.find(never), std::string::npos) << never;
}

// Easytrieve binds an indicator to each nullable column in every list (no -305 on a NULL
// read, a blank field written as NULL), resets a field read as NULL, and declares a VARCHAR
// VARYING, which the member's CHAR type code does not tell.
TEST_F(HostVariablesTest, EasytrieveListsCarryNullIndicators) {
  expect_steps(&home_, {{"program set language=easytrieve", 0, ""},
                        {"db2 select 1 --cursor CSRACC", 0, ""},
                        {"db2 select 2 --cursor CSRBRA", 0, ""}});
  const std::string program = collapse_blanks(generate());
  for (const char* expected :
       {"WRK-NULL-S1Q-01 W 2 B 0", "WRK-NULL-F1Q-03 W 2 B 0", "TXN-TEXT W 82 A VARYING",
        ":TXN-TEXT :WRK-NULL-F1Q-02 + , :LAST-UPD-TS :WRK-NULL-F1Q-03 IF SQLCODE NE 0",
        "IF SQLCODE EQ 0 AND WRK-NULL-F1Q-02 LT 0 TXN-TEXT = ' ' END-IF",
        "IF TXN-TEXT EQ ' ' WRK-NULL-I1Q-02 = -1 END-IF",
        ", SECTION = :SECTION1 :WRK-NULL-U1Q-01 +", ", :TXN-TEXT :WRK-NULL-I1Q-02 +"})
    EXPECT_NE(program.find(expected), std::string::npos) << expected;
  // The cursors stand in the library section, before the activity that opens them.
  EXPECT_LT(program.find("SQL DECLARE CSRHIST CURSOR"), program.find("JOB INPUT"));
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
