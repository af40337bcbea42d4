#include "engine/conversion_list.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "engine/flag_table.h"
#include "engine/program_definition.h"
#include "engine/template_loader.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorva::test {
namespace {

class ConversionListTest : public FolderTest {};
class TemplateLoader : public FolderTest {};

std::string pairs_text(const ConversionList& list) {
  std::string text;
  for (const ConversionPair& p : list) text += "[" + p.key + "|" + p.value + "]";
  return text;
}

TEST_F(ConversionListTest, KeyToValueFilesAndCollectionsInOrder) {
  write_text("temp/key2value.dat", "A=1=2\nno separator\nEMPTY=\n=never\n K = v \n");
  write_text("temp/customK2V.dat",
             "Key2Value_03=temp/Key2Value_b.txt\nKey2Value_01=temp/Key2Value_a.txt\n"
             "Key2Value_02=temp/Key2Value_gone.txt\n");
  write_text("temp/Key2Value_a.txt", "desc_key2value=first\nA=from a\n");
  write_text("temp/Key2Value_b.txt", "desc_key2value=second\nB=from b\n");
  ConversionList list;
  ASSERT_TRUE(Leggi_all_K2V_tag(kKey2ValueFile, true, list));
  ASSERT_TRUE(Leggi_all_K2Value_coll(true, kCollectionSlots, list));
  EXPECT_EQ(pairs_text(list), "[A|1=2][|never][ K | v ][A|from a][B|from b]");
  EXPECT_EQ(ui_.messages,
            (std::vector<std::string>{"The Collection of Key to Value file has not been found!!"
                                      "temp/Key2Value_gone.txt"}));
  EXPECT_FALSE(Leggi_all_K2V_tag("temp/none.dat", true, list));
  EXPECT_EQ(ui_.messages.back(), "WARNING, I cannot open the file:temp/none.dat");
  ConversionList quiet;
  Leggi_all_K2Value_coll(false, kCollectionSlots, quiet);
  EXPECT_NE(read_text("error.log").find("Errore file non trovato in Leggi_all_K2Value_coll.-99"),
            std::string::npos);
}

TEST_F(ConversionListTest, BuiltInPlaceholdersComeFirst) {
  write_text("Resource/User.dat", "tsouser=U1\nnomecognome=N\ntsolibrary=U1.SRC\n");
  write_text("temp/key2value.dat", "<++++++>=USER-WINS-NOT\n");
  ProgramDefinition def{.name = "P1", .description = {"abc", "de"}, .commit = true};
  ConversionList list;
  build_conversion_list(def, {"V9", "01/Jan/2026"}, list);
  EXPECT_EQ(pairs_text(list),
            "[<VRS>|V9][<++++++>|P1][<DESCRIZIONE-PROGRAMMA1>|ABC][<DESCRIZIONE-PROGRAMMA2>|DE]"
            "[//.///.////|01/Jan/2026][<----->|U1][<NOME-COGNOME>|N]"
            "[<SEL/FET/DEL/INS/UPD/ROL/COM>|[COMM]][<TSO-LIBRARY>|U1.SRC][<LINK-COPY>|P1L]"
            "[<++++++>|USER-WINS-NOT]");
}

TEST_F(ConversionListTest, HeaderValuesAndAccessList) {
  ProgramDefinition def{.name = "PGM1", .description = {"first line", "second"}};
  EXPECT_EQ(access_list_value(def), "]");
  def.select = def.fetch = 1;
  EXPECT_EQ(access_list_value(def), "[SEL/FET]");
  def.update = def.insert = def.remove = 2;
  def.commit = def.rollback = true;
  EXPECT_EQ(access_list_value(def), "[SEL/FET/UPD/INS/DEL/COMM/ROLL]");
  const std::string date = header_date();
  EXPECT_EQ(date.size(), 11u);
  EXPECT_EQ(date[2], '/');
  EXPECT_EQ(date[6], '/');
}

// The filter must give what the plain pass over every pair gives: keys that are prefixes or
// suffixes of others, repeated keys, values that hold their own or later keys, blanks.
TEST_F(ConversionListTest, FilterGivesThePlainPassResult) {
  std::mt19937 random(7);
  const std::string alphabet = "<>AB-EK#1 '";
  auto text = [&](std::size_t most, std::size_t letters = 0) {
    std::string t(random() % (most + 1), ' ');
    for (char& c : t) c = alphabet[random() % (letters ? letters : alphabet.size())];
    return t;
  };
  std::vector<ConversionList> lists = {{{"<A>", "<B>  "},
                                        {"UIN#", "X"},
                                        {"<B>", "VALUE-B"},
                                        {"AB", "ZZ"},
                                        {"", "never"},
                                        {"K", "KK"},
                                        {"E-B", "<A>"},
                                        {"FILEIN1", "IN"},
                                        {"<A>", "again"}}};
  for (int n = 0; n < 40; ++n) {
    ConversionList list;
    for (int k = 0, size = 1 + static_cast<int>(random() % 60); k < size; ++k) {
      // Half the keys grow out of an earlier one, so prefixes and suffixes abound. In every
      // other list all keys start with "<", as in most real lists (the matcher then looks
      // for key starts many bytes at a time).
      std::string key = !list.empty() && random() % 2 ? list[random() % list.size()].key
                        : n % 2                       ? "<"
                                                      : "";
      // Every third list has keys without blanks, values without key starts abounding:
      // the filter then skips looking again after most replacements.
      key += n % 3 == 2 ? text(4, 8) : text(4);
      std::string value = n % 3 == 2 && random() % 2 ? "VAL-" + text(3, 8)
                          : random() % 3             ? text(6)
                                                     : key + text(2);
      if (!list.empty() && random() % 4 == 0) value += list[random() % list.size()].key;
      list.push_back({key, value});
    }
    lists.push_back(std::move(list));
  }
  {  // a longer value takes a blank from a double one, which makes a key with a blank
    const ConversionList list = {{"<A>", "XXXX"}, {"E B", "hit"}};
    std::string line = "<A> E  B";
    ConversionFilter(list).apply(line);
    EXPECT_EQ(line, "XXXX hit");
  }
  for (const ConversionList& list : lists) {
    const ConversionFilter filter(list);
    for (int round = 0; round < 500; ++round) {
      const std::string line = text(70);
      std::string plain = line, filtered = line;
      apply_conversions(list, plain);
      filter.apply(filtered);
      ASSERT_EQ(filtered, plain) << "line: \"" << line << '"';
    }
  }
}

TEST_F(ConversionListTest, ApostrophesAreDoubledInsideLiterals) {
  const ConversionList list = {{"DESC-R1", "CUSTOMER'S LIST"}, {"<++++++>", "PGM'1"}};
  const struct {
    const char* line;
    const char* converted;
  } cases[] = {
      {"E     TITLE 2 'DESC-R1'              .", "E     TITLE 2 'CUSTOMER''S LIST'     ."},
      {"C     * DESC-R1                      .", "C     * CUSTOMER'S LIST              ."},
      {"J    //X JOB 'A''B',<++++++>,'<++++++>'  .", "J    //X JOB 'A''B',PGM'1,'PGM''1'       ."},
  };
  for (const auto& c : cases) {
    std::string plain = c.line, filtered = c.line;
    apply_conversions(list, plain);
    ConversionFilter(list).apply(filtered);
    EXPECT_EQ(plain, c.converted);
    EXPECT_EQ(filtered, c.converted);
  }
}

TEST_F(TemplateLoader, MarkerAndCodeLines) {
  const struct {
    const char* text;
    std::vector<std::string> lines;
  } cases[] = {
      {"numlines=1\n", {}},
      {"[the code begins here]\nC     A\n", {}},
      {"h=1\n  [THE CODE BEGINS HERE]  \nC     A\n\n[THE CODE BEGINS HERE]\n  x",
       {"C     A", "", "[THE CODE BEGINS HERE]", "  x"}},
      {"[THE CODE BEGINS HERE]\r\nC     A\r\n", {"C     A"}},
  };
  for (const auto& c : cases) EXPECT_EQ(code_lines_of(c.text), c.lines) << c.text;
}

TEST_F(TemplateLoader, DeclaredCountWhereverItStands) {
  // The first 4 KiB are looked at first: the count before, across and after their end.
  const std::string filler = "h=" + std::string(4089, 'x') + "\n";  // 4092 bytes
  const struct {
    const char* name;
    std::string text;
    int expected;
  } cases[] = {
      {"in the header", "quormem=T\nnumlines=12\n[THE CODE BEGINS HERE]\n", 12},
      {"last line without its end", "numlines=on", 1},
      {"across the head's end", filler + "numlines=345\n", 345},
      {"after the head", filler + "h=1\nnumlines=6789\n", 6789},
      {"first of two", "numlines=2\n" + filler + "numlines=3\n", 2},
      {"empty is missing", "numlines=\nnumlines=4\n", -1},
      {"missing", filler + "h=1\n", -1},
  };
  for (const auto& c : cases) {
    write_text("Resource/T.txt", c.text);
    ui_.messages.clear();
    EXPECT_EQ(read_declared_count("Resource/T.txt"), c.expected) << c.name;
    EXPECT_EQ(ui_.messages.size(), c.expected < 0 ? 1u : 0u) << c.name;
  }
}

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
