#include "engine/widgets/runpanel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QTextCursor>
#include <QVBoxLayout>
#include <algorithm>

#include "engine/rundriver.h"
#include "model/store.h"
#include "model/widgets/gridview.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

/// Marks and scratch columns that the grid does not show.
QStringList hiddenColumns() {
  return QStringList{u"ID"_s, u"过滤标记"_s, u"缩水标记"_s, u"精选标记"_s, u"临时数据"_s};
}

QLabel* heading(const QString& text, QWidget* buddy) {
  auto* label = new QLabel(text);
  label->setProperty("heading", true);
  label->setBuddy(buddy);
  return label;
}

/// A pane of the splitter: a heading with a note at its right, and what it heads.
QWidget* pane(QLabel* title, QLabel* note, QWidget* content) {
  auto* made = new QWidget;
  auto* column = new QVBoxLayout(made);
  column->setContentsMargins(0, 0, 0, 0);
  auto* line = new QHBoxLayout;
  line->addWidget(title);
  line->addStretch();
  if (note != nullptr)
    line->addWidget(note);
  column->addLayout(line);
  column->addWidget(content, 1);
  return made;
}

}  // namespace

RunPanel::RunPanel(Store& gConn, QWidget* parent) : QWidget(parent), bar_(new QProgressBar(this)), progress_(*bar_) {
  setObjectName(u"Frm_Sub_2"_s);
  grid_ = new GridView(gConn, this);
  grid_->setObjectName(u"TDBGrid_RZ"_s);
  grid_->setAccessibleName(u"投注号码"_s);
  rowHeight_ = grid_->verticalHeader()->defaultSectionSize();
  status_ = new QPlainTextEdit(this);
  status_->setObjectName(u"TextChaoZuoTip"_s);
  status_->setAccessibleName(u"操作提示"_s);
  status_->setReadOnly(true);
  status_->setUndoRedoEnabled(false);
  status_->setTabChangesFocus(true);
  status_->setPlaceholderText(u"先点击“第一步：初始化”，再点击“第二步：过滤缩水”。"_s);
  rongcuoTip_ = new QLabel(u"过滤条件容错：一注号码允许不符合的条件个数"_s, this);
  rongcuoTip_->setObjectName(u"LabelRongcuoTip"_s);
  rongcuoTip_->setProperty("note", true);
  count_ = new QLabel(this);
  count_->setObjectName(u"Label_RZcount"_s);
  count_->setProperty("note", true);

  auto* panes = new QSplitter(this);
  panes->addWidget(pane(heading(u"号码"_s, grid_), count_, grid_));
  panes->addWidget(pane(heading(u"操作提示"_s, status_), nullptr, status_));
  panes->setStretchFactor(0, 3);
  panes->setStretchFactor(1, 2);
  panes->setChildrenCollapsible(false);
  panes->setHandleWidth(fontMetrics().height() * 2 / 3);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(buildButtons());
  layout->addWidget(panes, 1);
  layout->addWidget(buildProgress());
}

QWidget* RunPanel::buttonPanel() const {
  return buttonPanel_;
}

QWidget* RunPanel::buildButtons() {
  buttonPanel_ = new QWidget(this);
  buttonPanel_->setObjectName(u"Pic_subTouZhu"_s);
  auto* row = new QHBoxLayout(buttonPanel_);
  row->setContentsMargins(0, 0, 0, 0);
  for (int i = 0; const RunButton& fact : RunDriver::buttons()) {
    auto* button = new QPushButton(fact.caption.toString(), buttonPanel_);
    button->setObjectName(u"cmmTouZhu_%1"_s.arg(i));
    button->setAccessibleName(fact.caption.toString());
    button->setToolTip(fact.tip.toString());
    button->setProperty("primary", i < 2);
    button->setEnabled(fact.action != nullptr);
    connect(button, &QPushButton::clicked, this, [this, i] { Q_EMIT runRequested(i); });
    buttons_.push_back(button);
    if (i == 2)
      row->addSpacing(fontMetrics().height());
    row->addWidget(button);
    ++i;
  }
  row->addStretch();
  return buttonPanel_;
}

