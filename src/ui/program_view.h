#pragma once

#include <QPlainTextEdit>

namespace quorva::gui {

/// A generated program as a mainframe programmer reads it: a fixed-pitch font, line
/// numbers, the sequence area (columns 1-6), the indicator (7) and the identification area
/// (73-80) shaded, the break-point column marked and the part of a line past it
/// highlighted. Read-only, no wrapping.
class ProgramView : public QPlainTextEdit {
  Q_OBJECT
 public:
  explicit ProgramView(QWidget* parent = nullptr);

  void set_break_point(int column);
  int break_point() const { return break_point_; }
  /// Lines longer than the break point.
  int lines_past_break_point() const;
  /// Width of one character.
  qreal character_width() const;
  /// Viewport x of the left edge of column `column` (1-based).
  qreal column_x(int column) const;
  /// Finds `text` after the cursor, wrapping to the top; false when it is nowhere.
  bool find_next(const QString& text);

  int line_number_width() const;
  void paint_line_numbers(QPaintEvent* event);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QWidget* numbers_;
  int break_point_ = 72;
};

/// The column ruler ("----+----1----+----2...") above a ProgramView, kept in step with its
/// horizontal scrolling.
class ColumnRuler : public QWidget {
  Q_OBJECT
 public:
  explicit ColumnRuler(ProgramView* view);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  ProgramView* view_;
};

}  // namespace quorva::gui
