#include "history/widgets/filterrow.h"

#include <QEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>

namespace elevenfive {

using namespace Qt::StringLiterals;

FilterRow::FilterRow(QTableView* table, QWidget* parent) : QWidget(parent), table_(table) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setFixedHeight(QLineEdit().sizeHint().height());
  connect(table_->horizontalHeader(), &QHeaderView::sectionResized, this, &FilterRow::align);
  connect(table_->horizontalHeader(), &QHeaderView::sectionMoved, this, &FilterRow::align);
  connect(table_->horizontalHeader(), &QHeaderView::geometriesChanged, this, &FilterRow::align);
  connect(table_->horizontalScrollBar(), &QScrollBar::valueChanged, this, &FilterRow::align);
}

void FilterRow::rebuild() {
  qDeleteAll(fields_);
  fields_.clear();
  last_ = nullptr;
  const QAbstractItemModel* model = table_->model();
  for (int c = 0; c < model->columnCount(); ++c) {
    const QString header = model->headerData(c, Qt::Horizontal).toString();
    auto* field = new QLineEdit(this);
    field->setObjectName(u"filter_"_s + header);
    field->setAccessibleName(u"查找条件 "_s + header);
    field->setAlignment(Qt::AlignCenter);
    connect(field, &QLineEdit::textEdited, this, &FilterRow::edited);
    connect(field, &QLineEdit::returnPressed, this, &FilterRow::submitted);
    field->installEventFilter(this);
    fields_.push_back(field);
  }
  align();
}

std::vector<ColumnFilter> FilterRow::conditions() const {
  std::vector<ColumnFilter> found;
  for (int c = 0; c < static_cast<int>(fields_.size()); ++c) {
    const QString text = fields_[static_cast<std::size_t>(c)]->text().trimmed();
    if (!text.isEmpty())
      found.push_back({table_->model()->headerData(c, Qt::Horizontal).toString(), text});
  }
  return found;
}

void FilterRow::clear() {
  for (QLineEdit* field : fields_)
    field->clear();
}

void FilterRow::align() {
  const QHeaderView* header = table_->horizontalHeader();
  const int left = table_->frameWidth();
  for (int c = 0; c < static_cast<int>(fields_.size()); ++c) {
    QLineEdit* field = fields_[static_cast<std::size_t>(c)];
    field->setVisible(!table_->isColumnHidden(c));
    field->setGeometry(left + header->sectionViewportPosition(c), 0, header->sectionSize(c), height());
  }
}

void FilterRow::focusFirst() {
  if (!fields_.empty())
    fields_.front()->setFocus();
}

void FilterRow::focusLast() {
  if (last_ != nullptr)
    last_->setFocus();
  else
    focusFirst();
}

bool FilterRow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn)
    last_ = static_cast<QLineEdit*>(watched);
  return QWidget::eventFilter(watched, event);
}

void FilterRow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  align();
}

void FilterRow::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  align();
}

}  // namespace elevenfive
