#pragma once

#include <bitset>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/program_definition.h"
#include "store/key2value_file.h"
#include "store/user_file.h"

namespace quorva {

/// One key-to-value pair; keys are matched exactly, case-sensitively.
struct ConversionPair {
  std::string key;
  std::string value;
};
using ConversionList = std::vector<ConversionPair>;

/// The user data file under the name the generator knows it by.
constexpr const char* kUserFile = kUserDataFile;

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

/// `apply_conversions` for a whole program: a key is looked for only when every pair of
/// adjacent characters it has is in the line, so hundreds of pairs cost little per line.
class ConversionFilter {
 public:
  explicit ConversionFilter(const ConversionList& list);
  void apply(std::string& line) const;

 private:
  static constexpr std::size_t kBits = 4096;
  using Present = std::bitset<kBits>;
  static Present pairs_of(const std::string& text);

  const ConversionList& list_;
  std::vector<std::vector<std::uint16_t>> key_bits_;
};

}  // namespace quorva
