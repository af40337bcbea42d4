#pragma once

#include <string>

namespace quorva {

/// The one way the core talks to the person. The Qt front end, the command line and the
/// tests each implement it; the core never shows anything by itself. The core may call it
/// from a worker thread (GO runs off a window's thread): an implementation that draws must
/// hand the call over to its own thread, and a question waits there for the answer.
class UserInterface {
 public:
  virtual ~UserInterface() = default;

  /// A modal message with one OK button (the error popup).
  virtual void show_message(const std::string& text) = 0;
  /// A Yes/No question under a title; true for Yes.
  virtual bool ask_yes_no(const std::string& title, const std::string& text) = 0;
  /// Hands a file to the desktop's "open" action (viewer, editor, browser).
  virtual void open_file(const std::string& path) = 0;
  /// Sets the named progress bar to `position` out of `range` steps.
  virtual void set_progress(const std::string& bar, int position, int range) = 0;
  /// Replaces the status text of the running operation.
  virtual void set_status(const std::string& text) = 0;
};

/// A port that shows nothing and gives one answer to every question: the core's port before
/// a front end installs its own (answering No), and for benchmarks and fuzzing.
class SilentInterface : public UserInterface {
 public:
  explicit SilentInterface(bool answer = false) : answer_(answer) {}
  void show_message(const std::string&) override {}
  bool ask_yes_no(const std::string&, const std::string&) override { return answer_; }
  void open_file(const std::string&) override {}
  void set_progress(const std::string&, int, int) override {}
  void set_status(const std::string&) override {}

 private:
  bool answer_;
};

/// The port in use, for every thread. Until a front end installs one, a silent port that
/// answers No.
UserInterface& ui();

/// Installs `port` for the life of this object and restores the previous one afterwards.
class ScopedUserInterface {
 public:
  explicit ScopedUserInterface(UserInterface& port);
  ~ScopedUserInterface();
  ScopedUserInterface(const ScopedUserInterface&) = delete;
  ScopedUserInterface& operator=(const ScopedUserInterface&) = delete;

 private:
  UserInterface* previous_;
};

}  // namespace quorva
