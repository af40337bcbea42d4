#include "engine/key_matcher.h"

#include <algorithm>
#include <bit>
#include <cstring>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#endif

namespace quorva {

int KeyMatcher::add_node() {
  const int node = static_cast<int>(first_key_.size());
  next_.resize(next_.size() + static_cast<std::size_t>(classes_), -1);
  first_key_.push_back(-1);
  output_.push_back(-1);
  suffix_.push_back(0);
  return node;
}

KeyMatcher::KeyMatcher(const std::vector<std::string_view>& keys) {
  // Bytes no key holds all share class 0, so a node needs one slot per byte in use only.
  for (std::string_view key : keys)
    for (char c : key) {
      auto& cls = class_of_[static_cast<unsigned char>(c)];
      if (cls == 0) cls = static_cast<std::uint8_t>(std::min(classes_++, 255));
    }
  if (classes_ > 255) {  // every byte in use: one class each
    classes_ = 256;
    for (int b = 0; b < 256; ++b)
      class_of_[static_cast<std::size_t>(b)] = static_cast<std::uint8_t>(b);
  }
  // The trie's size, known beforehand (one node per distinct prefix), so that its table is
  // made once: growing it by steps touched fresh memory at each step.
  std::vector<std::string_view> sorted;
  sorted.reserve(keys.size());
  for (std::string_view key : keys)
    if (!key.empty()) sorted.push_back(key);
  std::sort(sorted.begin(), sorted.end());
  std::size_t nodes = 1;
  for (std::size_t k = 0; k < sorted.size(); ++k) {
    const std::string_view key = sorted[k];
    std::size_t shared = 0;
    if (k > 0) {
      const std::string_view before = sorted[k - 1];
      while (shared < key.size() && shared < before.size() && key[shared] == before[shared])
        ++shared;
    }
    nodes += key.size() - shared;
  }
  const std::size_t slots = nodes * static_cast<std::size_t>(classes_);
  next_.reserve(slots);
  first_key_.reserve(nodes);
  output_.reserve(nodes);
  suffix_.reserve(nodes);
  add_node();
  same_end_.assign(keys.size(), -1);
  // Keys added last first, so each node's chain lists its keys in ascending order.
  for (std::size_t k = keys.size(); k-- > 0;) {
    if (keys[k].empty()) continue;
    int node = 0;
    for (char c : keys[k]) {
      const std::size_t slot = static_cast<std::size_t>(node) * static_cast<std::size_t>(classes_) +
                               class_of_[static_cast<unsigned char>(c)];
      if (next_[slot] < 0) {
        const int child = add_node();
        next_[slot] = child;
      }
      node = next_[slot];
    }
    same_end_[k] = first_key_[static_cast<std::size_t>(node)];
    first_key_[static_cast<std::size_t>(node)] = static_cast<std::int32_t>(k);
  }
  // Breadth first: suffix links, then the missing moves taken from the suffix's moves, so
  // matching never walks back. The root's missing moves stay at the root.
  std::vector<int> queue;
  for (int c = 0; c < classes_; ++c) {
    int& to = next_[static_cast<std::size_t>(c)];
    if (to < 0) {
      to = 0;
    } else {
      suffix_[static_cast<std::size_t>(to)] = 0;
      queue.push_back(to);
    }
  }
  for (std::size_t head = 0; head < queue.size(); ++head) {
    const int node = queue[head];
    const auto n = static_cast<std::size_t>(node);
    const int suffix = suffix_[n];
    output_[n] = first_key_[n] >= 0 ? node : output_[static_cast<std::size_t>(suffix)];
    for (int c = 0; c < classes_; ++c) {
      const std::size_t slot = n * static_cast<std::size_t>(classes_) + static_cast<std::size_t>(c);
      const int fallback =
          next_[static_cast<std::size_t>(suffix) * static_cast<std::size_t>(classes_) +
                static_cast<std::size_t>(c)];
      if (next_[slot] < 0) {
        next_[slot] = fallback;
      } else {
        suffix_[static_cast<std::size_t>(next_[slot])] = fallback;
        queue.push_back(next_[slot]);
      }
    }
  }
  // The moves take the table's place.
  for (std::int32_t& move : next_) {
    const int to = move;
    const std::int32_t base = to * classes_;
    move = output_[static_cast<std::size_t>(to)] >= 0 ? -base - 1 : base;
  }
  moves_ = std::move(next_);
  for (int b = 0; b < 256; ++b)
    idle_[static_cast<std::size_t>(b)] = moves_[class_of_[static_cast<std::size_t>(b)]] == 0;
  for (int b = 0; b < 256; ++b) {
    if (idle_[static_cast<std::size_t>(b)]) continue;
    if (start_count_ == static_cast<int>(starts_.size())) {
      start_count_ = -1;  // too many: byte by byte
      break;
    }
    starts_[static_cast<std::size_t>(start_count_++)] = static_cast<char>(b);
  }
  // Unused places repeat the first byte, so every compare stays meaningful.
  for (std::size_t s = 0; s < splats_.size(); ++s)
    splats_[s].fill(
        static_cast<unsigned char>(starts_[start_count_ > static_cast<int>(s) ? s : 0]));
  length_.reserve(keys.size());
  for (std::string_view key : keys) {
    longest_ = std::max(longest_, key.size());
    length_.push_back(static_cast<std::uint32_t>(key.size()));
  }
  std::vector<std::int32_t>().swap(next_);
}

template <bool kStarts>
void KeyMatcher::report(std::size_t node, std::size_t end, long after,
                        std::vector<std::uint32_t>& found, std::uint32_t* starts) const {
  for (int hit = output_[node]; hit >= 0;) {
    const auto h = static_cast<std::size_t>(hit);
    for (int k = first_key_[h]; k >= 0; k = same_end_[static_cast<std::size_t>(k)])
      if (k > after) {
        found.push_back(static_cast<std::uint32_t>(k));
        // Occurrences come in the order they end, so a key's first report is its leftmost.
        if constexpr (kStarts) {
          const std::uint32_t start =
              static_cast<std::uint32_t>(end + 1) - length_[static_cast<std::size_t>(k)];
          if (std::find(found.begin(), found.end() - 1, static_cast<std::uint32_t>(k)) ==
              found.end() - 1)
            starts[k] = start;
        }
      }
    hit = output_[static_cast<std::size_t>(suffix_[h])];
  }
}

std::size_t KeyMatcher::skip_idle(const char* data, std::size_t i, std::size_t size) const {
#if defined(__SSE2__) || defined(_M_X64)
  // Sixteen bytes at a time against the (at most three) bytes keys start with: lines are
  // mostly text no key starts in.
  if (start_count_ > 0 && size >= 16) {
    const __m128i first = _mm_loadu_si128(reinterpret_cast<const __m128i*>(splats_[0].data()));
    const __m128i second = _mm_loadu_si128(reinterpret_cast<const __m128i*>(splats_[1].data()));
    const __m128i third = _mm_loadu_si128(reinterpret_cast<const __m128i*>(splats_[2].data()));
    auto starts = [&](std::size_t at) {
      const __m128i chunk = _mm_loadu_si128(reinterpret_cast<const __m128i*>(data + at));
      const __m128i hits =
          _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(chunk, first), _mm_cmpeq_epi8(chunk, second)),
                       _mm_cmpeq_epi8(chunk, third));
      return static_cast<unsigned>(_mm_movemask_epi8(hits));
    };
    for (; i + 16 <= size; i += 16)
      if (const unsigned mask = starts(i))
        return i + static_cast<std::size_t>(std::countr_zero(mask));
    if (i == size) return size;
    // The last sixteen bytes of the text, less those already looked at: no read past it.
    const std::size_t base = size - 16;
    const unsigned mask = starts(base) >> (i - base);
    return mask ? i + static_cast<std::size_t>(std::countr_zero(mask)) : size;
  }
