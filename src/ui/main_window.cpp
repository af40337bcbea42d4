#include "ui/main_window.h"

#include <QDateTime>
#include <QFont>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QRandomGenerator>
#include <QVBoxLayout>

#include "engine/level_titles.h"
#include "panels/advanced_options.h"
#include "port/user_interface.h"
#include "shell/main_dialog.h"
#include "store/config_file.h"
#include "ui/base_parameters_dialog.h"
#include "ui/generate_dialog.h"
#include "ui/labels.h"
#include "ui/qt_text.h"
#include "ui/user_data_dialog.h"

namespace quorva::gui {

MainWindow::MainWindow(ThreadedInterface& port, QWidget* parent)
    : FrameDialog("WindowMain", parent), port_(port) {
  setWindowTitle(text(Label::kMainTitle));
  setWindowFlags(Qt::Window | Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
  auto* title = new QLabel("QUORVA", this);
  QFont big = title->font();
  big.setPointSize(big.pointSize() * 2);
  big.setBold(true);
  title->setFont(big);
  title->setAlignment(Qt::AlignCenter);
  level_ = new QLabel(this);
  level_->setAlignment(Qt::AlignCenter);

  user_data_ = new QPushButton(text(Label::kUserDataButton), this);
  base_parameters_ = new QPushButton(text(Label::kBaseParametersButton), this);
  generate_ = new QPushButton(text(Label::kGenerateButton), this);
  for (QPushButton* button : {user_data_, base_parameters_, generate_}) {
    button->setMinimumHeight(44);
    button->setAutoDefault(false);
  }
  connect(user_data_, &QPushButton::clicked, this, &MainWindow::open_user_data);
  connect(base_parameters_, &QPushButton::clicked, this, &MainWindow::open_base_parameters);
  connect(generate_, &QPushButton::clicked, this, &MainWindow::open_generate);

  auto* credits_label = new QLabel(to_qt(credits()), this);
  credits_label->setAlignment(Qt::AlignCenter);
  credits_label->setStyleSheet("color: #555555;");
  auto* exit = new QPushButton(text(Label::kExit), this);
  exit->setAutoDefault(false);
  connect(exit, &QPushButton::clicked, this, &QDialog::accept);
  tutorial_ = new QPushButton(text(Label::kTutorial), this);
  tutorial_->setAutoDefault(false);
  connect(tutorial_, &QPushButton::clicked, this, [] { run_tutorial(); });
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(make_help_button(text(Label::kAdvancedHelp)));
  bottom->addWidget(tutorial_);
  bottom->addStretch();
  bottom->addWidget(exit);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(title);
  layout->addWidget(level_);
  layout->addSpacing(8);
  layout->addWidget(user_data_);
  layout->addWidget(base_parameters_);
  layout->addWidget(generate_);
  layout->addSpacing(8);
  layout->addWidget(credits_label);
  layout->addLayout(bottom);
  setMinimumWidth(420);
  refresh();
}

void MainWindow::refresh() {
  const MainButtons buttons = main_buttons();
  user_data_->setEnabled(buttons.user_data);
  base_parameters_->setEnabled(buttons.base_parameters);
  generate_->setEnabled(buttons.generate);
  level_->setText(text(Label::kLevel) + " " + to_qt(level_title(read_use_counter())));
}

void MainWindow::greet() {
  if (tutorial_due()) run_tutorial();
  if (std::optional<std::string> reminder = password_reminder(current_month()))
    ui().show_message(*reminder);
  if (!config_switch(kTipsAndTricksKey)) return;
  // Seeded by the clock, as the tip of the day always was.
  QRandomGenerator random(static_cast<quint32>(QDateTime::currentSecsSinceEpoch()));
  if (std::optional<std::string> tip = tip_of_the_day(random.generate()))
    QMessageBox::information(this, text(Label::kTipTitle), to_qt(*tip));
}

void MainWindow::open_user_data() {
  UserDataDialog dialog(this);
  dialog.exec();
  refresh();
}

void MainWindow::open_base_parameters() {
  // After "NEW Program" the panel opens again on the restored files.
  int result = BaseParametersDialog::kRenewed;
  while (result == BaseParametersDialog::kRenewed) {
    BaseParametersDialog dialog(this);
    result = dialog.exec();
  }
  refresh();
}

void MainWindow::open_generate() {
  GenerateDialog dialog(port_, this);
  dialog.exec();
  refresh();
}

}  // namespace quorva::gui
