#pragma once

// A synthetic DCLGEN member of `columns` columns of every usual type, a third NOT NULL:
// 750 is the most a DB2 table may have.
#include <string>

inline std::string wide_member(int columns) {
  static const char* kTypes[] = {"DECIMAL(9, 2)", "CHAR(20)",  "VARCHAR(200)", "INTEGER",
                                 "DATE",          "TIMESTAMP", "SMALLINT",     "TIME"};
  std::string sql = "           EXEC SQL DECLARE OWNER.WIDE_TABLE TABLE\n";
  std::string cobol = "       01  DCLWIDE-TABLE.\n";
  for (int i = 0; i < columns; ++i) {
    std::string name = "COLUMN_NUMBER_" + std::to_string(i);
    std::string host = "COLUMN-NUMBER-" + std::to_string(i);
    std::string type = kTypes[i % 8];
    sql += std::string(i == 0 ? "           ( " : "             ") + name +
           std::string(31 - name.size(), ' ') + type + (i % 3 ? "" : " NOT NULL") +
           (i + 1 < columns ? ",\n" : "\n");
    switch (i % 8) {
      case 0:
        cobol += "           10 " + host + " PIC S9(7)V9(2) USAGE COMP-3.\n";
        break;
      case 2:
        cobol += "           10 " + host + ".\n              49 " + host +
                 "-LEN PIC S9(4) USAGE COMP.\n              49 " + host + "-TEXT PIC X(200).\n";
        break;
      case 3:
        cobol += "           10 " + host + " PIC S9(9) USAGE COMP.\n";
        break;
      case 6:
        cobol += "           10 " + host + " PIC S9(4) USAGE COMP.\n";
        break;
      default:
        cobol += "           10 " + host + " PIC X(26).\n";
        break;
    }
  }
  return sql + "           ) END-EXEC.\n" + cobol;
}
