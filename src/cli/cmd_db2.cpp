#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <map>

#include "cli/cli.h"
#include "cli/commands.h"
#include "cli/rows.h"
#include "panels/base_parameters.h"
#include "panels/db2_details.h"
#include "tagfile/latin1.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva::cli {
namespace {

struct Db2Args {
  int row = 0;
  std::optional<std::string> owner;
  std::optional<std::string> table;
  std::optional<std::string> cursor;
  std::optional<std::string> description;
  std::optional<std::string> include;
  std::optional<std::string> member_library;
  std::optional<bool> autofill;
  std::optional<bool> auto_owner;
};

int run_db2(AccessKind kind, Db2Args args) {
  const char* word = access_word(kind);
  const std::string english = word + std::string(" accesses");
  const std::string italian = "accessi " + std::string(word);
  const RowFamily family{access_count(kind), english.c_str(), italian.c_str()};
  const int count = std::max(BaseParameters::open().count(family.count), 0);
  if (!row_in_range(args.row, count, family)) return kFailed;
  for (auto* text : {&args.owner, &args.table, &args.cursor, &args.description, &args.include,
                     &args.member_library})
    if (!to_latin1(*text)) return kFailed;
  const bool easytrieve = read_program_language() == ProgramLanguage::kEasytrieve;
  Db2Details panel = Db2Details::open(easytrieve, kind, count);
  const int n = args.row;
  // The member first: a TABLE NAME given with it is not taken for the old member's.
  if (args.include && !panel.set_include(n, *args.include)) return kFailed;
  if (args.owner && !panel.set_owner(n, *args.owner)) return kFailed;
  if (args.table && !panel.set_table(n, *args.table)) return kFailed;
  if (args.cursor && !panel.set_cursor(n, *args.cursor)) return kFailed;
  if (args.description && !panel.set_description(n, *args.description)) return kFailed;
  if (args.member_library && !panel.set_dclgen_library(*args.member_library)) return kFailed;
  if (args.autofill) panel.set_autofill(*args.autofill);
  if (args.auto_owner) panel.set_auto_owner(*args.auto_owner);
  const bool changes = args.owner || args.table || args.cursor || args.include ||
                       args.description || args.member_library || args.autofill || args.auto_owner;
  if (changes) {
    if (const int status = exit_status(panel.confirm()); status != kOk) return status;
  }
  const Db2Row& row = panel.row(n);
  std::cout << latin1_to_utf8(panel.heading()) << " " << n << '\n'
            << "OWNER       : " << latin1_to_utf8(row.owner) << '\n'
            << "TABLE NAME  : " << latin1_to_utf8(row.table) << '\n'
            << "CURSOR      : " << latin1_to_utf8(row.cursor) << '\n'
            << "DESCRIPTION : " << latin1_to_utf8(row.description) << '\n'
            << "INCLUDE     : " << latin1_to_utf8(row.include) << '\n';
  return kOk;
}

}  // namespace

void add_db2_commands(CLI::App& app, Cli& cli) {
  auto* db2 = app.add_subcommand("db2",
                                 "DB2 access details: owner, table, cursor, description, "
                                 "DCLGEN member");
  db2->require_subcommand(1);
  const AccessKind kinds[] = {AccessKind::kSelect, AccessKind::kFetch, AccessKind::kUpdate,
                              AccessKind::kInsert, AccessKind::kDelete};
  for (AccessKind kind : kinds) {
    std::string word = access_word(kind);
    std::transform(word.begin(), word.end(), word.begin(),
                   [](unsigned char c) { return std::tolower(c); });
    auto args = std::make_shared<Db2Args>();
    auto* cmd = db2->add_subcommand(
        word, "Set (and print) a row of the " + std::string(access_word(kind)) +
                  " accesses, saved as OK does into temp/key2value.dat; an empty value removes "
                  "the key");
    cmd->add_option("ROW", args->row, "Row, 1 to the count in temp/Parbase.dat")->required();
    cmd->add_option("--owner", args->owner, "OWNER (at most 20 characters)");
    cmd->add_option("--table", args->table, "TABLE NAME (at most 128 characters)");
    cmd->add_option("--cursor", args->cursor, "CURSOR (at most 20 characters)");
    cmd->add_option("--desc", args->description, "DESCRIPTION (at most 47 characters)");
    cmd->add_option("--include", args->include,
                    "INCLUDE: DCLGEN member (at most 8 characters), MEMBER.DCL in the source "
                    "folder");
    cmd->add_option("--library", args->member_library, "Host library of the DCLGEN members");
    cmd->add_option("--autofill", args->autofill,
                    "on|off: fill empty OWNERs and TABLE NAMEs from the DCLGEN members")
        ->transform(switch_words());
    cmd->add_option("--auto-owner", args->auto_owner,
                    "on|off: copy the first OWNER to the empty ones below")
        ->transform(switch_words());
    cmd->callback([&cli, args, kind] {
      cli.run_in_working_folder([args, kind] { return run_db2(kind, *args); });
    });
  }
}

}  // namespace quorva::cli
