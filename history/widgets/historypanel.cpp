#include "history/widgets/historypanel.h"

#include <QButtonGroup>
#include <QDate>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "history/derivation.h"
#include "history/entryrow.h"
#include "history/historytable.h"
#include "history/textfiles.h"
#include "history/widgets/historygrid.h"
#include "history/widgets/importprogress.h"
#include "history/widgets/slidein.h"
#include "model/errors.h"
#include "model/navigators.h"
#include "model/store.h"
#include "model/texts.h"
#include "model/widgets/digitfield.h"
#include "model/widgets/faultbox.h"
#include "model/widgets/keptfocus.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

/// The largest period, 2147483647, has so many.
constexpr int qihaoDigits = 10;

/// A progress whose bar takes the place of a widget: the widget goes when the bar comes, and stays away.
class InPlaceOf final : public Progress {
 public:
  InPlaceOf(QWidget& widget, Progress& bar) : widget_(widget), bar_(bar) {}
  void setMinimum(int minimum) override { bar_.setMinimum(minimum); }
  void setMaximum(int maximum) override { bar_.setMaximum(maximum); }
  void setValue(int value) override { bar_.setValue(value); }
  void setVisible(bool visible) override {
    if (visible)
      widget_.hide();
    bar_.setVisible(visible);
  }

 private:
  QWidget& widget_;
  Progress& bar_;
};

QLabel* caption(const QString& text, QWidget* buddy) {
  auto* label = new QLabel(text);
  label->setBuddy(buddy);
  return label;
}

}  // namespace

HistoryPanel::HistoryPanel(Store& gConn, const QString& programFolder, const HistoryPanelPorts& ports, QWidget* parent)
    : QWidget(parent), gConn_(gConn), programFolder_(programFolder), ports_(ports) {
  setObjectName(u"Frm_Sub_0"_s);
  auto* strips = new QHBoxLayout;
  strips->addWidget(buildEntryStrip());
  strips->addStretch();
  auto* modes = new QHBoxLayout;
  modes->addWidget(buildModeStrip());
  modes->addStretch();
  progress_ = new ImportProgress(this);
  modes->addWidget(progress_, 1);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(strips);
  layout->addLayout(modes);
  layout->addWidget(buildViews(), 1);

  connect(&ports_.busy, &BusyState::changed, this, [this](bool busy) { entryStrip_->setDisabled(busy); });
  connect(&ports_.busy, &BusyState::stopRequested, this, [this] { progress_->requestStop(); });
  grid_->bind(true);
}

QWidget* HistoryPanel::entryStrip() const {
  return entryStrip_;
}

QWidget* HistoryPanel::buildEntryStrip() {
  entryStrip_ = new QFrame(this);
  entryStrip_->setObjectName(u"FrameHkaijian"_s);
  auto* row = new QHBoxLayout;
  for (int i = 0; i < static_cast<int>(entry_.size()); ++i) {
    auto* field = new DigitField(i == 0 ? qihaoDigits : 2, entryStrip_);
    field->setObjectName(u"TextHistory_%1"_s.arg(i));
    field->setAccessibleName(i == 0 ? u"期号"_s : u"第%1个号码"_s.arg(i));
    if (i < 2)
      row->addWidget(caption(i == 0 ? u"期号(&Q)"_s : u"开奖号码(&M)"_s, field));
    row->addWidget(field);
    entry_[static_cast<std::size_t>(i)] = field;
    connect(field, &QLineEdit::returnPressed, this, [this, i] {
      if (i + 1 < static_cast<int>(entry_.size()))
        entry_[static_cast<std::size_t>(i) + 1]->setFocus();
      else
        addDraw();
    });
  }
  row->addWidget(
      button(u"cmmUpdateHistory_0"_s, u"<-添加记录"_s, u"把左边的期号和号码存入历史记录"_s, &HistoryPanel::addDraw));
  row->addSpacing(fontMetrics().height());
  row->addWidget(buildButtons());
  row->setContentsMargins(0, 0, 0, 0);
  entryStrip_->setLayout(row);
  slide_ = new SlideIn(entryStrip_, this);
  return slide_;
}

