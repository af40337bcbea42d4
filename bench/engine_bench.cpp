// Generates a maximal program: every option on, every count 9, 40 selected columns in each
// selection of every access, 200 user conversion pairs, and a synthetic template of more
// than 3,000 code lines. With --make-folder=DIR it only writes that working folder, so the
// whole command can be timed on it.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "engine/column_file.h"
#include "panels/generate_panel.h"
#include "port/user_interface.h"

namespace fs = std::filesystem;
using namespace quorva;

namespace {

void write(const fs::path& file, const std::string& text) {
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary) << text;
}

std::string synthetic_template() {
  static const char* kCodes[] = {"C  ", "CB ", "CKK", "CW ", "CX ", "C2R", "C2C", "C2D",
                                 "C2F", "C2I", "C2U", "C2S", "CR ", "CFO", "CFC", "CFI",
                                 "CEZ", "C2N", "C2M", "CF ", "C2 ", "JC ", "JCS", "JCI"};
  std::string code;
  int lines = 0;
  for (int round = 0; lines < 3200; ++round) {
    for (const char* flag : kCodes) {
      for (int i = 0; i < 5; ++i, ++lines)
        code += std::string(flag) + "     MOVE <KEY-" + std::to_string((lines * 7) % 200) +
                ">  TO   WS-FIELD-#-" + std::to_string(i) + "   <++++++>  " +
                std::string(i * 6, 'X') + " PERFORM 1000-A.\n";
    }
    for (const char* db2 : {"C2SXA", "C2FX1", "C2UWN", "C2IXA", "C2DW1"}) {
      code += std::string(db2) + "            , <DB2_VAL> = :<COBOL_VAL>\n";
      code += std::string(db2).substr(0, 3) + "X" + db2[4] +
              "     MOVE ZEROES TO CAMPO-ALL WRK-NULL-ALL\n";
      lines += 2;
    }
    code += "C     [COBOL CUSTOM BENCH]\n";
    ++lines;
  }
  return "quormem=BENCH\nnumlines=" + std::to_string(lines) + "\nclient=1.33\n" +
         "[THE CODE BEGINS HERE]\n" + code;
}

void make_folder(const fs::path& home) {
  fs::create_directories(home / "temp");
  write(home / "Resource/QVconfig.ini", "target_language=ENG\nQVjoined=0\n");
  write(home / "Resource/User.dat",
        "sourcedirectory=" + (home / "out").string() + "/\ntsouser=BENCH\n");
  fs::create_directories(home / "out");
  write(home / "Resource/Quormem.txt", synthetic_template());
  std::string parbase = "nomeprogr=MAXPGM\nlinguaggio=cobol\ntipoprogr=batch\n";
  for (const char* flag :
       {"costanti", "thru", "buffering", "stream", "commenti", "jcl", "rollback", "commit"})
    parbase += std::string(flag) + "=on\n";
  for (const char* count : {"filein", "fileout", "report", "select", "fetch", "update", "insert",
                            "delete", "parametri"})
    parbase += std::string(count) + "=9\n";
  for (int i = 0; i < 9; ++i)
    parbase += "descprogr" + std::to_string(i) + "=description line " + std::to_string(i) + "\n";
  write(home / "temp/Parbase.dat", parbase);
  write(home / "temp/Detfiles.dat", "fileout_excel=3\n");
  std::string pairs;
  for (int i = 0; i < 200; ++i)
    pairs += "<KEY-" + std::to_string(i) + ">=VALUE-" + std::to_string(i) + "\n";
  write(home / "temp/key2value.dat", pairs);
  write(home / "out/Custom_bench.txt",
        "desc_custom=bench\n[COBOL CUSTOM BENCH]\n     DISPLAY 'CUSTOM #'.\n     CONTINUE.\n");
  write(home / "temp/customused.dat",
        "Custom_code_1=" + (home / "out/Custom_bench.txt").string() + "\n");
  const fs::path previous = fs::current_path();
  fs::current_path(home);
  std::vector<DclgenColumn> columns;
  for (int i = 0; i < 40; ++i)
    columns.push_back({"COLUMN_" + std::to_string(i), i % 2 ? "X(20)" : "S9(7)V9(2) COMP-3",
                       i % 2 ? "(20)" : "(9,2)", i % 2 ? 10 : 0, i % 3 ? 1 : 0, i, 0});
  for (AccessKind kind : {AccessKind::kSelect, AccessKind::kFetch, AccessKind::kUpdate,
                          AccessKind::kInsert, AccessKind::kDelete})
    for (int k = 1; k <= 9; ++k)
      for (Selection selection : {Selection::kQuery, Selection::kWhere})
        if (!Riscrivi_tag_treedb2(column_file_name(kind), access_word(kind) + std::to_string(k),
                                  selection, true, "TABLE", "CL-|NAME", columns))
          std::abort();
  fs::current_path(previous);
}

void BM_GenerateMaximalProgram(benchmark::State& state) {
  const fs::path home = fs::temp_directory_path() / "quorva_engine_bench";
  fs::remove_all(home);
  make_folder(home);
  const fs::path previous = fs::current_path();
  fs::current_path(home);
  SilentInterface quiet(true);  // yes to the overwrite question
  ScopedUserInterface port(quiet);
  int lines = 0;
  for (auto _ : state) {
    GeneratePanel generator;
    generator.open();
    GenerationResult result = generator.go();
    lines = result.lines_written;
    benchmark::DoNotOptimize(lines);
  }
  state.counters["lines"] = lines;
  fs::current_path(previous);
  fs::remove_all(home);
}
BENCHMARK(BM_GenerateMaximalProgram)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  const char* kOption = "--make-folder=";
  if (argc > 1 && std::strncmp(argv[1], kOption, std::strlen(kOption)) == 0) {
    make_folder(fs::absolute(argv[1] + std::strlen(kOption)));
    return 0;
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
