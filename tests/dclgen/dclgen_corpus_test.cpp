#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <map>

#include "dclgen/dclgen_check.h"
#include "dclgen/dclgen_parser.h"
#include "support/temp_folder.h"

namespace quorva {
namespace {

// Every real member parses without a crash; the totals are printed for the person who
// follows the parser's coverage of real members.
TEST(DclgenCorpusTest, RealMembersParse) {
  std::filesystem::path shared = test::shared_folder();
  if (shared.empty() || !std::filesystem::is_directory(shared / "corpus" / "dclgen")) {
    GTEST_SKIP() << "no DCLGEN corpus";
  }
  test::TempWorkingFolder folder;
  int members = 0, failed = 0, columns = 0;
  std::array<int, 4> by_kind{};
  std::map<std::string, int> undefined_by_type;  // columns without a length, by type
  for (const auto& entry : std::filesystem::directory_iterator(shared / "corpus" / "dclgen")) {
    if (entry.path().extension() != ".DCL") continue;
    ++members;
    DclgenParser parser;
    DclgenPassResult result = parser.parse_file(entry.path().string());
    if (!result.ok) {
      ++failed;
      std::cout << entry.path().filename().string() << ": " << result.message << '\n';
      continue;
    }
    columns += static_cast<int>(parser.columns().size());
    DclgenCheck check = check_columns(parser.columns());
    for (int kind = 0; kind < 4; ++kind) by_kind[kind] += check.by_kind[kind];
    for (const DclgenColumn& column : parser.columns()) {
      if (column.length_text.empty()) ++undefined_by_type[db2type::display_name(column.type_code)];
      EXPECT_NE(column.type_code, db2type::kUnknown) << entry.path() << ' ' << column.name;
      if (column.cobol_picture.empty()) {
        std::cout << entry.path().filename().string() << ": " << column.name << " type "
                  << column.type_code << " picture '" << column.cobol_picture << "'\n";
      }
    }
  }
  std::cout << "members " << members << ", failed " << failed << ", columns " << columns
            << ", problems name " << by_kind[0] << " definition " << by_kind[1] << " type "
            << by_kind[2] << " picture " << by_kind[3] << '\n';
  for (const auto& [type, count] : undefined_by_type) {
    std::cout << "without length: " << type << " " << count << '\n';
  }
  EXPECT_GT(members, 0);
  EXPECT_GT(columns, 0);
}

}  // namespace
}  // namespace quorva
