#include "cli/outcome.h"

#include "cli/cli.h"
#include "cli/cli_user_interface.h"

namespace quorva::cli {

int exit_status(const Status& status) {
  if (status.ok()) return kOk;
  const std::string& message = status.message();
  auto* port = dynamic_cast<CliUserInterface*>(&ui());
  if (!message.empty() && !(port && port->has_shown(message))) ui().show_message(message);
  return kFailed;
}

int exit_status(const Result<bool>& outcome) {
  if (!outcome.ok()) return exit_status(outcome.status());
  return *outcome ? kOk : kFailed;
}

}  // namespace quorva::cli
