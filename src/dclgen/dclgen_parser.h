#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dclgen/dclgen_column.h"

namespace quorva {

/// Outcome of one pass: `message` is the person's text (already in their language) when
/// the pass failed.
struct DclgenPassResult {
  bool ok = false;
  std::string message;
};

/// Reads a DCLGEN member in two passes over the same text: the SQL pass builds the column
/// list from the table declaration, the COBOL pass gives each column the picture of its
/// host variable.
class DclgenParser {
 public:
  /// Clears and refills the column list from the declaration.
  DclgenPassResult parse_sql(std::string_view text);
  DclgenPassResult parse_sql_file(const std::string& path);
  /// Fills the pictures of the columns already listed; `compress` normalises them.
  DclgenPassResult parse_cobol(std::string_view text, bool compress);
  /// As parse_cobol, compressing as ENABLE_COBOL_VARS_COMPRESSION of the configuration says.
  DclgenPassResult parse_cobol_file(const std::string& path);
  /// Both passes on a member file, stopping at the first failure.
  DclgenPassResult parse_file(const std::string& path);

  std::vector<DclgenColumn>& columns() { return columns_; }
  const std::vector<DclgenColumn>& columns() const { return columns_; }
  const std::string& structure() const { return structure_; }  ///< level-01 name
  /// The data names directly under the level-01 structure, in the member's order: DCLGEN
  /// writes one per column of the declaration, so the n-th is the host variable of the
  /// n-th column whatever NAMES(...) or a hand edit made of its name (a VARCHAR's is its
  /// group). Filled by the COBOL pass.
  const std::vector<std::string>& fields() const { return fields_; }
  /// The items under each of fields(), in the same order: a VARCHAR's length and text
  /// (level 49); empty for an elementary field.
  const std::vector<std::vector<std::string>>& field_parts() const { return field_parts_; }
  const std::string& names_prefix() const { return names_prefix_; }
  bool colsuffix() const { return colsuffix_; }

 private:
  void read_options(const std::string& comment);
  void take_statement(std::string statement, bool compress);
  void match_picture(std::string name, const std::string& picture);
  void note_field(const std::string& statement);

  std::vector<DclgenColumn> columns_;
  // Column name -> its first position, for the COBOL pass: one look-up per field.
  std::unordered_map<std::string, std::size_t> by_name_;
  std::string structure_;
  std::vector<std::string> fields_;
  std::vector<std::vector<std::string>> field_parts_;
  int field_level_ = 0;       // level number of the structure's fields, once seen
  bool fields_done_ = false;  // a second level 01 ends the structure
  std::string names_prefix_;
  bool colsuffix_ = false;
  int varchar_group_ = 0;
};

/// The message of a member file that cannot be opened.
std::string cannot_open_member_message(const std::string& path);

}  // namespace quorva
