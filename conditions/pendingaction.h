// What a secondary form asks the main window to do once it is active again: a code is left, the form closes, the main window
// does it and sets the code back to 0.
#pragma once

#include <QStringView>
#include <span>

namespace elevenfive {

enum class PendingTarget {
  exportConditions,
  importConditions,
  restoreDefaults,
  tab,             ///< a tab of the condition panel
  parityPanel,     ///< paicu
  reductionPanel,  ///< the panel of mnu_TiaojianShuosui
  historyUpdate,   ///< draws from the web
};

/// A button that leaves a code. The four 间距 buttons lead to the tabs given here, which are not those of their captions.
struct PendingAction {
  int code = 0;
  QStringView control;  ///< name of the button or of its array
  int index = -1;       ///< in the array; -1: no array
  QStringView caption;
  PendingTarget target = PendingTarget::tab;
  int tab = 0;  ///< of the condition panel, for PendingTarget::tab
};

inline constexpr PendingAction pendingActions[] = {
    {1, u"cmmDaocutj", 0, u"导出...", PendingTarget::exportConditions},
    {2, u"cmmDaocutj", 1, u"导入...", PendingTarget::importConditions},
    {3, u"cmmDaocutj", 2, u"所有条件全部还原为默认值", PendingTarget::restoreDefaults},
    {4, u"cmmQitatj", 0, u"连号设置...", PendingTarget::tab, 7},
    {5, u"cmmQitatj", 1, u"头数形式...", PendingTarget::tab, 17},
    {6, u"cmmQitatj", 2, u"尾数形式...", PendingTarget::tab, 16},
    {7, u"cmmQitatj", 3, u"间距七...", PendingTarget::tab, 18},
    {8, u"cmmQitatj", 4, u"间距九...", PendingTarget::tab, 17},
    {9, u"cmmQitatj", 5, u"间距十一...", PendingTarget::tab, 19},
    {10, u"cmmQitatj", 6, u"间距十二...", PendingTarget::tab, 20},
    {11, u"cmmQitatj", 7, u"历史数据过滤...", PendingTarget::tab, 23},
    {12, u"cmmQitatj", 8, u"自定义过滤条件...", PendingTarget::tab, 22},
    {13, u"cmmQitatj", 9, u"排除特定单双组合", PendingTarget::parityPanel},
    {14, u"cmmQitatj", 10, u"缩水设置...", PendingTarget::reductionPanel},
    {15, u"cmmQitatj", 11, u"定位过滤...", PendingTarget::tab, 15},
    {16, u"cmdOK", -1, {}, PendingTarget::historyUpdate},
};

/// Stands under the cmmQitatj buttons.
inline constexpr QStringView pendingNote = u"注：点击按钮可以打开相应的详细设置页面进行设置。";

/// The action of a code; nullptr for 0 and codes that do not exist.
constexpr const PendingAction* pendingActionOf(int code) {
  for (const PendingAction& action : pendingActions)
    if (action.code == code)
      return &action;
  return nullptr;
}

}  // namespace elevenfive
