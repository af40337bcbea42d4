#include <CLI/CLI.hpp>

#include <iostream>
#include <map>

#include "cli/cli.h"
#include "cli/commands.h"
#include "panels/advanced_options.h"
#include "tagfile/latin1.h"
#include "tagfile/messages.h"

namespace quorva::cli {
namespace {

enum class Option {
  kDescr,
  kEasytrieve,
  kCobol,
  kTips,
  kDecimalComma,
  kTemplate,
  kPasswordAlert,
  kSaveDescr,
  kCompression
};

const std::map<std::string, Option> kOptions{
    {"DESCR_BREAK_POINT", Option::kDescr},
    {"descr-break", Option::kDescr},
    {"EASYTRIEVE_BREAK_POINT", Option::kEasytrieve},
    {"easytrieve-break", Option::kEasytrieve},
    {"COBOL_BREAK_POINT", Option::kCobol},
    {"cobol-break", Option::kCobol},
    {"TIPS_AND_TRICKS", Option::kTips},
    {"tips", Option::kTips},
    {"DECIMAL_POINT_IS_COMMA", Option::kDecimalComma},
    {"decimal-comma", Option::kDecimalComma},
    {"ALTERNATIVE_QUORMEM_FILE", Option::kTemplate},
    {"template", Option::kTemplate},
    {"ENABLE_PASSWORD_ALERT", Option::kPasswordAlert},
    {"password-alert", Option::kPasswordAlert},
    {"ENABLE_SAVE_DESCR_DB2", Option::kSaveDescr},
    {"save-db2-descriptions", Option::kSaveDescr},
    {"ENABLE_COBOL_VARS_COMPRESSION", Option::kCompression},
    {"compress-cobol-vars", Option::kCompression}};

int show_options() {
  const AdvancedOptions options = AdvancedOptions::open();
  auto flag = [](bool on) { return on ? "ON" : "OFF"; };
  std::cout << "Main Options\n"
            << "  DESCR_BREAK_POINT             (descr-break, 30-90)       : "
            << options.descr_break_point << '\n'
            << "  EASYTRIEVE_BREAK_POINT        (easytrieve-break, 60-200) : "
            << options.easytrieve_break_point << '\n'
            << "  COBOL_BREAK_POINT             (cobol-break, 60-200)      : "
            << options.cobol_break_point << '\n'
            << "  TIPS_AND_TRICKS               (tips)                     : "
            << flag(options.tips_and_tricks) << '\n'
            << "  DECIMAL_POINT_IS_COMMA        (decimal-comma)            : "
            << flag(options.decimal_comma) << '\n'
            << "  ALTERNATIVE_QUORMEM_FILE      (template)                 : "
            << latin1_to_utf8(options.alternative_template) << '\n'
            << "FTP Options\n"
            << "  ENABLE_PASSWORD_ALERT         (password-alert)           : "
            << flag(options.password_alert) << '\n'
            << "  MONTH_PASSWORD_ALERT                                     : "
            << options.month_password_alert << '\n';
  for (const auto& [key, value] : options.host)
    std::cout << "  " << key << std::string(key.size() < 30 ? 30 - key.size() : 1, ' ')
              << "                           : " << latin1_to_utf8(value) << '\n';
  std::cout << "Detail Db2\n"
            << "  ENABLE_SAVE_DESCR_DB2         (save-db2-descriptions)    : "
            << flag(options.save_descr_db2) << '\n'
            << "  ENABLE_COBOL_VARS_COMPRESSION (compress-cobol-vars)      : "
            << flag(options.cobol_vars_compression) << '\n';
  return kOk;
}

int set_options(const std::vector<std::string>& assignments) {
  AdvancedOptions options = AdvancedOptions::open();
  for (const std::string& assignment : assignments) {
    const std::size_t equals = assignment.find('=');
    auto option = kOptions.find(assignment.substr(0, equals));
    if (equals != std::string::npos && options.host.count(assignment.substr(0, equals))) {
      const std::string key = assignment.substr(0, equals);
      const std::optional<std::string> converted = typed_text(assignment.substr(equals + 1));
      if (!converted) return kFailed;
      // Refused here, before anything is written.
      if (std::optional<std::string> refusal =
              AdvancedOptions::host_option_refusal(key, *converted)) {
        Mostra_popup(*refusal);
        return kFailed;
      }
      options.host[key] = *converted;
      continue;
    }
    if (equals == std::string::npos || option == kOptions.end()) {
      Mostra_popup(
          "Unknown option (KEY=VALUE expected; see quorva options set --help): " + assignment,
          "Opzione sconosciuta (atteso CHIAVE=VALORE; vedi quorva options set --help): " +
              assignment);
      return kUsage;
    }
    const std::optional<std::string> converted = typed_text(assignment.substr(equals + 1));
    if (!converted) return kFailed;
    const std::string& value = *converted;
    const bool reset = value == "default";
    std::optional<bool> flag = switch_value(value);
    switch (option->second) {
      case Option::kDescr:
        reset ? options.default_descr_break_point() : void(options.descr_break_point = value);
        continue;
      case Option::kEasytrieve:
        reset ? options.default_easytrieve_break_point()
              : void(options.easytrieve_break_point = value);
        continue;
      case Option::kCobol:
        reset ? options.default_cobol_break_point() : void(options.cobol_break_point = value);
        continue;
      case Option::kTemplate:
        if (reset) {
          options.default_alternative_template();
          continue;
        }
        options.alternative_template = value;
        // Refused here, before anything is written.
        if (!AdvancedOptions::template_acceptable(value)) {
          Mostra_popup(bilingual("> The Alternative file for the Main Pseudo Source Code is "
                                 "invalid, or not .TXT, or not found...:",
                                 "> Il file Alternativo per il Sorgente Principale di "
                                 "Pseudo-Codice non esiste ,o non e' .TXT,o non e' valido...:") +
                       value);
          return kFailed;
        }
        continue;
      default:
        break;
    }
    if (!flag) {
      Mostra_popup(switch_refusal(option->first, value, true));
      return kFailed;
    }
    if (option->second == Option::kTips) options.tips_and_tricks = *flag;
    if (option->second == Option::kDecimalComma) options.decimal_comma = *flag;
    if (option->second == Option::kSaveDescr) options.save_descr_db2 = *flag;
    if (option->second == Option::kCompression) options.cobol_vars_compression = *flag;
    if (option->second == Option::kPasswordAlert &&
        !options.set_password_alert(*flag, current_month()))
      return kFailed;
  }
  // Clamped break points are reported and stored clamped, as the sheet does.
  return exit_status(options.apply());
}

}  // namespace

void add_options_commands(CLI::App& app, Cli& cli) {
  auto* options = app.add_subcommand("options", "Advanced options (Resource/QVconfig.ini)");
  options->require_subcommand(1);
  options->add_subcommand("show", "Print the options of the three pages")->callback([&cli] {
    cli.run_in_working_folder(show_options);
  });
  auto assignments = std::make_shared<std::vector<std::string>>();
  auto* set = options->add_subcommand(
      "set",
      "Change options and apply them as OK does. Keys (configuration key or alias):\n"
      "  DESCR_BREAK_POINT|descr-break (30-90), EASYTRIEVE_BREAK_POINT|easytrieve-break "
      "(60-200),\n"
      "  COBOL_BREAK_POINT|cobol-break (60-200): a number, or \"default\"; out of range is "
      "clamped;\n"
      "  ALTERNATIVE_QUORMEM_FILE|template: a .txt file inside Resource/, or \"default\";\n"
      "  TIPS_AND_TRICKS|tips, DECIMAL_POINT_IS_COMMA|decimal-comma,\n"
      "  ENABLE_PASSWORD_ALERT|password-alert,\n"
      "  ENABLE_SAVE_DESCR_DB2|save-db2-descriptions, "
      "ENABLE_COBOL_VARS_COMPRESSION|compress-cobol-vars: ON or OFF;\n"
      "  host transfer: FTP_LRECL (1-32760, default 80), FTP_RECFM (F, FB, V, VB, ...),\n"
      "  FTP_BLKSIZE, FTP_TRAILINGBLANKS (ON/OFF), FTP_SBDATACONN (HOST/LOCAL code pages,\n"
      "  e.g. IBM-1141/ISO8859-1), FTP_TIMEOUT (seconds, default 60), FTP_TLS (OFF,\n"
      "  EXPLICIT, IMPLICIT), FTP_CA_FILE, FTP_ASK_PASSWORD (ON: typed at each transfer),\n"
      "  FTP_JCL_LIBRARY (a library such as HLQ.JCL: quorva send sends NAME.jcl there),\n"
      "  FTP_COPY_LIBRARY (such as HLQ.COPYLIB: a routine's linkage copybook goes there);\n"
      "  an empty value restores the default");
  set->add_option("KEY=VALUE", *assignments, "Options to change")->required();
  set->callback([&cli, assignments] {
    cli.run_in_working_folder([assignments] { return set_options(*assignments); });
  });
}

}  // namespace quorva::cli
