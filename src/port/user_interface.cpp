#include "port/user_interface.h"

#include <atomic>

namespace quorva {
namespace {

class SilentInterface : public UserInterface {
 public:
  void show_message(const std::string&) override {}
  bool ask_yes_no(const std::string&, const std::string&) override { return false; }
  void open_file(const std::string&) override {}
  void set_progress(const std::string&, int, int) override {}
  void set_status(const std::string&) override {}
};

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
