#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "dclgen/dclgen_column.h"
#include "engine/column_file.h"
#include "engine/program_definition.h"

namespace quorva {

/// A column's host variable in the two forms a COBOL program writes it.
struct HostVariable {
  std::string sql;    ///< after the ":" of an SQL statement: FIELD or DCLTABLE.FIELD
  std::string cobol;  ///< in a COBOL statement: FIELD or FIELD OF DCLTABLE
  /// A varying column's (VARCHAR) length and text items, in the COBOL form; empty for a
  /// column whose field is elementary.
  std::string length;
  std::string text;
  bool varying() const { return !text.empty(); }
};

/// The DCLGEN members a program's DB2 accesses include (INCLU- keys of temp/key2value.dat,
/// members in the source folder), each read once per generation.
class ProgramMembers {
 public:
  /// Reads the members of every access the definition counts.
  static ProgramMembers load(const ProgramDefinition& def);

  /// The member's own field for column `name` of access `k`: the field at the column's
  /// position in the member, qualified by the member's structure when another member of
  /// the program has a field of the same name. nullopt when the access has no member, the
  /// member cannot be read or does not declare the column.
  std::optional<HostVariable> host_variable(AccessKind kind, int k, const std::string& name) const;

  /// Warnings for the generation, in the person's language: a member that is missing, a
  /// TABLE NAME that is not the table its member declares.
  const std::vector<std::string>& warnings() const { return warnings_; }

 private:
  struct Member {
    std::string structure;
    std::vector<std::string> columns;             // SQL names, in declaration order
    std::vector<std::string> fields;              // host variables, same order
    std::vector<std::vector<std::string>> parts;  // items under each field, same order
  };
  void add_access(AccessKind kind, int k, const std::string& include, const std::string& table);

  std::map<std::string, std::optional<Member>> members_;    // by INCLUDE name
  std::map<std::pair<int, int>, std::string> includes_;     // (kind, k) -> INCLUDE name
  std::map<std::string, std::vector<std::string>> owners_;  // field -> members defining it
  std::vector<std::string> warnings_;
};

}  // namespace quorva
