#include "ui/base_parameters_dialog.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

#include "panels/program_files.h"
#include "ui/advanced_options_dialog.h"
#include "ui/collection_dialogs.h"
#include "ui/db2_details_dialog.h"
#include "ui/file_details_dialog.h"
#include "ui/labels.h"
#include "ui/qt_text.h"

namespace quorva::gui {
namespace {

QPushButton* plain_button(const QString& label, QWidget* parent) {
  auto* button = new QPushButton(label, parent);
  button->setAutoDefault(false);
  return button;
}

struct CountRow {
  Count count;
  BaseField field;
};

}  // namespace

BaseParametersDialog::BaseParametersDialog(QWidget* parent)
    : FrameDialog("WindowParBase", parent), panel_(BaseParameters::open()) {
  setWindowTitle(text(Label::kBaseTitle));
  help_ = new QLabel(this);
  help_->setWordWrap(true);
  help_->setFrameShape(QFrame::StyledPanel);
  help_->setMinimumHeight(48);
  help_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  information_ = new QLabel(this);

  auto* pseudo_source = plain_button(text(Label::kMainPseudoSource), this);
  auto* advanced = plain_button(text(Label::kAdvancedOptions), this);
  key_to_value_ = plain_button(text(Label::kKeyToValue), this);
  custom_flags_ = plain_button(text(Label::kCustomFlags), this);
  custom_code_ = plain_button(text(Label::kCustomCode), this);
  // The managers change what is in use: the information fields are read again after them.
  const std::pair<QPushButton*, CollectionKind> managers[] = {
      {key_to_value_, CollectionKind::kKeyToValue},
      {custom_flags_, CollectionKind::kFlags},
      {custom_code_, CollectionKind::kSnippets}};
  for (const auto& [button, kind] : managers)
    connect(button, &QPushButton::clicked, this, [this, kind = kind] {
      open_collection_manager(kind, this);
      show_information();
    });
  save_default_ = plain_button(text(Label::kSaveDefault), this);
  new_program_ = plain_button(text(Label::kNewProgram), this);
  connect(pseudo_source, &QPushButton::clicked, this, [] { open_main_pseudo_source(); });
  connect(advanced, &QPushButton::clicked, this, [this] {
    AdvancedOptionsDialog options(this);
    options.exec();
    show_information();  // another template may have been chosen
  });
  connect(save_default_, &QPushButton::clicked, this, &BaseParametersDialog::save_default);
  connect(new_program_, &QPushButton::clicked, this, &BaseParametersDialog::renew);

  auto* in_use = new QGroupBox(text(Label::kInUse), this);
  (new QVBoxLayout(in_use))->addWidget(information_);
  auto* tools = new QGridLayout;
  QPushButton* tool_buttons[] = {pseudo_source, advanced,      key_to_value_, custom_flags_,
                                 custom_code_,  save_default_, new_program_};
  for (int i = 0; i < 7; ++i) tools->addWidget(tool_buttons[i], i / 4, i % 4);

  auto* quick = plain_button(text(Label::kQuickHelp), this);
  connect(quick, &QPushButton::clicked, this, [this] {
    QMessageBox::information(this, text(Label::kBaseTitle), to_qt(quick_help_summary(panel_)));
  });
  QHBoxLayout* buttons = make_ok_cancel_row({quick}, [this] { confirm(); }).layout;

  auto* left = new QVBoxLayout;
  left->addWidget(main_group());
  left->addWidget(description_group(), 1);
  auto* right = new QVBoxLayout;
  right->addWidget(counts_group());
  right->addWidget(in_use);
  auto* columns = new QHBoxLayout;
  columns->addLayout(left, 3);
  columns->addLayout(right, 2);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(columns);
  layout->addLayout(tools);
  layout->addWidget(help_);
  layout->addLayout(buttons);

  show_state();
  show_information();
  help_->setText(to_qt(field_help(BaseField::kName)));  // the name has the first focus
}

QWidget* BaseParametersDialog::main_group() {
  auto* group = new QGroupBox(text(Label::kMainInformations), this);
  name_ = new QLineEdit(group);
  watch(name_, BaseField::kName);
  // Checked at each change; the field then shows what the panel kept.
  connect(name_, &QLineEdit::textEdited, this, [this](const QString& typed) {
    if (const std::optional<std::string> latin1 = from_qt(typed)) panel_.set_name(*latin1);
    const QString kept = to_qt(panel_.name());
    if (name_->text() == kept) return;
    const int cursor = name_->cursorPosition();
    name_->setText(kept);
    name_->setCursorPosition(std::min(cursor, static_cast<int>(kept.size())));
  });
  language_ = new QComboBox(group);
  language_->addItems({text(Label::kCobol), text(Label::kEasytrieve)});
  watch(language_, BaseField::kLanguage);
  connect(language_, &QComboBox::currentIndexChanged, this, [this](int index) {
    if (index < 0) return;
    panel_.set_language(index == 0 ? ProgramLanguage::kCobol : ProgramLanguage::kEasytrieve);
    show_state();
  });

  auto* kind_box = new QGroupBox(text(Label::kNameAndType), group);
  auto* kind_row = new QHBoxLayout(kind_box);
  kind_group_ = new QButtonGroup(this);
  const std::pair<Label, BaseField> kinds[] = {{Label::kBatch, BaseField::kBatch},
                                               {Label::kRoutine, BaseField::kRoutine},
                                               {Label::kMatch, BaseField::kMatch}};
  for (int k = 0; k < 3; ++k) {
    kinds_[k] = new QRadioButton(text(kinds[k].first), kind_box);
    watch(kinds_[k], kinds[k].second);
    kind_group_->addButton(kinds_[k], k);
    kind_row->addWidget(kinds_[k]);
  }
  connect(kind_group_, &QButtonGroup::idToggled, this, [this](int id, bool checked) {
    if (!checked) return;
    panel_.set_kind(static_cast<ProgramKind>(id));
    show_state();
  });

  const struct {
    Switch which;
    BaseField field;
    QString label;
  } boxes[] = {{Switch::kConstants, BaseField::kConstants, text(Label::kConstants)},
               {Switch::kComments, BaseField::kComments, text(Label::kComments)},
               {Switch::kThru, BaseField::kThru, "THRU"},
               {Switch::kBuffering, BaseField::kBuffering, "BUFFERING"},
               {Switch::kStream, BaseField::kStream, "STREAM"},
               {Switch::kJcl, BaseField::kJcl, "JCL"}};
  auto* box_grid = new QGridLayout;
  int position = 0;
  for (const auto& box : boxes) {
    auto* check = new QCheckBox(box.label, group);
    check->setLayoutDirection(Qt::RightToLeft);  // the label before the box, as "Comments   :"
    switches_[static_cast<int>(box.which)] = check;
    watch(check, box.field);
    box_grid->addWidget(check, position / 3, position % 3, Qt::AlignLeft);
    ++position;
  }

  auto* form = new QGridLayout;
  form->addWidget(new QLabel(text(Label::kProgramName), group), 0, 0);
  form->addWidget(name_, 0, 1);
  form->addWidget(new QLabel(text(Label::kLanguage), group), 1, 0);
  form->addWidget(language_, 1, 1);
  auto* layout = new QVBoxLayout(group);
  layout->addLayout(form);
  layout->addWidget(kind_box);
  layout->addLayout(box_grid);
  return group;
}

QWidget* BaseParametersDialog::description_group() {
  auto* group = new QGroupBox(text(Label::kProgramDescription), this);
  description_ = new QPlainTextEdit(group);
  description_->setPlainText(to_qt(panel_.description()));
  description_->setMinimumHeight(90);
  watch(description_, BaseField::kDescription);
  watch(description_->viewport(), BaseField::kDescription);
  (new QVBoxLayout(group))->addWidget(description_);
  return group;
}

QWidget* BaseParametersDialog::counts_group() {
  auto* box = new QWidget(this);
  auto* layout = new QVBoxLayout(box);
  layout->setContentsMargins(0, 0, 0, 0);
  auto add_rows = [this](QGroupBox* group, QGridLayout* grid, int first_row,
                         std::initializer_list<std::pair<CountRow, QString>> rows) {
    int r = first_row;
    for (const auto& [row, label] : rows) {
      const int c = static_cast<int>(row.count);
      auto* combo = new QComboBox(group);
      for (int n = 0; n <= kMaxCount; ++n) combo->addItem(QString::number(n));
      counts_[c] = combo;
      watch(combo, row.field);
      connect(combo, &QComboBox::currentIndexChanged, this, [this, row](int index) {
        if (index < 0) return;
        panel_.set_count(row.count, index);
        show_state();
      });
      grid->addWidget(new QLabel(label, group), r, 0);
      grid->addWidget(combo, r, 1);
      if (row.count != Count::kParameters) {
        details_[c] = plain_button(text(Label::kDetails), group);
        connect(details_[c], &QPushButton::clicked, this, [this, row] { open_details(row.count); });
        grid->addWidget(details_[c], r, 2);
      }
      ++r;
    }
    return r;
  };

  auto* files = new QGroupBox(text(Label::kIoGroup), box);
  auto* file_grid = new QGridLayout(files);
  add_rows(files, file_grid, 0,
           {{{Count::kFilein, BaseField::kInputFiles}, text(Label::kInputFile)},
            {{Count::kFileout, BaseField::kOutputFiles}, text(Label::kOutputFile)},
            {{Count::kReport, BaseField::kReportCount}, text(Label::kReportCount)},
            {{Count::kParameters, BaseField::kParameters}, to_qt(parameters_label())}});

  auto* db2 = new QGroupBox(text(Label::kDb2Group), box);
  auto* db2_grid = new QGridLayout(db2);
  const int next = add_rows(db2, db2_grid, 0,
                            {{{Count::kSelect, BaseField::kSelectCount}, "SELECT"},
                             {{Count::kFetch, BaseField::kFetchCount}, "FETCH"},
                             {{Count::kUpdate, BaseField::kUpdateCount}, "UPDATE"},
                             {{Count::kInsert, BaseField::kInsertCount}, "INSERT"},
                             {{Count::kDelete, BaseField::kDeleteCount}, "DELETE"}});
  const std::pair<Switch, BaseField> db2_boxes[] = {{Switch::kRollback, BaseField::kRollback},
                                                    {Switch::kCommit, BaseField::kCommit}};
  auto* db2_row = new QHBoxLayout;
  for (const auto& [which, field] : db2_boxes) {
    auto* check = new QCheckBox(which == Switch::kRollback ? "ROLLBACK" : "COMMIT", db2);
    switches_[static_cast<int>(which)] = check;
    watch(check, field);
    db2_row->addWidget(check);
  }
  db2_grid->addLayout(db2_row, next, 0, 1, 3);

  for (int s = 0; s < kSwitchCount; ++s)
    connect(switches_[s], &QCheckBox::toggled, this, [this, s](bool on) {
      panel_.set_switch(static_cast<Switch>(s), on);
      show_state();
    });
  layout->addWidget(files);
  layout->addWidget(db2);
  return box;
}

void BaseParametersDialog::watch(QWidget* widget, BaseField field) {
  help_fields_[widget] = field;
  widget->installEventFilter(this);
}

bool BaseParametersDialog::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn || event->type() == QEvent::Enter) {
    auto found = help_fields_.find(watched);
    if (found != help_fields_.end()) help_->setText(to_qt(field_help(found->second)));
  }
  return FrameDialog::eventFilter(watched, event);
}

