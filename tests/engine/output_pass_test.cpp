#include "engine/output_pass.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/conversion_list.h"
#include "engine/db2_expansion.h"
#include "engine/line_writer.h"
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
      {db2type::kDecimal, "(11,2)", "  6 P 2"},
      {db2type::kDecimal, "(9)", "  5 P 0"},
      {db2type::kInteger, "", "  4 B 0"},
      {db2type::kSmallint, "", "  2 B 0"},
      {db2type::kChar, "(40)", " 40 A"},
      {db2type::kDate, "", " 10 A"},
      {db2type::kTimestamp, "(12)", " 32 A"},
      {db2type::kTimestamp, "", " 26 A"},
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

std::string written(const ProgramDefinition& def, const ConversionList& list,
                    const std::string& line) {
  LineWriter writer(def, list, kCobolBreakPoint, kEasytrieveBreakPoint);
  writer.scrivi_riga_output(line);
  return writer.text();
}

TEST(LineWriter, FilterMarginThruAndNumbering) {
  const ProgramDefinition cobol;
  const ProgramDefinition thru{.thru = true, .comments = true};
  const ProgramDefinition easy{.language = ProgramDefinition::kEasytrieve};
  const ConversionList none;
  const struct {
    const ProgramDefinition* def;
    const char *line, *expected;
  } cases[] = {
      {&cobol, "C  B  MOVE A TO B.", "      MOVE A TO B.\n"},
      {&cobol, "C  *  comment dropped without commenti", ""},
      {&thru, "C  *  comment kept", "      comment kept\n"},
      {&cobol, "C", "      \n"},
      {&cobol, "E  B  FILE A#", "FILE A1\n"},
      {&cobol, "JC    //STEP# EXEC", "//STEP1 EXEC\n"},
      {&cobol, "jC    //lower case keeps margin", "      //lower case keeps margin\n"},
      {&cobol, "JC", "\n"},
      {&thru, "C  T      PERFORM 1000-A THRU 1000-A-EX.",
       "          PERFORM 1000-A THRU 1000-A-EX \n"},
      {&cobol, "C     PERFORM 1000-A.", "      PERFORM 1000-A.\n"},
      {&easy, "E     #-#", "1-1\n"},
  };
  for (const auto& c : cases) EXPECT_EQ(written(*c.def, none, c.line), c.expected) << c.line;
}

TEST(LineWriter, OnceFlagDropsARepeatedTextOnly) {
  const ProgramDefinition cobol;
  const ConversionList list = {
      {"INCLU-1S", "CUSTOMER"}, {"INCLU-1U", "CUSTOMER"}, {"INCLU-1F", "ORDERS"}};
  LineWriter writer(cobol, list, kCobolBreakPoint, kEasytrieveBreakPoint);
  for (const char* line : {"C2S  U     EXEC SQL INCLUDE INCLU-1S END-EXEC.",
                           "C2F  U     EXEC SQL INCLUDE INCLU-1F END-EXEC.",
                           "C2U  U     EXEC SQL INCLUDE INCLU-1U END-EXEC.",
                           "C2U        EXEC SQL INCLUDE INCLU-1U END-EXEC."})
    writer.scrivi_riga_output(line);
  EXPECT_EQ(writer.text(),
            "           EXEC SQL INCLUDE CUSTOMER END-EXEC.\n"
            "           EXEC SQL INCLUDE ORDERS   END-EXEC.\n"
            "           EXEC SQL INCLUDE CUSTOMER END-EXEC.\n");
  EXPECT_EQ(writer.lines_written(), 3);
}

// The JCL is also kept alone, as written; lines filtered out and lower-case custom lines
// are not in it.
TEST(LineWriter, JclLinesAreAlsoKeptAlone) {
  const ProgramDefinition cobol;
  const ConversionList list = {{"<++++++>", "PAYROLL"}};
  LineWriter writer(cobol, list, kCobolBreakPoint, kEasytrieveBreakPoint);
  for (const char* line : {"JC    //<++++++>J JOB", "C     MOVE A TO B.", "JC R  //ROUTINE",
                           "jC    //not jcl", "JCI   //UIN1 DD DUMMY"})
    writer.scrivi_riga_output(line);
  EXPECT_EQ(writer.jcl_text(), "//PAYROLLJ  JOB\n//UIN1 DD DUMMY\n");
  EXPECT_EQ(writer.text(),
            "//PAYROLLJ  JOB\n      MOVE A TO B.\n      //not jcl\n//UIN1 DD DUMMY\n");
}

TEST(LineWriter, BreaksOnceAtTheLanguageBreakPoint) {
  const std::string text66 = std::string(60, 'A') + " BBBBB";  // 72 with the margin
  const struct {
    const char* name;
    int break_point;
    char continuation;
    std::string line, expected;
  } cases[] = {
      {"exactly at the break point", 72, ' ', "      " + text66, "      " + text66},
      {"only blanks after it", 72, ' ', "      " + text66 + "    ", "      " + text66 + "    "},
      {"no blank to break at", 72, ' ', std::string(80, 'X'), std::string(80, 'X')},
      {"broken at the last blank", 72, ' ', "      " + text66 + "C",
       "      " + std::string(60, 'A') + "  \n           BBBBBC"},
      {"easytrieve continuation", 10, '+', "ABCD EFGH IJKL", "ABCD EFGH +\n           IJKL"},
  };
  for (const auto& c : cases) {
    std::string line = c.line;
    EXPECT_EQ(break_line(c.break_point, c.continuation, kContinuationIndent, line),
              c.expected != c.line)
        << c.name;
    EXPECT_EQ(line, c.expected) << c.name;
  }
  const ProgramDefinition def;
  const ConversionList none;
  LineWriter writer(def, none, kCobolBreakPoint, kEasytrieveBreakPoint);
  writer.scrivi_riga_output("C     " + text66 + "C");
  writer.scrivi_riga_output("C     " + std::string(100, 'Z'));
  EXPECT_EQ(writer.lines_written(), 4);  // the margin gives the second line a blank
}

TEST(LineWriter, ConversionsInListOrderWithReconversion) {
  const ConversionList list = {
      {"<A>", "<B>"}, {"<B>", "VALUE-B"}, {"", "never"}, {"KEY", "KEY"}, {"<A>", "unused"}};
  const ProgramDefinition def;
  EXPECT_EQ(written(def, list, "C     MOVE <A>   TO KEY  #."), "      MOVE VALUE-B TO KEY 1.\n");
}

}  // namespace
}  // namespace quorva::test
