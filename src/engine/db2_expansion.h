#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "engine/column_file.h"
#include "engine/program_members.h"

namespace quorva {

/// True for a line that the DB2 column expansion takes: "2" in position 2 and "X" or "W"
/// in position 4.
bool is_db2_line(const std::string& line);

/// Length and type of the Easytrieve host field for a column, length right-aligned in three
/// places: " 40 A", "  6 P 2", "  4 B 0". A length the type cannot give is taken as 10.
/// `varying`: the member's field is a VARCHAR group, which the column's type may not say.
std::string easytrieve_field(const DclgenColumn& column, bool varying = false);

/// Expands DB2 template lines into one line per selected column. The column files are read
/// once, the first time an access is asked for.
class Db2Expansion {
 public:
  /// With `members`, a COBOL line names each column by its member's own field (qualified
  /// where two members share the name); without, or for a column the member does not give,
  /// by the access's naming (prefix + column name). Easytrieve declares its own fields.
  explicit Db2Expansion(const ProgramMembers* members = nullptr) : members_(members) {}

  /// Produces the lines of `line` (its "#" already numbered) for access `k`; each goes to
  /// `emit`. "<IND_VAL>" becomes ":" + the indicator of a nullable column, nothing for a NOT
  /// NULL one. A line with no selection behind it becomes one comment line to complete.
  void expand(const std::string& line, int k, const std::function<void(std::string)>& emit);
  /// As expand, for a line and the lines that continue it ("&" in column 6): all of them
  /// are written for one column before the next column's.
  void expand_group(const std::vector<std::string>& lines, int k,
                    const std::function<void(std::string)>& emit);

  /// What becomes of a line of access `k` whose column 6 names the selections its SQL
  /// statement needs: Q the QUERY columns, W the WHERE columns, B both; without them the
  /// line is written as a comment, so an access without its columns never gives a statement
  /// the precompiler rejects, nor an UPDATE or DELETE of every row. Inside a continued
  /// (Easytrieve) statement, where a comment may not stand: w needs both but is dropped
  /// when only the WHERE columns are missing, v is dropped when they are there.
  enum class LineFate { kWrite, kComment, kDrop };
  LineFate statement_line(const std::string& line, int k);
  /// The line as a comment: "*" in the indicator column, the text kept within the margin.
  static void comment_out(std::string& line);

 private:
  const ColumnBlock* block(AccessKind kind, int k, Selection selection);

  const ProgramMembers* members_;
  std::map<std::tuple<int, int, int>, std::optional<ColumnBlock>> blocks_;
  std::string db2_missing_;  // chosen by language once, not per line
  std::string pic_missing_;
};

}  // namespace quorva
