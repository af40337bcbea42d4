#pragma once

#include <string>

#include "engine/generator.h"

namespace quorva {

/// The Generate the Program panel: its template, its bars and texts, and GO. GO is asked
/// (the overwrite question, on the thread that talks to the person) and then run (progress
/// and status only, any thread); go() does both for the command line.
class GeneratePanel {
 public:
  /// Recreates warning.log, settles the template, resets the bars, shows the ready text.
  void open();

  /// The questions before a run. kDone: run(job) may go ahead with `job`; kDeclined: the
  /// person chose not to overwrite; kStopped: no output name (the person was told).
  GenerationResult ask(GenerationJob& job);
  /// The generation itself; asks nothing.
  static GenerationResult run(const GenerationJob& job) { return run_generation(job); }
  /// What follows a run on the person's side: the advance in rank, when there was one.
  static void finish(const GenerationResult& result);
  /// ask, run and finish in a row.
  GenerationResult go();

  /// sourcedirectory + nomeprogr + ".txt"; empty when either is missing or the name is
  /// not a member name (said with `popup`).
  static std::string output_name(bool popup);
  /// Opens the generated program, or says it cannot be found. False when missing.
  static bool preview();
  /// Opens warning.log.
  static void explore_warnings();

  /// The "Information Note" about the transfer, shown on the panel.
  static std::string information_note();
  /// Asks for the note to be accepted before a transfer; true when it was.
  static bool accept_information_note();

  const std::string& template_name() const { return template_name_; }

 private:
  std::string template_name_;
  int declared_ = -1;
};

}  // namespace quorva
