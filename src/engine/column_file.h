#pragma once

#include <optional>
#include <string>
#include <vector>

#include "dclgen/dclgen_column.h"
#include "port/status.h"

namespace quorva {

/// The five DB2 access kinds, numbered as the panels number them.
enum class AccessKind { kSelect = 0, kFetch = 1, kUpdate = 2, kInsert = 3, kDelete = 4 };

/// "SELECT", "FETCH", ... as used in master tags.
const char* access_word(AccessKind kind);
/// 'S', 'F', 'U', 'I', 'D' as used in keys.
char access_letter(AccessKind kind);
/// "temp/col_select.dat", ...
const char* column_file_name(AccessKind kind);
/// From 'S', 'F', 'U', 'I', 'D'.
std::optional<AccessKind> access_kind_from_letter(char letter);

/// QUERY columns (extraction) or WHERE columns (filter) of one access.
enum class Selection { kQuery, kWhere };
const char* selection_word(Selection selection);  ///< "QUERY" / "WHERE"

/// How the host variables of an access are named, kept in the second angle-bracket line
/// of a block as "<" prefix "|" style ">", style NAME (prefix + column name, "_" -> "-")
/// or NUMBER (prefix + ordinal + 1, DCLGEN's NAMES without COLSUFFIX).
struct HostNaming {
  std::string prefix;
  bool numbered = false;

  /// The COBOL host variable of `column` under this naming.
  std::string host_variable(const DclgenColumn& column) const;
};
std::string format_host_naming(const HostNaming& naming);      ///< "CL-|NAME"
HostNaming parse_host_naming(const std::string& access_text);  ///< text without "<", ">"

/// One block read back from a column file.
struct ColumnBlock {
  std::string member;       ///< DCLGEN member name (first angle-bracket line)
  std::string access_text;  ///< second angle-bracket line, without the brackets
  std::vector<DclgenColumn> columns;
};

/// Rewrites `file` without the old block of `master_tag` + selection; with `write` and at
/// least one column, appends the new block. Every other line stays byte for byte. Done
/// under the working folder's lock, replacing the file whole; a file that cannot be read
/// is left as it is, and a field holding a line break is refused.
Status Riscrivi_tag_treedb2(const std::string& file, const std::string& master_tag,
                            Selection selection, bool write, const std::string& member,
                            const std::string& access_text,
                            const std::vector<DclgenColumn>& columns);

/// Reads the block of `master_tag` + selection. nullopt on failure (file not readable, a
/// record line without its seven fields); a block that is absent gives an empty block.
std::optional<ColumnBlock> Leggi_colonne_treedb2(const std::string& file,
                                                 const std::string& master_tag, Selection selection,
                                                 bool popup = true);

}  // namespace quorva
