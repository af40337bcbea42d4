// Generates a covering matrix of program definitions with the shipped template and checks
// every program; the SQL of the definitions with column selections is prepared in a
// throwaway PostgreSQL cluster against the tables of their DCLGEN members.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "engine/check_program.h"
#include "engine/generator.h"
#include "support/postgres_cluster.h"
#include "support/recording_ui.h"
#include "support/run_command.h"
#include "support/sql_statements.h"
#include "support/temp_folder.h"
#include "template/program_definition_files.h"

namespace quorva::test {
namespace {

namespace fs = std::filesystem;

// Generates the definition in the current working folder; returns the program's text.
std::string generate(const fs::path& folder, const MatrixDefinition& d) {
  write_definition(folder, d);
  fs::remove(folder / "programs/QVTEST.txt");
  RecordingUi ui;
  Generator generator;
  generator.open_panel();
  GenerationResult result = generator.go();
  EXPECT_EQ(result.status, GenerationResult::kDone) << d.describe();
  return read_text(folder / "programs/QVTEST.txt");
}

CheckOptions check_options(const fs::path& folder) {
  CheckOptions options;
  options.compile = true;
  options.folders.dclgen_folder = folder / "programs";
  options.folders.resource_folder = folder / "Resource";
  return options;
}

TEST(TemplateMatrixTest, EveryDefinitionGivesACleanProgram) {
  if (!cobol_compiler_available()) GTEST_SKIP() << "cobc is not installed";
  const std::vector<MatrixDefinition> matrix = covering_matrix(320);
  ASSERT_GE(matrix.size(), 300u);
  TempWorkingFolder folder;
  prepare_working_folder(folder.path());
  PostgresCluster cluster;
  if (cluster.available()) {
    std::string tables;
    for (int kind = 0; kind < 5; ++kind)
      for (int k = 1; k <= 9; ++k) {
        std::optional<std::string> sql = create_table_sql(access_member(kind, k));
        ASSERT_TRUE(sql) << access_table(kind, k);
        tables += *sql + "\n";
      }
    ASSERT_EQ(cluster.run_sql(tables), "");
  }
  int prepared = 0;
  for (const MatrixDefinition& d : matrix) {
    const std::string program = generate(folder.path(), d);
    ASSERT_FALSE(program.empty()) << d.describe();
    CheckReport report = check_program_text(
        "QVTEST.txt", d.cobol ? CheckLanguage::kCobol : CheckLanguage::kEasytrieve, program,
        check_options(folder.path()));
    EXPECT_TRUE(report.findings.empty()) << d.describe() << "\n" << format_findings(report);
    if (!d.columns || !cluster.available()) continue;
    for (const SqlStatement& statement :
         d.cobol ? cobol_sql_statements(program) : easytrieve_sql_statements(program)) {
      std::optional<std::string> sql = postgres_statement(statement.text);
      if (!sql) continue;
      ++prepared;
      EXPECT_EQ(cluster.run_sql("PREPARE q AS " + *sql + ";\nDEALLOCATE q;"), "")
          << d.describe() << "\nline " << statement.line << ": " << statement.text;
    }
  }
  if (cluster.available()) EXPECT_GT(prepared, 0);
  RecordProperty("definitions", static_cast<int>(matrix.size()));
}

TEST(TemplateMatrixTest, MatrixCoversEveryChoice) {
  const std::vector<MatrixDefinition> matrix = covering_matrix(300);
  bool easytrieve_match = false, cobol_match = false, routine = false, nine_excel_out = false;
  for (const MatrixDefinition& d : matrix) {
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
  TempWorkingFolder scratch;
  const std::string home = (scratch.path() / "wf").string();
  const std::string quorva = shell_quote(QUORVA_BINARY) + " --home " + shell_quote(home) + " ";
  ASSERT_EQ(run_command(shell_quote(QUORVA_BINARY) + " init " + shell_quote(home)).status, 0);
  for (const std::string args :
       {"user set ip=127.0.0.1 library=QV.SOURCE user=QVUSER password=PW name=Tester "
        "company=Tests folder=" +
            shell_quote(home + "/programs/"),
        std::string("program set select=2 update=1"),
        std::string("db2 select 2 --include CUSTOMER --table CUSTOMER --owner BANKDB"),
        std::string("db2 update 1 --include CUSTOMER --table CUSTOMER --owner BANKDB"),
        std::string("columns set select 2 query CUST_ID CITY BALANCE"),
        std::string("columns set select 2 where CUST_ID"),
        std::string("columns set update 1 query BALANCE CITY"),
        std::string("columns set update 1 where CUST_ID")})
    ASSERT_EQ(run_command(quorva + args).status, 0) << args;
  for (const char* language : {"cobol", "easytrieve"}) {
    ASSERT_EQ(run_command(quorva + "program set language=" + language).status, 0);
    CommandResult r = run_command(quorva + "--yes generate --check");
    EXPECT_EQ(r.status, 0) << language << "\n" << r.output;
    const std::string program = read_text(fs::path(home) / "programs/CUSTMOV.txt");
    const std::string once = std::string(language) == "cobol" ? "INCLUDE CUSTOMER" : "\nCITY ";
    EXPECT_EQ(program.find(once), program.rfind(once)) << language << "\n" << program;
  }
}

}  // namespace
}  // namespace quorva::test
