#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace quorva {

/// Characters a line of the description box holds; a longer typed line goes on over the
/// next lines of the box, broken at its last blank as the box wraps it.
constexpr std::size_t kDescriptionBoxLine = 200;

/// DESCR_BREAK_POINT of Resource/QVconfig.ini, or 57.
int description_width();

/// Breaks the description box text (lines separated by "\n" or "\r\n") into the lines
/// stored as descprogr0, descprogr1, ... An empty box gives no line at all. Nothing typed is
/// lost, except the end of a word longer than the width (cut after width+1 characters).
std::vector<std::string> wrap_description(const std::string& box_text, int width);

/// The words that wrap_description cuts, as typed; empty when nothing is cut.
std::vector<std::string> description_cut_words(const std::string& box_text, int width);

}  // namespace quorva
