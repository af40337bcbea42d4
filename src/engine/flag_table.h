#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/program_definition.h"

namespace quorva {

/// One active flag: a three-character code and its count (0 written once, N a block N times).
struct FlagEntry {
  std::string code;
  int count = 0;
};

/// The active flags of one generation, looked up first match first.
class FlagTable {
 public:
  /// Builds the table from the definition and the chosen flag collections of temp/Flags.dat.
  /// Each rejected custom flag is shown and counted in `messages`.
  static FlagTable build(const ProgramDefinition& def, int& messages);

  const FlagEntry* find(std::string_view code) const;
  const std::vector<FlagEntry>& entries() const { return entries_; }

  /// Adds the custom flags of one collection's (key, value) pairs, as read from its file.
  void add_custom_flags(const ProgramDefinition& def,
                        const std::vector<std::pair<std::string, std::string>>& pairs,
                        int& messages);

 private:
  void add(std::string code, int count) { entries_.push_back({std::move(code), count}); }

  std::vector<FlagEntry> entries_;
};

constexpr const char* kFlagsFile = "temp/Flags.dat";
constexpr int kFlagCollectionSlots = 25;

/// The position-4 filter shared by flag evaluation and the line writer: true when the
/// letter drops the line for this program.
bool filtered_out(char position4, const ProgramDefinition& def);

}  // namespace quorva
