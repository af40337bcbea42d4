#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <string>

#include "panels/generate_panel.h"
#include "ui/frame_dialog.h"

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QThread;

namespace quorva::gui {

class ThreadedInterface;

/// The TSO password for one transfer, asked when the options say so (else none, from
/// User.dat). False when the person cancelled or typed what the host cannot take.
bool transfer_password(QWidget* parent, const QString& title, std::optional<std::string>& password);

/// "Generate the Program" (WindowGenerate) over GeneratePanel. GO asks its questions here,
/// runs the generation on a worker thread so the window keeps repainting, then finishes
/// here; the transfer runs the same way.
class GenerateDialog : public FrameDialog {
  Q_OBJECT
 public:
  GenerateDialog(ThreadedInterface& port, QWidget* parent);
  ~GenerateDialog() override;

  QProgressBar* bar(int index) const { return bars_[index]; }
  QPlainTextEdit* status() const { return status_; }
  QPushButton* go_button() const { return go_; }
  QPushButton* transfer_button() const { return transfer_; }
  bool busy() const { return worker_ != nullptr; }
  const GenerationResult& last_result() const { return result_; }

  void go();
  void preview();
  void transfer();
  void reject() override;

 signals:
  /// A GO has ended (done, declined or stopped); `last_result` tells how.
  void generation_ended();
  void transfer_ended(bool done);

 private:
  void show_progress(const QString& bar, int position, int range);
  /// Runs `work` on a worker thread; `then` on this thread afterwards.
  void run_off_thread(std::function<void()> work, std::function<void()> then);
  void set_busy(bool busy);

  GeneratePanel panel_;
  GenerationResult result_;
  QProgressBar* bars_[3] = {};
  QPlainTextEdit* status_;
  QPushButton* go_;
  QPushButton* preview_;
  QPushButton* transfer_;
  QPushButton* warnings_;
  QPushButton* exit_;
  QThread* worker_ = nullptr;
};

}  // namespace quorva::gui
