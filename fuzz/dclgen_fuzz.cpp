// Feeds arbitrary member text to both DCLGEN passes (with and without picture compression),
// the problem check and the member reader. Column files have a target of their own.
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "dclgen/dclgen_check.h"
#include "dclgen/dclgen_member.h"
#include "dclgen/dclgen_parser.h"
#include "dclgen/picture_compression.h"

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

  return 0;
}
