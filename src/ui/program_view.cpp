#include "ui/program_view.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>

namespace quorva::gui {
namespace {

// The fixed areas of a COBOL line: sequence number, indicator, identification.
constexpr struct {
  int first;
  int last;
} kShadedColumns[] = {{1, 6}, {7, 7}, {73, 80}};

const QColor kShade(232, 232, 240);
const QColor kIndicator(220, 226, 246);
const QColor kPastBreak(255, 205, 205);
const QColor kBreakLine(200, 0, 0);

class LineNumbers : public QWidget {
 public:
  explicit LineNumbers(ProgramView* view) : QWidget(view), view_(view) {}
  QSize sizeHint() const override { return {view_->line_number_width(), 0}; }

 protected:
  void paintEvent(QPaintEvent* event) override { view_->paint_line_numbers(event); }

 private:
  ProgramView* view_;
};

}  // namespace

ProgramView::ProgramView(QWidget* parent) : QPlainTextEdit(parent) {
  setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  setReadOnly(true);
  setLineWrapMode(QPlainTextEdit::NoWrap);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  numbers_ = new LineNumbers(this);
  connect(this, &QPlainTextEdit::blockCountChanged, this,
          [this] { setViewportMargins(line_number_width(), 0, 0, 0); });
  connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& rect, int dy) {
    if (dy)
      numbers_->scroll(0, dy);
    else
      numbers_->update(0, rect.y(), numbers_->width(), rect.height());
  });
  setViewportMargins(line_number_width(), 0, 0, 0);
}

void ProgramView::set_break_point(int column) {
  break_point_ = column;
  viewport()->update();
}

int ProgramView::lines_past_break_point() const {
  int count = 0;
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
    if (block.text().size() > break_point_) ++count;
  return count;
}

qreal ProgramView::character_width() const {
  // Fractional: a rounded advance drifts a column or two by column 72.
  return QFontMetricsF(font()).horizontalAdvance(QLatin1Char('M'));
}

qreal ProgramView::column_x(int column) const {
  return contentOffset().x() + document()->documentMargin() + (column - 1) * character_width();
}

bool ProgramView::find_next(const QString& text) {
  if (text.isEmpty()) return false;
  if (find(text)) return true;
  QTextCursor top(document());
  setTextCursor(top);
  return find(text);
}

int ProgramView::line_number_width() const {
  const int digits = QString::number(std::max(1, blockCount())).size();
  return 8 + fontMetrics().horizontalAdvance(QLatin1Char('9')) * std::max(digits, 4);
}

void ProgramView::paint_line_numbers(QPaintEvent* event) {
  QPainter painter(numbers_);
  painter.fillRect(event->rect(), QColor(244, 244, 244));
  painter.setPen(Qt::darkGray);
  QTextBlock block = firstVisibleBlock();
  int top = static_cast<int>(blockBoundingGeometry(block).translated(contentOffset()).top());
  while (block.isValid() && top <= event->rect().bottom()) {
    const int height = static_cast<int>(blockBoundingRect(block).height());
    if (block.isVisible() && top + height >= event->rect().top())
      painter.drawText(0, top, numbers_->width() - 4, height, Qt::AlignRight,
                       QString::number(block.blockNumber() + 1));
    block = block.next();
    top += height;
  }
}

void ProgramView::paintEvent(QPaintEvent* event) {
  {
    QPainter painter(viewport());
    const QRect area = event->rect();
    const int width = character_width();
    for (const auto& shaded : kShadedColumns) {
      const int left = column_x(shaded.first);
      painter.fillRect(
          QRect(left, area.top(), (shaded.last - shaded.first + 1) * width, area.height()),
          shaded.first == 7 ? kIndicator : kShade);
    }
    // The part of each visible line past the break point.
    const int cut = column_x(break_point_ + 1);
    QTextBlock block = firstVisibleBlock();
    qreal top = blockBoundingGeometry(block).translated(contentOffset()).top();
    while (block.isValid() && top <= area.bottom()) {
      const qreal height = blockBoundingRect(block).height();
      const int length = static_cast<int>(block.text().size());
      if (length > break_point_)
        painter.fillRect(QRectF(cut, top, (length - break_point_) * width, height), kPastBreak);
      top += height;
      block = block.next();
    }
    painter.setPen(QPen(kBreakLine, 1, Qt::DashLine));
    painter.drawLine(QPointF(cut, area.top()), QPointF(cut, area.bottom()));
  }
  QPlainTextEdit::paintEvent(event);
}

void ProgramView::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  const QRect inside = contentsRect();
  numbers_->setGeometry(QRect(inside.left(), inside.top(), line_number_width(), inside.height()));
}

ColumnRuler::ColumnRuler(ProgramView* view) : QWidget(view->parentWidget()), view_(view) {
  setFont(view->font());
  connect(view->horizontalScrollBar(), &QScrollBar::valueChanged, this, [this] { update(); });
}

QSize ColumnRuler::sizeHint() const {
  return {200, fontMetrics().height() + 4};
}

void ColumnRuler::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), QColor(244, 244, 244));
  // The ruler stands over the view's text: skip the frame and the line numbers.
  const int origin = view_->geometry().left() - geometry().left() + view_->frameWidth() +
                     view_->line_number_width();
  const qreal width = view_->character_width();
  const int baseline = fontMetrics().ascent() + 2;
  painter.setClipRect(origin, 0, this->width() - origin, height());
  for (int column = 1; column <= 250; ++column) {
    const qreal x = origin + view_->column_x(column);
    if (x > this->width()) break;
    if (x + width < origin) continue;
    QChar mark = column % 10 == 0  ? QChar('0' + (column / 10) % 10)
                 : column % 5 == 0 ? QChar('+')
                                   : QChar('-');
    painter.setPen(column == view_->break_point() ? Qt::red : Qt::black);
    painter.drawText(QPointF(x, baseline), QString(mark));
  }
}

}  // namespace quorva::gui
