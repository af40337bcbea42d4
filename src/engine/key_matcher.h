#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorva {

/// Finds which of a fixed list of keys occur in a text in one pass over the text, whatever
/// the number of keys: an Aho-Corasick automaton, built once, over the bytes the keys use.
class KeyMatcher {
 public:
  /// Keys are known by their position in `keys`; an empty key never matches.
  explicit KeyMatcher(const std::vector<std::string_view>& keys);

  /// The positions of the keys that occur in `text`, ascending, each once, those above
  /// `after` only (-1 for all).
  void find(std::string_view text, long after, std::vector<std::uint32_t>& found) const;
  /// The same, also giving where each found key first begins: `starts[key]`, sized by the
  /// caller to the number of keys (other places are left as they were).
  void find(std::string_view text, long after, std::vector<std::uint32_t>& found,
            std::vector<std::uint32_t>& starts) const;

  /// True when a key may begin somewhere in text[from, to): a byte some key starts with.
  bool may_start(std::string_view text, std::size_t from, std::size_t to) const {
    const std::size_t end = std::min(to, text.size());
    return skip_idle(text.data(), from, end) < end;
  }

  /// The length of the longest key.
  std::size_t longest() const { return longest_; }

 private:
  int add_node();
  // The first place at or after `i` where a key may start.
  std::size_t skip_idle(const char* data, std::size_t i, std::size_t size) const;
  template <bool kStarts>
  void scan(std::string_view text, long after, std::vector<std::uint32_t>& found,
            std::uint32_t* starts) const;
  template <bool kStarts>
  void report(std::size_t node, std::size_t end, long after, std::vector<std::uint32_t>& found,
              std::uint32_t* starts) const;

  std::array<std::uint8_t, 256> class_of_{};  // 0: a byte no key uses
  int classes_ = 1;
  std::vector<std::int32_t> next_;       // node * classes_ + class -> node
  std::vector<std::int32_t> first_key_;  // per node: a key ending here, -1 for none
  std::vector<std::int32_t> output_;     // per node: the nearest node on its suffix chain
                                         // (itself included) where a key ends, -1 for none
  std::vector<std::int32_t> same_end_;   // per key: the next key ending at the same node
  std::vector<std::int32_t> suffix_;     // per node: its longest proper suffix in the trie
  std::vector<std::uint32_t> length_;    // per key
  // The moves as matching reads them: the target's first slot in `moves_`, negated and
  // less one when a key ends at the target, so one load per byte tells both.
  std::vector<std::int32_t> moves_;
  // Bytes that leave the automaton at its start: skipped there without a move.
  std::array<bool, 256> idle_{};
  // When keys start with at most three different bytes (most lists: "<" and a few), the
  // start is left by comparing many bytes at once with those.
  std::array<char, 3> starts_{};
  std::array<std::array<unsigned char, 16>, 3> splats_{};
  int start_count_ = 0;
  std::size_t longest_ = 0;
};

}  // namespace quorva
