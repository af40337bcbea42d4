#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "engine/key_matcher.h"
#include "engine/program_definition.h"
#include "store/key2value_file.h"

namespace quorva {

/// One key-to-value pair; keys are matched exactly, case-sensitively.
struct ConversionPair {
  std::string key;
  std::string value;
};
using ConversionList = std::vector<ConversionPair>;

/// Appends the pairs of one key-to-value file, in file order. False when it cannot be read.
bool Leggi_all_K2V_tag(const std::string& file, bool report, ConversionList& list);

/// Appends the pairs of the chosen collections (slots 1..`slots` of temp/customK2V.dat),
/// then removes every `desc_key2value` pair.
bool Leggi_all_K2Value_coll(bool report, int slots, ConversionList& list);

/// The values the header placeholders take that do not come from the program definition.
struct HeaderValues {
  std::string template_version;  ///< `quormem` of the template; empty when missing
  std::string date;              ///< "%d/%b/%Y"
};

/// Today's date as the header shows it ("21/Nov/2026").
std::string header_date();

/// "[SEL/FET/UPD/INS/DEL/COMM/ROLL" with its last character turned into "]".
std::string access_list_value(const ProgramDefinition& def);

/// Clears `list` and fills it: header placeholders, temp/key2value.dat, the collections.
void build_conversion_list(const ProgramDefinition& def, const HeaderValues& header,
                           ConversionList& list);

/// "#" to "1", then every pair in list order, column-preserving.
void apply_conversions(const ConversionList& list, std::string& line);

/// `apply_conversions` for a whole program: the keys a line holds are found in one pass over
/// it, so the cost of a line does not grow with the number of pairs. After each replacement
/// the line is looked at again, since a value may bring in a later key.
class ConversionFilter {
 public:
  explicit ConversionFilter(const ConversionList& list);
  void apply(std::string& line) const;

 private:
  const ConversionList& list_;
  std::size_t built_for_;  // the list's size when the matcher was built
  KeyMatcher matcher_;
  bool keys_hold_blank_;
  std::vector<std::string> in_literal_;  // per pair: its value as put in a literal, or empty
  mutable std::vector<std::uint32_t> found_, fresh_, merged_, starts_;
};

}  // namespace quorva
