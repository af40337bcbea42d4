#include "engine/program_members.h"

#include <algorithm>

#include "dclgen/dclgen_member.h"
#include "dclgen/dclgen_parser.h"
#include "dclgen/member_lines.h"
#include "store/key2value_file.h"
#include "store/user_file.h"
#include "tagfile/messages.h"

namespace quorva {

ProgramMembers ProgramMembers::load(const ProgramDefinition& def) {
  ProgramMembers members;
  const TagText keys = read_key2value_file();
  const std::pair<AccessKind, int> counts[] = {{AccessKind::kSelect, def.select},
                                               {AccessKind::kFetch, def.fetch},
                                               {AccessKind::kUpdate, def.update},
                                               {AccessKind::kInsert, def.insert},
                                               {AccessKind::kDelete, def.remove}};
  for (const auto& [kind, count] : counts) {
    for (int k = 1; k <= std::clamp(count, 0, 9); ++k) {
      const std::string suffix = std::to_string(k) + access_letter(kind);
      const std::string include = keys.value("INCLU-" + suffix).value_or("");
      if (!include.empty())
        members.add_access(kind, k, include, keys.value("TABEL-" + suffix).value_or(""));
    }
  }
  // A field name two members define is ambiguous wherever it stands unqualified.
  auto own = [&](const std::string& name, const std::string& include) {
    std::vector<std::string>& owners = members.owners_[name];
    if (std::find(owners.begin(), owners.end(), include) == owners.end()) owners.push_back(include);
  };
  for (const auto& [include, member] : members.members_)
    if (member) {
      for (const std::string& field : member->fields) own(field, include);
      for (const std::vector<std::string>& parts : member->parts)
        for (const std::string& part : parts) own(part, include);
    }
  return members;
}

void ProgramMembers::add_access(AccessKind kind, int k, const std::string& include,
                                const std::string& table) {
  includes_[{static_cast<int>(kind), k}] = include;
  const std::string access = access_word(kind) + (" " + std::to_string(k));
  const std::string path = source_folder_file(include + ".DCL");
  auto [at, added] = members_.try_emplace(include);
  if (added) {
    const std::optional<std::string> text = read_member_file(path);
    DclgenParser parser;
    if (text && parser.parse_sql(*text).ok && parser.parse_cobol(*text, false).ok) {
      Member member;
      member.structure = parser.structure();
      for (const DclgenColumn& column : parser.columns()) member.columns.push_back(column.name);
      member.fields = parser.fields();
      member.parts = parser.field_parts();
      at->second = std::move(member);
    } else {
      warnings_.push_back(bilingual(
          "The DCLGEN member " + include + " of " + access + " cannot be read (" + path +
              "): its columns keep names built from the column names, to be checked.",
          "Il membro DCLGEN " + include + " di " + access + " non si puo' leggere (" + path +
              "): le sue colonne hanno nomi costruiti dai nomi di colonna, da verificare."));
    }
  }
  if (!at->second || table.empty()) return;
  if (std::optional<DclgenTableInfo> info = read_table_info(path))
    if (auto warning = table_name_mismatch(access, include, table, *info))
      warnings_.push_back(*warning);
}

std::optional<HostVariable> ProgramMembers::host_variable(AccessKind kind, int k,
                                                          const std::string& name) const {
  auto include = includes_.find({static_cast<int>(kind), k});
  if (include == includes_.end()) return std::nullopt;
  const std::optional<Member>& member = members_.at(include->second);
  if (!member) return std::nullopt;
  auto column = std::find(member->columns.begin(), member->columns.end(), name);
  const auto position = static_cast<std::size_t>(column - member->columns.begin());
  if (column == member->columns.end() || position >= member->fields.size()) return std::nullopt;
  auto shared = [&](const std::string& name) {
    auto owners = owners_.find(name);
    return owners != owners_.end() && owners->second.size() > 1 && !member->structure.empty();
  };
  auto cobol = [&](const std::string& name) {
    return shared(name) ? name + " OF " + member->structure : name;
  };
  const std::string& field = member->fields[position];
  HostVariable host{shared(field) ? member->structure + "." + field : field, cobol(field), "", ""};
  // DCLGEN writes a VARCHAR as a group of its length and its text.
  if (position < member->parts.size() && member->parts[position].size() == 2) {
    host.length = cobol(member->parts[position][0]);
    host.text = cobol(member->parts[position][1]);
  }
  return host;
}

}  // namespace quorva
