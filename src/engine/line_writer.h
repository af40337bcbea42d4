#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "engine/conversion_list.h"
#include "engine/program_definition.h"
#include "tagfile/disk.h"

namespace quorva {

constexpr int kCobolBreakPoint = 72;
constexpr int kEasytrieveBreakPoint = 78;
constexpr int kContinuationIndent = 10;
/// Position 6 of a template line: write the line only if the same text is not written yet.
constexpr char kOnceFlag = 'U';
/// Column 6 of a line a routine leaves out (the statistics of a job step and the like).
constexpr char kNotRoutineFlag = 'P';
/// Column 6 of a line that goes to the routine's linkage copybook, not to the program.
constexpr char kLinkageFlag = 'L';

/// Breaks `line` once at the last blank at or before `break_point` (index from 0, down to
/// 1), inserting " " + continuation + "\n" + ten blanks. True when the line was broken.
bool break_line(int break_point, char continuation, int indent, std::string& line);

/// The output program under construction: every selected template line goes through
/// `scrivi_riga_output`, which filters, converts, sets the margin and breaks it.
class LineWriter {
 public:
  LineWriter(const ProgramDefinition& def, const ConversionList& conversions, int cobol_break,
             int easytrieve_break);

  /// Writes zero, one or two physical lines for one template line; a line flagged
  /// `kOnceFlag` is dropped when an identical one was written before.
  void scrivi_riga_output(std::string_view text);

  /// Room for a program of about `bytes`, so the text is not moved as it grows.
  void reserve(std::size_t bytes);
  /// From now on the program goes to `out` in pieces of about `piece` bytes as it is
  /// made; text() then holds only what is not given yet, and flush() gives that.
  void stream_to(Replacement& out, std::size_t piece);
  void flush();
  const std::string& text() const { return text_; }
  /// The JCL lines alone (template lines flagged "J"), as they stand in text().
  const std::string& jcl_text() const { return jcl_text_; }
  /// The lines of a routine's linkage copybook ("L" in column 6), which are not in text().
  const std::string& linkage_text() const { return linkage_text_; }
  int lines_written() const { return lines_written_; }
  /// The first three lines written, each followed by "\r\n".
  const std::string& first_lines() const { return first_lines_; }

 private:
  const ProgramDefinition& def_;
  ConversionFilter conversions_;
  int break_point_;
  char continuation_;
  std::string text_;
  Replacement* out_ = nullptr;
  std::size_t piece_ = 0;
  std::string jcl_text_;
  std::string linkage_text_;
  std::string work_;
  std::string first_lines_;
  int lines_written_ = 0;
  int first_kept_ = 0;
  std::unordered_set<std::string> once_written_;
};

}  // namespace quorva
