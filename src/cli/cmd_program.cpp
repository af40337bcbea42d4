#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <map>

#include "cli/cli.h"
#include "cli/commands.h"
#include "panels/base_parameters.h"
#include "panels/base_parameters_help.h"
#include "panels/program_files.h"
#include "tagfile/latin1.h"
#include "tagfile/messages.h"

namespace quorva::cli {
namespace {

// One settable field of the panel: the Parbase.dat tag and its English aliases.
enum class Field { kName, kLanguage, kKind, kSwitch, kCount, kDescription };
struct FieldSpec {
  Field field;
  int index = 0;  // Switch or Count
};

const std::map<std::string, FieldSpec>& field_specs() {
  static const std::map<std::string, FieldSpec> specs = [] {
    std::map<std::string, FieldSpec> m{
        {"nomeprogr", {Field::kName}},        {"name", {Field::kName}},
        {"linguaggio", {Field::kLanguage}},   {"language", {Field::kLanguage}},
        {"tipoprogr", {Field::kKind}},        {"kind", {Field::kKind}},
        {"descprogr", {Field::kDescription}}, {"description", {Field::kDescription}},
    };
    const std::pair<const char*, Switch> switches[] = {{"constants", Switch::kConstants},
                                                       {"comments", Switch::kComments}};
    for (int s = 0; s < kSwitchCount; ++s)
      m[switch_tag(static_cast<Switch>(s))] = {Field::kSwitch, s};
    for (auto [alias, s] : switches) m[alias] = {Field::kSwitch, static_cast<int>(s)};
    const std::pair<const char*, Count> counts[] = {{"inputs", Count::kFilein},
                                                    {"outputs", Count::kFileout},
                                                    {"reports", Count::kReport},
                                                    {"parameters", Count::kParameters}};
    for (int c = 0; c < kCountCount; ++c) m[count_tag(static_cast<Count>(c))] = {Field::kCount, c};
    for (auto [alias, c] : counts) m[alias] = {Field::kCount, static_cast<int>(c)};
    return m;
  }();
  return specs;
}

void refuse(const std::string& english, const std::string& italian) {
  Mostra_popup(english, italian);
}

// Applies one KEY=VALUE to the panel; false when refused (its message already shown).
bool apply(BaseParameters& panel, const FieldSpec& spec, const std::string& key,
           const std::string& value) {
  switch (spec.field) {
    case Field::kName:
      return panel.set_name(value);
    case Field::kDescription:
      return panel.set_description(value);
    case Field::kLanguage:
      if (value == "cobol") {
        panel.set_language(ProgramLanguage::kCobol);
      } else if (value == "easytrieve") {
        panel.set_language(ProgramLanguage::kEasytrieve);
      } else if (value == "none" || value.empty()) {
        panel.set_language(ProgramLanguage::kNone);
      } else {
        refuse("The language must be cobol or easytrieve, not: " + value,
               "Il linguaggio deve essere cobol o easytrieve, non: " + value);
        return false;
      }
      return true;
    case Field::kKind:
      if (value == "batch") return panel.set_kind(ProgramKind::kBatch);
      if (value == "routine") return panel.set_kind(ProgramKind::kRoutine);
      if (value == "match") return panel.set_kind(ProgramKind::kMatch);
      refuse("The program kind must be batch, routine or match, not: " + value,
             "Il tipo di programma deve essere batch, routine o match, non: " + value);
      return false;
    case Field::kSwitch:
      if (std::optional<bool> on = switch_value(value))
        return panel.set_switch(static_cast<Switch>(spec.index), *on);
      Mostra_popup(switch_refusal(key, value, false));
      return false;
    case Field::kCount:
      if (value.size() == 1 && value[0] >= '0' && value[0] <= '9')
        return panel.set_count(static_cast<Count>(spec.index), value[0] - '0');
      refuse(key + " must be a number from 0 to 9, not: " + value,
             key + " deve essere un numero da 0 a 9, non: " + value);
      return false;
  }
  return false;
}

int set_program(const std::vector<std::string>& assignments) {
  BaseParameters panel = BaseParameters::open();
  struct Change {
    FieldSpec spec;
    std::string key;
    std::string value;
  };
  std::vector<Change> changes;
  for (const std::string& assignment : assignments) {
    const std::size_t equals = assignment.find('=');
    const std::string key = assignment.substr(0, equals);
    auto spec = field_specs().find(key);
    if (equals == std::string::npos || spec == field_specs().end()) {
      refuse("Unknown setting (KEY=VALUE expected; see quorva program set --help): " + assignment,
             "Impostazione sconosciuta (atteso CHIAVE=VALORE; vedi quorva program set --help): " +
                 assignment);
      return kUsage;
    }
    const std::optional<std::string> value = typed_text(assignment.substr(equals + 1));
    if (!value) return kFailed;
    changes.push_back({spec->second, key, *value});
  }
  // The language first: its rules decide what the other fields may take.
  std::stable_partition(changes.begin(), changes.end(),
                        [](const Change& c) { return c.spec.field == Field::kLanguage; });
  for (const Change& change : changes)
    if (!apply(panel, change.spec, change.key, change.value)) return kFailed;
  return exit_status(panel.confirm());
}

const char* kSetHelp =
    "Set base parameters and save them as OK does (temp/Parbase.dat).\n"
    "Keys (Parbase.dat tag or alias):\n"
    "  nomeprogr|name=PGMNAME        at most 8 characters, not starting with a digit\n"
    "  linguaggio|language=cobol|easytrieve|none\n"
    "  tipoprogr|kind=batch|routine|match   (routine: Cobol only; match: Easytrieve only)\n"
    "  descprogr|description=TEXT\n"
    "  costanti|constants, commenti|comments, thru, buffering, stream, jcl, rollback,\n"
    "  commit=on|off               (thru: Cobol only)\n"
    "  filein|inputs, fileout|outputs, report|reports, select, fetch, update, insert,\n"
    "  delete, parametri|parameters=0..9   (reports: Easytrieve only)";

}  // namespace

void add_program_commands(CLI::App& app, Cli& cli) {
  auto* program =
      app.add_subcommand("program", "Base parameters of the program (temp/Parbase.dat)");
  program->require_subcommand(1);

  program->add_subcommand("show", "Print the quick-help summary of the current choices")
      ->callback([&cli] {
        cli.run_in_working_folder([] {
          BaseParameters panel = BaseParameters::open();
          std::cout << latin1_to_utf8(quick_help_summary(panel)) << '\n';
          for (const std::string& line : panel.description_lines())
            std::cout << latin1_to_utf8(line) << '\n';
          return kOk;
        });
      });

  auto assignments = std::make_shared<std::vector<std::string>>();
  auto* set = program->add_subcommand("set", kSetHelp);
  set->add_option("KEY=VALUE", *assignments, "Settings to change")->required();
  set->callback([&cli, assignments] {
    cli.run_in_working_folder([assignments] { return set_program(*assignments); });
  });

  program->add_subcommand("new", "NEW Program: erase the program files and restore the defaults")
      ->callback([&cli] { cli.run_in_working_folder([] { return exit_status(new_program()); }); });

  program
      ->add_subcommand("save-default",
                       "Save as Default: the current program becomes the starting configuration")
      ->callback([&cli] {
        cli.run_in_working_folder([] { return exit_status(save_as_default(BaseParameters::open())); });
      });
}

}  // namespace quorva::cli