QPushButton* HistoryPanel::button(const QString& name, const QString& captionText, const QString& tip,
                                  void (HistoryPanel::*clicked)()) {
  auto* made = new QPushButton(captionText, this);
  made->setObjectName(name);
  made->setAccessibleName(QString(captionText).remove(u'&'));
  made->setToolTip(tip);
  connect(made, &QPushButton::clicked, this,
          [this, clicked] { withFaultBox(ports_.boxes, [this, clicked] { (this->*clicked)(); }); });
  return made;
}

QWidget* HistoryPanel::buildButtons() {
  auto* group = new QWidget(this);
  auto* row = new QHBoxLayout(group);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(
      button(u"newBtnHistory_99"_s, u"导入文本"_s, u"从文本文件导入开奖记录，每行一期"_s, &HistoryPanel::importText));
  row->addWidget(button(u"cmm_Daocu"_s, u"导出文本"_s, u"把全部开奖记录导出为文本"_s, &HistoryPanel::exportText));
  row->addWidget(button(u"cmm_scls"_s, u"删除一期"_s, u"删除指定期号的记录"_s, &HistoryPanel::deletePeriod));
  row->addWidget(button(u"newBtnHistory_3"_s, u"清空记录"_s, u"删除所有的历史记录"_s, &HistoryPanel::clearHistory));
  row->addWidget(button(u"newBtnHistory_7"_s, u"下载设置"_s, u"选择彩票种类"_s, &HistoryPanel::chooseGame));
  return group;
}

QWidget* HistoryPanel::buildModeStrip() {
  auto* frame = new QFrame(this);
  frame->setObjectName(u"FrameHistoryMode"_s);
  auto* row = new QHBoxLayout(frame);
  row->setContentsMargins(0, 0, 0, 0);
  const auto option = [&](const QString& name, const QString& text, QButtonGroup* group) {
    auto* made = new QRadioButton(text, frame);
    made->setObjectName(name);
    made->setAccessibleName(text);
    group->addButton(made);
    row->addWidget(made);
    return made;
  };
  connect(&ports_.busy, &BusyState::changed, frame, &QWidget::setDisabled);
  row->addWidget(new QLabel(u"数据模式"_s));
  auto* modes = new QButtonGroup(frame);
  dataMode_ = {option(u"Option_TorD_0"_s, u"数据"_s, modes), option(u"Option_TorD_1"_s, u"图表"_s, modes)};
  row->addSpacing(fontMetrics().height());
  row->addWidget(new QLabel(u"显示范围"_s));
  auto* history = new QButtonGroup(frame);
  historyMode_ = {option(u"OptionHistoryMode_0"_s, u"最近100期"_s, history),
                  option(u"OptionHistoryMode_1"_s, u"显示全部"_s, history)};
  dataMode_[0]->setChecked(true);
  historyMode_[1]->setChecked(true);
  row->addSpacing(fontMetrics().height());
  row->addWidget(
      button(u"cmmUpdateHistory_1"_s, u"今日开奖"_s, u"下载当天开奖数据并导入。"_s, &HistoryPanel::updateRequested));
  row->addWidget(button(u"cmmUpdateHistory_2"_s, u"历史数据"_s, u"下载最近一周开奖数据并导入。"_s,
                        &HistoryPanel::updateRequested));
  auto* details =
      button(u"cmm_kjqk"_s, u"详细开奖情况查询"_s, u"在浏览器中查看一期的开奖详情"_s, &HistoryPanel::detailsWanted);
  row->addWidget(details);
  connect(&ports_.busy, &BusyState::changed, details, [this, details](bool busy) {
    details->setHidden(busy && clearFilter_->isVisible());  // the bar finds no room beside a search
  });
  row->addSpacing(fontMetrics().height());
  row->addWidget(button(u"CmmSousuo"_s, u"搜索记录"_s, u"显示查找行"_s, &HistoryPanel::searchRecords));
  filterBegin_ = button(u"filterBegin"_s, u"搜索"_s, u"按查找行的条件显示记录"_s, &HistoryPanel::runSearch);
  clearFilter_ = button(u"cmdClearFilter"_s, u"清空查找"_s, u"清空查找行，显示全部记录"_s, &HistoryPanel::endSearch);
  row->addWidget(filterBegin_);
  row->addWidget(clearFilter_);
  filterBegin_->setEnabled(false);
  filterBegin_->hide();
  clearFilter_->hide();
  for (const QRadioButton* mode : historyMode_)  // also the one that is selected: it ends a search
    connect(mode, &QRadioButton::clicked, this,
            [this] { withFaultBox(ports_.boxes, [this] { layoutHistoryGrid(); }); });
  connect(dataMode_[1], &QRadioButton::toggled, this, [this](bool chart) { views_->setCurrentIndex(chart ? 1 : 0); });
  return frame;
}

