#pragma once

#include <string>

namespace quorva {

/// DB2 type codes, shared by the DCLGEN parser, the column files and the engine. The
/// eight historical codes are fixed; the others are this system's own extensions.
namespace db2type {
constexpr int kDecimal = 0;
constexpr int kInteger = 1;
constexpr int kSmallint = 2;
constexpr int kChar = 10;
constexpr int kVarchar = 11;
constexpr int kDate = 20;
constexpr int kTime = 21;
constexpr int kTimestamp = 22;
constexpr int kUnknown = 99;
// Types that real members carry beyond the eight historical words.
constexpr int kBigint = 3;
constexpr int kDecfloat = 4;
constexpr int kFloat = 5;  // FLOAT, DOUBLE, REAL
constexpr int kGraphic = 12;
constexpr int kVargraphic = 13;
constexpr int kBinary = 14;
constexpr int kVarbinary = 15;
constexpr int kClob = 16;
constexpr int kBlob = 17;
constexpr int kDbclob = 18;
constexpr int kTimestampTz = 23;
constexpr int kRowid = 30;
constexpr int kXml = 31;

/// Numeric columns take ZEROES as their null default, the others SPACES.
constexpr bool is_numeric(int code) { return code >= kDecimal && code <= kFloat; }
}  // namespace db2type

/// One column of a table declaration, with the picture of its COBOL host variable.
struct DclgenColumn {
  std::string name;            ///< DB2 column name, as declared
  std::string cobol_picture;   ///< picture of the matching host variable; empty when none
  std::string length_text;     ///< "(10)", "(7,2)", ...; blanks removed; empty when none
  int type_code = db2type::kUnknown;
  int not_null = 0;            ///< 1 for NOT NULL (the person may force it to 0)
  int ordinal = 0;             ///< 0-based position in the declaration
  int null_indicator = 0;      ///< 1-based rank among the nullable columns of a selection

  bool operator==(const DclgenColumn&) const = default;
};

}  // namespace quorva
