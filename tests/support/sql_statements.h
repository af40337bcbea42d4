#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quorva::test {

/// One SQL statement of a generated program, blanks collapsed, with its first line (1-based).
struct SqlStatement {
  int line = 0;
  std::string text;
};

/// The SQL of a generated program: COBOL EXEC SQL ... END-EXEC blocks (comment and JCL
/// lines left out), or Easytrieve "SQL ..." statements with their "+" continuations.
std::vector<SqlStatement> sql_statements(const std::string& program, bool cobol);

/// CREATE SCHEMA and CREATE TABLE from a DCLGEN member's DECLARE TABLE (the column types the
/// tests' members use are the same in PostgreSQL); nullopt when it declares no table.
std::optional<std::string> create_table_sql(const std::string& member);

/// The statement PostgreSQL can PREPARE in place of a generated DB2 one: host variables
/// become $n, SELECT ... INTO loses its INTO list, a cursor declaration gives its SELECT,
/// CURRENT DATE/TIME/TIMESTAMP become CURRENT_...; nullopt for statements not prepared.
std::optional<std::string> postgres_statement(const std::string& db2);

}  // namespace quorva::test
