#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>

#include "cli/cli.h"
#include "cli/commands.h"
#include "cli/rows.h"
#include "panels/base_parameters.h"
#include "panels/file_details.h"
#include "tagfile/latin1.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva::cli {
namespace {

struct FileArgs {
  int row = 0;
  std::optional<std::string> name;
  std::optional<std::string> report_name;
  std::optional<std::string> description;
  bool excel = false;
  bool no_excel = false;
};

int run_files(FileKind kind, FileArgs args) {
  const RowFamily families[] = {{Count::kFilein, "input files", "file di input"},
                                {Count::kFileout, "output files", "file di output"},
                                {Count::kReport, "reports", "report"}};
  const RowFamily& family = families[static_cast<int>(kind)];
  const int count = std::max(BaseParameters::open().count(family.count), 0);
  if (!row_in_range(args.row, count, family)) return kFailed;
  if (!to_latin1(args.name) || !to_latin1(args.report_name) || !to_latin1(args.description))
    return kFailed;
  FileDetails panel = FileDetails::open(kind, count);
  const bool changes =
      args.name || args.report_name || args.description || args.excel || args.no_excel;
  if (args.name && !panel.set_name(args.row, *args.name)) return kFailed;
  if (args.report_name && !panel.set_report_name(args.row, *args.report_name)) return kFailed;
  if (args.description && !panel.set_description(args.row, *args.description)) return kFailed;
  if (args.excel || args.no_excel) {
    if (kind != FileKind::kOutput) {
      Mostra_popup("Only output files can be Excel files.",
                   "Solo i file di output possono essere file Excel.");
      return kFailed;
    }
    if (!panel.click_excel(args.row, args.excel)) return kFailed;
  }
  if (changes)
    if (const int status = exit_status(panel.confirm()); status != kOk) return status;
  const FileRow& row = panel.row(args.row);
  std::cout << latin1_to_utf8(panel.heading()) << " " << args.row << '\n'
            << "FILE NAME        : " << latin1_to_utf8(row.name) << '\n'
            << "REPORT NAME      : " << latin1_to_utf8(row.report_name) << '\n'
            << "FILE DESCRIPTION : " << latin1_to_utf8(row.description) << '\n';
  if (kind == FileKind::kOutput)
    std::cout << "EXCEL            : " << (row.excel ? "yes" : "no") << '\n';
  return kOk;
}

}  // namespace

void add_files_commands(CLI::App& app, Cli& cli) {
  auto* files = app.add_subcommand(
      "files", "File details: names and descriptions of input files, output files and reports");
  files->require_subcommand(1);
  const std::pair<const char*, FileKind> kinds[] = {
      {"input", FileKind::kInput}, {"output", FileKind::kOutput}, {"report", FileKind::kReport}};
  for (const auto& [word, kind_binding] : kinds) {
    const FileKind kind = kind_binding;  // a copy: clang cannot capture a structured binding
    auto args = std::make_shared<FileArgs>();
    auto* cmd = files->add_subcommand(
        word, std::string("Set (and print) a row of the ") + word +
                  " details, saved as OK does into temp/key2value.dat; an empty value removes "
                  "the key");
    cmd->add_option("ROW", args->row, "Row, 1 to the count in temp/Parbase.dat")->required();
    cmd->add_option("--name", args->name, "FILE NAME (at most 8 characters)");
    cmd->add_option("--report-name", args->report_name, "REPORT NAME (at most 10 characters)");
    cmd->add_option("--desc", args->description, "FILE DESCRIPTION (at most 44 characters)");
    if (kind == FileKind::kOutput) {
      auto* excel = cmd->add_flag("--excel", args->excel,
                                  "Excel output (Excel outputs must be the first output files)");
      cmd->add_flag("--no-excel", args->no_excel, "Not an Excel output (later rows lose it too)")
          ->excludes(excel);
    }
    cmd->callback([&cli, args, kind] {
      cli.run_in_working_folder([args, kind] { return run_files(kind, *args); });
    });
  }
}

}  // namespace quorva::cli
