#include "conditions/widgets/chiplist.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>
#include <utility>

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
  const QScopedValueRollback filling(filling_, true);
  clear();
  addItems(items);
  showSelection(selected);
  int widest = 0;
  for (const QString& item : items)
    widest = std::max(widest, fontMetrics().horizontalAdvance(item));
  const int text = fontMetrics().height();
  setGridSize(compact_ ? QSize(std::max(widest, text) + text, text * 3 / 2 + 6)
                       : QSize(std::max(widest, text * 2) + text * 2, text * 2 + 6));
}

void ChipList::showSelection(const std::vector<bool>& selected) {
  const QScopedValueRollback filling(filling_, true);
  for (int i = 0; i < count(); ++i) {
    const bool wanted = static_cast<std::size_t>(i) < selected.size() && selected[static_cast<std::size_t>(i)];
    if (item(i)->isSelected() != wanted)  // a drag under way would keep what it has swept, also where it comes back
      item(i)->setSelected(wanted);
  }
}

void ChipList::invertSelection() {
  selectionModel()->select(QItemSelection(model()->index(0, 0), model()->index(count() - 1, 0)),
                           QItemSelectionModel::Toggle);
}

QItemSelectionModel::SelectionFlags ChipList::selectionCommand(const QModelIndex& index, const QEvent* event) const {
  return event == nullptr ? QItemSelectionModel::NoUpdate : QListWidget::selectionCommand(index, event);
}

void ChipList::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QListWidget::selectionChanged(selected, deselected);
  if (filling_)
    return;
  Q_EMIT selectionEdited();
}

std::vector<bool> ChipList::selection() const {
  std::vector<bool> states(static_cast<std::size_t>(count()));
  for (const QModelIndex& index : selectionModel()->selectedIndexes())
    states.at(static_cast<std::size_t>(index.row())) = true;
  return states;
}

void ChipList::selectRangeTo(const QModelIndex& index) {
  const QModelIndex from = anchor_.isValid() ? QModelIndex(anchor_) : index;
  selectionModel()->select(QItemSelection(from, index), QItemSelectionModel::Select);
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  scrollTo(index);
}

void ChipList::mousePressEvent(QMouseEvent* event) {
  const QModelIndex index = indexAt(event->position().toPoint());
  const bool left = event->button() == Qt::LeftButton && index.isValid();
  if (left && event->modifiers().testFlag(Qt::ShiftModifier)) {
    rangePress_ = true;
    selectRangeTo(index);
    return;
  }
  QListWidget::mousePressEvent(event);
  if (left)
    anchor_ = index;
}

void ChipList::mouseMoveEvent(QMouseEvent* event) {
  if (!rangePress_)
    QListWidget::mouseMoveEvent(event);
}

void ChipList::mouseReleaseEvent(QMouseEvent* event) {
  if (!std::exchange(rangePress_, false))
    QListWidget::mouseReleaseEvent(event);
}

/// Hands the press on as a plain one: a view selects nothing by the second press on the same item.
void ChipList::mouseDoubleClickEvent(QMouseEvent* event) {
  QMouseEvent press(QEvent::MouseButtonPress, event->position(), event->scenePosition(), event->globalPosition(),
                    event->button(), event->buttons(), event->modifiers(), event->pointingDevice());
  mousePressEvent(&press);
}

void ChipList::keyPressEvent(QKeyEvent* event) {
  struct Arrow {
    int key;
    CursorAction action;
  };
  static constexpr Arrow arrows[] = {{Qt::Key_Left, MoveLeft}, {Qt::Key_Right, MoveRight}, {Qt::Key_Up, MoveUp},
                                     {Qt::Key_Down, MoveDown}, {Qt::Key_Home, MoveHome},   {Qt::Key_End, MoveEnd}};
  if (event->modifiers().testFlag(Qt::ShiftModifier)) {
    for (const Arrow& arrow : arrows) {
      if (event->key() != arrow.key)
        continue;
      const QModelIndex to = moveCursor(arrow.action, Qt::NoModifier);
      if (to.isValid())
        selectRangeTo(to);
      return;
    }
  }
  QListWidget::keyPressEvent(event);
  if (event->key() != Qt::Key_Shift)
    anchor_ = currentIndex();
}

}  // namespace elevenfive
