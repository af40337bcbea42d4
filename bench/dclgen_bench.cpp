// Parses a synthetic member of 750 columns, the most a DB2 table may have, and one of 50,000
// (about 5 MB, to show the parse is linear), in both passes, as the column selection dialog
// does when it opens.
#include <benchmark/benchmark.h>

#include <string>

#include "dclgen/dclgen_check.h"
#include "dclgen/dclgen_parser.h"

namespace {

std::string wide_member(int columns) {
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

void BM_ParseWideMember(benchmark::State& state) {
  const std::string text = wide_member(static_cast<int>(state.range(0)));
  quorva::DclgenCheck check;
  std::size_t columns = 0;
  for (auto _ : state) {
    quorva::DclgenParser parser;
    parser.parse_sql(text);
    parser.parse_cobol(text, state.range(1) != 0);
    check = quorva::check_columns(parser.columns());
    columns = parser.columns().size();
  }
  // INTEGER and SMALLINT columns have no length: the only problems expected.
  state.counters["columns"] = static_cast<double>(columns);
  state.counters["pictures_missing"] = check.by_kind[3];
}
// Arguments: columns, COBOL variable compression on or off.
BENCHMARK(BM_ParseWideMember)
    ->Args({750, 0})
    ->Args({750, 1})
    ->Args({50000, 0})
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
