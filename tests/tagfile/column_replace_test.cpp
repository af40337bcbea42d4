#include <gtest/gtest.h>

#include "tagfile/tag_file.h"

namespace quorva {
namespace {

TEST(ColumnReplace, KeepsLaterColumnsWhereItCan) {
  const struct {
    const char* line;
    const char* tag;
    const char* value;
    const char* expected;
    bool result;
  } cases[] = {
      {"MOVE KEY TO  X", "KEY", "AB", "MOVE AB  TO  X", true},
      {"MOVE KEY TO  X", "KEY", "XYZ", "MOVE XYZ TO  X", true},
      {"MOVE KEY TO  X", "KEY", "ABCD", "MOVE ABCD TO X", true},
      {"MOVE KEY TO  X", "KEY", "ABCDE", "MOVE ABCDE TO X", false},
      {"MOVE KEY", "KEY", "A", "MOVE A", true},  // no blank after: the line stays shorter
      {"KEY", "KEY", "LONGER", "LONGER", false},
      {"<FILEIN1>  X", "<FILEIN1>", "IN", "IN         X", true},
      {"A#B#C  ", "#", "12", "A12B12C ", false},  // the second occurrence finds no double blank
      {"A#B#C  ", "#", "123", "A123B123C ", false},
      {"KK KK", "KK", "KKK", "KKK KKK", false},  // an inserted value is never searched again
      {"same", "same", "same", "same", true},
      {"a  b", " ", "", "a b", true},  // padding is never searched again
      {"x    y", "  ", " ", "x   y", true},
      {"text", "", "x", "text", true},
      {"no tag here", "ZZ", "Y", "no tag here", true},
  };
  for (const auto& c : cases) {
    std::string line = c.line;
    EXPECT_EQ(Sostituisci_in_colonna(line, c.tag, c.value), c.result) << c.line << " " << c.value;
    EXPECT_EQ(line, c.expected) << c.line << " " << c.value;
  }
}

}  // namespace
}  // namespace quorva
