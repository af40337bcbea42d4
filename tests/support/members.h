#pragma once

#include <string>

namespace quorva::test {

/// A DCLGEN member of `table` (qualified or not) with ID INTEGER NOT NULL and a nullable
/// NAME CHAR(20), host variables in the level-01 `structure`.
inline std::string small_member(const std::string& table, const std::string& structure) {
  std::string text = R"(           EXEC SQL DECLARE @T TABLE
           ( ID                             INTEGER NOT NULL,
             NAME                           CHAR(20)
           ) END-EXEC.
       01  @S.
           10 ID                   PIC S9(9) USAGE COMP.
           10 NAME                 PIC X(20).
)";
  text.replace(text.find("@T"), 2, table);
  text.replace(text.find("@S"), 2, structure);
  return text;
}

}  // namespace quorva::test
