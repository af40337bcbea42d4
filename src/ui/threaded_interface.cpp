#include "ui/threaded_interface.h"

#include <QMetaObject>
#include <QThread>

#include "ui/qt_text.h"

namespace quorva::gui {

ThreadedInterface::ThreadedInterface(UserInterface& presenter, QObject* parent)
    : QObject(parent), presenter_(presenter) {}

bool ThreadedInterface::on_own_thread() const {
  return QThread::currentThread() == thread();
}

void ThreadedInterface::show_message(const std::string& text) {
  if (on_own_thread()) {
    flush();
    presenter_.show_message(text);
    return;
  }
  QMetaObject::invokeMethod(
      this,
      [this, &text] {
        flush();
        presenter_.show_message(text);
      },
      Qt::BlockingQueuedConnection);
}

bool ThreadedInterface::ask_yes_no(const std::string& title, const std::string& text) {
  if (on_own_thread()) {
    flush();
    return presenter_.ask_yes_no(title, text);
  }
  bool answer = false;
  QMetaObject::invokeMethod(
      this,
      [this, &title, &text, &answer] {
        flush();
        answer = presenter_.ask_yes_no(title, text);
      },
      Qt::BlockingQueuedConnection);
  return answer;
}

void ThreadedInterface::open_file(const std::string& path) {
  if (on_own_thread()) {
    presenter_.open_file(path);
    return;
  }
  QMetaObject::invokeMethod(
      this, [this, &path] { presenter_.open_file(path); }, Qt::BlockingQueuedConnection);
}

void ThreadedInterface::set_progress(const std::string& bar, int position, int range) {
  if (on_own_thread()) {
    flush();
    deliver_progress(bar, position, range);
    return;
  }
  std::lock_guard<std::mutex> lock(mutex_);
  if (!progress_.count(bar)) progress_order_.push_back(bar);
  progress_[bar] = {position, range};
  if (!flush_posted_) {
    flush_posted_ = true;
    QMetaObject::invokeMethod(
        this, [this] { flush(); }, Qt::QueuedConnection);
  }
}

void ThreadedInterface::set_status(const std::string& text) {
  if (on_own_thread()) {
    flush();
    deliver_status(text);
    return;
  }
  std::lock_guard<std::mutex> lock(mutex_);
  statuses_.push_back(text);
  if (!flush_posted_) {
    flush_posted_ = true;
    QMetaObject::invokeMethod(
        this, [this] { flush(); }, Qt::QueuedConnection);
  }
}

void ThreadedInterface::flush() {
  std::vector<std::string> statuses;
  std::map<std::string, std::pair<int, int>> progress;
  std::vector<std::string> order;
  {
    std::lock_guard<std::mutex> lock(mutex_);
    statuses.swap(statuses_);
    progress.swap(progress_);
    order.swap(progress_order_);
    flush_posted_ = false;
  }
  // A status opens a phase, so it goes before the bars that phase moved.
  for (const std::string& text : statuses) deliver_status(text);
  for (const std::string& bar : order)
    deliver_progress(bar, progress[bar].first, progress[bar].second);
}

void ThreadedInterface::deliver_progress(const std::string& bar, int position, int range) {
  presenter_.set_progress(bar, position, range);
  emit progress_changed(to_qt(bar), position, range);
}

void ThreadedInterface::deliver_status(const std::string& text) {
  presenter_.set_status(text);
  emit status_changed(to_qt(text));
}

}  // namespace quorva::gui
