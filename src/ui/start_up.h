#pragma once

#include <optional>
#include <string>

namespace quorva::gui {

/// Enters the working folder chosen as the command line chooses it (--home, $QUORVA_HOME,
/// the per-user default). A folder that is no working folder gives the installation
/// message and the offer to make one there, as `quorva init` does. False when the person
/// declined or the folder could not be made; the port has said why.
bool enter_home(const std::optional<std::string>& home);

/// The transfer batch calls the program that started it back as `--home DIR ftp-run SCRIPT`;
/// the desktop application then plays the FTP client itself, without a window, and says
/// what happened on the error stream. The exit status when these are the arguments,
/// nullopt otherwise.
std::optional<int> run_as_transfer_client(int argc, char** argv);

}  // namespace quorva::gui
