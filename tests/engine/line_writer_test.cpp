#include "engine/line_writer.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/conversion_list.h"

namespace quorva {
namespace {

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
}  // namespace quorva