QWidget* HistoryPanel::buildViews() {
  views_ = new QStackedWidget(this);
  grid_ = new HistoryGrid(gConn_, ports_.boxes, views_);
  connect(&ports_.busy, &BusyState::changed, grid_, &HistoryGrid::setBusy);
  connect(grid_, &HistoryGrid::filterEdited, this, &HistoryPanel::filterEdited);
  connect(grid_, &HistoryGrid::filterSubmitted, filterBegin_, &QPushButton::click);
  connect(grid_, &HistoryGrid::cellEdited, this, [this] { withFaultBox(ports_.boxes, [this] { viewsChanged(); }); });

  auto* chart = new QLabel(u"号码分布图尚未开放，请选择“数据”查看开奖记录。"_s, views_);
  chart->setObjectName(u"TDBGrid_FenBu"_s);
  chart->setAlignment(Qt::AlignCenter);
  chart->setEnabled(false);
  views_->addWidget(grid_);
  views_->addWidget(chart);
  return views_;
}

void HistoryPanel::layoutHistoryGrid() {
  grid_->showHistoryMode(!historyMode_[0]->isChecked());
}

void HistoryPanel::layoutColumns() {
  grid_->layoutColumns();
}

void HistoryPanel::selectHistoryMode(bool all) {
  historyMode_[all ? 1 : 0]->setChecked(true);
  layoutHistoryGrid();
}

void HistoryPanel::selectDataMode(bool chart) {
  QRadioButton* mode = dataMode_[chart ? 1 : 0];
  if (mode->isEnabledTo(mode->parentWidget()))
    mode->setChecked(true);
}

Progress& HistoryPanel::derivationProgress() {
  return progress_->derivation();
}

void HistoryPanel::recountZones(Qihao first, Qihao last) {
  const BusyScope busy(ports_.busy);
  // A fault leaves the rows before it counted: the grid comes back with them.
  const auto showAgain = qScopeGuard([this] {
    grid_->refresh();
    grid_->show();
  });
  InPlaceOf progress(*grid_, progress_->derivation());
  recalcQujian(gConn_, first, last, ports_.boxes, progress, ports_.events);
}

void HistoryPanel::focusEntry() {
  entry_[1]->setFocus();
}

void HistoryPanel::offerNextPeriod() {
  const Qihao next = getNextQihao(gConn_);
  entry_[0]->setText(next > 0 ? QString::number(next) : QString());
}

void HistoryPanel::tableChanged() {
  layoutHistoryGrid();
  viewsChanged();
}

void HistoryPanel::viewsChanged() {
  offerNextPeriod();
  Q_EMIT historyChanged();
}

void HistoryPanel::showWritten(Qihao period) {
  // The grid of all draws takes the one row; reading 100,000 keys again would be felt.
  if (historyMode_[1]->isChecked() && !grid_->filterIsOpen()) {
    grid_->showWritten(period);
    viewsChanged();
    return;
  }
  tableChanged();
}

