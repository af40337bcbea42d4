#include "dclgen/member_lines.h"

#include <fstream>
#include <iterator>

namespace quorva {

std::optional<std::string> read_member_file(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::vector<std::string> split_member_lines(std::string_view text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    std::size_t next = end == std::string_view::npos ? text.size() : end + 1;
    if (end == std::string_view::npos) end = text.size();
    std::size_t stop = end;
    if (end < text.size() && stop > start && text[stop - 1] == '\r') --stop;
    lines.emplace_back(text.substr(start, stop - start));
    start = next;
  }
  return lines;
}

bool is_blank_line(const std::string& line) {
  return line.find_first_not_of(' ') == std::string::npos;
}

}  // namespace quorva
