#include "host/sent_record.h"

#include <cstdint>
#include <cstdio>
#include <vector>

#include "store/tag_edit.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

std::vector<std::string_view> records_of(std::string_view text) {
  std::vector<std::string_view> records;
  for (std::size_t start = 0; start < text.size();) {
    std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    std::string_view record = text.substr(start, end - start);
    while (!record.empty() && (record.back() == '\r' || record.back() == ' '))
      record.remove_suffix(1);
    records.push_back(record);
    start = end + 1;
  }
  while (!records.empty() && records.back().empty()) records.pop_back();
  return records;
}

}  // namespace

std::string member_fingerprint(std::string_view text) {
  // FNV-1a over the records, each ended by a line feed, and their count.
  std::uint64_t hash = 1469598103934665603ULL;
  const std::vector<std::string_view> records = records_of(text);
  for (std::string_view record : records) {
    for (char c : record) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
    hash = (hash ^ '\n') * 1099511628211ULL;
  }
  char text_hash[40];
  std::snprintf(text_hash, sizeof text_hash, "%zu:%016llx", records.size(),
                static_cast<unsigned long long>(hash));
  return text_hash;
}

std::optional<std::string> last_sent(const std::string& remote) {
  if (!Esiste_file(kSentRecordFile)) return std::nullopt;
  return Leggi_tag(kSentRecordFile, false, remote);
}

Status record_sent(const std::string& remote, std::string_view text) {
  TagEdit edit(kSentRecordFile);
  edit.set(remote, member_fingerprint(text));
  return edit.apply(false);
}

std::string line_diff(std::string_view before, std::string_view after, int limit) {
  const std::vector<std::string_view> old_lines = records_of(before);
  const std::vector<std::string_view> new_lines = records_of(after);
  // The common head and tail are skipped; what lies between is shown as replaced.
  std::size_t head = 0;
  while (head < old_lines.size() && head < new_lines.size() && old_lines[head] == new_lines[head])
    ++head;
  std::size_t tail = 0;
  while (tail < old_lines.size() - head && tail < new_lines.size() - head &&
         old_lines[old_lines.size() - 1 - tail] == new_lines[new_lines.size() - 1 - tail])
    ++tail;
  std::string diff;
  int shown = 0;
  auto add = [&](char sign, std::size_t number, std::string_view line) {
    if (shown++ < limit)
      diff +=
          std::string(1, sign) + " " + std::to_string(number + 1) + ": " + std::string(line) + "\n";
  };
  for (std::size_t i = head; i < old_lines.size() - tail; ++i) add('-', i, old_lines[i]);
  for (std::size_t i = head; i < new_lines.size() - tail; ++i) add('+', i, new_lines[i]);
  if (shown > limit) diff += "... (" + std::to_string(shown - limit) + " more)\n";
  return diff;
}

}  // namespace quorva
