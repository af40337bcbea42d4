#include "dclgen/dclgen_member.h"

#include <gtest/gtest.h>

#include "support/temp_folder.h"

namespace quorva {
namespace {

constexpr const char* kMember =
    "      * DCLGEN TABLE(DB2PRD.V01AVISO)                                  *\r\n"
    "           EXEC SQL DECLARE DB2PRD.V01AVISO TABLE\r\n"
    "           ( CINSTC_ASSOC                   DECIMAL(6, 0) NOT NULL\r\n"
    "           ) END-EXEC.\r\n"
    "      * 01  NOT-THIS.\r\n"
    "       01  BACCV002.\r\n"
    "           10 CINSTC-ASSOC         PIC S9(6)V USAGE COMP-3.\r\n";

TEST(DclgenMemberTest, TableInfoFromDeclarationAndLevel01) {
  struct Case {
    std::string text;
    std::string owner, table, structure;
  } cases[] = {
      {kMember, "DB2PRD", "V01AVISO", "BACCV002"},
      {"           EXEC SQL DECLARE LEAVE TABLE\n"
       "003800 01  HAGV0610.                                       00003600\n",
       "", "LEAVE", "HAGV0610"},
      {"           EXEC SQL DECLARE A.B.EMP TABLE\n", "A.B", "EMP", ""},
  };
  for (const Case& c : cases) {
    auto info = parse_table_info(c.text);
    ASSERT_TRUE(info) << c.text;
    EXPECT_EQ(info->owner, c.owner);
    EXPECT_EQ(info->table, c.table);
    EXPECT_EQ(info->structure, c.structure);
  }
  EXPECT_FALSE(parse_table_info("       01  ONLY-A-STRUCTURE.\n"));
  EXPECT_FALSE(read_table_info("no/such/member.DCL"));
}

TEST(DclgenMemberTest, KeptDescriptionPerKindLetter) {
  test::TempWorkingFolder folder;
  test::write_text("EMP.DCL", kMember);
  EXPECT_FALSE(read_kept_description("EMP.DCL", 'S'));
  ASSERT_TRUE(write_kept_description("EMP.DCL", 'S', "Reads the notice"));
  ASSERT_TRUE(write_kept_description("EMP.DCL", 'U', "Updates it"));
  ASSERT_TRUE(write_kept_description("EMP.DCL", 'S', "Reads the notice again"));
  EXPECT_EQ(read_kept_description("EMP.DCL", 'S'), "Reads the notice again");
  EXPECT_EQ(read_kept_description("EMP.DCL", 'U'), "Updates it");
  EXPECT_FALSE(write_kept_description("EMP.DCL", 'S', "two\nlines"));
  EXPECT_FALSE(write_kept_description("missing.DCL", 'S', "text"));
  EXPECT_FALSE(test::read_text("missing.DCL").size());
  // The kept line is a comment to the parsers: the table is still found.
  EXPECT_EQ(read_table_info("EMP.DCL")->table, "V01AVISO");
}

}  // namespace
}  // namespace quorva