void BaseParametersDialog::show_state() {
  // The panel decides; the widgets only show it, without calling it back.
  const QSignalBlocker block_language(language_);
  const QSignalBlocker block_kinds(kind_group_);
  if (name_->text() != to_qt(panel_.name())) name_->setText(to_qt(panel_.name()));
  switch (panel_.language()) {
    case ProgramLanguage::kCobol:
      language_->setCurrentIndex(0);
      break;
    case ProgramLanguage::kEasytrieve:
      language_->setCurrentIndex(1);
      break;
    case ProgramLanguage::kNone:
      language_->setCurrentIndex(-1);
      break;
  }
  kind_group_->setExclusive(false);
  for (int k = 0; k < 3; ++k) {
    const QSignalBlocker block(kinds_[k]);
    kinds_[k]->setChecked(panel_.kind() == static_cast<ProgramKind>(k));
  }
  kind_group_->setExclusive(true);
  kinds_[static_cast<int>(ProgramKind::kRoutine)]->setEnabled(panel_.routine_enabled());
  kinds_[static_cast<int>(ProgramKind::kMatch)]->setEnabled(panel_.match_enabled());
  for (int s = 0; s < kSwitchCount; ++s) {
    const QSignalBlocker block(switches_[s]);
    switches_[s]->setChecked(panel_.switch_on(static_cast<Switch>(s)));
  }
  switch_box(Switch::kThru)->setEnabled(panel_.thru_enabled());
  for (int c = 0; c < kCountCount; ++c) {
    const QSignalBlocker block(counts_[c]);
    counts_[c]->setCurrentIndex(panel_.count(static_cast<Count>(c)));  // kNoCount: empty
  }
  count(Count::kReport)->setEnabled(panel_.report_enabled());
  details(Count::kReport)->setEnabled(panel_.report_enabled());
}

