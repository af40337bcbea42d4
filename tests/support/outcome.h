#pragma once

#include "port/status.h"

namespace quorva::test {

/// True when an operation that may stop at a question went through: no failure, and not
/// stopped. (A Result<bool> converts to true on any answer that is not a failure.)
inline bool done(const Result<bool>& result) {
  return result.ok() && *result;
}

}  // namespace quorva::test
