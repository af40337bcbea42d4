#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <map>

#include "cli/cli.h"
#include "cli/commands.h"
#include "cli/rows.h"
#include "engine/column_file.h"
#include "panels/column_selection.h"
#include "store/key2value_file.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva::cli {
namespace {

const std::map<std::string, AccessKind> kKinds{{"select", AccessKind::kSelect},
                                               {"fetch", AccessKind::kFetch},
                                               {"update", AccessKind::kUpdate},
                                               {"insert", AccessKind::kInsert},
                                               {"delete", AccessKind::kDelete}};
const std::map<std::string, Selection> kSelections{{"query", Selection::kQuery},
                                                   {"where", Selection::kWhere}};

struct AccessArgs {
  std::string kind;
  int number = 0;
  std::string selection;
  std::vector<std::string> columns;
  bool all = false;
  std::optional<std::string> structure;
  std::optional<std::string> prefix;
  std::vector<std::string> nulls;
};

void add_access_options(CLI::App* cmd, AccessArgs& args) {
  cmd->add_option("KIND", args.kind, "select, fetch, update, insert or delete")
      ->required()
      ->check(CLI::IsMember({"select", "fetch", "update", "insert", "delete"}));
  cmd->add_option("N", args.number, "Access number")->required()->check(CLI::Range(1, 99));
  cmd->add_option("SELECTION", args.selection, "query (extraction) or where (filter)")
      ->required()
      ->check(CLI::IsMember({"query", "where"}));
}

// The member of the access: the INCLU- key that the DB2 access details wrote.
std::optional<std::string> access_member(Cli& cli, AccessKind kind, int number) {
  std::string key = "INCLU-" + std::to_string(number) + access_letter(kind);
  std::optional<std::string> member = read_key2value(key);
  if (!member) {
    cli.ui.show_message(bilingual("No DCLGEN member (INCLUDE) is set for the access: ",
                                  "Nessun membro DCLGEN (INCLUDE) indicato per l'accesso: ") +
                        key);
  }
  return member;
}

// The access must be one the program has: its count is a base parameter.
bool access_in_range(AccessKind kind, int number) {
  const std::string english = access_word(kind) + std::string(" accesses");
  const std::string italian = "accessi " + std::string(access_word(kind));
  const RowFamily family{access_count(kind), english.c_str(), italian.c_str(), true};
  return row_in_range(number, std::max(BaseParameters::open().count(family.count), 0), family);
}

int show_columns(const AccessArgs& args) {
  AccessKind kind = kKinds.at(args.kind);
  if (!access_in_range(kind, args.number)) return kFailed;
  // No column file yet simply means nothing was selected.
  std::optional<ColumnBlock> block;
  if (Esiste_file(column_file_name(kind))) {
    block = Leggi_colonne_treedb2(column_file_name(kind), master_tag(kind, args.number),
                                  kSelections.at(args.selection), true);
    if (!block) return kFailed;
  }
  if (!block || block->columns.empty()) {
    std::cout << bilingual("No columns selected.", "Nessuna colonna selezionata.") << '\n';
    return kOk;
  }
  HostNaming naming = parse_host_naming(block->access_text);
  std::cout << "Member: " << block->member << '\n';
  std::optional<std::string> structure = read_key2value(level01_key(kind, args.number));
  if (structure) std::cout << "Structure: " << *structure << '\n';
  std::cout << "Prefix: " << naming.prefix << (naming.numbered ? " (numbered)" : "") << '\n';
  for (const DclgenColumn& column : block->columns) {
    std::cout << column.ordinal << "  " << column.name << "  "
              << db2type::display_name(column.type_code) << column.length_text << "  "
              << (column.not_null ? "NOT NULL" : "NULL " + std::to_string(column.null_indicator))
              << "  " << naming.host_variable(column) << "  PIC " << column.cobol_picture << '\n';
  }
  return kOk;
}

std::optional<int> column_index(Cli& cli, const ColumnSelection& dialog, const std::string& name) {
  for (const DclgenColumn& column : dialog.columns()) {
    if (column.name == name) return column.ordinal;
  }
  cli.ui.show_message(
      bilingual("I've not found the researched field:", "Non ho trovato il campo ricercato:") +
      name);
  return std::nullopt;
}

int set_columns(Cli& cli, const AccessArgs& args) {
  AccessKind kind = kKinds.at(args.kind);
  if (!access_in_range(kind, args.number)) return kFailed;
  std::optional<std::string> member = access_member(cli, kind, args.number);
  if (!member) return kFailed;
  ColumnSelection dialog(kind, args.number, *member, kSelections.at(args.selection));
  if (!dialog.open(dclgen_member_path(*member))) return kFailed;
  if (args.all) dialog.select_all();
  for (const std::string& name : args.columns) {
    std::optional<int> ordinal = column_index(cli, dialog, name);
    if (!ordinal) return kFailed;
    dialog.select(*ordinal);
  }
  for (const std::string& name : args.nulls) {
    std::optional<int> ordinal = column_index(cli, dialog, name);
    if (!ordinal) return kFailed;
    dialog.set_null_box(*ordinal + 1, true);
  }
  if (args.structure) {
    if (!dialog.set_structure_name(*args.structure)) return kFailed;
  } else if (auto kept = read_key2value(level01_key(kind, args.number))) {
    (void)dialog.set_structure_name(*kept);
  }
  if (args.prefix && !dialog.set_prefix(*args.prefix)) return kFailed;
  if (!dialog.ok()) return kFailed;
  std::cout << dialog.selected_count_text() << '\n';
  return kOk;
}

int clear_columns(const AccessArgs& args) {
  AccessKind kind = kKinds.at(args.kind);
  if (!access_in_range(kind, args.number)) return kFailed;
  return exit_status(Riscrivi_tag_treedb2(column_file_name(kind), master_tag(kind, args.number),
                                          kSelections.at(args.selection), false, "", "", {}));
}

}  // namespace

