#include "store/program_jcl.h"

#include <vector>

namespace quorva {
namespace {

// Lines with their ends, so the text left keeps its bytes.
std::vector<std::string_view> lines_of(std::string_view text) {
  std::vector<std::string_view> lines;
  for (std::size_t start = 0; start < text.size();) {
    std::size_t end = text.find('\n', start);
    end = end == std::string_view::npos ? text.size() : end + 1;
    lines.push_back(text.substr(start, end - start));
    start = end;
  }
  return lines;
}

std::string_view without_end(std::string_view line) {
  if (!line.empty() && line.back() == '\n') line.remove_suffix(1);
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

}  // namespace

std::string jcl_file_of(const std::string& program_file) {
  const std::size_t dot = program_file.rfind('.');
  const std::size_t slash = program_file.find_last_of("/\\");
  if (dot == std::string::npos || (slash != std::string::npos && dot < slash))
    return program_file + ".jcl";
  return program_file.substr(0, dot) + ".jcl";
}

std::string linkage_member(const std::string& program) {
  return program.substr(0, 7) + "L";
}

std::string linkage_file_of(const std::string& program_file) {
  const std::size_t slash = program_file.find_last_of("/\\");
  const std::size_t start = slash == std::string::npos ? 0 : slash + 1;
  std::size_t dot = program_file.rfind('.');
  if (dot == std::string::npos || dot < start) dot = program_file.size();
  return program_file.substr(0, start) + linkage_member(program_file.substr(start, dot - start)) +
         ".cpy";
}

std::optional<std::string> program_without_jcl(std::string_view program_text,
                                               std::string_view jcl_text) {
  const std::vector<std::string_view> program = lines_of(program_text);
  const std::vector<std::string_view> jcl = lines_of(jcl_text);
  std::vector<bool> dropped(program.size(), false);
  std::size_t at = program.size();
  for (std::size_t j = jcl.size(); j-- > 0;) {
    const std::string_view wanted = without_end(jcl[j]);
    while (at > 0 && without_end(program[at - 1]) != wanted) --at;
    if (at == 0) return std::nullopt;
    dropped[--at] = true;
  }
  std::string alone;
  alone.reserve(program_text.size());
  for (std::size_t i = 0; i < program.size(); ++i)
    if (!dropped[i]) alone += program[i];
  return alone;
}

}  // namespace quorva
