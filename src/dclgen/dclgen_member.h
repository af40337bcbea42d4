#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "port/status.h"

namespace quorva {

/// What a DCLGEN member says about its table, for the panels that name it.
struct DclgenTableInfo {
  std::string owner;      ///< qualifier of "DECLARE owner.table TABLE"; empty when unqualified
  std::string table;      ///< table name
  std::string structure;  ///< level-01 host-structure name; empty when the member has none
};

/// Reads the table declaration and the host-structure name of a member file; nullopt when
/// the file cannot be read or holds no "EXEC SQL DECLARE ... TABLE" line.
std::optional<DclgenTableInfo> read_table_info(const std::string& path);
/// As read_table_info, from the member's text.
std::optional<DclgenTableInfo> parse_table_info(std::string_view text);

/// The warning for an access whose TABLE NAME is not the table its member declares (names
/// compared as DB2 folds them, in upper case): the member's columns would be read from
/// another table, which the bind refuses. nullopt when they agree or either is blank.
/// `access` names the access for the person, e.g. "SELECT 1".
std::optional<std::string> table_name_mismatch(const std::string& access, const std::string& member,
                                               const std::string& table,
                                               const DclgenTableInfo& info);

/// Tag of the description kept inside a member for an access kind letter: "QVDESC*" + letter.
/// Its "*" stands in column 7, so both parser passes take the line for a comment.
std::string kept_description_tag(char letter);

/// The description kept in the member for the kind letter; nullopt when absent or empty.
std::optional<std::string> read_kept_description(const std::string& path, char letter);
/// Sets (or adds) the kept description of the kind letter, replacing the member in one
/// write. A failure, writing nothing, when the member is missing, cannot be written, or the
/// text holds a line break or a NUL.
Status write_kept_description(const std::string& path, char letter, const std::string& text);

}  // namespace quorva