QWidget* RunPanel::buildProgress() {
  auto* strip = new QWidget(this);
  auto* row = new QHBoxLayout(strip);
  row->setContentsMargins(0, 0, 0, 0);
  bar_->setObjectName(u"ProgressBar_TouZu"_s);
  bar_->setAccessibleName(u"过滤进度"_s);
  QSizePolicy keepsPlace = bar_->sizePolicy();
  keepsPlace.setRetainSizeWhenHidden(true);
  bar_->setSizePolicy(keepsPlace);
  bar_->hide();
  stop_ = new QPushButton(u"停 止(&P)"_s, strip);
  stop_->setObjectName(u"cmm_stop"_s);
  stop_->setAccessibleName(u"停止"_s);
  stop_->setEnabled(false);
  connect(stop_, &QPushButton::clicked, this, &RunPanel::stopRequested);
  row->addWidget(rongcuoTip_);
  row->addWidget(bar_, 1);
  row->addWidget(stop_);
  return strip;
}

void RunPanel::clickButton(int index) {
  const QPushButton* button = buttons_.at(static_cast<std::size_t>(index));
  if (button->isEnabled())
    Q_EMIT runRequested(index);
}

void RunPanel::showRizhiGrid() {
  grid_->balls().showAll();
  grid_->verticalHeader()->setDefaultSectionSize(rowHeight_);
  grid_->rows().setQuery({"显示号码",
                          "SELECT ID FROM 日志表 ORDER BY 期号 ASC, 序号 ASC, ID ASC",
                          {},
                          "SELECT * FROM 日志表 WHERE ID = ?"});
  setUpGridColumns();
  const int rows = grid_->rows().rowCount();
  count_->setText(rows > 0 ? u"共 %1 注"_s.arg(rows) : QString());
  if (rows > 0)
    grid_->setCurrentIndex(grid_->rows().index(0, grid_->rows().columnOf(u"序号"_s)));
}

void RunPanel::setUpGridColumns() {
  if (grid_->isColumnHidden(grid_->rows().columnOf(u"过滤标记"_s)))
    return;
  grid_->hideColumns(hiddenColumns());
  grid_->fitColumns({u"期号"_s}, 10);
  grid_->showNumbersAsBalls();
  grid_->stretchColumns();
}

void RunPanel::showDrawnNumbers(const Draw& draw) {
  grid_->balls().showOnly(draw);
  grid_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 27 /
                                                 16);  // 405 twips in the window's own units
  grid_->viewport()->update();
}

std::optional<Qihao> RunPanel::currentQihao() const {
  const QModelIndex current = grid_->currentIndex();
  if (!current.isValid())
    return std::nullopt;
  const QVariant cell = current.siblingAtColumn(grid_->rows().columnOf(u"期号"_s)).data(PagedTableModel::valueRole);
  return cell.isValid() ? std::optional<Qihao>(cell.toInt()) : std::nullopt;
}

QString RunPanel::rongcuoTipCaption() const {
  return rongcuoTip_->text();
}

void RunPanel::setText(const QString& text) {
  statusText_ = text;
  // Only what follows the part that stands there already is laid out again: a run tells two lines a stage.
  const QString lines = QString(text).remove(u'\r');
  const auto changed = std::mismatch(lines.cbegin(), lines.cend(), shownLines_.cbegin(), shownLines_.cend());
  QTextCursor cursor(status_->document());
  cursor.setPosition(static_cast<int>(changed.first - lines.cbegin()));
  cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
  cursor.insertText(lines.last(lines.cend() - changed.first));
  shownLines_ = lines;
}

void RunPanel::moveCaretToEnd() {
  status_->moveCursor(QTextCursor::End);
  status_->ensureCursorVisible();
}

}  // namespace elevenfive
