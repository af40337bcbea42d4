#include <gtest/gtest.h>

#include <filesystem>

#include "engine/conversion_list.h"
#include "engine/custom_code.h"
#include "engine/flag_table.h"
#include "panels/collection_rules.h"
#include "panels/collections.h"
#include "support/faulty_disk.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace fs = std::filesystem;

namespace quorva::test {
namespace {

class CollectionsTest : public SourceFolderTest {
 protected:
  std::string file(const std::string& name) const { return read_text(source() + name); }
  static Collections opened(CollectionKind kind) {
    Result<Collections> collections = Collections::open(kind);
    EXPECT_TRUE(collections.ok());
    return std::move(collections).value();
  }
};

// What each operation writes, and that the generator reads it back as meant.
TEST_F(CollectionsTest, EachKindWritesWhatTheGeneratorReads) {
  Collections k2v = opened(CollectionKind::kKeyToValue);
  ASSERT_TRUE(k2v.create("BR"));
  ASSERT_TRUE(k2v.set_content("BR", {"Branches", {}, {{"<BRANCH>", "MILANO"}, {"A=", "x"}}, ""}) ==
              false);  // a key cannot hold "="
  ASSERT_TRUE(k2v.set_content("BR", {"Branches", {}, {{"<BRANCH>", "MI = NO"}}, ""}));
  ASSERT_TRUE(k2v.use("BR"));
  EXPECT_TRUE(file("Key2Value_BR.txt").empty());  // nothing before OK
  ASSERT_TRUE(k2v.confirm().ok());
  EXPECT_EQ(file("Key2Value_BR.txt"), "desc_key2value=Branches\n<BRANCH>=MI = NO\n");
  EXPECT_EQ(read_text("temp/customK2V.dat"), "Key2Value_01=" + source() + "Key2Value_BR.txt\n");
  ConversionList pairs;
  ASSERT_TRUE(Leggi_all_K2Value_coll(true, kCollectionSlots, pairs));
  ASSERT_EQ(pairs.size(), 1u);
  EXPECT_EQ(pairs[0].key + "|" + pairs[0].value, "<BRANCH>|MI = NO");

  Collections flags = opened(CollectionKind::kFlags);
  ASSERT_TRUE(flags.create("MINE"));
  ASSERT_TRUE(flags.set_content("MINE", {"", {{"CZZ", 3}, {"JZZ", 2}}, {}, ""}));
  ASSERT_TRUE(flags.use("MINE"));
  ASSERT_TRUE(flags.confirm().ok());
  EXPECT_EQ(file("Flags_Coll_MINE.txt"), "<CZZ>=3\n<JZZ>=2\n");
  EXPECT_EQ(read_text("temp/Flags.dat"), "FlagsColl_01=" + source() + "Flags_Coll_MINE.txt\n");
  int messages = 0;
  const FlagTable table = FlagTable::build(ProgramDefinition{}, messages);
  ASSERT_NE(table.find("CZZ"), nullptr);
  EXPECT_EQ(table.find("CZZ")->count, 3);
  EXPECT_EQ(messages, 0);

  Collections snippets = opened(CollectionKind::kSnippets);
  const std::string code = "[COBOL CUSTOM INITIALIZE]\n           DISPLAY 'UP'.\n";
  ASSERT_TRUE(snippets.create("INIT"));
  ASSERT_TRUE(snippets.set_content("INIT", {"", {}, {}, code}));
  ASSERT_TRUE(snippets.use("INIT"));
  ASSERT_TRUE(snippets.confirm().ok());
  EXPECT_EQ(file("Custom_INIT.txt"), code);
  EXPECT_EQ(read_text("temp/customused.dat"), "Custom_code_1=" + source() + "Custom_INIT.txt\n");
  ProgramDefinition cobol;
  const CustomCode custom = CustomCode::load();  // the lines found point into it
  const auto lines = custom.tag_lines("C      [COBOL CUSTOM INITIALIZE]", cobol);
  ASSERT_TRUE(lines.has_value());
  EXPECT_EQ(**lines, std::vector<std::string>{"           DISPLAY 'UP'."});
  EXPECT_TRUE(ui_.messages.size() == 1) << ui_.messages.size();  // the refused key only
}

TEST_F(CollectionsTest, CopyRenameAndTheSlotThatFollows) {
  write_text(source() + "Key2Value_A.txt", "odd line\nK=V\n");
  write_text("temp/customK2V.dat", "Key2Value_3=" + source() + "Key2Value_A.txt\n");
  Collections k2v = opened(CollectionKind::kKeyToValue);
  EXPECT_EQ(k2v.slot_of("A"), 3);  // a bare slot number is read too
  ASSERT_TRUE(k2v.copy("A", "B"));
  ASSERT_TRUE(k2v.rename("A", "C"));
  ASSERT_TRUE(k2v.confirm().ok());
  EXPECT_FALSE(fs::exists(source() + "Key2Value_A.txt"));
  EXPECT_EQ(file("Key2Value_B.txt"), "odd line\nK=V\n");  // copied byte for byte
  EXPECT_EQ(file("Key2Value_C.txt"), "odd line\nK=V\n");
  EXPECT_EQ(read_text("temp/customK2V.dat"), "Key2Value_03=" + source() + "Key2Value_C.txt\n");
  EXPECT_EQ(opened(CollectionKind::kKeyToValue).names(), (std::vector<std::string>{"B", "C"}));
}

// A write that fails stops the rest: the renamed collection's old file and its slot stay.
TEST_F(CollectionsTest, AFailedWriteLosesNothing) {
  write_text(source() + "Flags_Coll_OLD.txt", "<CAA>=1\n");
  const std::string chosen = "FlagsColl_01=" + source() + "Flags_Coll_OLD.txt\n";
  for (const char* failing : {"Flags_Coll_NEW", "temp/Flags.dat"}) {
    write_text("temp/Flags.dat", chosen);
    Collections flags = opened(CollectionKind::kFlags);
    ASSERT_TRUE(flags.rename("OLD", "NEW"));
    ASSERT_TRUE(flags.set_content("NEW", {"", {{"CAA", 2}}, {}, ""}));
    FaultyDisk full(failing);
    EXPECT_FALSE(flags.confirm().ok()) << failing;
    EXPECT_EQ(file("Flags_Coll_OLD.txt"), "<CAA>=1\n") << failing;
    EXPECT_EQ(read_text("temp/Flags.dat"), chosen) << failing;
  }
}

TEST_F(CollectionsTest, RefusedNamesAndRowsChangeNothing) {
  write_text(source() + "Flags_Coll_Old.txt", "<CAA>=1\n");
  Collections flags = opened(CollectionKind::kFlags);
  const struct {
    std::string name;
    const char* says;
  } names[] = {{"", "is empty"},
               {"a/b", "cannot hold"},
               {"a\\b", "cannot hold"},
               {" a", "cannot hold"},
               {"..", "cannot hold"},
               {std::string(41, 'x'), "too long"},
               {"OLD", "already exists: Old"}};
  for (const auto& n : names) {
    ui_.messages.clear();
    EXPECT_FALSE(flags.create(n.name)) << n.name;
    EXPECT_FALSE(flags.rename("Old", n.name)) << n.name;
    ASSERT_EQ(ui_.messages.size(), 2u) << n.name;
    EXPECT_NE(ui_.messages[0].find(n.says), std::string::npos) << ui_.messages[0];
  }
  const struct {
    FlagRow row;
    const char* says;
  } rows[] = {{{"XAB", 1}, "three characters"},
              {{"CZ", 1}, "three characters"},
              {{"C=Z", 1}, "three characters"},
              {{"CZZ", 0}, "Limit Flag a Zero:CZZ"},
              {{"CZZ", 10000}, "Limit Flag a Zero:CZZ"}};
  for (const auto& r : rows) {
    ui_.messages.clear();
    EXPECT_FALSE(flags.set_content("Old", {"", {r.row}, {}, ""})) << r.row.code;
    ASSERT_EQ(ui_.messages.size(), 1u);
    EXPECT_NE(ui_.messages[0].find(r.says), std::string::npos) << ui_.messages[0];
  }
  EXPECT_FALSE(flags.set_content("Old", {"", {{"CAA", 1}, {"CAA", 2}}, {}, ""}));
  EXPECT_EQ(ui_.messages.back(), "Double directives upon this Flag (discard):CAA");
  EXPECT_EQ(collection_pair_problem({"K", "", true}, 0).empty(), false);
  EXPECT_NE(collection_pair_problem({"desc_key2value", "x", true}, 0), "");
  EXPECT_NE(collection_pair_problem({"K", "V", false}, 0), "");  // no switch character
  EXPECT_NE(collection_snippets_problem("stray\n[COBOL CUSTOM X]\n"), "");
  EXPECT_EQ(collection_snippets_problem("\n[JCL CUSTOM X]\nstray\n"), "");
  ASSERT_TRUE(flags.confirm().ok());
  EXPECT_EQ(file("Flags_Coll_Old.txt"), "<CAA>=1\n");
  EXPECT_EQ(flags.names(), std::vector<std::string>{"Old"});
  EXPECT_FALSE(fs::exists("temp/Flags.dat"));
}

TEST_F(CollectionsTest, SlotsFullMissingFilesAndDeletingOneInUse) {
  std::string chosen;
  for (int n = 1; n <= 25; ++n) {
    const std::string name = "F" + std::to_string(n);
    write_text(source() + "Flags_Coll_" + name + ".txt", "<CAA>=1\n");
    chosen += "FlagsColl_" + std::string(n < 10 ? "0" : "") + std::to_string(n) + "=" + source() +
              "Flags_Coll_" + name + ".txt\n";
  }
  write_text("temp/Flags.dat", chosen);
  write_text(source() + "Flags_Coll_EXTRA.txt", "<CAB>=1\n");
  Collections flags = opened(CollectionKind::kFlags);
  EXPECT_FALSE(flags.use("EXTRA"));
  EXPECT_NE(ui_.messages.back().find("All the 25 places"), std::string::npos)
      << ui_.messages.back();
  EXPECT_FALSE(flags.use("F2"));
  EXPECT_NE(ui_.messages.back().find("already in use (slot 2)"), std::string::npos);

  fs::remove(source() + "Flags_Coll_F7.txt");
  Collections again = opened(CollectionKind::kFlags);
  EXPECT_EQ(again.missing_chosen(), std::vector<int>{7});
  EXPECT_NE(again.missing_message().find("7: " + source() + "Flags_Coll_F7.txt"),
            std::string::npos);

  ui_.answer(false);
  EXPECT_FALSE(again.remove("F3"));
  ui_.answer(true);
  EXPECT_TRUE(again.remove("F3"));
  EXPECT_EQ(ui_.questions.back(),
            "Delete the collection|The collection F3 is in use (slot 3): delete it and free its "
            "slot?");
  again.free_slot(7);
  ASSERT_TRUE(again.use("EXTRA"));
  ASSERT_TRUE(again.confirm().ok());
  EXPECT_FALSE(fs::exists(source() + "Flags_Coll_F3.txt"));
  const std::string after = read_text("temp/Flags.dat");
  EXPECT_EQ(after.find("F3.txt"), std::string::npos);
  EXPECT_EQ(after.find("F7.txt"), std::string::npos);
  EXPECT_NE(after.find("FlagsColl_03=" + source() + "Flags_Coll_EXTRA.txt\n"), std::string::npos);
}

TEST_F(CollectionsTest, SwitchedOffPairsAndNoSourceFolder) {
  write_text("Resource/QVconfig.ini", "target_language=ENG\nenable_disable_k2v_char=!\n");
  Collections k2v = opened(CollectionKind::kKeyToValue);
  ASSERT_TRUE(k2v.create("S"));
  ASSERT_TRUE(k2v.set_content("S", {"", {}, {{"<A>", "1", true}, {"<B>", "2", false}}, ""}));
  EXPECT_FALSE(k2v.set_content("S", {"", {}, {{"!C", "3", true}}, ""}));
  ASSERT_TRUE(k2v.confirm().ok());
  EXPECT_EQ(file("Key2Value_S.txt"), "<A>=1\n!<B>=2\n");
  std::optional<CollectionContent> read = opened(CollectionKind::kKeyToValue).content("S");
  ASSERT_TRUE(read);
  ASSERT_EQ(read->pairs.size(), 2u);
  EXPECT_FALSE(read->pairs[1].enabled);
  EXPECT_EQ(read->pairs[1].key, "<B>");

  write_text("Resource/User.dat", "tsouser=U\n");
  EXPECT_FALSE(Collections::open(CollectionKind::kFlags).ok());
  EXPECT_NE(ui_.messages.back().find("source folder is not set"), std::string::npos);
}

}  // namespace
}  // namespace quorva::test
