#include "engine/line_writer.h"

#include <algorithm>

#include "engine/flag_table.h"
#include "tagfile/disk.h"

namespace quorva {

bool break_line(int break_point, char continuation, int indent, std::string& line) {
  if (break_point < 1 || static_cast<int>(line.size()) <= break_point) return false;
  if (line.find_first_not_of(' ', break_point) == std::string::npos) return false;
  int at = break_point;
  while (at >= 1 && line[at] != ' ') --at;
  if (at < 1) return false;
  line.insert(at, std::string(" ") + continuation + "\n" + std::string(indent, ' '));
  return true;
}

LineWriter::LineWriter(const ProgramDefinition& def, const ConversionList& conversions,
                       int cobol_break, int easytrieve_break)
    : def_(def),
      conversions_(conversions),
      break_point_(def.cobol() ? cobol_break : easytrieve_break),
      continuation_(def.cobol() ? ' ' : '+') {}

void LineWriter::reserve(std::size_t bytes) {
  text_.reserve(bytes);
  // Backed at once: faulting half a megabyte in page by page cost more than filling it.
  prefault(text_.data(), bytes);
}

void LineWriter::stream_to(Replacement& out, std::size_t piece) {
  out_ = &out;
  piece_ = piece;
  reserve(piece + piece / 8);
}

void LineWriter::flush() {
  if (!out_ || text_.empty()) return;
  out_->write(text_);
  text_.clear();
}

void LineWriter::scrivi_riga_output(std::string_view text) {
  if (text.size() >= 4 && filtered_out(text[3], def_)) return;
  if (text.size() > 5 && text[5] == kNotRoutineFlag && def_.kind == ProgramDefinition::kRoutine)
    return;
  const bool once = text.size() > 5 && text[5] == kOnceFlag;
  // Taken from the template's flag, before a conversion can change the first column.
  const bool jcl = !text.empty() && text[0] == 'J';
  // One working buffer for every line: its room is kept from line to line.
  std::string& line = work_;
  line.assign(text);
  conversions_.apply(line);
  if (def_.thru && line.find("PERFORM") != std::string::npos)
    for (char& c : line)
      if (c == '.') c = ' ';
  if (!line.empty() && (line[0] == 'J' || line[0] == 'E'))
    line.erase(0, 6);
  else if (line.size() >= 6)
    std::fill_n(line.begin(), 6, ' ');
  else
    line.assign(6, ' ');
  // Two accesses to one table must not declare its host variables twice.
  if (once && !once_written_.insert(line).second) return;
  const bool broken = break_line(break_point_, continuation_, kContinuationIndent, line);
  if (text.size() > 5 && text[5] == kLinkageFlag) {
    linkage_text_ += line;
    linkage_text_ += '\n';
    return;
  }
  if (broken) ++lines_written_;
  text_ += line;
  text_ += '\n';
  if (out_ && text_.size() >= piece_) flush();
  if (jcl) {
    jcl_text_ += line;
    jcl_text_ += '\n';
  }
  ++lines_written_;
  if (first_kept_ < 3) {
    ++first_kept_;
    first_lines_ += line + "\r\n";
  }
}

}  // namespace quorva
