#pragma once

#include <optional>
#include <string>
#include <vector>

#include "check/check_cobol.h"
#include "check/check_finding.h"

namespace quorva {

/// How a program is checked.
struct CheckOptions {
  bool compile = true;       ///< run cobc on COBOL when it is installed
  CobolCopyFolders folders;  ///< copybook folders for cobc
};

/// Everything found in one program.
struct CheckReport {
  bool read = false;    ///< false: the file could not be read (see message)
  std::string message;  ///< why it could not be read
  std::string file;     ///< the program file as named to the person
  std::vector<CheckFinding> findings;
  std::vector<std::string> notes;  ///< steps that could not run (cobc missing, ...)
};

/// The language a program's text looks like: COBOL when it has a DIVISION header.
CheckLanguage detect_language(const std::string& text);

/// Checks a program held in memory: layout, leftovers, JCL, Easytrieve structure, and COBOL
/// through cobc when asked and available. Findings are ordered by line.
CheckReport check_program_text(const std::string& name, CheckLanguage language,
                               const std::string& text, const CheckOptions& options);

/// Checks a program file, and NAME.jcl beside NAME.txt; the language is detected when not
/// given. The copybook folder of DCLGEN members defaults to the program's own folder.
CheckReport check_program_file(const std::string& path, std::optional<CheckLanguage> language,
                               CheckOptions options);

/// NAME.jcl beside the program file NAME.txt, when there is one: layout, leftovers and the
/// JCL rules against the files the program reads, and that it is the JCL of that program.
/// Its findings name the JCL file.
void check_jcl_beside(CheckReport& report, const std::string& program_text,
                      std::optional<CheckLanguage> language);

/// The current program of the working folder: sourcedirectory of Resource/User.dat +
/// nomeprogr of temp/Parbase.dat + ".txt"; nullopt when either is missing.
std::optional<std::string> current_program_file();
/// The language recorded in temp/Parbase.dat (linguaggio), nullopt when not recorded.
std::optional<CheckLanguage> recorded_language();

/// The findings as "file:line: message" each followed by the offending line, indented.
std::string format_findings(const CheckReport& report);

}  // namespace quorva
