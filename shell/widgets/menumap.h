// The menu bar as a table: each entry selects its page, then does what a control of that page does.
#pragma once

#include <QStringView>
#include <array>

namespace elevenfive {

enum class MenuAction {
  exit,
  historyEntry,     ///< first page, a box, the focus in the first number field
  historyDataMode,  ///< argument: Option_TorD
  historyRange,     ///< argument: OptionHistoryMode
  conditionTab,     ///< argument: tab of TabStrip_TiaoJian, modulo 100
  parityPage,       ///< the panel paicu
  restoreDefaults,
  exportConditions,
  importConditions,
  zonePage,       ///< the panel in which the zones are drawn anew
  historyUpdate,  ///< draws from the web
  sources,        ///< the addresses of the web
  run,            ///< argument: index of cmmTouZhu
  switchUser,
};

struct Menu {
  QStringView name;
  QStringView caption;
};

inline constexpr std::array<Menu, 7> menus{{{u"mnu_File", u"文件(&F)"},
                                            {u"mnu_History", u"1.历史数据(&D)"},
                                            {u"mnu_GuoLuTiaoJian", u"2.过滤条件(&T)"},
                                            {u"mnu_TouZhu", u"3.生成投注号(&N)"},
                                            {u"mnu_Else", u"其它(&E)"},
                                            {u"mnu_Help", u"帮助(&H)"},
                                            {u"mnu_User", u"用户(&U)"}}};

struct MenuEntry {
  QStringView menu;
  QStringView name;
  int index;  ///< -1: not an element of an array
  QStringView caption;
  MenuAction action;
  int argument;
  bool separatorBefore = false;
};

inline constexpr std::array menuEntries{
    MenuEntry{u"mnu_File", u"mnu_Exit", -1, u"退出(&X)", MenuAction::exit, 0},
    MenuEntry{u"mnu_History", u"mnu_InputKaiJian", -1, u"手工录入开奖数据", MenuAction::historyEntry, 0},
    MenuEntry{u"mnu_History", u"mnu_AutoUpdate", -1, u"下载最新开奖数据", MenuAction::historyUpdate, 0},
    MenuEntry{u"mnu_History", u"mnu_HistoryTubiao", -1, u"图表模式显示", MenuAction::historyDataMode, 1, true},
    MenuEntry{u"mnu_History", u"mnu_HistoryData", -1, u"数据模式显示", MenuAction::historyDataMode, 0},
    MenuEntry{u"mnu_History", u"mnu_HistoryShowAll", -1, u"显示全部记录", MenuAction::historyRange, 1, true},
    MenuEntry{u"mnu_History", u"mnu_HistoryShow100", -1, u"只显示最近100期", MenuAction::historyRange, 0},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_TiaojianChoseNumber", -1, u"选取号码...", MenuAction::conditionTab, 1},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 2, u"和值...", MenuAction::conditionTab, 2, true},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 3, u"奇数和值...", MenuAction::conditionTab, 3},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 4, u"偶数和值...", MenuAction::conditionTab, 4},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 11, u"奇偶比...", MenuAction::conditionTab, 11},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 12, u"大小比...", MenuAction::conditionTab, 12},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 13, u"高低尾码...", MenuAction::conditionTab, 13},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 105, u"跨度...", MenuAction::conditionTab, 105, true},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 106, u"最大间距...", MenuAction::conditionTab, 106},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 107, u"连号...", MenuAction::conditionTab, 107},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 110, u"A C 值...", MenuAction::conditionTab, 110},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 208, u"重叠号...", MenuAction::conditionTab, 208, true},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 209, u"斜位码...", MenuAction::conditionTab, 209},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 214, u"区间设置...", MenuAction::conditionTab, 214},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 215, u"定位过滤...", MenuAction::conditionTab, 215},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 223, u"历史数据过滤...", MenuAction::conditionTab, 223},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 316, u"尾数设置...", MenuAction::conditionTab, 316, true},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 317, u"头数设置...", MenuAction::conditionTab, 317},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 318, u"头数和值...", MenuAction::conditionTab, 318},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 319, u"尾数和值...", MenuAction::conditionTab, 319},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 320, u"温度值5", MenuAction::conditionTab, 320},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 321, u"温度值10", MenuAction::conditionTab, 321},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_Tiaojian", 322, u"自定义条件...", MenuAction::conditionTab, 322},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"paicu", -1, u"排除特定的单双组合", MenuAction::parityPage, 0},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_TiaojianShuosui", -1, u"缩水设置...", MenuAction::conditionTab, 24, true},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"huanyuan", -1, u"全部还原为默认值", MenuAction::restoreDefaults, 0, true},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"daocu", -1, u"导出过滤条件...", MenuAction::exportConditions, 0},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"daoru", -1, u"导入过滤条件...", MenuAction::importConditions, 0},
    MenuEntry{u"mnu_GuoLuTiaoJian", u"mnu_TiaojianView", -1, u"查看全部设置情况", MenuAction::conditionTab, 25, true},
    MenuEntry{u"mnu_TouZhu", u"mnu_ShengCeng", 0, u"初始化...", MenuAction::run, 0},
    MenuEntry{u"mnu_TouZhu", u"mnu_ShengCeng", 1, u"过滤缩水", MenuAction::run, 1},
    MenuEntry{u"mnu_TouZhu", u"mnu_ShengCeng", 2, u"精选号码", MenuAction::run, 2},
    MenuEntry{u"mnu_TouZhu", u"mnu_ShengCeng", 3, u"号码导出", MenuAction::run, 3},
    MenuEntry{u"mnu_TouZhu", u"mnu_ShengCeng", 4, u"号码导入", MenuAction::run, 4},
    MenuEntry{u"mnu_TouZhu", u"mnu_ShengCeng", 5, u"删除记录", MenuAction::run, 5},
    MenuEntry{u"mnu_TouZhu", u"mnu_ShengCeng", 6, u"开奖核对", MenuAction::run, 6},
    MenuEntry{u"mnu_Else", u"mnu_newQuJian", -1, u"重新划分区间...", MenuAction::zonePage, 0},
    MenuEntry{u"mnu_Else", u"mnu_Sources", -1, u"数据源设置...", MenuAction::sources, 0, true},
    MenuEntry{u"mnu_User", u"mnu_UserQiehuan", -1, u"切换用户", MenuAction::switchUser, 0},
};

}  // namespace elevenfive
