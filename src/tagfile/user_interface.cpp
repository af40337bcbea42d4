#include "tagfile/user_interface.h"

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
UserInterface* current = &silent;

}  // namespace

UserInterface& ui() {
  return *current;
}

ScopedUserInterface::ScopedUserInterface(UserInterface& port) : previous_(current) {
  current = &port;
}

ScopedUserInterface::~ScopedUserInterface() {
  current = previous_;
}

}  // namespace quorva