#endif
  while (i < size && idle_[static_cast<unsigned char>(data[i])]) ++i;
  return i;
}

void KeyMatcher::find(std::string_view text, long after, std::vector<std::uint32_t>& found) const {
  scan<false>(text, after, found, nullptr);
}

void KeyMatcher::find(std::string_view text, long after, std::vector<std::uint32_t>& found,
                      std::vector<std::uint32_t>& starts) const {
  scan<true>(text, after, found, starts.data());
}

template <bool kStarts>
void KeyMatcher::scan(std::string_view text, long after, std::vector<std::uint32_t>& found,
                      std::uint32_t* starts) const {
  found.clear();
  const std::int32_t* moves = moves_.data();
  const std::uint8_t* class_of = class_of_.data();
  const auto classes = static_cast<std::size_t>(classes_);
  std::int32_t state = 0;
  const std::size_t size = text.size();
  const char* data = text.data();
  for (std::size_t i = 0; i < size; ++i) {
    if (state == 0) {
      i = skip_idle(data, i, size);
      if (i == size) break;
    }
    state = moves[state + class_of[static_cast<unsigned char>(text[i])]];
    if (state < 0) {
      state = -state - 1;
      report<kStarts>(static_cast<std::size_t>(state) / classes, i, after, found, starts);
    }
  }
  if (found.size() > 1) {
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
  }
}

}  // namespace quorva
