#include <CLI/CLI.hpp>

#include <cstdio>
#include <filesystem>
#include <iostream>

#include "cli/cli.h"
#include "cli/commands.h"
#include "dclgen/dclgen_check.h"
#include "dclgen/dclgen_parser.h"
#include "panels/column_selection.h"
#include "tagfile/tag_file.h"

namespace quorva::cli {
namespace {

// A member named on the command line: a file as given, else a member of the source folder.
std::string resolve_member(const std::string& member) {
  return Esiste_file(member) ? member : dclgen_member_path(member);
}

int show_member(Cli& cli, const std::string& member) {
  std::string path = resolve_member(member);
  DclgenParser parser;
  DclgenPassResult parsed = parser.parse_file(path);
  if (!parsed.ok) {
    cli.ui.show_message(parsed.message);
    return kFailed;
  }
  std::size_t width = 4;
  for (const DclgenColumn& column : parser.columns()) width = std::max(width, column.name.size());
  std::printf("%3s  %-*s  %-10s  %-8s  %-4s  %s\n", "ORD", static_cast<int>(width), "NAME", "TYPE",
              "LENGTH", "NULL", "PICTURE");
  for (const DclgenColumn& column : parser.columns()) {
    std::printf("%3d  %-*s  %-10s  %-8s  %-4s  %s\n", column.ordinal, static_cast<int>(width),
                column.name.c_str(), db2type::display_name(column.type_code),
                column.length_text.c_str(), column.not_null ? "NO" : "YES",
                column.cobol_picture.c_str());
  }
  if (!parser.structure().empty()) std::cout << "Structure: " << parser.structure() << '\n';
  if (!parser.names_prefix().empty()) {
    std::cout << "NAMES(" << parser.names_prefix() << ")"
              << (parser.colsuffix() ? " COLSUFFIX(YES)" : "") << '\n';
  }
  DclgenCheck check = check_columns(parser.columns());
  if (check.total == 0) return kOk;
  std::cout << check.detail << check.status << '\n';
  return kOk;
}

}  // namespace

void add_dclgen_command(CLI::App& app, Cli& cli) {
  auto* dclgen = app.add_subcommand("dclgen", "Read DCLGEN members");
  dclgen->require_subcommand(1);
  auto* show =
      dclgen->add_subcommand("show", "List the columns of a DCLGEN member and its problems");
  auto member = std::make_shared<std::string>();
  show->add_option("MEMBER", *member, "Member name (source folder + MEMBER.DCL) or file")
      ->required();
  show->callback([&cli, member] {
    // A file named from the current folder stays reachable once in the working folder.
    std::error_code error;
    if (std::filesystem::is_regular_file(*member, error)) {
      *member = std::filesystem::absolute(*member, error).string();
    }
    cli.run_in_working_folder([&] { return show_member(cli, *member); });
  });
}

}  // namespace quorva::cli
