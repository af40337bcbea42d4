#include "dclgen/dclgen_parser.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "dclgen/dclgen_check.h"
#include "dclgen/picture_compression.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorva {
namespace {

std::string member(const std::string& columns, const std::string& cobol = "") {
  return "      * DCLGEN TABLE(EMP)\n"
         "           EXEC SQL DECLARE EMP TABLE\n" +
         columns + "           ) END-EXEC.\n       01  DCLEMP.\n" + cobol;
}

DclgenColumn sql_column(const std::string& line) {
  DclgenParser parser;
  EXPECT_TRUE(parser.parse_sql(member(line)).ok) << line;
  return parser.columns().empty() ? DclgenColumn{} : parser.columns()[0];
}

TEST(DclgenParserTest, SqlLineGivesTypeNullAndLength) {
  struct Case {
    std::string line;
    int type;
    int not_null;
    std::string length;
  } cases[] = {
      {"           ( AMOUNT          DECIMAL(7, 2) NOT NULL,", db2type::kDecimal, 1, "(7,2)"},
      {"           ( NOTE            VARCHAR(254),", db2type::kChar, 0, "(254)"},
      {"           ( LAST_SEEN       TIMESTAMP NOT NULL,", db2type::kTimestamp, 1, ""},
      {"           ( AT_TIME         TIME,", db2type::kTime, 0, ""},
      {"           ( SEQ             SMALLINT NOT NULL", db2type::kSmallint, 1, ""},
      {"           ( TOTAL           BIGINT NOT NULL,", db2type::kBigint, 1, ""},
      {"           ( NICK            VARGRAPHIC(128),", db2type::kVargraphic, 0, "(128)"},
      {"           ( PHOTO           BLOB(100K),", db2type::kBlob, 0, "(100K)"},
      {"           ( RESUME          DBCLOB(5K),", db2type::kDbclob, 0, "(5K)"},
      {"           ( RATE            DOUBLE,", db2type::kFloat, 0, ""},
      {"           ( STAMP           TIMESTAMP(6) WITH TIME ZONE,", db2type::kTimestamp, 0, "(6)"},
      {"           ( ODD             WHATEVER,", db2type::kUnknown, 0, ""},
      // The type words are searched from (name length + 6), inside the name itself.
      {"           ( START_DATE      INTEGER,", db2type::kDate, 0, ""},
      {"           ( UPDATED         TIMESTAMP,", db2type::kDate, 0, ""},
      // Columns beyond 80 are cut: the NOT NULL there is not seen.
      {"           ( LONG            CHAR(10)" + std::string(50, ' ') + "NOT NULL,", db2type::kChar,
       0, "(10)"},
  };
  for (const Case& c : cases) {
    DclgenColumn column = sql_column(c.line + "\n");
    EXPECT_EQ(column.type_code, c.type) << c.line;
    EXPECT_EQ(column.not_null, c.not_null) << c.line;
    EXPECT_EQ(column.length_text, c.length) << c.line;
  }
}

TEST(DclgenParserTest, SqlPassSkipsCommentsAndCarriageReturnsAndFails) {
  DclgenParser parser;
  ASSERT_TRUE(parser
                  .parse_sql(member("           ( ID     INTEGER NOT NULL,\r\n"
                                    "      *      OLD    CHAR(3),\r\n"
                                    "             NAME   CHAR(20)\r\n"))
                  .ok);
  ASSERT_EQ(parser.columns().size(), 2u);
  EXPECT_EQ(parser.columns()[1].name, "NAME");
  EXPECT_EQ(parser.columns()[1].ordinal, 1);
  EXPECT_EQ(parser.columns()[1].length_text, "(20)");

  test::TempWorkingFolder folder;
  DclgenPassResult none = parser.parse_sql(member(""));
  EXPECT_FALSE(none.ok);
  EXPECT_NE(none.message.find("I've not found Db2 Data"), std::string::npos);
  EXPECT_FALSE(parser.parse_sql(member("               (\n")).ok);
  EXPECT_EQ(parser.parse_sql(member("               (\n")).message,
            "Error Receiving a DB2 Column!!!");
  DclgenPassResult missing = parser.parse_file("no/such.DCL");
  EXPECT_EQ(missing.message, "WARNING! I cannot open the following File:no/such.DCL");
  EXPECT_TRUE(parser.columns().empty());
}

struct CobolCase {
  std::string options;  // header comment lines
  std::string cobol;
};

TEST(DclgenParserTest, CobolPassMatchesHostVariables) {
  const std::string columns =
      "           ( CUST_ID     INTEGER NOT NULL,\n"
      "             CUST_NAME   VARCHAR(40),\n"
      "             CUST_TS     TIMESTAMP\n";
  CobolCase cases[] = {
      {"",
       "           10 CUST-ID     PIC S9(9) USAGE COMP.\n"
       "           10 CUST-NAME.\n"
       "              49 CUST-NAME-LEN  PIC S9(4) USAGE COMP.\n"
       "              49 CUST-NAME-TEXT\n"
       "                 PIC X(40).\n"
       "001200     10 CUST-TS     PIC X(26).                                    00001200\n"},
      {"      *        NAMES(CL-)  COLSUFFIX(YES)\n",
       "           10 CL-CUST-ID     PIC S9(9) USAGE COMP.\n"
       "           10 CL-CUST-NAME.\n"
       "              49 CL-CUST-NAME-LEN  PIC S9(4) USAGE COMP.\n"
       "              49 CL-CUST-NAME-TEXT PIC X(40).\n"
       "           10 CL-CUST-TS     PIC X(26).\n"},
      {"      *        NAMES(CL-)\n",
       "           10 CL-1     PIC S9(9) USAGE COMP.\n"
       "           10 CL-2.\n"
       "              49 CL-2-LEN  PIC S9(4) USAGE COMP.\n"
       "              49 CL-2-TEXT PIC X(40).\n"
       "           10 CL-3     PIC X(26).\n"},
  };
  for (const CobolCase& c : cases) {
    DclgenParser parser;
    std::string text = c.options + member(columns, c.cobol);
    ASSERT_TRUE(parser.parse_sql(text).ok);
    ASSERT_TRUE(parser.parse_cobol(text, false).ok);
    EXPECT_EQ(parser.structure(), "DCLEMP");
    const auto& got = parser.columns();
    EXPECT_EQ(got[0].cobol_picture, "S9(9) COMP.") << c.cobol;
    EXPECT_EQ(got[1].cobol_picture, "X(40).") << c.cobol;
    EXPECT_EQ(got[2].cobol_picture, "X(26).") << c.cobol;
    // INTEGER is written without a length: the one problem the check reports here.
    EXPECT_EQ(check_columns(got).total, 1) << check_columns(got).detail;
  }
}

TEST(DclgenParserTest, ListingNumbersAreDroppedOnlyWhenEveryCardHasThem) {
  const std::string cards =
      "      *        NAMES(DB2-)  COLSUFFIX(YES)\n"
      "           EXEC SQL DECLARE DEPT TABLE\n"
      "           ( DEPT_NO     CHAR(3) NOT NULL\n"
      "           ) END-EXEC.\n"
      "       01  DCLDEPT.\n"
      "           10 DB2-DEPT-NO  PIC X(3).\n";
  std::string listed;
  int number = 1;
  for (std::size_t at = 0; at < cards.size();) {
    std::size_t end = cards.find('\n', at) + 1;
    char prefix[8];
    std::snprintf(prefix, sizeof prefix, "%06d ", number++);
    listed += prefix + cards.substr(at, end - at);
    at = end;
  }
  for (const std::string& text : {cards, listed}) {
    DclgenParser parser;
    ASSERT_TRUE(parser.parse_sql(text).ok);
    ASSERT_TRUE(parser.parse_cobol(text, true).ok);
    EXPECT_EQ(parser.names_prefix(), "DB2-");
    EXPECT_EQ(parser.columns()[0].cobol_picture, " X(03).") << text;
  }
}

TEST(DclgenParserTest, PictureCompression) {
  struct Case {
    std::string in, out;
  } cases[] = {
      {"S9999.", "S9(04)."},
      {"XXXX.", " X(04)."},
      {"X(4).", " X(04)."},
      {"S9V99.", "S9(01)V9(02)."},
      {"S9(7)V99.", "S9(7)V9(02)."},
      {"S9(7)V9(2) COMP-3.", "S9(07)V9(02) COMP-3."},
      {"S9999", "S9999"},
      {"X(256).", " X(256)."},
  };
  for (const Case& c : cases) {
    std::string picture = c.in;
    normalise_picture(picture);
    EXPECT_EQ(picture, c.out) << c.in;
  }
  std::string kept = "S9(04) COMP.";
  EXPECT_FALSE(normalise_picture(kept));
}

TEST(DclgenParserTest, ProblemCheckAndForcedNull) {
  test::TempWorkingFolder folder;
  std::vector<DclgenColumn> columns(3);
  columns[0] = {"A", "X(10).", "(10)", db2type::kChar, 1, 0, 0};
  columns[1] = {"B", "", "", db2type::kDate, 0, 1, 0};
  columns[2] = {"", "", "", db2type::kUnknown, 0, 2, 0};
  DclgenCheck check = check_columns(columns);
  EXPECT_EQ(check.total, 5);
  EXPECT_EQ(check.by_kind, (std::array<int, 4>{1, 1, 1, 2}));
  EXPECT_EQ(check.status, "Tot.<5> problems found parsing DCLgen!!!");
  EXPECT_NE(check.detail.find("Error Detail with the associated column:\n'B'\n- Cobol Picture"),
            std::string::npos);
  EXPECT_TRUE(check_columns({columns[0]}).status.empty());

  EXPECT_TRUE(toggle_forced_null(columns, 1, true));
  EXPECT_EQ(columns[0].not_null, 0);
  EXPECT_FALSE(toggle_forced_null(columns, 0, true));
  EXPECT_FALSE(toggle_forced_null(columns, 4, true));
  EXPECT_EQ(forced_null_status(), "Some Null values has been Forced!");
}

}  // namespace
}  // namespace quorva
