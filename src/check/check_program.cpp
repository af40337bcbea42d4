#include "check/check_program.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include "check/check_easytrieve.h"
#include "check/check_host_variables.h"
#include "check/check_jcl.h"
#include "check/check_layout.h"
#include "check/check_leftovers.h"
#include "check/check_sql_statements.h"
#include "check/check_unit_of_work.h"
#include "store/parbase_file.h"
#include "store/program_jcl.h"
#include "store/program_name.h"
#include "tagfile/disk.h"
#include "tagfile/tag_file.h"

namespace fs = std::filesystem;

namespace quorva {

CheckLanguage detect_language(const std::string& text) {
  static const std::regex kDivision(R"(\b(IDENTIFICATION|ID|PROCEDURE)\s+DIVISION\b)",
                                    std::regex::icase);
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    if (std::regex_search(scan_text(text.substr(start, end - start)), kDivision))
      return CheckLanguage::kCobol;
    start = end + 1;
  }
  return CheckLanguage::kEasytrieve;
}

CheckReport check_program_text(const std::string& name, CheckLanguage language,
                               const std::string& text, const CheckOptions& options) {
  CheckReport report;
  report.read = true;
  report.file = name;
  CheckedProgram program = split_program(name, language, text);
  auto append = [&](std::vector<CheckFinding> more) {
    report.findings.insert(report.findings.end(), more.begin(), more.end());
  };
  append(check_layout(program));
  append(check_leftovers(program));
  append(check_jcl(program));
  append(check_sql_statements(program));
  if (language == CheckLanguage::kEasytrieve) {
    append(check_easytrieve(program));
  } else {
    append(check_unit_of_work(program));
    HostVariableCheck hosts = check_host_variables(program, options.folders);
    report.notes.insert(report.notes.end(), hosts.notes.begin(), hosts.notes.end());
    if (options.compile) {
      CobolCheckResult compiled = check_cobol(program, options.folders);
      if (!compiled.ran) report.notes.push_back(compiled.message);
      // A host variable said once: the compiler's word on a line already reported goes.
      std::erase_if(compiled.findings, [&](const CheckFinding& c) {
        return std::any_of(hosts.findings.begin(), hosts.findings.end(),
                           [&](const CheckFinding& h) { return h.line == c.line; }) &&
               (c.message.find("not defined") != std::string::npos ||
                c.message.find("ambiguous") != std::string::npos);
      });
      append(compiled.findings);
    }
    append(hosts.findings);
  }
  std::stable_sort(report.findings.begin(), report.findings.end(),
                   [](const CheckFinding& a, const CheckFinding& b) { return a.line < b.line; });
  return report;
}

CheckReport check_program_file(const std::string& path, std::optional<CheckLanguage> language,
                               CheckOptions options) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    CheckReport report;
    report.file = path;
    report.message = "The program file cannot be read: " + path;
    return report;
  }
  std::ostringstream text;
  text << in.rdbuf();
  fs::path file(path);
  if (options.folders.dclgen_folder.empty())
    options.folders.dclgen_folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
  CheckReport report = check_program_text(
      file.stem().string(), language.value_or(detect_language(text.str())), text.str(), options);
  report.file = path;
  if (file.extension() == ".txt") check_jcl_beside(report, text.str(), language);
  return report;
}

void check_jcl_beside(CheckReport& report, const std::string& program_text,
                      std::optional<CheckLanguage> language) {
  const std::string jcl_file = jcl_file_of(report.file);
  FileRead jcl = disk().read(jcl_file);
  if (jcl.status == FileRead::kMissing) return;
  const std::string name = fs::path(report.file).stem().string();
  if (jcl.status != FileRead::kRead) {
    report.findings.push_back({0, "the JCL beside the program cannot be read", "", jcl_file});
    return;
  }
  std::vector<CheckFinding> findings;
  if (!program_without_jcl(program_text, jcl.text))
    findings.push_back({0,
                        "this is not the JCL of " + fs::path(report.file).filename().string() +
                            ": some of its lines are not in the program file (generate again)",
                        "", ""});
  const CheckedProgram program =
      split_program(name, language.value_or(detect_language(program_text)), program_text);
  // In-stream data of a JCL alone ends only at "/*" or the next statement.
  const CheckedProgram alone = split_program(name, CheckLanguage::kCobol, jcl.text);
  for (auto more :
       {check_layout(alone), check_leftovers(alone), check_jcl(alone, program_files(program))})
    findings.insert(findings.end(), more.begin(), more.end());
  std::stable_sort(findings.begin(), findings.end(),
                   [](const CheckFinding& a, const CheckFinding& b) { return a.line < b.line; });
  for (CheckFinding& finding : findings) {
    finding.file = jcl_file;
    report.findings.push_back(std::move(finding));
  }
}

std::optional<std::string> current_program_file() {
  return read_program_file(false);
}

std::optional<CheckLanguage> recorded_language() {
  switch (read_program_language()) {
    case ProgramLanguage::kCobol:
      return CheckLanguage::kCobol;
    case ProgramLanguage::kEasytrieve:
      return CheckLanguage::kEasytrieve;
    case ProgramLanguage::kNone:
      break;
  }
  return std::nullopt;
}

std::string format_findings(const CheckReport& report) {
  std::string out;
  for (const CheckFinding& finding : report.findings) {
    out += finding.file.empty() ? report.file : finding.file;
    if (finding.line > 0) out += ":" + std::to_string(finding.line);
    out += ": " + finding.message + "\n";
    if (finding.line > 0) out += "    " + finding.text + "\n";
  }
  return out;
}

}  // namespace quorva
