#include "engine/rundriver.h"

#include <array>

#include "engine/analysis.h"
#include "engine/conditionvalues.h"
#include "engine/drawcheck.h"
#include "engine/expansion.h"
#include "engine/pipeline.h"
#include "engine/rizhi.h"
#include "model/errors.h"
#include "model/navigators.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

std::span<const RunButton> RunDriver::buttons() {
  static constexpr std::array<RunButton, 7> rows = {{
      {u"第一步：初始化", u"第一步：展开所选号码的全部组合", &RunDriver::expandClicked},
      {u"第二步：过滤缩水", u"第二步：按照设定的条件过滤", &RunDriver::runClicked},
      {u"精选号码", u"", &RunDriver::analyseClicked},
      {u"导出", u"", &RunDriver::exportClicked},
      {u"导入", u"", &RunDriver::importClicked},
      {u"删除", u"", &RunDriver::deleteClicked},
      {u"开奖核对", u"", &RunDriver::checkClicked},
  }};
  return rows;
}

RunDriver::RunDriver(Store& gConn, const RunPorts& ports) : gConn_(gConn), ports_(ports) {}

void RunDriver::cmmTouZhu_Click(int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= buttons().size())
    return;
  const auto action = buttons()[static_cast<std::size_t>(index)].action;
  if (action == nullptr)
    return;
  const RunContext run = context();
  const PanelHold hold(run);
  try {
    (this->*action)();
  } catch (const Error& fault) {
    ports_.boxes.critical(fault.message());
  }
}

/// The period of the grid's current row, else the next one.
QString RunDriver::defaultPeriod() {
  const Qihao current = ports_.view.currentQihao().value_or(0);
  return QString::number(current >= 1 ? current : getNextQihao(gConn_));
}

Qihao RunDriver::askPeriod(const QString& prompt, const QString& defaultText) {
  return inputNumber(ports_.inputs.askText({{}, prompt, defaultText}));
}

void RunDriver::expandClicked() {
  const Qihao period =
      askPeriod(u"[注意,只需要输入8位数字(如,11041510)的期号！]\r\n\r\n请输入你要过滤或者要核对的期号："_s,
                QString::number(getNextQihao(gConn_)));
  const DisabledWhile userMenu(ports_.controls, ControlId::mnu_UserQiehuan);
  deleteRizhi(0);
  initXuanhao(period);
}

void RunDriver::runClicked() {
  const Qihao period = askPeriod(u"要过滤哪期的号码 ？"_s, defaultPeriod());
  const QString prompt = ports_.view.rongcuoTipCaption() +
                         u"\r\n\r\n（范围在 0-%1之间，建议在２以内，推荐设为０）"_s.arg(countRongcuoTiaojian() - 1);
  state_.rongcuoValue = inputNumber(ports_.inputs.askText({u"过滤条件容错设置"_s, prompt, u"0"_s}));
  runGuolvSuoshui(period);
}

void RunDriver::deleteClicked() {
  const Answer answer =
      ports_.boxes.show({BoxKind::question, {}, u"确认要删除全部记录吗？"_s, BoxButtons::okCancel, true});
  if (answer == Answer::no)
    return;
  deleteRizhi(0);
  ports_.boxes.plain(u"删除记录完成！"_s);
}

void RunDriver::analyseClicked() {
  const Qihao period = askPeriod(u"要精选哪期的号码 ？"_s, defaultPeriod());
  const int wanted = inputNumber(ports_.inputs.askText({{}, u"要精选出多少注 ？"_s, u"5"_s}));
  if (wanted > 0)
    analyseHaoma(context(), period, wanted);
}

void RunDriver::exportClicked() {
  if (ports_.dialogs != nullptr && !exportRizhi(context(), *ports_.dialogs, exportSettings_, u"daocuTemp.txt"_s))
    ports_.boxes.plain(u"表格中没有该期的号码！"_s);
}

void RunDriver::importClicked() {
  if (ports_.dialogs == nullptr)
    return;
  const QString path = ports_.dialogs->askOpenFile();
  if (path.isEmpty())
    return;
  const std::optional<int> count = importRizhi(context(), *ports_.dialogs, importSettings_, path);
  if (!count)
    return;
  const QString text = u"数据导入完成，共导入："_s + toQuanjiaoDigits(*count) + u" 注！"_s;
  ports_.boxes.plain(text);
  addStatusLine(context(), text);
  showRizhiGrid();
}

void RunDriver::checkClicked() {
  const QString typed = ports_.inputs.askText({{}, u"您要核对哪期的数据?"_s, defaultPeriod()});
  if (!typed.isEmpty() && checkKaijiang(context(), inputNumber(typed)))
    ports_.boxes.plain(u"开奖核对完成,结果请查看右边的操作提示！"_s);
}

int RunDriver::initXuanhao(Qihao period) {
  return elevenfive::initXuanhao(context(), period);
}

bool RunDriver::checkHaomaXuanqu(bool showMessage) {
  return elevenfive::checkHaomaXuanqu(context(), showMessage);
}

void RunDriver::showXuanhaoTip() {
  elevenfive::showXuanhaoTip(context());
}

int RunDriver::countTuoma() {
  return elevenfive::countTuoma(gConn_);
}

int RunDriver::countDanma() {
  return elevenfive::countDanma(gConn_);
}

bool RunDriver::resetRizhiBiaoji(Qihao period) {
  return elevenfive::resetRizhiBiaoji(context(), period);
}

void RunDriver::runGuolvSuoshui(Qihao period) {
  elevenfive::runGuolvSuoshui(context(), period);
}

int RunDriver::countRongcuoTiaojian() {
  return elevenfive::countRongcuoTiaojian(gConn_);
}

void RunDriver::loadTiaojianValues(int first, int last) {
  elevenfive::loadTiaojianValues(gConn_, state_, first, last);
}

void RunDriver::fillTiaojianValues(int first, int last, int value) {
  elevenfive::fillTiaojianValues(gConn_, first, last, value);
}

void RunDriver::showRizhiGrid() {
  ports_.view.showRizhiGrid();
}

void RunDriver::deleteRizhi(Qihao period) {
  elevenfive::deleteRizhi(context(), period);
}

void RunDriver::showTip(const QString& text, bool append) {
  elevenfive::showTip(context(), text, append);
}

}  // namespace elevenfive
