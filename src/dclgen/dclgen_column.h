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
constexpr bool is_numeric(int code) {
  return code >= kDecimal && code <= kFloat;
}

/// The type as lists show it; "UNKNOWN" for a code the parser could not give.
constexpr const char* display_name(int code) {
  switch (code) {
    case kDecimal:
      return "DECIMAL";
    case kInteger:
      return "INTEGER";
    case kSmallint:
      return "SMALLINT";
    case kChar:
      return "CHAR";
    case kVarchar:
      return "VARCHAR";
    case kDate:
      return "DATE";
    case kTime:
      return "TIME";
    case kTimestamp:
      return "TIMESTAMP";
    case kBigint:
      return "BIGINT";
    case kDecfloat:
      return "DECFLOAT";
    case kFloat:
      return "FLOAT";
    case kGraphic:
      return "GRAPHIC";
    case kVargraphic:
      return "VARGRAPHIC";
    case kBinary:
      return "BINARY";
    case kVarbinary:
      return "VARBINARY";
    case kClob:
      return "CLOB";
    case kBlob:
      return "BLOB";
    case kDbclob:
      return "DBCLOB";
    case kTimestampTz:
      return "TIMESTAMP WITH TIME ZONE";
    case kRowid:
      return "ROWID";
    case kXml:
      return "XML";
    default:
      return "UNKNOWN";
  }
}

/// The type as the column details show it.
constexpr const char* detail_name(int code) {
  const char* name = display_name(code);
  return name[0] == 'U' ? "UNKNOWN DB2TYPE :(" : name;
}
}  // namespace db2type

/// One column of a table declaration, with the picture of its COBOL host variable.
struct DclgenColumn {
  std::string name;           ///< DB2 column name, as declared
  std::string cobol_picture;  ///< picture of the matching host variable; empty when none
  std::string length_text;    ///< "(10)", "(7,2)", ...; blanks removed; empty when none
  int type_code = db2type::kUnknown;
  int not_null = 0;        ///< 1 for NOT NULL (the person may force it to 0)
  int ordinal = 0;         ///< 0-based position in the declaration
  int null_indicator = 0;  ///< 1-based rank among the nullable columns of a selection

  bool operator==(const DclgenColumn&) const = default;
};

}  // namespace quorva
