#pragma once

#include <string>
#include <vector>

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
  int parameters = 0;  ///< run-time parameter cards (SYSIN / PARM)

  bool cobol() const { return language == kCobol; }
  /// "C" or "E", the language letter of the flag codes.
  char language_letter() const { return cobol() ? 'C' : 'E'; }
  int db2_accesses() const { return select + fetch + update + insert + remove; }
};

constexpr const char* kParbaseFile = "temp/Parbase.dat";
constexpr const char* kDetfilesFile = "temp/Detfiles.dat";

/// Loads temp/Parbase.dat and temp/Detfiles.dat; missing counts read as 0.
ProgramDefinition load_program_definition();

}  // namespace quorva