void HistoryPanel::addDraw() {
  HistoryEntry row{entry_[0]->text(), {}};
  for (std::size_t i = 0; i < row.numbers.size(); ++i)
    row.numbers[i] = entry_[i + 1]->text();
  const HistoryEntryCheck verdict = checkHistoryInput(row);
  for (std::size_t i = 0; i < row.numbers.size(); ++i)
    entry_[i + 1]->setText(verdict.writeBack[i]);
  if (!verdict.valid) {
    ports_.boxes.critical(historyEntryRefusal());
    slide_->start();
    focusEntry();
    return;
  }
  withFaultBox(ports_.boxes, [&] {
    try {
      addHistoryRecord(gConn_, verdict.qihao, QDate::currentDate(), verdict.numbers, true);
    } catch (const Error&) {  // the draw may be stored all the same
      layoutHistoryGrid();
      Q_EMIT historyChanged();
      throw;
    }
    showWritten(verdict.qihao);
    for (std::size_t i = 1; i < entry_.size(); ++i)
      entry_[i]->clear();
    focusEntry();
  });
}

void HistoryPanel::importText() {
  const KeptFocus focus(*window());
  bool shown = false;
  {
    const BusyScope busy(ports_.busy);  // over the dialog too: a wish to close from the clearing waits behind it
    if (clearBeforeImport(gConn_, ports_.boxes, ports_.events)) {
      tableChanged();
      Q_EMIT drawsDeleted();
    }
    const QString path = ports_.files.openFile(u"导入历史数据"_s, u"文本文件 (*.txt);;所有文件 (*)"_s);
    if (path.isEmpty())
      return;
    progress_->begin(ImportProgress::Stop::offered);
    withFaultBox(ports_.boxes, [&] {
      importHistoryText(gConn_, path, true,
                        {ports_.boxes, *progress_, progress_->derivation(), ports_.events, &ports_.panels, [&] {
                           layoutHistoryGrid();
                           shown = true;
                         }});
    });
  }
  if (shown)
    viewsChanged();
}

void HistoryPanel::exportText() {
  const KeptFocus focus(*window());
  const QString path = programFolder_ + u"/daocuTemp.txt"_s;
  int rows = 0;
  {
    const BusyScope busy(ports_.busy);
    progress_->begin(ImportProgress::Stop::none);
    rows = exportHistoryText(gConn_, path, *progress_, ports_.events);
  }
  if (rows > 0)
    ports_.texts.showText(u"历史开奖数据"_s, decodeText(readFileText(path)).remove(u'\r'));
}

void HistoryPanel::deletePeriod() {
  if (!deleteAskedRecord(gConn_, ports_.inputs, ports_.boxes, [this] { layoutHistoryGrid(); }))
    return;
  viewsChanged();
  Q_EMIT drawsDeleted();
}

void HistoryPanel::clearHistory() {
  const KeptFocus focus(*window());
  const BusyScope busy(ports_.busy);
  if (!clearAskedHistory(gConn_, ports_.boxes, ports_.events, [this] { layoutHistoryGrid(); }))
    return;
  tableChanged();
  Q_EMIT drawsDeleted();
}

void HistoryPanel::chooseGame() {
  Q_EMIT gameChooserWanted(findChild<QPushButton*>(u"newBtnHistory_7"_s));
}

void HistoryPanel::searchRecords() {
  grid_->clearFilter();
  ports_.boxes.plain(u"请在表格中最顶一行空白处相应项目栏输入条件值，然后点击“搜索”按钮！"_s);
  selectDataMode(false);
  grid_->openFilter();
  filterBegin_->show();
  clearFilter_->show();
}

void HistoryPanel::filterEdited() {
  if (!filterExplained_) {
    filterExplained_ = true;
    ports_.boxes.plain(u"通过输入相应项目的值(允许只输入一个或者多个条件)来搜索符合条件的记录!"_s);
  }
  filterBegin_->setEnabled(true);
}

void HistoryPanel::runSearch() {
  filterBegin_->setEnabled(false);
  if (grid_->showFound())
    return;
  closeFilterRow();
  selectHistoryMode(false);
}

void HistoryPanel::endSearch() {
  closeFilterRow();
  layoutHistoryGrid();
}

void HistoryPanel::closeFilterRow() {
  grid_->closeFilter();
  filterBegin_->hide();
  clearFilter_->hide();
  filterBegin_->setEnabled(false);
}

}  // namespace elevenfive
