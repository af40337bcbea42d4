#pragma once

#include <string>
#include <vector>

#include "port/status.h"
#include "store/detfiles_file.h"
#include "store/parbase_file.h"

namespace quorva {

/// The program as the panels recorded it, read once per generation.
struct ProgramDefinition {
  enum Language { kCobol = 0, kEasytrieve = 1 };
  enum Kind { kBatch = 0, kRoutine = 1, kMatch = 2 };

  std::string name;
  std::vector<std::string> description;
  int language = kCobol;
  int kind = kBatch;
  bool constants = false, thru = false, buffering = false, stream = false, comments = false,
       jcl = false;
  int input_files = 0;
  int output_files = 0;  ///< ordinary outputs only, Excel ones taken out
  int excel_files = 0;
  int reports = 0;
  int select = 0, fetch = 0, update = 0, insert = 0, remove = 0;
  bool rollback = false, commit = false;
  /// DECIMAL-POINT IS COMMA, from the configuration.
  bool decimal_comma = false;
  int parameters = 0;  ///< run-time parameter cards (SYSIN / PARM)

  bool cobol() const { return language == kCobol; }
  /// "C" or "E", the language letter of the flag codes.
  char language_letter() const { return cobol() ? 'C' : 'E'; }
  int db2_accesses() const { return select + fetch + update + insert + remove; }
};

/// The definition of a recorded program: missing counts read as 0, the Excel outputs of
/// temp/Detfiles.dat (at most the output count) taken out of the outputs.
ProgramDefinition program_definition(const ProgramRecord& record);

/// Reads temp/Parbase.dat and temp/Detfiles.dat for a generation. A failure, said with
/// `popup`, when there is no program file, no name (or not a member name) or no language
/// chosen: the panel's OK refuses such a program, and so does GO.
Result<ProgramDefinition> read_program_definition(bool popup);

/// As read_program_definition, for callers that go on whatever the files hold: a program
/// with no language chosen reads as Easytrieve, the drop-down's second entry.
ProgramDefinition load_program_definition();

}  // namespace quorva
