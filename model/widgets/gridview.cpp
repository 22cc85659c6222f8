#include "model/widgets/gridview.h"

#include <QHeaderView>
#include <QScrollBar>

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

/// Paints a column on a background of its own, with text that is readable on it whatever the palette.
class TintDelegate final : public QStyledItemDelegate {
 public:
  TintDelegate(const QColor& color, QObject* parent) : QStyledItemDelegate(parent), color_(color) {}

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    option->backgroundBrush = color_;
    option->palette.setColor(QPalette::Text, Qt::black);
  }

 private:
  QColor color_;
};

}  // namespace

GridView::GridView(Store& store, QWidget* parent)
    : QTableView(parent), rows_(new PagedTableModel(store, this)), balls_(new BallDelegate(this)) {
  setModel(rows_);
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);
  setAlternatingRowColors(true);
  setShowGrid(false);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  setTabKeyNavigation(false);
  setHorizontalScrollMode(ScrollPerPixel);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setMinimumSectionSize(fontMetrics().height());
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + fontMetrics().height() / 2);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
  horizontalHeader()->setDefaultAlignment(Qt::AlignCenter);
}

void GridView::hideColumns(const QStringList& names) {
  for (int c = 0; c < rows_->columnCount(); ++c)
    setColumnHidden(c, names.contains(rows_->headerData(c, Qt::Horizontal, Qt::DisplayRole).toString()));
}

void GridView::showNumbersAsBalls() {
  for (int n = 1; n <= 5; ++n)
    setItemDelegateForColumn(rows_->columnOf(u"号码%1"_s.arg(n)), balls_);
}

void GridView::tintColumn(const QString& name, unsigned bgr) {
  setItemDelegateForColumn(rows_->columnOf(name), new TintDelegate(QColor(rgbOfBgr(bgr)), this));
}

void GridView::fitColumns(const QStringList& wide, int digits) {
  const int padding = fontMetrics().averageCharWidth() * 3;
  for (int c = 0; c < rows_->columnCount(); ++c) {
    const QString name = rows_->headerData(c, Qt::Horizontal, Qt::DisplayRole).toString();
    int width = horizontalHeader()->fontMetrics().horizontalAdvance(name);
    if (wide.contains(name))
      width = std::max(width, fontMetrics().horizontalAdvance(u'0') * digits);
    setColumnWidth(c, width + padding);
  }
}

void GridView::stretchColumns() {
  horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
}

void GridView::resizeEvent(QResizeEvent* event) {
  const QScrollBar& bar = *verticalScrollBar();
  const bool atEnd = bar.maximum() > 0 && bar.value() == bar.maximum();
  QTableView::resizeEvent(event);
  if (atEnd)
    scrollToBottom();
}

void GridView::fitColumn(const QString& name, const QString& sample) {
  const int column = rows_->columnOf(name);
  const int needed = fontMetrics().horizontalAdvance(sample) + fontMetrics().averageCharWidth() * 3;
  setColumnWidth(column, std::max(columnWidth(column), needed));
}

}  // namespace elevenfive
