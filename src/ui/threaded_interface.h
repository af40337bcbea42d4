#pragma once

#include <QObject>
#include <QString>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "port/user_interface.h"

namespace quorva::gui {

/// The port as the windows implement it, safe to call from any thread. Calls from the
/// window's own thread go straight to `presenter`; from a worker (GO, a transfer) they are
/// handed over to the window's thread: messages, questions and opening a file wait there
/// for the person, progress and status are queued, and a bar's positions not yet drawn are
/// folded into its latest one, so a fast worker never floods the window.
class ThreadedInterface : public QObject, public UserInterface {
  Q_OBJECT
 public:
  explicit ThreadedInterface(UserInterface& presenter, QObject* parent = nullptr);

  void show_message(const std::string& text) override;
  bool ask_yes_no(const std::string& title, const std::string& text) override;
  void open_file(const std::string& path) override;
  void set_progress(const std::string& bar, int position, int range) override;
  void set_status(const std::string& text) override;

 signals:
  /// On the window's thread, for the dialogs that draw bars and status texts.
  void progress_changed(const QString& bar, int position, int range);
  void status_changed(const QString& text);

 private:
  bool on_own_thread() const;
  /// Delivers what the worker queued, in order; on the window's thread.
  void flush();
  void deliver_progress(const std::string& bar, int position, int range);
  void deliver_status(const std::string& text);

  UserInterface& presenter_;
  std::mutex mutex_;
  std::vector<std::string> statuses_;
  std::map<std::string, std::pair<int, int>> progress_;
  std::vector<std::string> progress_order_;
  bool flush_posted_ = false;
};

}  // namespace quorva::gui
