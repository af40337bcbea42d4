#include "support/sql_statements.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "check/check_samples.h"
#include "support/postgres_cluster.h"
#include "support/temp_folder.h"

namespace quorva::test {
namespace {

TEST(SqlStatementsTest, CobolStatementsInOrderWithTheirLines) {
  std::vector<SqlStatement> statements = cobol_sql_statements(kCobolProgram);
  ASSERT_EQ(statements.size(), 8u);
  EXPECT_EQ(statements[0].line, 38);
  EXPECT_EQ(statements[0].text, "INCLUDE SQLCA");
  EXPECT_EQ(statements[2].text,
            "DECLARE CUR1 CURSOR FOR SELECT ORD_ID FROM PROD.ORDERS WHERE CUSTOMER = "
            ":DCLORDERS.CUSTOMER");
  EXPECT_EQ(statements[3].line, 49);
  EXPECT_EQ(statements[7].text, "COMMIT");
}

TEST(SqlStatementsTest, EasytrieveSqlAndSelect) {
  std::vector<SqlStatement> statements = easytrieve_sql_statements(
      "FILE ORDERS SQL (PROD.ORDERS)\nSQL INCLUDE (ORD_ID) +\n  FROM PROD.ORDERS\n"
      "JOB INPUT SQL\nSELECT ORD_ID FROM PROD.ORDERS +\n  WHERE ORD_ID > :WS-ID INTO :ORD-ID\n");
  ASSERT_EQ(statements.size(), 2u);
  EXPECT_EQ(statements[0].text, "INCLUDE (ORD_ID) FROM PROD.ORDERS");
  EXPECT_EQ(statements[1].line, 5);
  EXPECT_EQ(statements[1].text,
            "SELECT ORD_ID FROM PROD.ORDERS WHERE ORD_ID > :WS-ID INTO :ORD-ID");
}

TEST(SqlStatementsTest, Db2RewritesForPostgres) {
  struct Case {
    const char* db2;
    const char* postgres;  // nullptr: not prepared
  } cases[] = {
      {"SELECT A, B INTO :X.A, :B:IND-B FROM T WHERE K = :K AND D <= CURRENT DATE WITH UR",
       "SELECT A, B FROM T WHERE K = $1 AND D <= CURRENT_DATE"},
      {"SELECT A FROM T WHERE K = :K INTO :A", "SELECT A FROM T WHERE K = $1"},
      // The generated INTO list: an indicator after a blank, or with INDICATOR.
      {"SELECT A, B, C INTO :A , :B        :WRK-NULL-S1Q-01 , :C INDICATOR :IC FROM T "
       "WHERE K = :K",
       "SELECT A, B, C FROM T WHERE K = $1"},
      {"UPDATE T SET A = :A :IA, B = :B WHERE K = :K", "UPDATE T SET A = $1, B = $2 WHERE K = $3"},
      {"DECLARE C1 CURSOR WITH HOLD FOR SELECT A FROM T WHERE K > :K FOR UPDATE OF A, B",
       "SELECT A FROM T WHERE K > $1 FOR UPDATE"},
      {"UPDATE T SET A = :A INDICATOR :IA, TS = CURRENT TIMESTAMP WHERE K = :K OR J = :K",
       "UPDATE T SET A = $1, TS = CURRENT_TIMESTAMP WHERE K = $2 OR J = $2"},
      {"INSERT INTO T (A, B) VALUES (:A, 'X:Y')", "INSERT INTO T (A, B) VALUES ($1, 'X:Y')"},
      {"SELECT A FROM T FETCH FIRST 1 ROWS ONLY OPTIMIZE FOR 1 ROW",
       "SELECT A FROM T FETCH FIRST 1 ROWS ONLY"},
      {"DELETE FROM T WHERE CURRENT OF C1", "DELETE FROM T WHERE CURRENT OF C1"},
      {"INCLUDE SQLCA", nullptr},
      {"FETCH C1 INTO :A", nullptr},
      {"OPEN C1", nullptr},
      {"COMMIT", nullptr},
      {"WHENEVER SQLERROR GO TO E", nullptr},
      {"DECLARE P.T TABLE (A CHAR(1))", nullptr},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.db2);
    std::optional<std::string> statement = postgres_statement(c.db2);
    if (!c.postgres) {
      EXPECT_FALSE(statement.has_value()) << *statement;
    } else {
      ASSERT_TRUE(statement.has_value());
      EXPECT_EQ(*statement, c.postgres);
    }
  }
}

TEST(SqlStatementsTest, CreateTableFromMember) {
  EXPECT_EQ(create_table_sql(kOrdersMember),
            "CREATE SCHEMA IF NOT EXISTS \"prod\";\nCREATE TABLE \"prod\".\"orders\" (\n"
            "  \"ord_id\" NUMERIC(9,0) NOT NULL,\n  \"customer\" CHAR(30) NOT NULL,\n"
            "  \"note\" VARCHAR(40),\n  \"ord_date\" DATE NOT NULL\n);\n");
  EXPECT_FALSE(create_table_sql("       01  NO-TABLE PIC X.\n").has_value());
}

class PostgresClusterTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!cluster_.available()) GTEST_SKIP() << cluster_.why_not();
  }
  PostgresCluster cluster_;
};

TEST_F(PostgresClusterTest, EveryStatementOfTheSampleProgramPrepares) {
  ASSERT_EQ(cluster_.run_sql(*create_table_sql(kOrdersMember)), "");
  int prepared = 0;
  for (const SqlStatement& statement : cobol_sql_statements(kCobolProgram)) {
    std::optional<std::string> sql = postgres_statement(statement.text);
    if (!sql) continue;
    std::string name = "s" + std::to_string(++prepared);
    EXPECT_EQ(cluster_.run_sql("PREPARE " + name + " AS " + *sql + ";"), "")
        << "line " << statement.line << ": " << *sql;
  }
  EXPECT_EQ(prepared, 2);
  EXPECT_NE(cluster_.run_sql("PREPARE bad AS SELECT NO_SUCH_COLUMN FROM prod.orders;")
                .find("no_such_column"),
            std::string::npos);
  EXPECT_EQ(cluster_.query("SELECT count(*) FROM prod.orders;"), "0\n");
}

TEST_F(PostgresClusterTest, RealMembersCreateTheirTables) {
  std::filesystem::path corpus = shared_folder() / "corpus" / "dclgen";
  if (shared_folder().empty() || !std::filesystem::is_directory(corpus))
    GTEST_SKIP() << "no DCLGEN corpus";
  int created = 0;
  for (const auto& entry : std::filesystem::directory_iterator(corpus)) {
    std::optional<std::string> sql = create_table_sql(read_text(entry.path()));
    if (!sql) continue;
    // Members of one table appear more than once: each is tried on its own.
    EXPECT_EQ(cluster_.run_sql("BEGIN;\n" + *sql + "ROLLBACK;\n"), "")
        << entry.path().filename() << "\n"
        << *sql;
    ++created;
  }
  EXPECT_GT(created, 0);
}

}  // namespace
}  // namespace quorva::test
