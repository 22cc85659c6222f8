#include "conditions/widgets/chiplist.h"

#include <QApplication>
#include <QPainter>
#include <QStyledItemDelegate>

namespace elevenfive {

namespace {

/// Paints an item as a rounded chip: filled where it is selected, an outline where not.
class ChipDelegate final : public QStyledItemDelegate {
 public:
  explicit ChipDelegate(QListView* list) : QStyledItemDelegate(list), list_(*list) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const bool focused = option.state.testFlag(QStyle::State_HasFocus);
    const bool hovered = option.state.testFlag(QStyle::State_MouseOver);
    const QPalette& palette = option.palette;
    const QRectF chip = QRectF(option.rect).adjusted(3.5, 3.5, -3.5, -3.5);
    const qreal radius = chip.height() / 4;

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    QColor outline = palette.color(selected ? QPalette::Highlight : QPalette::Mid);
    if (focused)
      outline = palette.color(QPalette::Text);
    painter->setPen(QPen(outline, focused ? 1.6 : 1.0));
    QColor fill = palette.color(selected ? QPalette::Highlight : QPalette::Base);
    if (hovered && !selected)
      fill = palette.color(QPalette::AlternateBase);
    painter->setBrush(fill);
    painter->drawRoundedRect(chip, radius, radius);
    painter->setFont(option.font);
    painter->setPen(palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawText(chip, Qt::AlignCenter, index.data().toString());
    painter->restore();
  }

  /// A chip fills its place in the list's grid.
  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override { return list_.gridSize(); }

 private:
  const QListView& list_;
};

}  // namespace

ChipList::ChipList(QWidget* parent) : QListWidget(parent) {
  setItemDelegate(new ChipDelegate(this));
  setSelectionMode(MultiSelection);
  setFlow(LeftToRight);
  setWrapping(true);
  setResizeMode(Adjust);
  setUniformItemSizes(true);
  setMovement(Static);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setProperty("plain", true);
  setMouseTracking(true);
}

void ChipList::setChips(const QStringList& items, const std::vector<bool>& selected) {
  filling_ = true;
  clear();
  addItems(items);
  int widest = 0;
  for (int i = 0; i < count(); ++i) {
    item(i)->setSelected(static_cast<std::size_t>(i) < selected.size() && selected[static_cast<std::size_t>(i)]);
    widest = std::max(widest, fontMetrics().horizontalAdvance(items[i]));
  }
  const int text = fontMetrics().height();
  setGridSize(compact_ ? QSize(std::max(widest, text) + text, text * 3 / 2 + 6)
                       : QSize(std::max(widest, text * 2) + text * 2, text * 2 + 6));
  filling_ = false;
}

void ChipList::invertSelection() {
  selectionModel()->select(QItemSelection(model()->index(0, 0), model()->index(count() - 1, 0)),
                           QItemSelectionModel::Toggle);
}

void ChipList::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QListWidget::selectionChanged(selected, deselected);
  if (filling_)
    return;
  for (const QModelIndex& index : selected.indexes())
    Q_EMIT chipClicked(index.row(), true);
  for (const QModelIndex& index : deselected.indexes())
    Q_EMIT chipClicked(index.row(), false);
  Q_EMIT clicksDone();
}

}  // namespace elevenfive
