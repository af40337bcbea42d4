#include "engine/flag_table.h"

#include <cerrno>
#include <cstdlib>

#include "engine/conversion_list.h"
#include "store/tag_text.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

std::string code_of(char a, char b, char c) {
  return std::string{a, b, c};
}

// A count as the decimal reader takes it; 0 for no number.
long decimal_value(const std::string& text) {
  const char* begin = text.c_str();
  char* end = nullptr;
  errno = 0;
  long value = std::strtol(begin, &end, 10);
  if (end == begin || errno == ERANGE) return 0;
  return value;
}

// Compared in place: looked up once per template line, for a code of three characters.
bool same_code(const std::string& entry, std::string_view code) {
  if (entry.size() != code.size()) return false;
  for (std::size_t i = 0; i < code.size(); ++i)
    if (entry[i] != code[i]) return false;
  return true;
}

}  // namespace

const FlagEntry* FlagTable::find(std::string_view code) const {
  for (const FlagEntry& entry : entries_)
    if (same_code(entry.code, code)) return &entry;
  return nullptr;
}

FlagTable FlagTable::build(const ProgramDefinition& def, int& messages) {
  FlagTable table;
  const char L = def.language_letter();
  table.add(code_of('J', L, ' '), 0);
  table.add(code_of(L, ' ', ' '), 0);
  if (def.kind == ProgramDefinition::kBatch) {
    table.add(code_of(L, 'B', ' '), 0);
    table.add(code_of('J', L, 'B'), 0);
  }
  if (def.kind == ProgramDefinition::kRoutine) {
    table.add(code_of(L, 'R', ' '), 0);
    table.add(code_of('J', L, 'R'), 0);
  }
  if (def.kind == ProgramDefinition::kMatch) {
    table.add(code_of(L, 'M', ' '), 0);
    table.add(code_of('J', L, 'M'), 0);
  }
  if (def.constants) table.add(code_of(L, 'K', 'K'), 0);
  if (def.buffering) table.add(code_of(L, 'W', ' '), 0);
  if (def.stream) {
    table.add(code_of(L, 'X', ' '), 0);
    table.add(code_of('J', L, 'X'), 0);
  }
  // A routine works inside its caller's unit of work: it neither commits nor rolls back.
  // A program that changes DB2 always rolls back on an error: ending normally under the
  // DSN monitor would commit the partial work.
  const bool own_unit = def.kind != ProgramDefinition::kRoutine;
  const bool changes_db2 = def.update + def.insert + def.remove > 0;
  if (own_unit && (def.rollback || changes_db2)) {
    table.add(code_of(L, '2', 'R'), 0);
    table.add(code_of('J', L, 'K'), 0);
  }
  if (own_unit && def.commit) {
    table.add(code_of(L, '2', 'C'), 0);
    table.add(code_of('J', L, 'C'), 0);
  }
  // The JCL letters are historical: insert is "Y", the report step "JER" in every language.
  const struct {
    int n;
    char own;
    char jcl;
  } accesses[] = {{def.remove, 'D', 'D'},
                  {def.fetch, 'F', 'F'},
                  {def.insert, 'I', 'Y'},
                  {def.update, 'U', 'U'},
                  {def.select, 'S', 'S'}};
  for (const auto& access : accesses) {
    if (access.n <= 0) continue;
    table.add(code_of(L, '2', access.own), access.n);
    table.add(code_of('J', L, access.jcl), access.n);
  }
  if (def.reports > 0) {
    table.add(code_of(L, 'R', ' '), def.reports);
    table.add("JER", def.reports);
  }
  if (def.output_files > 0) {
    table.add(code_of(L, 'F', 'O'), def.output_files);
    table.add(code_of('J', L, 'O'), def.output_files);
  }
  if (def.excel_files > 0) {
    table.add(code_of(L, 'F', 'C'), def.excel_files);
    table.add(code_of('J', L, 'E'), def.excel_files);
  }
  if (def.input_files > 0) {
    table.add(code_of(L, 'F', 'I'), def.input_files);
    table.add(code_of('J', L, 'I'), def.input_files);
  }
  const int d = static_cast<int>(def.description.size());
  if (d > 0) {
    table.add(code_of(L, 'E', 'Z'), d);
    table.add(code_of('J', L, 'Z'), d);
  }
  if (def.parameters > 0) {
    table.add(code_of(L, '2', 'N'), def.parameters);
    table.add(code_of(L, '2', 'M'), 0);
    // One card of the run step's SYSIN (or PARMIN) per card the program reads.
    table.add(code_of('J', L, 'N'), def.parameters);
  }
  if (def.output_files + def.excel_files + def.input_files > 0) table.add(code_of(L, 'F', ' '), 0);
  if (def.db2_accesses() > 0 || def.commit || def.rollback) {
    table.add(code_of(L, '2', ' '), 0);
    table.add(code_of('J', L, '2'), 0);
  } else {
    // Without DB2 the program is the step's own program, not run under the DSN monitor.
    table.add(code_of('J', L, 'P'), 0);
  }
  // The choices read once, not once per slot.
  const TagText chosen(read_whole_file(kFlagsFile).value_or(""));
  for (int slot = 1; slot <= kFlagCollectionSlots; ++slot) {
    const std::string tag =
        std::string("FlagsColl_") + (slot < 10 ? "0" : "") + std::to_string(slot);
    std::optional<std::string> file = chosen.value(tag);
    if (!file) continue;
    ConversionList pairs;
    Leggi_all_K2V_tag(*file, true, pairs);
    std::vector<std::pair<std::string, std::string>> plain;
    for (ConversionPair& pair : pairs) plain.emplace_back(pair.key, pair.value);
    table.add_custom_flags(def, plain, messages);
  }
  // A routine is called by other programs, not run by a job step: it gets no run JCL.
  if (!def.jcl || def.kind == ProgramDefinition::kRoutine)
    std::erase_if(table.entries_, [](const FlagEntry& entry) { return entry.code[0] == 'J'; });
  return table;
}

