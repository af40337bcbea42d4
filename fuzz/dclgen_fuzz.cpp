// Feeds arbitrary member text to both DCLGEN passes (with and without picture compression),
// the problem check and the member reader, and arbitrary column-file text to the column-file
// reader and rewriter.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include "dclgen/dclgen_check.h"
#include "dclgen/dclgen_member.h"
#include "dclgen/dclgen_parser.h"
#include "dclgen/picture_compression.h"
#include "engine/column_file.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  auto dir = std::filesystem::temp_directory_path() / ("quorva-fuzz-" + std::to_string(::getpid()));
  std::filesystem::create_directories(dir / "Resource");
  std::filesystem::create_directories(dir / "temp");
  std::filesystem::current_path(dir);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::string text(reinterpret_cast<const char*>(data), size);

  quorva::DclgenParser parser;
  if (parser.parse_sql(text).ok) {
    parser.parse_cobol(text, size % 2 == 0);
    quorva::check_columns(parser.columns());
    quorva::toggle_forced_null(parser.columns(), static_cast<int>(size % 7), true);
  }
  quorva::parse_table_info(text);
  std::string picture = text.substr(0, 64);
  quorva::normalise_picture(picture);

  const char* file = "temp/col_select.dat";
  std::FILE* f = std::fopen(file, "wb");
  std::fwrite(text.data(), 1, text.size(), f);
  std::fclose(f);
  for (auto selection : {quorva::Selection::kQuery, quorva::Selection::kWhere}) {
    auto block = quorva::Leggi_colonne_treedb2(file, "SELECT1", selection, false);
    if (block) {
      quorva::Riscrivi_tag_treedb2(file, "SELECT1", selection, true, block->member,
                                   block->access_text, block->columns);
      auto again = quorva::Leggi_colonne_treedb2(file, "SELECT1", selection, false);
      if (!again || again->columns.size() != block->columns.size()) __builtin_trap();
    }
  }
  return 0;
}
