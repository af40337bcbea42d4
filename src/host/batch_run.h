#pragma once

#include <functional>

namespace quorva {

/// Runs the installation's transfer batch (EseguiFTP.sh, EseguiFTP.bat on Windows) in the
/// working folder and waits for it without a time limit; its exit status, 0 when every
/// transfer was done, -1 when it could not be started. An interrupt from the keyboard
/// stops the transfer, not the caller, which still cleans up after it.
int run_transfer_batch();

/// How a transfer is carried out: the batch, or a stand-in in tests.
using TransferRunner = std::function<int()>;

/// The batch's file name on this platform.
const char* transfer_batch_name();

}  // namespace quorva