void FlagTable::add_custom_flags(const ProgramDefinition& def,
                                 const std::vector<std::pair<std::string, std::string>>& pairs,
                                 int& messages) {
  for (const auto& [key, value] : pairs) {
    if (key.size() < 2) continue;
    std::string code = key.substr(1, key.size() - 2);
    while (!code.empty() && code.back() == ' ') code.pop_back();
    if (code.size() != 3) continue;
    const char first = code[0];
    if (std::string_view("JjCcEe").find(first) == std::string_view::npos) {
      Mostra_popup("Custom Flag Removed (C2 noJCE):" + code);
      ++messages;
      continue;
    }
    const bool wanted = ((first == 'C' || first == 'c') && def.cobol()) ||
                        ((first == 'E' || first == 'e') && !def.cobol()) ||
                        ((first == 'J' || first == 'j') && def.jcl);
    if (!wanted) continue;
    const long count = decimal_value(value);
    if (count <= 0) {
      Mostra_popup("Custom Flag Removed - no occurs (C3 value):" + value,
                   "Custom Flag Rimosso - no Occorrenze (C3 value):" + value);
      ++messages;
      continue;
    }
    if (const FlagEntry* existing = find(code)) {
      const std::string values = std::to_string(existing->count) + " vs " + value;
      Mostra_popup("Double directives upon this Flag (discard):" + code + " " + values,
                   "Doppia direttiva su questo Flag (scarta) :" + code + " " + values);
      ++messages;
      continue;
    }
    add(code, static_cast<int>(count > 9999 ? 9999 : count));
  }
}

bool filtered_out(char position4, const ProgramDefinition& def) {
  switch (position4) {
    case 'B':
      return def.kind != ProgramDefinition::kBatch;
    case 'R':
      return def.kind != ProgramDefinition::kRoutine;
    case 'M':
      return def.kind != ProgramDefinition::kMatch;
    case 'T':
      return !def.thru;
    case '2':
      return def.db2_accesses() == 0 && !def.commit && !def.rollback;
    case '*':
      return !def.comments;
    case 'N':
      return def.parameters == 0;
    case 'D':
      return !def.decimal_comma;
    case 'd':
      return def.decimal_comma;
    default:
      return false;
  }
}

}  // namespace quorva
