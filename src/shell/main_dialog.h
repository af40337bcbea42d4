#pragma once

#include <optional>
#include <string>
#include <vector>

#include "port/status.h"

namespace quorva {

// The main window's rules, read from the working folder's files: which of the three main
// buttons may be pressed, the tip of the day, the monthly password reminder, the credits,
// the advanced help and what is cleaned at exit.

/// The three main buttons. User data comes first: the other two wait until it is complete,
/// and generating also needs a program name.
struct MainButtons {
  bool user_data = true;
  bool base_parameters = false;
  bool generate = false;
};
MainButtons main_buttons();

/// The tip file of the language in use: Resource/Tips_ENG.txt or Resource/Tips_ITA.txt.
std::string tip_file();
/// "TIP" + n, zero-padded to six characters (tip 7 is TIP007).
std::string tip_tag(int n);
/// Tip number `random` modulo (TIPRANGE + 1), with "\n\n" after it and every "<BR>" a line
/// break; nullopt when the file has no TIPRANGE or no such tip.
std::optional<std::string> tip_of_the_day(unsigned random);

/// The reminder's text when it is due: the alert is on and the month recorded is not
/// `today_month`; the month is then recorded, so it shows once a month. nullopt otherwise,
/// and when the month cannot be read.
std::optional<std::string> password_reminder(std::optional<int> today_month);

/// The examples page offered at the end of the tutorial.
constexpr const char* kExamplesFile = "Resource/Quorva_Examples.html";

/// The tutorial's four messages, in the order they are shown, and its closing question.
struct TutorialTexts {
  std::vector<std::string> messages;
  std::string title;
  std::string question;
};
TutorialTexts tutorial_texts();
/// True until the tutorial has run once in this working folder.
bool tutorial_due();
/// Shows the four messages through the port, asks whether to open the examples (Yes hands
/// the page to the desktop; a missing page is said) and records that the tutorial ran.
void run_tutorial();

/// main_dialog_credits of the configuration, or the product's line when missing.
std::string credits();

/// The advanced help page named by help_avanzato_CHM in Resource/SD_C_QV.dat; a failure,
/// shown, when it is not named or not there.
Result<std::string> advanced_help_file();

/// Removes the transfer script, the transfer marker and warning.log.
void exit_cleanup();

/// The question that offers to make a working folder in `folder`, in the language of
/// `installation_message`.
std::string create_folder_question(const std::string& installation_message,
                                   const std::string& folder);

}  // namespace quorva
