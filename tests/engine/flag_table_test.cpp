#include "engine/flag_table.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/program_definition.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorva::test {
namespace {

class FlagTableTest : public FolderTest {};

std::string table_text(const FlagTable& table) {
  std::string text;
  for (const FlagEntry& e : table.entries()) text += "[" + e.code + "]" + std::to_string(e.count);
  return text;
}

TEST_F(FlagTableTest, BuiltInRowsInOrderWithTheHistoricalLetters) {
  ProgramDefinition def;
  def.jcl = true;
  def.constants = def.buffering = def.stream = def.rollback = def.commit = true;
  def.remove = 1, def.fetch = 2, def.insert = 3, def.update = 4, def.select = 5;
  def.reports = 6, def.output_files = 1, def.excel_files = 2, def.input_files = 3;
  def.description = {"a", "b"};
  def.parameters = 7;
  int messages = 0;
  EXPECT_EQ(table_text(FlagTable::build(def, messages)),
            "[JC ]0[C  ]0[CB ]0[JCB]0[CKK]0[CW ]0[CX ]0[JCX]0[C2R]0[JCK]0[C2C]0[JCC]0"
            "[C2D]1[JCD]1[C2F]2[JCF]2[C2I]3[JCY]3[C2U]4[JCU]4[C2S]5[JCS]5[CR ]6[JER]6"
            "[CFO]1[JCO]1[CFC]2[JCE]2[CFI]3[JCI]3[CEZ]2[JCZ]2[C2N]7[C2M]0[JCN]7[CF ]0[C2 ]0[JC2]0");
  def = ProgramDefinition{.language = ProgramDefinition::kEasytrieve,
                          .kind = ProgramDefinition::kMatch};
  EXPECT_EQ(table_text(FlagTable::build(def, messages)), "[E  ]0[EM ]0");
  // Without DB2 the run step is the program itself.
  def = ProgramDefinition{.jcl = true, .input_files = 1};
  EXPECT_EQ(table_text(FlagTable::build(def, messages)),
            "[JC ]0[C  ]0[CB ]0[JCB]0[CFI]1[JCI]1[CF ]0[JCP]0");
  EXPECT_EQ(messages, 0);
  // A routine shares the report code, so its reports are written once.
  def = ProgramDefinition{.kind = ProgramDefinition::kRoutine, .jcl = true, .reports = 3};
  FlagTable routine = FlagTable::build(def, messages);
  // Nor any JCL, JCL chosen or not: it is called, not run by a job step.
  EXPECT_EQ(table_text(routine), "[C  ]0[CR ]0[CR ]3");
  // A routine neither commits nor rolls back its caller's work; a program that changes DB2
  // always rolls back on an error.
  def = ProgramDefinition{
      .kind = ProgramDefinition::kRoutine, .update = 1, .rollback = true, .commit = true};
  EXPECT_EQ(table_text(FlagTable::build(def, messages)), "[C  ]0[CR ]0[C2U]1[C2 ]0");
  def = ProgramDefinition{.insert = 1};
  EXPECT_EQ(table_text(FlagTable::build(def, messages)), "[C  ]0[CB ]0[C2R]0[C2I]1[C2 ]0");
  ASSERT_NE(routine.find("CR "), nullptr);
  EXPECT_EQ(routine.find("CR ")->count, 0);
  // A description of exactly the wrap width is stored with an empty last line, which gives
  // no comment line of its own.
  ProgramRecord record;
  record.description = {std::string(57, 'A'), " "};
  def = program_definition(record);
  EXPECT_EQ(def.description, std::vector<std::string>{std::string(57, 'A')});
}

TEST_F(FlagTableTest, CustomFlagsFromCollectionsWithEachRejection) {
  write_text("temp/Flags.dat", "FlagsColl_02=temp/Flags_Coll_mine.txt\n");
  write_text("temp/Flags_Coll_mine.txt",
             "desc_flags=mine\n<CZZ>=3\n<C2S>=4\n<XAB>=1\n<CQQ>=0\n<CQR>=abc\n<EZZ>=2\n"
             "<cz1 >=2\n<JZZ>=5\n<CZZZ>=1\n");
  ProgramDefinition def{.select = 1};
  int messages = 0;
  FlagTable table = FlagTable::build(def, messages);
  EXPECT_EQ(table_text(table), "[C  ]0[CB ]0[C2S]1[C2 ]0[CZZ]3[cz1]2");
  EXPECT_EQ(ui_.messages,
            (std::vector<std::string>{"Double directives upon this Flag (discard):C2S 1 vs 4",
                                      "Custom Flag Removed (C2 noJCE):XAB",
                                      "Custom Flag Removed - no occurs (C3 value):0",
                                      "Custom Flag Removed - no occurs (C3 value):abc"}));
  EXPECT_EQ(messages, 4);
}

TEST_F(FlagTableTest, PositionFourFilter) {
  ProgramDefinition batch;
  ProgramDefinition routine{
      .kind = ProgramDefinition::kRoutine, .thru = true, .comments = true, .parameters = 1};
  const struct {
    char letter;
    bool batch_drops, routine_drops;
  } cases[] = {{'B', false, true}, {'R', true, false}, {'M', true, true},   {'T', true, false},
               {'*', true, false}, {'N', true, false}, {'X', false, false}, {' ', false, false}};
  for (const auto& c : cases) {
    EXPECT_EQ(filtered_out(c.letter, batch), c.batch_drops) << c.letter;
    EXPECT_EQ(filtered_out(c.letter, routine), c.routine_drops) << c.letter;
  }
}

}  // namespace
}  // namespace quorva::test
