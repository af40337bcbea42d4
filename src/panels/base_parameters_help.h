#pragma once

#include <string>

namespace quorva {

class BaseParameters;

/// The fields of the Base Parameters panel that have a help text.
enum class BaseField {
  kName,
  kLanguage,
  kDescription,
  kJcl,
  kBatch,
  kRoutine,
  kMatch,
  kComments,
  kRollback,
  kStream,
  kBuffering,
  kThru,
  kConstants,
  kDeleteCount,
  kFetchCount,
  kInputFiles,
  kOutputFiles,
  kInsertCount,
  kReportCount,
  kSelectCount,
  kUpdateCount,
  kCommit,
  kParameters
};

/// The help area's text for a field, by language.
std::string field_help(BaseField field);
/// Label of the run-time parameter cards drop-down.
std::string parameters_label();

/// The quick-help summary of the current choices.
std::string quick_help_summary(const BaseParameters& panel);

/// The panel's information fields.
struct ProgramInformation {
  int custom_codes = 0;           ///< Custom_code_1..30 in temp/customused.dat
  int key2value_collections = 0;  ///< Key2Value_ slots 1..25 in temp/customK2V.dat
  int flag_collections = 0;       ///< FlagsColl_ slots 1..25 in temp/Flags.dat
  std::string template_name;      ///< tag quormem of the template
  std::string template_lines;     ///< tag numlines of the template
};
ProgramInformation program_information();

/// "Main Pseudo Source Code": the notice, then the template handed to the desktop.
void open_main_pseudo_source();

}  // namespace quorva
