#include "history/widgets/historygrid.h"

#include <QVBoxLayout>

#include "history/celledit.h"
#include "history/search.h"
#include "history/widgets/filterrow.h"
#include "model/errors.h"
#include "model/ports.h"
#include "model/store.h"
#include "model/widgets/faultbox.h"
#include "model/widgets/gridview.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

/// The largest period, 2147483647, has so many.
constexpr int qihaoDigits = 10;

/// The background of 期号, in the order 0xBBGGRR.
constexpr unsigned qihaoBackground = 0xC0FFFF;

constexpr const char* historyPurpose = "显示历史记录";
constexpr const char* rowSql = "SELECT * FROM 历史记录 WHERE 期号 = ?";

constexpr auto editTriggers = QAbstractItemView::EditKeyPressed | QAbstractItemView::DoubleClicked;

QStringList listOf(std::span<const QStringView> names) {
  QStringList list;
  for (const QStringView name : names)
    list << name.toString();
  return list;
}

}  // namespace

HistoryGrid::HistoryGrid(Store& gConn, Boxes& boxes, QWidget* parent)
    : QWidget(parent), gConn_(gConn), boxes_(boxes), grid_(new GridView(gConn, this)), gHistoryRs(grid_->rows()) {
  filter_ = new FilterRow(grid_, this);
  grid_->setObjectName(u"TDBGridHistory"_s);
  grid_->setAccessibleName(u"历史开奖记录"_s);
  grid_->setEditTriggers(editTriggers);
  gHistoryRs.setWriter(editableHistoryColumns(), [this](int period, const QString& column, const QString& typed) {
    return write(period, column, typed);
  });
  filter_->hide();
  connect(filter_, &FilterRow::edited, this, &HistoryGrid::filterEdited);
  connect(filter_, &FilterRow::submitted, this, &HistoryGrid::filterSubmitted);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(2);
  column->addWidget(filter_);
  column->addWidget(grid_, 1);
}

void HistoryGrid::bind(bool all) {
  PagedQuery query{historyPurpose, periodsSql({}), {}, rowSql};
  if (!all) {
    const QihaoRange range = recentQihaoRange(gConn_).value_or(QihaoRange{1, 0});  // an empty history shows no period
    query.keySql = periodsSql(qihaoRangeWhere);
    query.keyValues = {range.first, range.last};
  }
  gHistoryRs.setQuery(std::move(query));
}

void HistoryGrid::showHistoryMode(bool all) {
  try {
    bind(all);
  } catch (const Error& fault) {
    gHistoryRs.clear();
    boxes_.information(fault.message() + u"(文件丢失,需要重新安装!)"_s);
    return;
  }
  layoutColumns();
}

void HistoryGrid::layoutColumns() {
  if (!grid_->isColumnHidden(gHistoryRs.columnOf(u"开奖日期"_s))) {  // the columns are new to the grid
    grid_->fitColumns({u"期号"_s}, qihaoDigits);
    grid_->fitColumn(u"尾数形式"_s, u"1,1,1,1,1"_s);
    grid_->fitColumn(u"头数形式"_s, u"1,1,1,1,1"_s);
    grid_->showNumbersAsBalls();
    grid_->tintColumn(u"期号"_s, qihaoBackground);
    filter_->rebuild();
  }
  grid_->hideColumns(listOf(hiddenHistoryColumns()));
  filter_->align();
  grid_->scrollToBottom();
}

void HistoryGrid::showWritten(Qihao period) {
  gHistoryRs.rowWritten(period);
  grid_->scrollTo(gHistoryRs.index(gHistoryRs.rowOf(period), 0));
}

bool HistoryGrid::showFound() {
  const FilterSql filter = buildFilterSql(filter_->conditions());
  gHistoryRs.setQuery({"搜索历史记录", periodsSql(filter.where), {filter.values.begin(), filter.values.end()}, rowSql});
  filter_->align();
  if (gHistoryRs.rowCount() == 0)
    return false;
  filter_->focusLast();
  return true;
}

void HistoryGrid::refresh() {
  withFaultBox(boxes_, [this] { gHistoryRs.refresh(); });
}

void HistoryGrid::openFilter() {
  filter_->show();
  filter_->focusFirst();
}

void HistoryGrid::closeFilter() {
  filter_->clear();
  filter_->hide();
}

void HistoryGrid::clearFilter() {
  filter_->clear();
}

bool HistoryGrid::filterIsOpen() const {
  return filter_->isVisible();
}

void HistoryGrid::setBusy(bool busy) {
  busy_ = busy;
  filter_->setDisabled(busy);
  grid_->setEditTriggers(busy ? QAbstractItemView::EditTriggers(QAbstractItemView::NoEditTriggers)
                              : QAbstractItemView::EditTriggers(editTriggers));
}

std::optional<int> HistoryGrid::write(Qihao period, const QString& column, const QString& typed) {
  if (busy_)
    return std::nullopt;
  try {
    const CellEdit edit = editHistoryCell(gConn_, period, column, typed);
    if (edit.refusal.isEmpty()) {
      Q_EMIT cellEdited();
      return edit.qihao;
    }
    tellLater(edit.refusal);
  } catch (const Error& fault) {
    tellLater(fault.message());
  }
  return std::nullopt;
}

/// A box at once would take the focus from the cell's field, which would then be written a second time.
void HistoryGrid::tellLater(const QString& text) {
  QMetaObject::invokeMethod(
      this, [this, text] { boxes_.critical(text); }, Qt::QueuedConnection);
}

}  // namespace elevenfive
