#pragma once

#include "port/status.h"

namespace quorva::cli {

/// The exit status of an operation: 0 when it was done; 1 when it failed, with its message
/// printed unless the person has been shown it already.
int exit_status(const Status& status);

/// For an operation that can also stop at a question (false): 0 only when it went through.
int exit_status(const Result<bool>& outcome);

}  // namespace quorva::cli
