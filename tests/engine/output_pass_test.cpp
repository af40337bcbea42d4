#include "engine/output_pass.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/db2_expansion.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorva::test {
namespace {

class OutputPassTest : public FolderTest {};

// Runs the output pass over `code` (the lines after the marker) for `def`.
std::string generate(const ProgramDefinition& def, const std::string& code,
                     const std::string& custom_text = "") {
  int messages = 0;
  const FlagTable flags = FlagTable::build(def, messages);
  CustomCode custom;
  custom.add_file_text(custom_text);
  Db2Expansion db2;
  const ConversionList conversions = {{"<TAB>", "CUSTOMER"}};
  LineWriter writer(def, conversions, kCobolBreakPoint, kEasytrieveBreakPoint);
  OutputPass pass{def, flags, custom, db2, writer};
  write_program(code_lines_of("[THE CODE BEGINS HERE]\n" + code), pass, nullptr);
  return writer.text();
}

TEST_F(OutputPassTest, BlocksRepeatWithOccurrenceNumbers) {
  const ProgramDefinition def{.input_files = 2, .output_files = 1, .excel_files = 1};
  EXPECT_EQ(generate(def,
                     "C     START #\n"
                     "CFI   IN-#\n"
                     "CFI   IN-#-B\n"
                     "CZZ   not active\n"
                     "CFI   IN-#-C\n"
                     "CFO   OUT-#\n"
                     "CFC   XLS-#\n"
                     "CFI   LAST-#"),
            "      START 1\n"
            "      IN-1\n      IN-1-B\n      IN-2\n      IN-2-B\n"
            "      IN-1-C\n      IN-2-C\n"
            "      OUT-2\n"
            "      XLS-1\n"
            "      LAST-1\n      LAST-2\n");
}

TEST_F(OutputPassTest, PositionFourFilterAppliesInsideBlocks) {
  const ProgramDefinition def{.input_files = 2};
  EXPECT_EQ(generate(def, "CFIB  BATCH-#\nCFIR  ROUTINE-#\nC"),
            "      BATCH-1\n      BATCH-2\n      \n");
}

TEST_F(OutputPassTest, Db2LinesExpandPerSelectedColumn) {
  write_text("temp/col_select.dat",
             "[SELECT1-QUERY]\n<CUSTOMER>\n<CL-|NAME>\n"
             "CUST_ID  1  NULL  S9(9)_COMP  1  0  0\n"
             "CUST_NAME  10  (20)  X(20)  0  1  1\n"
             "BALANCE  0  (9,2)  S9(7)V9(2)_COMP-3  0  2  2\n"
             "[/SELECT1-QUERY]\n"
             "[SELECT1-WHERE]\n<CUSTOMER>\n<W-|NUMBER>\n"
             "CUST_ID  1  NULL  S9(9)_COMP  1  0  0\n"
             "CUST_NAME  10  (20)  X(20)  0  1  1\n"
             "[/SELECT1-WHERE]\n");
  const ProgramDefinition def{.select = 2};
  EXPECT_EQ(generate(def,
                     "C2SXA           SELECT <DB2_VAL>\n"
                     "C2SX1           ,  <DB2_VAL>\n"
                     "C2SW1         AND <DB2_VAL> = :<COBOL_VAL>\n"
                     "C2SXA          :<COBOL_VAL> <IND_VAL>\n"
                     // Text from column 30: the longer to-do comment would pass column 72.
                     "C2SXN                        MOVE ZEROES TO CAMPO-ALL WRK-NULL-ALL\n"
                     "C2SXQ     unknown form\n"),
            // Access 1 has selections; only the nullable columns get an indicator.
            "                SELECT CUST_ID\n"
            "                SELECT CUST_NAME\n"
            "                SELECT BALANCE\n"
            "                   CUST_ID\n"
            "                ,  CUST_NAME\n"
            "                ,  BALANCE\n"
            "                  CUST_ID   = :W-1\n"
            "              AND CUST_NAME = :W-2\n"
            "               :CL-CUST-ID  \n"
            "               :CL-CUST-NAME :WRK-NULL-S1Q-01\n"
            "               :CL-BALANCE  :WRK-NULL-S1Q-02\n"
            "                             MOVE SPACES TO CL-CUST-NAME WRK-NULL-S1Q-01\n"
            "                             MOVE ZEROES TO CL-BALANCE WRK-NULL-S1Q-02\n"
            // Access 2 has none: one comment line each, to complete by hand.
            "      *         SELECT column-name\n"
            "      *         ,  column-name\n"
            "      *       AND column-name = :host-variable\n"
            "      *        :host-variable \n"
            "      *                     MOVE ZEROES TO host-variable WRK-NULL-S2Q-00\n");
  EXPECT_NE(read_text("error.log").find("Flag 5 non riconosciuto :C2SXQ     unknown form"),
            std::string::npos);
}

TEST_F(OutputPassTest, EasytrieveHostFieldFollowsTheDb2Type) {
  const struct {
    int type;
    const char *length, *field;
  } cases[] = {
      {db2type::kDecimal, "(11,2)", "  6 P 2"}, {db2type::kDecimal, "(9)", "  5 P 0"},
      {db2type::kInteger, "", "  4 B 0"},       {db2type::kSmallint, "", "  2 B 0"},
      {db2type::kChar, "(40)", " 40 A"},        {db2type::kDate, "", " 10 A"},
      {db2type::kTimestamp, "(12)", " 32 A"},   {db2type::kTimestamp, "", " 26 A"},
      {db2type::kVargraphic, "(20)", " 42 A VARYING"},
      {db2type::kVarchar, "(200)", "202 A VARYING"},
      {db2type::kUnknown, "", " 10 A"},
  };
  for (const auto& c : cases) {
    DclgenColumn column{.length_text = c.length, .type_code = c.type};
    EXPECT_EQ(easytrieve_field(column), c.field) << c.type << c.length;
  }
}

TEST_F(OutputPassTest, CustomCodeInAndOutOfBlocks) {
  const std::string custom =
      "desc_custom=mine\n"
      "[COBOL CUSTOM INIT]\n"
      "MOVE <TAB> TO WS-#\n"
      "[EASYTRIEVE CUSTOM INIT]\n"
      "easytrieve only\n"
      "[COBOL CUSTOM PER-FILE]\n"
      "READ FILE-#\n"
      "[JCL CUSTOM STEP]\n"
      "//STEP\n";
  const ProgramDefinition def{.input_files = 2};
  EXPECT_EQ(generate(def,
                     "C     BEGIN\n"
                     "ZZZ   [COBOL CUSTOM INIT]\n"
                     "CFI   FILE-#\n"
                     "CFI      [COBOL CUSTOM PER-FILE]  \n"
                     "JC    [JCL CUSTOM STEP]\n"
                     "C     [COBOL CUSTOM NONE]\n"
                     "C     END",
                     custom),
            "      BEGIN\n"
            "      MOVE CUSTOMER TO WS-1\n"
            "      FILE-1\n      READ FILE-1\n      FILE-2\n      READ FILE-2\n"
            "      END\n");
}

}  // namespace
}  // namespace quorva::test
