#include "check/check_cobol.h"

// Implementation details: the stub precompiler keeps one output line per input line, so
// the compiler's line numbers are the program's own (the JCL and data lines are blanked
// rather than dropped). Copybooks are given to cobc in a private folder, as cobc looks
// them up as NAME.cpy or NAME, case-sensitively, while members are kept as NAME.DCL.

#include <cctype>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <map>
#include <random>
#include <regex>
#include <sstream>
#include <system_error>

#include "dclgen/member_lines.h"

#ifndef _WIN32
#include <sys/wait.h>
#endif

namespace fs = std::filesystem;

namespace quorva {

namespace {

std::string upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

bool is_comment(const std::string& line) {
  return line.size() > 6 && (line[6] == '*' || line[6] == '/');
}

// Host variables of one piece of SQL text, in order, as COBOL data references.
std::vector<std::string> host_variables(const std::string& sql) {
  std::vector<std::string> names;
  bool quoted = false;
  for (size_t i = 0; i < sql.size(); ++i) {
    char c = sql[i];
    if (c == '\'') quoted = !quoted;
    if (quoted || c != ':') continue;
    size_t end = i + 1;
    auto name_char = [&](size_t k) {
      return k < sql.size() &&
             (std::isalnum(static_cast<unsigned char>(sql[k])) || sql[k] == '-' || sql[k] == '_');
    };
    while (name_char(end)) ++end;
    if (end == i + 1) continue;
    std::string name = sql.substr(i + 1, end - i - 1);
    if (end < sql.size() && sql[end] == '.' && name_char(end + 1)) {
      size_t sub_end = end + 1;
      while (name_char(sub_end)) ++sub_end;
      name = sql.substr(end + 1, sub_end - end - 1) + " OF " + name;
      end = sub_end;
    }
    while (!name.empty() && name.back() == '-') name.pop_back();
    names.push_back(name);
    i = end - 1;
  }
  return names;
}

enum class SqlKind { kInclude, kDeclare, kOther };

struct SqlBlock {
  size_t first = 0, last = 0;  // lines
  size_t start_col = 0;        // where EXEC SQL begins on the first line
  size_t end_col = 0;          // just after END-EXEC on the last line
  std::string text;            // the SQL between EXEC SQL and END-EXEC, lines joined
  std::vector<std::string> line_parts;
};

std::string area(const std::string& line, size_t from, size_t to) {
  if (from >= line.size()) return "";
  return line.substr(from, std::min(to, line.size()) - from);
}

std::string pad_to(std::string text, size_t width) {
  if (text.size() < width) text.append(width - text.size(), ' ');
  return text;
}

// Data descriptions only the DB2 precompiler or IBM COBOL knows (LOB, ROWID and XML host
// variables, DBCS graphics) get a stand-in GnuCOBOL accepts: the check is about names and
// syntax, not storage.
void stand_in_for_db2_types(std::string& line) {
  static const std::regex kSqlType(R"(\bUSAGE\s+(IS\s+)?SQL\s+TYPE\s+IS\s+[^.]*)",
                                   std::regex::icase);
  static const std::regex kGraphic(
      R"(\bPIC(TURE)?\s+G\(([0-9]+)\)(\s+USAGE)?(\s+IS)?\s+DISPLAY-1\b)", std::regex::icase);
  if (line.find("SQL") != std::string::npos || line.find("sql") != std::string::npos)
    line = std::regex_replace(line, kSqlType, "PIC X(8)");
  if (line.find("DISPLAY-1") != std::string::npos)
    line = std::regex_replace(line, kGraphic, "PIC X($2)");
}

}  // namespace

std::vector<std::string> stub_precompile(const std::vector<std::string>& lines) {
  std::vector<std::string> out = lines;
  for (std::string& line : out)
    if (!is_comment(line)) stand_in_for_db2_types(line);
  static const std::regex kExec(R"(\bEXEC\s+SQL\b)", std::regex::icase);
  static const std::regex kEnd(R"(\bEND-EXEC\b)", std::regex::icase);
  size_t i = 0;
  while (i < lines.size()) {
    std::smatch match;
    std::string text = area(lines[i], 0, 72);
    if (is_comment(lines[i]) || !std::regex_search(text, match, kExec)) {
      ++i;
      continue;
    }
    SqlBlock block;
    block.first = i;
    block.start_col = match.position(0);
    size_t from = block.start_col + match.length(0);
    for (size_t k = i; k < lines.size(); ++k) {
      std::string piece = area(lines[k], k == i ? from : 7, 72);
      if (is_comment(lines[k])) piece.clear();
      std::smatch end;
      if (std::regex_search(piece, end, kEnd)) {
        block.line_parts.push_back(piece.substr(0, end.position(0)));
        block.last = k;
        block.end_col = (k == i ? from : 7) + end.position(0) + end.length(0);
        break;
      }
      block.line_parts.push_back(piece);
      block.last = k;
      block.end_col = std::string::npos;
    }
    if (block.end_col == std::string::npos) {
      // No END-EXEC: the lines stay as written and the compiler reports the EXEC.
      ++i;
      continue;
    }
    for (const std::string& part : block.line_parts) block.text += part + " ";
    std::istringstream words(upper(block.text));
    std::string verb, object;
    words >> verb >> object;
    SqlKind kind = verb == "INCLUDE"   ? SqlKind::kInclude
                   : verb == "DECLARE" ? SqlKind::kDeclare
                                       : SqlKind::kOther;
    std::string after = area(lines[block.last], block.end_col, 72);
    bool using_written = false;
    for (size_t k = block.first; k <= block.last; ++k) {
      std::string before = k == block.first ? area(lines[k], 0, block.start_col) : "";
      std::string stub;
      if (kind == SqlKind::kInclude) {
        if (k == block.first) stub = "COPY " + object + ".";
      } else if (kind == SqlKind::kOther) {
        if (k == block.first) stub = "CALL 'SQLSTUB'";
        std::vector<std::string> vars = host_variables(block.line_parts[k - block.first]);
        if (!vars.empty()) {
          if (!using_written) stub += stub.empty() ? "USING" : " USING";
          using_written = true;
          for (const std::string& var : vars) stub += (stub.empty() ? "" : " ") + var;
        }
      }
      std::string line;
      if (kind == SqlKind::kDeclare) {
        line = "      *" + area(lines[k], 7, 72);
      } else {
        // The stub sits where the SQL was: area B when the statement began a line.
        line = pad_to(before.empty() ? "           " : before, before.empty() ? 11 : 0) + stub;
        // COPY carries its own period; a statement keeps what followed END-EXEC.
        if (k == block.last && kind == SqlKind::kOther) line += after;
      }
      out[k] = line;
    }
    i = block.last + 1;
  }
  return out;
}

namespace {

struct ProcessOutput {
  int status = -1;
  std::string output;
};

std::string quote(const std::string& text) {
#ifdef _WIN32
  return "\"" + text + "\"";
#else
  std::string quoted = "'";
  for (char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
#endif
}

ProcessOutput run_process(const std::string& command) {
  ProcessOutput result;
#ifdef _WIN32
  FILE* pipe = _popen((command + " 2>&1").c_str(), "r");
#else
  FILE* pipe = popen((command + " 2>&1 </dev/null").c_str(), "r");
#endif
  if (!pipe) return result;
  char buffer[4096];
  size_t got;
  while ((got = fread(buffer, 1, sizeof buffer, pipe)) > 0) result.output.append(buffer, got);
#ifdef _WIN32
  result.status = _pclose(pipe);
#else
  int status = pclose(pipe);
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
#endif
  return result;
}

std::string read_file(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

bool write_lines(const fs::path& path, const std::vector<std::string>& lines) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  for (const std::string& line : lines) out << line << '\n';
  return static_cast<bool>(out);
}

// A private folder removed with its contents when the check ends.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::error_code ec;
    std::random_device device;
    for (int attempt = 0; attempt < 100 && path_.empty(); ++attempt) {
      fs::path candidate =
          fs::temp_directory_path(ec) / ("quorva-check-" + std::to_string(device()));
      if (fs::create_directory(candidate, ec)) path_ = candidate;
    }
  }
  ~ScratchFolder() {
    std::error_code ec;
    if (!path_.empty()) fs::remove_all(path_, ec);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

// Members NAME.DCL become copybooks NAME.cpy (upper-case name, as COPY names them), with
// their own SQL declarations stubbed.
std::map<std::string, fs::path> prepare_copybooks(const fs::path& dclgen_folder,
                                                  const fs::path& copy_folder) {
  std::map<std::string, fs::path> members;
  std::error_code ec;
  for (const auto& entry : fs::directory_iterator(dclgen_folder, ec)) {
    const fs::path& file = entry.path();
    if (upper(file.extension().string()) != ".DCL" || !entry.is_regular_file(ec)) continue;
    // Cards as the parser reads them: a member saved from an ISPF listing loses its numbers.
    const std::vector<std::string> cards = member_cards(read_file(file));
    std::string copybook = upper(file.stem().string()) + ".cpy";
    write_lines(copy_folder / copybook, stub_precompile(cards));
    members[copybook] = file;
  }
  return members;
}

// The text of line `number` (1-based) of a file, "" when it has fewer lines.
std::string line_of(const fs::path& file, int number) {
  std::ifstream in(file, std::ios::binary);
  std::string line;
  for (int i = 0; i < number && std::getline(in, line); ++i) {
  }
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return line;
}

}  // namespace

bool cobol_compiler_available() {
  static const bool available = run_process("cobc --version").status == 0;
  return available;
}

CobolCheckResult check_cobol(const CheckedProgram& program, const CobolCopyFolders& folders) {
  CobolCheckResult result;
  if (!cobol_compiler_available()) {
    result.message = "cobc is not installed: the COBOL syntax check was skipped";
    return result;
  }
  ScratchFolder scratch;
  if (scratch.path().empty()) {
    result.message = "no temporary folder for the COBOL syntax check";
    return result;
  }
  std::vector<std::string> source;
  for (size_t i = 0; i < program.lines.size(); ++i)
    source.push_back(program.kinds[i] == CheckLineKind::kSource ? program.lines[i] : "");
  source = stub_precompile(source);
  fs::path copy_folder = scratch.path() / "copy";
  std::error_code ec;
  fs::create_directory(copy_folder, ec);
  std::map<std::string, fs::path> members;
  if (!folders.dclgen_folder.empty())
    members = prepare_copybooks(folders.dclgen_folder, copy_folder);
  std::string file_name = "PROGRAM.cbl";
  if (!write_lines(scratch.path() / file_name, source)) {
    result.message = "the COBOL source could not be written for the syntax check";
    return result;
  }
  std::string command = "cobc -std=ibm-strict -fsyntax-only -I " + quote(copy_folder.string());
  if (!folders.resource_folder.empty())
    command += " -I " + quote(fs::absolute(folders.resource_folder, ec).string());
  // Copybooks written beside the program, such as a routine's linkage area.
  if (!folders.dclgen_folder.empty())
    command += " -I " + quote(fs::absolute(folders.dclgen_folder, ec).string());
  command += " " + quote((scratch.path() / file_name).string());
  ProcessOutput output = run_process(command);
  result.ran = true;
  // "FILE:LINE: error: TEXT"; errors inside a copybook name the copybook.
  static const std::regex kDiagnostic(R"(^(.*):([0-9]+): (error|severe error): (.*)$)");
  std::istringstream lines(output.output);
  std::string line;
  while (std::getline(lines, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    std::smatch match;
    if (line.size() > 4 * kScanLimit || !std::regex_match(line, match, kDiagnostic)) continue;
    fs::path file(match.str(1));
    int number = 0;
    const std::string digits = match.str(2);
    if (std::from_chars(digits.data(), digits.data() + digits.size(), number).ec != std::errc())
      continue;
    std::string message = "cobc: " + match.str(4);
    if (file.filename() == file_name) {
      add_finding(result.findings, program, static_cast<size_t>(number - 1), message);
    } else {
      // A fault in a member is shown on the member's own line (the stub keeps its lines).
      auto member = members.find(file.filename().string());
      fs::path shown = member != members.end() ? member->second
                       : !folders.resource_folder.empty()
                           ? folders.resource_folder / file.filename()
                           : file.filename();
      result.findings.push_back(
          {number, message,
           member != members.end() ? line_of(member->second, number) : line_of(file, number),
           shown.string()});
    }
  }
  if (output.status != 0 && result.findings.empty())
    result.findings.push_back({0, "cobc failed: " + output.output, "", ""});
  return result;
}

}  // namespace quorva
