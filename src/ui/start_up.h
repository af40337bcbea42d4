#pragma once

#include <optional>
#include <string>

namespace quorva::gui {

/// Enters the working folder chosen as the command line chooses it (--home, $QUORVA_HOME,
/// the per-user default). A folder that is no working folder gives the installation
/// message and the offer to make one there, as `quorva init` does. False when the person
/// declined or the folder could not be made; the port has said why.
bool enter_home(const std::optional<std::string>& home);

}  // namespace quorva::gui