void BaseParametersDialog::show_information() {
  const ProgramInformation info = program_information();
  information_->setText(text(Label::kCustomCodesInUse) + " " + QString::number(info.custom_codes) +
                        "\n" + text(Label::kKey2ValueInUse) + " " +
                        QString::number(info.key2value_collections) + "\n" +
                        text(Label::kFlagsInUse) + " " + QString::number(info.flag_collections) +
                        "\n" + text(Label::kTemplateIdentity) + " " + to_qt(info.template_name) +
                        " " + to_qt(info.template_lines));
}

bool BaseParametersDialog::take_description() {
  const std::optional<std::string> typed = from_qt(description_->toPlainText());
  if (!typed) return false;
  const bool kept = panel_.set_description(*typed);
  if (!kept) description_->setPlainText(to_qt(panel_.description()));
  return kept;
}

void BaseParametersDialog::confirm() {
  if (!take_description()) return;
  if (panel_.confirm()) {
    accept();
    return;
  }
  if (panel_.name().empty())
    name_->setFocus();
  else if (panel_.language() == ProgramLanguage::kNone)
    language_->setFocus();
}

void BaseParametersDialog::renew() {
  const Result<bool> renewed = new_program();
  // A failure came after the Yes: some files are already reset, so this state is stale too.
  if (!renewed || *renewed) done(kRenewed);
}

void BaseParametersDialog::save_default() {
  if (!take_description()) return;
  (void)save_as_default(panel_);
  show_information();
}

void BaseParametersDialog::open_details(Count which) {
  const int chosen = std::max(panel_.count(which), 0);
  switch (which) {
    case Count::kFilein:
    case Count::kFileout:
    case Count::kReport: {
      const FileKind kinds[] = {FileKind::kInput, FileKind::kOutput, FileKind::kReport};
      FileDetailsDialog details(kinds[static_cast<int>(which)], chosen, this);
      details.exec();
      return;
    }
    case Count::kParameters:
      return;  // the cards have no details
    default:
      open_db2_details(
          panel_.language() == ProgramLanguage::kEasytrieve,
          static_cast<AccessKind>(static_cast<int>(which) - static_cast<int>(Count::kSelect)),
          chosen, this);
  }
}

}  // namespace quorva::gui
