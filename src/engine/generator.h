#pragma once

#include <string>
#include <vector>

#include "engine/template_loader.h"

namespace quorva {

/// How one GO ended.
struct GenerationResult {
  enum Status { kDone, kDeclined, kStopped };
  Status status = kStopped;
  std::string output_name;
  int lines_written = 0;
  std::string first_lines;            ///< the first three lines written, each followed by "\r\n"
  std::string rank;                   ///< the user's level title after this generation
  bool promoted = false;              ///< the rank rose with this generation
  int messages = 0;                   ///< messages shown while running (rejected custom flags)
  std::vector<std::string> warnings;  ///< also in the warning log: members, table names
};

/// What a run needs, settled by the Generate panel and its questions beforehand.
struct GenerationJob {
  std::string template_name;
  int declared = -1;  ///< the template's declared line count
  std::string output_name;
};

/// One generation after its questions: the use counter, the three phases with their status
/// texts and bars, the completion text. The program is written to a temporary file as it is
/// built and replaces the old one whole only when complete, so a failed or interrupted run
/// leaves the previous program as it was. Asks nothing, so a window may run it off its
/// user-interface thread; holds the working folder's lock throughout.
GenerationResult run_generation(const GenerationJob& job);

constexpr const char* kBarPreallocation = "PseudoCode Preallocation";
constexpr const char* kBarConversions = "Conversion Keys Preallocation";
constexpr const char* kBarOutput = "Output Generating";

}  // namespace quorva
