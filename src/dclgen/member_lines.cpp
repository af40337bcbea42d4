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

namespace {

bool has_listing_number(const std::string& line) {
  if (line.size() < 7 || line[6] != ' ') return false;
  for (int i = 0; i < 6; ++i) {
    if (line[i] < '0' || line[i] > '9') return false;
  }
  return true;
}

}  // namespace

std::vector<std::string> member_cards(std::string_view text) {
  std::vector<std::string> lines = split_member_lines(text);
  bool shifted_comment = false;
  for (const std::string& line : lines) {
    if (is_blank_line(line)) continue;
    if (!has_listing_number(line) || is_comment_line(line)) return lines;
    if (line.size() > 13 && line[13] == '*') shifted_comment = true;
  }
  if (!shifted_comment) return lines;
  for (std::string& line : lines) {
    if (!is_blank_line(line)) line.erase(0, 7);
  }
  return lines;
}

bool is_blank_line(const std::string& line) {
  return line.find_first_not_of(' ') == std::string::npos;
}

}  // namespace quorva
