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

/// Every EXEC SQL ... END-EXEC statement of a generated COBOL program, in order (comment
/// lines, sequence area and columns past 72 left out; JCL lines are ignored).
std::vector<SqlStatement> cobol_sql_statements(const std::string& program);

/// The SQL of a generated Easytrieve program: "SQL ..." statements (the word SQL dropped)
/// and the SELECT statements of SQL file input, continuations ("+", "-") joined.
std::vector<SqlStatement> easytrieve_sql_statements(const std::string& program);

/// CREATE SCHEMA / CREATE TABLE for PostgreSQL from a DCLGEN member's DECLARE TABLE: the
/// owner becomes the schema, DB2 types their PostgreSQL counterparts, names lower-cased and
/// quoted so the programs' unquoted names match. nullopt when the member declares no table.
std::optional<std::string> create_table_sql(const std::string& member);

/// The statement PostgreSQL can PREPARE in place of a DB2 one: host variables become $n
/// parameters (indicators dropped, a repeated variable keeps its number), SELECT ... INTO
/// loses its INTO list, a cursor declaration gives its SELECT, CURRENT DATE/TIME/TIMESTAMP
/// become CURRENT_..., isolation (WITH UR...) and OPTIMIZE FOR clauses are dropped, FOR
/// UPDATE OF columns becomes FOR UPDATE. nullopt for statements that are not prepared
/// (INCLUDE, WHENEVER, OPEN, CLOSE, FETCH, COMMIT, ROLLBACK, DECLARE TABLE, CONNECT, SET).
std::optional<std::string> postgres_statement(const std::string& db2);

}  // namespace quorva::test
