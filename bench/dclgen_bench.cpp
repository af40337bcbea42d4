// Parses a synthetic member of 750 columns, the most a DB2 table may have, and one of 50,000
// (about 5 MB, to show the parse is linear), in both passes, as the column selection dialog
// does when it opens.
#include <benchmark/benchmark.h>

#include <string>

#include "dclgen/dclgen_check.h"
#include "dclgen/dclgen_parser.h"
#include "wide_member.h"

namespace {

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
