#pragma once

#include <string>
#include <vector>

namespace quorva {

/// Width used when DESCR_BREAK_POINT is missing or not above 0.
constexpr int kDefaultDescriptionWidth = 57;
/// Characters of a description line the box hands over; the rest of a longer line is lost.
constexpr std::size_t kDescriptionBoxLine = 200;

/// DESCR_BREAK_POINT of Resource/QVconfig.ini, or 57.
int description_width();

/// Breaks the description box text (lines separated by "\n" or "\r\n") into the lines
/// stored as descprogr0, descprogr1, ... An empty box gives no line at all.
std::vector<std::string> wrap_description(const std::string& box_text, int width);

}  // namespace quorva