void add_columns_command(CLI::App& app, Cli& cli) {
  auto* columns = app.add_subcommand("columns", "Column selections of the DB2 accesses");
  columns->require_subcommand(1);

  auto show_args = std::make_shared<AccessArgs>();
  auto* show = columns->add_subcommand("show", "Show the selected columns of an access");
  add_access_options(show, *show_args);
  show->callback([&cli, show_args] {
    cli.run_in_working_folder([show_args] { return show_columns(*show_args); });
  });

  auto set_args = std::make_shared<AccessArgs>();
  auto* set = columns->add_subcommand("set", "Select the columns of an access");
  add_access_options(set, *set_args);
  set->add_option("COLUMN", set_args->columns, "Columns to select");
  set->add_flag("--all", set_args->all, "Select every column");
  set->add_option("--struct", set_args->structure, "Level-01 structure name");
  set->add_option("--prefix", set_args->prefix, "Variables prefix");
  set->add_option("--null", set_args->nulls, "Columns handled as nullable")->take_all();
  set->callback([&cli, set_args] {
    if (set_args->columns.empty() && !set_args->all) {
      cli.ui.show_message(bilingual("Name the columns to select, or give --all.",
                                    "Indicare le colonne da selezionare, o --all."));
      cli.exit_code = kUsage;
      return;
    }
    cli.run_in_working_folder([&cli, set_args] { return set_columns(cli, *set_args); });
  });

  auto clear_args = std::make_shared<AccessArgs>();
  auto* clear = columns->add_subcommand("clear", "Remove the column selection of an access");
  add_access_options(clear, *clear_args);
  clear->callback([&cli, clear_args] {
    cli.run_in_working_folder([clear_args] { return clear_columns(*clear_args); });
  });
}

}  // namespace quorva::cli
