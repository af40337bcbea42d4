// Reads and rewrites of a realistic tag file, and the column-preserving replacement that
// every generated line goes through once per conversion pair.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>

#include "tagfile/tag_file.h"

namespace {

std::string prepare_file(int lines) {
  auto dir = std::filesystem::temp_directory_path() / "quorva-bench";
  std::filesystem::create_directories(dir);
  std::string name = (dir / "key2value.dat").string();
  std::ofstream out(name, std::ios::trunc);
  for (int i = 0; i < lines; ++i) out << "KEY" << i << "=VALUE OF KEY " << i << "\n";
  return name;
}

void BM_LeggiTagLastOfFile(benchmark::State& state) {
  const int lines = static_cast<int>(state.range(0));
  std::string file = prepare_file(lines);
  std::string tag = "KEY" + std::to_string(lines - 1);
  for (auto _ : state) benchmark::DoNotOptimize(quorva::Leggi_tag(file, false, tag));
}
BENCHMARK(BM_LeggiTagLastOfFile)->Arg(50)->Arg(500);

void BM_ModificaTag(benchmark::State& state) {
  std::string file = prepare_file(static_cast<int>(state.range(0)));
  for (auto _ : state)
    benchmark::DoNotOptimize(quorva::Modifica_tag(file, false, true, "KEY10", "NEW VALUE").ok());
}
BENCHMARK(BM_ModificaTag)->Arg(50)->Arg(500);

void BM_SostituisciInColonna(benchmark::State& state) {
  const std::string line =
      "           SELECT FILEIN1      ASSIGN TO UIN1                                 ";
  for (auto _ : state) {
    std::string copy = line;
    quorva::Sostituisci_in_colonna(copy, "FILEIN1", "CUSTOMER-MASTER");
    quorva::Sostituisci_in_colonna(copy, "UIN1", "CUSTIN");
    quorva::Sostituisci_in_colonna(copy, "NOTHERE", "X");
    benchmark::DoNotOptimize(copy);
  }
}
BENCHMARK(BM_SostituisciInColonna);

}  // namespace

BENCHMARK_MAIN();
