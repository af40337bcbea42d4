#include "tagfile/folder_lock.h"

#include "tagfile/messages.h"

namespace quorva {

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
