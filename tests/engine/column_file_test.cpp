#include "engine/column_file.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/recording_ui.h"
#include "support/temp_folder.h"
#include "tagfile/disk.h"

namespace quorva::test {
namespace {

class ColumnFile : public FolderTest {};

// Name, picture, length, type, NOT NULL, position.
const std::vector<DclgenColumn> kColumns = {
    {"CUST_ID", "S9(05)V9(02) COMP-3", "(7,2)", db2type::kDecimal, 1, 0},
    {"CUST_NAME", "X(10)", "(10)", db2type::kChar, 0, 2},
    {"NOTE", "", "", db2type::kUnknown, 0, 5},
};

TEST_F(ColumnFile, WritesRecordsWithTwoBlanksAndReadsThemBack) {
  ASSERT_TRUE(Riscrivi_tag_treedb2("temp/col_select.dat", "SELECT1", Selection::kQuery, true,
                                   "CUSTOMER", "CL-|NAME", kColumns));
  EXPECT_EQ(read_text("temp/col_select.dat"),
            "[SELECT1-QUERY]\n<CUSTOMER>\n<CL-|NAME>\n"
            "CUST_ID  0  (7,2)  S9(05)V9(02)_COMP-3  1  0  0\n"
            "CUST_NAME  10  (10)  X(10)  0  2  1\n"
            "NOTE  99  NULL  NULL  0  5  2\n"
            "[/SELECT1-QUERY]\n");
  auto block = Leggi_colonne_treedb2("temp/col_select.dat", "SELECT1", Selection::kQuery);
  ASSERT_TRUE(block);
  EXPECT_EQ(block->member, "CUSTOMER");
  EXPECT_EQ(block->access_text, "CL-|NAME");
  std::vector<DclgenColumn> expected = kColumns;
  expected[1].null_indicator = 1;
  expected[2].null_indicator = 2;
  EXPECT_EQ(block->columns, expected);
}

TEST_F(ColumnFile, RewriteKeepsOtherBlocksAndEmptySelectionRemoves) {
  const std::string other =
      "[SELECT1-WHERE]\n<CUSTOMER>\n<CL-|NAME>\nNOTE  99  NULL  NULL  0  5  1\n"
      "[/SELECT1-WHERE]\n# kept\n[SELECT2-QUERY]\n<T2>\n<>\nA  1  NULL  S9(9)_COMP  1  0  0\n"
      "[/SELECT2-QUERY]\n";
  write_text(
      "temp/col_select.dat",
      "[SELECT1-QUERY]\n<OLD>\n<X>\nOLD  1  NULL  NULL  1  0  0\n[/SELECT1-QUERY]\n" + other);
  ASSERT_TRUE(Riscrivi_tag_treedb2("temp/col_select.dat", "SELECT1", Selection::kQuery, true,
                                   "CUSTOMER", "P-", {kColumns[0]}));
  EXPECT_EQ(read_text("temp/col_select.dat"),
            other +
                "[SELECT1-QUERY]\n<CUSTOMER>\n<P->\n"
                "CUST_ID  0  (7,2)  S9(05)V9(02)_COMP-3  1  0  0\n[/SELECT1-QUERY]\n");
  ASSERT_TRUE(Riscrivi_tag_treedb2("temp/col_select.dat", "SELECT1", Selection::kQuery, true,
                                   "CUSTOMER", "P-", {}));
  EXPECT_EQ(read_text("temp/col_select.dat"), other);
  auto absent = Leggi_colonne_treedb2("temp/col_select.dat", "SELECT3", Selection::kQuery);
  ASSERT_TRUE(absent);
  EXPECT_TRUE(absent->columns.empty());
}

TEST_F(ColumnFile, FailuresAreReportedAndLogged) {
  EXPECT_FALSE(Leggi_colonne_treedb2("temp/none.dat", "SELECT1", Selection::kQuery));
  EXPECT_FALSE(Riscrivi_tag_treedb2("", "SELECT1", Selection::kWhere, true, "M", "", kColumns));
  write_text("temp/col_fetch.dat", "[FETCH1-WHERE]\n<M>\n<>\nA  1  NULL\n[/FETCH1-WHERE]\n");
  EXPECT_FALSE(Leggi_colonne_treedb2("temp/col_fetch.dat", "FETCH1", Selection::kWhere));
  EXPECT_EQ(ui_.messages,
            (std::vector<std::string>{"WARNING, I cannot open the filetemp/none.dat",
                                      "The file name or the Master Tag are NULL !!"}));
  EXPECT_NE(read_text("error.log")
                .find("\nERROR :Errore ne' Riscrivi_tag_treedb2: Dati "
                      "mancanti-99\nERROR :nome_file:\nERROR :Dclgen name:M"),
            std::string::npos);
}

// Read, rewrite with what was read, read again: the block comes back the same, every line
// outside it keeps its bytes and the other blocks read as before.
TEST_F(ColumnFile, BlocksSurviveReadRewriteRead) {
  const std::string fuzzed =
      "\n[SELECT1-QUERY]\r\r\n\n\r\x02\n!\r\r\n9\r\r\n9\xca\rz\n\r\r\r\n\n\n=\xca\r\n\r\r";
  const struct {
    const char* name;
    std::string text;
    std::size_t columns;
    std::string after;  ///< the file after the rewrite
  } cases[] = {
      // Found by fuzzing: "[SELECT1-QUERY]\r\r" is no block, but became one once the rewrite
      // dropped a "\r" from every line it kept.
      {"fuzz regression", fuzzed, 0, fuzzed},
      {"CRLF lines kept as they are",
       "# notes\r\n[SELECT1-QUERY]\r\n<M>\r\n<P-|NAME>\r\nA  1  NULL  X(1)  1  0  0\r\n"
       "[/SELECT1-QUERY]\r\n[SELECT2-QUERY]\r\n<N>\r\n<>\r\n[/SELECT2-QUERY]\r\n",
       1,
       "# notes\r\n[SELECT2-QUERY]\r\n<N>\r\n<>\r\n[/SELECT2-QUERY]\r\n[SELECT1-QUERY]\n<M>\n"
       "<P-|NAME>\nA  1  NULL  X(1)  1  0  0\n[/SELECT1-QUERY]\n"},
      {"an unclosed block ends at the next tag line, and the block appended after it",
       "[SELECT1-QUERY]\n<M>\n<>\nA  1  NULL  NULL  1  0  0\n[SELECT2-QUERY]\n<T2>\n<>\n"
       "B  1  NULL  NULL  1  0  0\n",
       1,
       "[SELECT2-QUERY]\n<T2>\n<>\nB  1  NULL  NULL  1  0  0\n[/SELECT2-QUERY]\n[SELECT1-QUERY]\n"
       "<M>\n<>\nA  1  NULL  NULL  1  0  0\n[/SELECT1-QUERY]\n"},
      {"a removed block that ended an unclosed one leaves a closing line in its place",
       "[SELECT2-QUERY]\n<T2>\n<>\nB  1  NULL  NULL  1  0  0\n[SELECT1-QUERY]\n<M>\n<>\n"
       "[/SELECT1-QUERY]\nnot a record\n",
       0, "[SELECT2-QUERY]\n<T2>\n<>\nB  1  NULL  NULL  1  0  0\n[/SELECT2-QUERY]\nnot a record\n"},
      {"last line without its line feed",
       "[SELECT1-QUERY]\n<M>\n<>\nA  1  NULL  NULL  0  0  1\n[/SELECT1-QUERY]\nend", 1,
       "end\n[SELECT1-QUERY]\n<M>\n<>\nA  1  NULL  NULL  0  0  1\n[/SELECT1-QUERY]\n"},
  };
  for (const auto& c : cases) {
    write_text("temp/col_select.dat", c.text);
    auto first = Leggi_colonne_treedb2("temp/col_select.dat", "SELECT1", Selection::kQuery);
    ASSERT_TRUE(first) << c.name;
    ASSERT_EQ(first->columns.size(), c.columns) << c.name;
    auto other = Leggi_colonne_treedb2("temp/col_select.dat", "SELECT2", Selection::kQuery);
    ASSERT_TRUE(Riscrivi_tag_treedb2("temp/col_select.dat", "SELECT1", Selection::kQuery, true,
                                     first->member, first->access_text, first->columns))
        << c.name;
    EXPECT_EQ(read_text("temp/col_select.dat"), c.after) << c.name;
    auto second = Leggi_colonne_treedb2("temp/col_select.dat", "SELECT1", Selection::kQuery);
    ASSERT_TRUE(second) << c.name;
    EXPECT_EQ(second->columns, first->columns) << c.name;
    EXPECT_EQ(Leggi_colonne_treedb2("temp/col_select.dat", "SELECT2", Selection::kQuery)->columns,
              other->columns)
        << c.name;
  }
}

// A disk that can read nothing: the rewrite must not replace the file with its new block.
class UnreadableDisk : public Disk {
 public:
  FileRead read(const std::string&) override { return {FileRead::kFailed, "", "I/O error"}; }
  FileWrite replace(const std::string& path, std::string_view text) override {
    return real_disk().replace(path, text);
  }
  bool append(const std::string& p, std::string_view t, std::string& e) override {
    return real_disk().append(p, t, e);
  }
  bool remove(const std::string& p, std::string& e) override { return real_disk().remove(p, e); }
  bool exists(const std::string& p) override { return real_disk().exists(p); }
};

TEST_F(ColumnFile, RefusesWhatWouldCorruptTheFile) {
  const std::string kept =
      "[SELECT2-QUERY]\n<T2>\n<>\nA  1  NULL  NULL  1  0  0\n[/SELECT2-QUERY]\n";
  write_text("temp/col_select.dat", kept);
  {
    UnreadableDisk unreadable;
    ScopedDisk scope(unreadable);
    Status status = Riscrivi_tag_treedb2("temp/col_select.dat", "SELECT1", Selection::kQuery, true,
                                         "M", "", kColumns);
    EXPECT_FALSE(status);
    EXPECT_NE(status.message().find("(I/O error)"), std::string::npos) << status.message();
  }
  EXPECT_FALSE(Riscrivi_tag_treedb2("temp/col_select.dat", "SELECT1", Selection::kQuery, true, "M",
                                    "P-\nX|NAME", kColumns));
  EXPECT_EQ(read_text("temp/col_select.dat"), kept);
  EXPECT_NE(ui_.messages.back().find("line break"), std::string::npos);
}

TEST_F(ColumnFile, HostNamingStyles) {
  const DclgenColumn c{"CUST_NAME_X", "X(10)", "(10)", db2type::kChar, 0, 11};
  const struct {
    const char *text, *expected, *formatted;
  } cases[] = {
      {"CL-|NAME", "CL-CUST-NAME-X", "CL-|NAME"},
      {"D012-|NUMBER", "D012-12", "D012-|NUMBER"},
      {"WS-", "WS-CUST-NAME-X", "WS-|NAME"},
      {"", "CUST-NAME-X", "|NAME"},
  };
  for (const auto& k : cases) {
    HostNaming naming = parse_host_naming(k.text);
    EXPECT_EQ(naming.host_variable(c), k.expected) << k.text;
    EXPECT_EQ(format_host_naming(naming), k.formatted) << k.text;
  }
  // As DCLGEN names them: a reserved word gets "1", unless a prefix makes it a new word.
  const DclgenColumn status{"STATUS", "S9(4) COMP.", "", db2type::kSmallint, 0, 0};
  EXPECT_EQ(parse_host_naming("|NAME").host_variable(status), "STATUS1");
  EXPECT_EQ(parse_host_naming("ORD-|NAME").host_variable(status), "ORD-STATUS");
}

}  // namespace
}  // namespace quorva::test
