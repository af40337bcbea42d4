// The shipped template: a covering matrix of definitions generated and checked, the SQL of
// those with column selections prepared in a throwaway PostgreSQL cluster against the tables
// of their DCLGEN members; the copy and two-file match programs, with their default record
// layouts and names, compiled and run on sample files.

#include <gtest/gtest.h>

#include <filesystem>
#include <numeric>
#include <regex>
#include <string>

#include "check/check_cobol.h"
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
      for (int k = 1; k <= 9; ++k) tables += create_table_sql(access_member(kind, k)).value();
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
    if (d.kind == 1) EXPECT_EQ(program.find("\n//"), std::string::npos) << what;
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
  bool easytrieve_match = false, cobol_match = false, routine = false, nine_excel_out = false;
  for (const MatrixDefinition& d : covering_matrix(300)) {
    easytrieve_match |= !d.cobol && d.kind == 2;
    cobol_match |= d.cobol && d.kind == 2;
    routine |= d.kind == 1;
    nine_excel_out |= d.fileout == 9 && d.excel == 2;
  }
  EXPECT_TRUE(easytrieve_match && cobol_match && routine && nine_excel_out);
}

// The usual read-then-update of one table: three accesses name one DCLGEN member and share
// columns, which must still give one INCLUDE and one declaration of each host field.
TEST(TemplateMatrixTest, AccessesSharingAMemberDeclareItOnce) {
  if (!cobol_compiler_available()) GTEST_SKIP() << "cobc is not installed";
  QuorvaHome home(QuorvaHome::kSample);
  expect_steps(&home, {{"user set ip=127.0.0.1 library=QV.SOURCE user=QVUSER password=PW "
                        "name=Tester company=Tests folder=" +
                            shell_quote(home.path.string() + "/programs/"),
                        0, ""},
                       {"program set select=2 update=1", 0, ""},
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
    CommandResult compiled = run_command("cobc -x -std=ibm -o run/qvtest " + sources);
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

  // An unsorted master stops the run.
  write_text("master.dat", record("B", "MASTER B") + record("A", "MASTER A"));
  run =
      build_and_run(match, {{"UIN1", "master.dat"}, {"UIN2", "detail.dat"}, {"UOUT1", "out.dat"}});
  EXPECT_EQ(run.status, 12) << run.output;
  EXPECT_NE(run.output.find("FILEIN1 NOT SORTED"), std::string::npos) << run.output;
  EXPECT_NE(run.output.find("USER ABEND U+0000001012"), std::string::npos) << run.output;
}

// A routine is called, not run: a small driver calls it twice with two requests. Each call
// starts afresh (its files read again from the start, its counters from zero), takes the
// request, fills the response and shows no run statistics.
TEST_F(TemplateRunTest, RoutineStartsEveryCallAfresh) {
  const std::string driver =
      "       IDENTIFICATION DIVISION.\n"
      "       PROGRAM-ID. DRIVER.\n"
      "       DATA DIVISION.\n"
      "       WORKING-STORAGE SECTION.\n"
      "       01  WS-AREA.\n"
      "           05 WS-REQUEST             PIC X(80).\n"
      "           05 WS-RESPONSE            PIC X(80).\n"
      "           05 WS-RETURN-CODE         PIC 9(02).\n"
      "       PROCEDURE DIVISION.\n"
      "           MOVE 'REQ-1' TO WS-REQUEST\n"
      "           CALL 'QVTEST' USING WS-AREA\n"
      "           DISPLAY 'CALL 1 RC ' WS-RETURN-CODE ' <' WS-RESPONSE '>'\n"
      "           MOVE 'REQ-2' TO WS-REQUEST\n"
      "           CALL 'QVTEST' USING WS-AREA\n"
      "           DISPLAY 'CALL 2 RC ' WS-RETURN-CODE ' <' WS-RESPONSE '>'\n"
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

}  // namespace
}  // namespace quorva::test
