#include "tagfile/folder_lock.h"

#include <mutex>
#include <thread>

#include "port/user_interface.h"
#include "tagfile/lock_file.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"

// Implementation details: a lock on a file belongs to the process (flock to an open file
// description, LockFileEx to a handle), so a second open in the same process would wait for
// itself; the process therefore opens the lock file once, when its first holder takes the
// lock, and counts the nested holders under a recursive mutex that also keeps its other
// threads out.

namespace quorva {
namespace {

std::recursive_timed_mutex threads;
int depth = 0;
std::string holder_description = "quorva";
const char* const kOtherTask = "another task of this program";

}  // namespace

void FolderLock::set_holder_description(const std::string& description) {
  std::lock_guard<std::recursive_timed_mutex> guard(threads);
  holder_description = description;
}

FolderLock::FolderLock(std::chrono::milliseconds notice_after,
                       std::chrono::milliseconds give_up_after) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point start = Clock::now();
  if (!threads.try_lock_for(notice_after)) {
    ui().set_status(lock_wait_message(kOtherTask));
    if (!threads.try_lock_until(start + give_up_after)) {
      status_ = Status::failure(lock_failure_message(kOtherTask));
      Mostra_popup(status_.message());
      return;
    }
  }
  if (depth++ > 0) return;
  if (!lock_file::open()) return;
  bool noticed = false;
  // Unsupported: a file system without locks; the work goes on unguarded, as before.
  while (lock_file::try_lock() == lock_file::Attempt::kBusy) {
    const Clock::duration waited = Clock::now() - start;
    if (waited >= give_up_after) {
      const std::string holder = lock_file::holder();
      status_ = Status::failure(lock_failure_message(holder));
      Mostra_popup(status_.message());
      Scrivi_log_dettaglio("Cartella di lavoro bloccata da: ", holder, static_cast<int>(kNoNumber),
                           static_cast<int>(kNoNumber), LogKind::kError);
      lock_file::close();
      --depth;
      threads.unlock();
      return;
    }
    if (!noticed && waited >= notice_after) {
      ui().set_status(lock_wait_message(lock_file::holder()));
      noticed = true;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  lock_file::describe(holder_description);
}

FolderLock::~FolderLock() {
  if (!status_.ok()) return;
  if (--depth == 0) lock_file::close();
  threads.unlock();
}

std::string lock_failure_message(const std::string& holder) {
  return bilingual("The working folder is in use by " + holder +
                       " and it has not been released in time: nothing has been written. "
                       "Retry when it has finished.",
                   "La cartella di lavoro e' in uso da " + holder +
                       " e non e' stata liberata in tempo: non e' stato scritto nulla. "
                       "Riprovare quando avra' terminato.");
}

std::string lock_wait_message(const std::string& holder) {
  return bilingual("Waiting for the working folder, in use by " + holder + " ...",
                   "In attesa della cartella di lavoro, in uso da " + holder + " ...");
}

}  // namespace quorva
