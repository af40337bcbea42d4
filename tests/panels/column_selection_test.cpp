#include "panels/column_selection.h"

#include <gtest/gtest.h>

#include "panels/dynamic_list.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"
#include "tagfile/tag_file.h"

namespace quorva::test {
namespace {

class ColumnSelectionTest : public FolderTest {};

constexpr const char* kMember =
    "      *        NAMES(CL-)\n"
    "           EXEC SQL DECLARE EMP TABLE\n"
    "           ( EMP_ID     INTEGER NOT NULL,\n"
    "             EMP_NAME   CHAR(20),\n"
    "             EMP_MAIL   CHAR(40),\n"
    "             EMP_SINCE  DATE NOT NULL\n"
    "           ) END-EXEC.\n"
    "       01  DCLEMP.\n"
    "           10 CL-1     PIC S9(9) USAGE COMP.\n"
    "           10 CL-2     PIC X(20).\n"
    "           10 CL-3     PIC X(40).\n"
    "           10 CL-4     PIC X(10).\n";

TEST_F(ColumnSelectionTest, SelectDetailsAndSearch) {
  ColumnSelection dialog(AccessKind::kSelect, 1, "EMP", Selection::kWhere);
  EXPECT_EQ(dialog.title(), "SELECT - - Check the WHERE Columns for the EMP");
  ASSERT_TRUE(dialog.open_text(kMember));
  EXPECT_EQ(dialog.tree_items().size(), 5u);
  EXPECT_EQ(dialog.structure_name(), "DCLEMP");
  EXPECT_EQ(dialog.prefix(), "CL-");
  EXPECT_TRUE(dialog.numbered());

  dialog.select_all();
  dialog.select(0, false);
  EXPECT_EQ(dialog.selected_count_text(), "Tot. Selected:3");
  EXPECT_EQ(dialog.details(), "Name      :EMP_ID\nType        :INTEGER\nValue       : S9(9) COMP.");

  // Search: the same text moves on, past the last hit it says so and restarts.
  EXPECT_EQ(dialog.search("EMP_"), 0);
  EXPECT_EQ(dialog.search("EMP_"), 1);
  EXPECT_EQ(dialog.search("MAIL"), 2);
  EXPECT_EQ(dialog.search("MAIL"), std::nullopt);
  EXPECT_EQ(ui_.messages.back(), "I've not found FURTHER occurrences of the reseached field:MAIL");
  EXPECT_EQ(dialog.search("MAIL"), 2);
  EXPECT_EQ(dialog.search("NOPE"), std::nullopt);

  EXPECT_FALSE(dialog.set_null_box(0, true));
  EXPECT_TRUE(dialog.set_null_box(4, true));
  EXPECT_EQ(dialog.status(), "Some Null values has been Forced!");
}

TEST_F(ColumnSelectionTest, OkWritesBlockAndStructureThenLoadsItBack) {
  {
    ColumnSelection dialog(AccessKind::kFetch, 2, "EMP", Selection::kQuery);
    ASSERT_TRUE(dialog.open_text(kMember));
    dialog.select(0);
    dialog.select(2);
    dialog.select(3);
    dialog.set_null_box(4, true);  // EMP_SINCE forced nullable
    ASSERT_TRUE(dialog.set_structure_name("WS-EMP"));
    ASSERT_TRUE(dialog.ok());
  }
  EXPECT_EQ(read_text("temp/col_fetch.dat"),
            "[FETCH2-QUERY]\n<EMP>\n<CL-|NUMBER>\n"
            "EMP_ID  1  NULL  S9(9)_COMP.  1  0  0\n"
            "EMP_MAIL  10  (40)  X(40).  0  2  1\n"
            "EMP_SINCE  20  NULL  X(10).  0  3  2\n"
            "[/FETCH2-QUERY]\n");
  EXPECT_EQ(Leggi_tag("temp/key2value.dat", false, "LEV01-2F"), "WS-EMP");

  ColumnSelection again(AccessKind::kFetch, 2, "EMP", Selection::kQuery);
  ASSERT_TRUE(again.open_text(kMember));
  ASSERT_TRUE(again.set_structure_name(""));
  ASSERT_TRUE(again.load_previous_selection());
  EXPECT_EQ(again.selected_count(), 3);
  EXPECT_FALSE(again.is_selected(1));
  EXPECT_EQ(again.columns()[3].not_null, 0);
  EXPECT_EQ(again.status(), "Some Null values has been Forced!");
  EXPECT_EQ(again.structure_name(), "WS-EMP");

  // DELETE keeps no structure name; an empty selection removes the block.
  ColumnSelection remove(AccessKind::kDelete, 1, "EMP", Selection::kWhere);
  ASSERT_TRUE(remove.open_text(kMember));
  ASSERT_TRUE(remove.ok());
  EXPECT_FALSE(Leggi_tag("temp/key2value.dat", false, "LEV01-1D"));
}

TEST_F(ColumnSelectionTest, UnreadableMemberOffersNoColumns) {
  ColumnSelection dialog(AccessKind::kSelect, 1, "NONE", Selection::kQuery);
  EXPECT_FALSE(dialog.open("NONE.DCL"));
  EXPECT_TRUE(dialog.columns().empty());
  EXPECT_EQ(ui_.messages.back(), "WARNING! I cannot open the following File:NONE.DCL");
  EXPECT_FALSE(dialog.open_text("       01  ONLY.\n"));
  EXPECT_NE(ui_.messages.back().find("I've not found Db2 Data"), std::string::npos);
}

class DynamicListTest : public FolderTest {};

DynamicListSetup members() {
  return {{{"ORDERS", "2"}, {"CUSTOMER", "10"}, {"ACCOUNT", "2"}},
          {"Member", "Columns"},
          {8, 4},
          "Dynamic List",
          {false, true}};
}

TEST_F(DynamicListTest, SetUpRefusalsSayWhatIsMissing) {
  const struct {
    void (*spoil)(DynamicListSetup&);
    const char* message;
  } cases[] = {
      {[](DynamicListSetup& s) { s.rows.clear(); }, "DynList - Vettore oggetti vuoto!"},
      {[](DynamicListSetup& s) { s.columns.clear(); }, "DynList - Dati Colonne mancanti"},
      {[](DynamicListSetup& s) { s.widths.pop_back(); },
       "DynList - Dati dimensione colonne mancanti"},
      {[](DynamicListSetup& s) { s.title.clear(); }, "DynList - Dati finestra mancanti"},
      {[](DynamicListSetup& s) {
         s.rows = {{"", ""}, {}};
       },
       "There is no useful data in list!"},
  };
  for (const auto& c : cases) {
    DynamicListSetup setup = members();
    c.spoil(setup);
    ui_.messages.clear();
    EXPECT_FALSE(DynamicList::open(&setup));
    ASSERT_EQ(ui_.messages.size(), 1u);
    EXPECT_EQ(ui_.messages[0], c.message);
  }
  EXPECT_FALSE(DynamicList::open(nullptr));
  EXPECT_EQ(ui_.messages.back(), "DynList - Oggetto non inizializzato");
}

TEST_F(DynamicListTest, ChecksFollowTheRowsThroughSorting) {
  const DynamicListSetup setup = members();
  Result<DynamicList> opened = DynamicList::open(&setup);
  ASSERT_TRUE(opened);
  DynamicList& list = *opened;
  EXPECT_EQ(list.checked_rows(), std::vector<std::size_t>{1});
  ASSERT_TRUE(list.sort_by(0));
  EXPECT_EQ(list.cell(0, 0), "ACCOUNT");
  EXPECT_TRUE(list.checked(1));  // CUSTOMER, now second
  list.set_checked(0, true);
  ASSERT_TRUE(list.sort_by(0));  // again: descending
  EXPECT_EQ(list.cell(0, 0), "ORDERS");
  ASSERT_TRUE(list.sort_by(1));            // equal cells keep the caller's order
  EXPECT_EQ(list.cell(0, 0), "CUSTOMER");  // "10" < "2" as text
  EXPECT_EQ(list.cell(1, 0), "ORDERS");
  EXPECT_EQ(list.checked_rows(), (std::vector<std::size_t>{1, 2}));
  list.invert_selection();
  EXPECT_EQ(list.checked_rows(), std::vector<std::size_t>{0});
  list.select_all();
  EXPECT_EQ(list.checked_rows().size(), 3u);
  list.deselect_all();
  EXPECT_TRUE(list.checked_rows().empty());
  EXPECT_FALSE(list.sort_by(2));
  EXPECT_EQ(ui_.messages.back(), "Internal Error in Sort Algorythm!");
}

}  // namespace
}  // namespace quorva::test
