#include "port/user_interface.h"

#include <atomic>

namespace quorva {
namespace {

SilentInterface silent;
// A worker thread running GO reads the port while the front end's thread installed it.
std::atomic<UserInterface*> current{&silent};

}  // namespace

UserInterface& ui() {
  return *current.load(std::memory_order_acquire);
}

ScopedUserInterface::ScopedUserInterface(UserInterface& port)
    : previous_(current.exchange(&port, std::memory_order_acq_rel)) {}

ScopedUserInterface::~ScopedUserInterface() {
  current.store(previous_, std::memory_order_release);
}

}  // namespace quorva
