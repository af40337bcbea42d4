#pragma once

#include <string>

#include "engine/template_loader.h"

namespace quorva {

/// How one GO ended.
struct GenerationResult {
  enum Status { kDone, kDeclined, kStopped };
  Status status = kStopped;
  std::string output_name;
  int lines_written = 0;
  std::string first_lines;  ///< the first three lines written, each followed by "\r\n"
  std::string rank;         ///< the user's level title after this generation
};

/// The Generate panel's work, behind the user-interface port: the CLI and the desktop
/// front end both open it and press GO on it.
class Generator {
 public:
  /// Recreates warning.log, settles the template, resets the bars, shows the ready text.
  void open_panel();
  /// Runs one generation: output name and overwrite question, use counter, the three
  /// phases with their status texts and bars, the completion text and the rank.
  GenerationResult go();

  /// sourcedirectory + nomeprogr + ".txt"; empty when either is missing.
  static std::string output_name(bool popup);
  /// Opens the generated program, or says it cannot be found. False when missing.
  static bool preview();
  /// Opens warning.log.
  static void explore_warnings();

  const std::string& template_name() const { return template_name_; }
  /// Messages shown during the last GO (rejected custom flags).
  int messages() const { return messages_; }

 private:
  std::string template_name_;
  int declared_ = -1;
  int messages_ = 0;
};

constexpr const char* kBarPreallocation = "PseudoCode Preallocation";
constexpr const char* kBarConversions = "Conversion Keys Preallocation";
constexpr const char* kBarOutput = "Output Generating";

}  // namespace quorva
