#include "engine/output_pass.h"

#include <string_view>
#include <vector>

#include "tagfile/tag_file.h"

// Implementation details: a repeated block is kept as the indexes of its lines and written
// when a line with another flag code arrives or the template ends. A custom-code tag line
// with the block's own flag code belongs to the block; any other tag line first closes the
// pending block, so the inserted code lands where the tag stands.

namespace quorva {
namespace {

// The first three characters as flag evaluation sees them (short lines padded with blanks).
std::string flag_code(std::string_view line) {
  std::string code(line.substr(0, 3));
  code.resize(3, ' ');
  return code;
}

char position4(std::string_view line) {
  return line.size() >= 4 ? line[3] : ' ';
}

bool numbered_after_excel(std::string_view code) {
  return code == "CFO" || code == "EFO" || code == "JCO" || code == "JEO";
}

std::string prefix_of(std::string_view line) {
  std::string prefix(line.substr(0, 6));
  prefix.resize(6, ' ');
  return prefix;
}

void number(std::string& line, const std::string& occurrence) {
  if (line.find('#') != std::string::npos) Sostituisci_in_colonna(line, "#", occurrence);
}

struct Block {
  std::string code;
  int count = 0;
  std::vector<std::size_t> members;
};

class Walker {
 public:
  Walker(const LoadedTemplate& lines, OutputPass& pass) : lines_(lines), pass_(pass) {}

  void line(std::size_t index) {
    const std::string_view raw = lines_[index];
    const std::string code = flag_code(raw);
    if (auto inserted = pass_.custom.tag_lines(raw, pass_.def)) {
      if (block_.count > 0 && code == block_.code) {
        block_.members.push_back(index);
        return;
      }
      flush();
      const std::string prefix = prefix_of(raw);
      for (const std::string& text : **inserted) pass_.writer.scrivi_riga_output(prefix + text);
      return;
    }
    if (block_.count > 0 && code != block_.code) flush();
    // Runs of lines share a code: the last look-up is kept.
    if (code != last_code_) {
      last_code_ = code;
      last_entry_ = pass_.flags.find(code);
    }
    const FlagEntry* entry = last_entry_;
    if (thru_only(raw) && !pass_.def.thru) return;
    if (negated(raw)) {
      // "!" in column 5: the line stands for what a program of its language does without
      // that choice.
      const std::string language =
          code[0] == 'J' ? code.substr(0, 2) + " " : code.substr(0, 1) + "  ";
      if (!entry && pass_.flags.find(language) && !filtered_out(position4(raw), pass_.def))
        pass_.writer.scrivi_riga_output(raw);
      return;
    }
    if (!entry || filtered_out(position4(raw), pass_.def)) return;
    if (entry->count == 0) {
      pass_.writer.scrivi_riga_output(raw);
      return;
    }
    if (block_.count == 0) {
      block_.code = code;
      block_.count = entry->count;
    }
    block_.members.push_back(index);
  }

  // The THRU half of a PERFORM goes with the THRU choice whatever column 4 says, so that
  // column stays free for another filter.
  static bool thru_only(std::string_view raw) {
    if (raw.size() <= 6) return false;
    const std::string_view text = raw.substr(6);
    const std::size_t at = text.find_first_not_of(' ');
    return at != std::string_view::npos && text.substr(at, 5) == "THRU ";
  }

  static bool negated(std::string_view raw) {
    return raw.size() > 4 && raw[4] == '!' && !is_db2_line(std::string(raw.substr(0, 4)));
  }

  static bool continues(std::string_view raw) {
    return raw.size() > 5 && raw[5] == '&' && is_db2_line(std::string(raw.substr(0, 4)));
  }

  // A match program's first output takes the details with their master, the others the
  // details without one: column 6 "1" keeps a line to the first copy of its block there,
  // "2" to the copies after the first, and only there.
  bool copy_wanted(std::string_view raw, int k) const {
    const char copy = raw.size() > 5 ? raw[5] : ' ';
    const bool match = pass_.def.kind == ProgramDefinition::kMatch;
    if (copy == '1') return !match || k == 1;
    if (copy == '2') return match && k > 1;
    return true;
  }

  void flush() {
    if (block_.count == 0) return;
    Block block = std::move(block_);
    block_ = Block{};
    const int offset = numbered_after_excel(block.code) ? pass_.def.excel_files : 0;
    auto emit = [this](std::string text) { pass_.writer.scrivi_riga_output(std::move(text)); };
    for (int k = 1; k <= block.count; ++k) {
      const std::string occurrence = std::to_string(k + offset);
      for (std::size_t at = 0; at < block.members.size(); ++at) {
        const std::string_view raw = lines_[block.members[at]];
        if (!copy_wanted(raw, k)) continue;
        if (auto inserted = pass_.custom.tag_lines(raw, pass_.def)) {
          const std::string prefix = prefix_of(raw);
          for (const std::string& text : **inserted) {
            std::string out = prefix + text;
            number(out, occurrence);
            pass_.writer.scrivi_riga_output(std::move(out));
          }
          continue;
        }
        std::string out(raw);
        number(out, occurrence);
        // The lines that continue a DB2 column line go with it, column by column.
        std::vector<std::string> group;
        if (is_db2_line(out))
          while (at + 1 < block.members.size() && continues(lines_[block.members[at + 1]])) {
            group.emplace_back(lines_[block.members[++at]]);
            number(group.back(), occurrence);
          }
        const Db2Expansion::LineFate fate = pass_.db2.statement_line(out, k);
        if (fate == Db2Expansion::LineFate::kDrop) continue;
        if (is_db2_line(out)) group.insert(group.begin(), std::move(out));
        if (fate == Db2Expansion::LineFate::kComment) {
          auto commented = [&emit](std::string text) {
            Db2Expansion::comment_out(text);
            emit(std::move(text));
          };
          if (!group.empty())
            pass_.db2.expand_group(group, k, commented);
          else
            commented(std::move(out));
        } else if (!group.empty()) {
          pass_.db2.expand_group(group, k, emit);
        } else {
          pass_.writer.scrivi_riga_output(std::move(out));
        }
      }
    }
  }

 private:
  const LoadedTemplate& lines_;
  OutputPass& pass_;
  Block block_;
  std::string last_code_ = "\n\n\n";  // no code of a line
  const FlagEntry* last_entry_ = nullptr;
};

}  // namespace

void write_program(const LoadedTemplate& lines, OutputPass& pass,
                   const std::function<void(int)>& progress) {
  Walker walker(lines, pass);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    walker.line(i);
    if (progress) progress(static_cast<int>(i) + 1);
  }
  walker.flush();
}

}  // namespace quorva
