#include "ui/generate_dialog.h"

#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QThread>
#include <QVBoxLayout>

#include "host/host_transfer.h"
#include "store/config_file.h"
#include "ui/labels.h"
#include "ui/preview_dialog.h"
#include "ui/qt_text.h"
#include "ui/threaded_interface.h"

namespace quorva::gui {
namespace {

constexpr const char* kBars[] = {kBarPreallocation, kBarConversions, kBarOutput};

}  // namespace

bool transfer_password(QWidget* parent, const QString& title,
                       std::optional<std::string>& password) {
  password.reset();
  if (!config_switch(kAskPasswordKey)) return true;
  bool given = false;
  const QString typed = QInputDialog::getText(parent, title, text(Label::kTypedPassword),
                                              QLineEdit::Password, QString(), &given);
  if (!given) return false;
  password = from_qt(typed);
  return password.has_value();
}

GenerateDialog::GenerateDialog(ThreadedInterface& port, QWidget* parent)
    : FrameDialog("WindowGenerate", parent) {
  setWindowTitle(text(Label::kGenerateButton));
  connect(&port, &ThreadedInterface::progress_changed, this, &GenerateDialog::show_progress);
  connect(&port, &ThreadedInterface::status_changed, this,
          [this](const QString& text) { status_->setPlainText(QString(text).remove('\r')); });

  auto* bars = new QGridLayout;
  for (int i = 0; i < 3; ++i) {
    bars_[i] = new QProgressBar(this);
    bars_[i]->setRange(0, 1);
    bars_[i]->setValue(0);
    bars->addWidget(new QLabel(to_qt(kBars[i]), this), i, 0);
    bars->addWidget(bars_[i], i, 1);
  }
  status_ = new QPlainTextEdit(this);
  status_->setReadOnly(true);
  status_->setMaximumBlockCount(20);
  status_->setFixedHeight(status_->fontMetrics().height() * 5);

  go_ = new QPushButton(text(Label::kGo), this);
  go_->setDefault(true);
  exit_ = new QPushButton(text(Label::kExit), this);
  preview_ = new QPushButton(text(Label::kPreviewButton), this);
  warnings_ = new QPushButton(text(Label::kOpen), this);
  transfer_ = new QPushButton(text(Label::kTransferButton), this);
  for (QPushButton* button : {exit_, preview_, warnings_, transfer_}) button->setAutoDefault(false);
  connect(go_, &QPushButton::clicked, this, &GenerateDialog::go);
  connect(exit_, &QPushButton::clicked, this, &GenerateDialog::reject);
  connect(preview_, &QPushButton::clicked, this, &GenerateDialog::preview);
  connect(warnings_, &QPushButton::clicked, this, [] { GeneratePanel::explore_warnings(); });
  connect(transfer_, &QPushButton::clicked, this, &GenerateDialog::transfer);

  auto* note = new QGroupBox(text(Label::kInformationNote), this);
  auto* note_text = new QLabel(to_qt(GeneratePanel::information_note()), note);
  note_text->setWordWrap(true);
  auto* note_layout = new QVBoxLayout(note);
  note_layout->addWidget(note_text);
  note_layout->addWidget(transfer_);

  auto* actions = new QHBoxLayout;
  actions->addWidget(go_);
  actions->addWidget(preview_);
  actions->addSpacing(12);
  actions->addWidget(new QLabel(text(Label::kExploreWarnings), this));
  actions->addWidget(warnings_);
  actions->addStretch();
  actions->addWidget(make_help_button(text(Label::kAdvancedHelp)));
  actions->addWidget(exit_);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(bars);
  layout->addWidget(status_);
  layout->addLayout(actions);
  layout->addWidget(note);
  resize(620, sizeHint().height());
  // Opening recreates warning.log and shows the ready text through the port.
  panel_.open();
}

GenerateDialog::~GenerateDialog() {
  // A closing application waits for a running worker: it writes the program whole or not.
  if (worker_) worker_->wait();
}

void GenerateDialog::show_progress(const QString& bar, int position, int range) {
  for (int i = 0; i < 3; ++i) {
    if (bar != QLatin1String(kBars[i])) continue;
    bars_[i]->setRange(0, std::max(range, 1));
    bars_[i]->setValue(std::min(position, std::max(range, 1)));
  }
}

void GenerateDialog::set_busy(bool busy) {
  for (QPushButton* button : {go_, exit_, preview_, warnings_, transfer_})
    button->setEnabled(!busy);
}

void GenerateDialog::run_off_thread(std::function<void()> work, std::function<void()> then) {
  set_busy(true);
  worker_ = QThread::create(std::move(work));
  connect(worker_, &QThread::finished, this, [this, then = std::move(then)] {
    worker_->deleteLater();
    worker_ = nullptr;
    set_busy(false);
    then();
  });
  worker_->start();
}

void GenerateDialog::go() {
  if (busy()) return;
  GenerationJob job;
  // The overwrite question is asked here, on the window's thread.
  result_ = panel_.ask(job);
  if (result_.status != GenerationResult::kDone) {
    emit generation_ended();
    return;
  }
  auto result = std::make_shared<GenerationResult>();
  run_off_thread([job, result] { *result = GeneratePanel::run(job); },
                 [this, result] {
                   result_ = *result;
                   GeneratePanel::finish(result_);
                   emit generation_ended();
                 });
}

void GenerateDialog::preview() {
  if (PreviewDialog* dialog = PreviewDialog::open_current(this)) {
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
  }
}

void GenerateDialog::transfer() {
  if (busy() || !GeneratePanel::accept_information_note()) return;
  std::optional<std::string> password;
  if (!transfer_password(this, text(Label::kTransferButton), password)) return;
  auto done = std::make_shared<bool>(false);
  run_off_thread([password, done] { *done = send_program(run_transfer_batch, password).ok(); },
                 [this, done] { emit transfer_ended(*done); });
}

void GenerateDialog::reject() {
  // Exit waits for a running generation or transfer.
  if (busy()) return;
  FrameDialog::reject();
}

}  // namespace quorva::gui
