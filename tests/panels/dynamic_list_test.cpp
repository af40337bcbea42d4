#include "panels/dynamic_list.h"

#include <gtest/gtest.h>

#include "support/recording_ui.h"

namespace quorva::test {
namespace {

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
