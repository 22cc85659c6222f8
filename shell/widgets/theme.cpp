#include "shell/widgets/theme.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QProxyStyle>
#include <QString>
#include <QStringList>

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

QPalette calmPalette() {
  QPalette palette;
  const QColor ink(0x1F2933);
  palette.setColor(QPalette::Window, QColor(0xF4F6F8));
  palette.setColor(QPalette::WindowText, ink);
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::AlternateBase, QColor(0xF3F7FB));
  palette.setColor(QPalette::Text, ink);
  palette.setColor(QPalette::Button, QColor(0xEDF0F3));
  palette.setColor(QPalette::ButtonText, ink);
  palette.setColor(QPalette::Mid, QColor(0xC3CCD5));
  palette.setColor(QPalette::Highlight, QColor(0x2B6CB0));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::PlaceholderText, QColor(0x7B8794));
  palette.setColor(QPalette::ToolTipBase, Qt::white);
  palette.setColor(QPalette::ToolTipText, ink);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor(0x9AA5B1));
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0xA9BFD6));
  return palette;
}

/// Shapes by property: headings, notes, cards, primary and small buttons; sizes in the font's own units.
constexpr QStringView shapes =
    uR"(
QLabel[heading="true"] { font-weight: bold; font-size: 11.5pt; }
QLabel[note="true"] { color: #616E7C; }
QFrame[card="true"] { background: palette(base); border: 1px solid #D8DEE4; border-radius: 6px; }
QPushButton { padding: 0.35em 0.9em; border: 1px solid #C3CCD5; border-radius: 4px; background: palette(base); }
QPushButton:hover { background: #EAF1F8; }
QPushButton:pressed { background: #D6E4F2; }
QPushButton:default, QPushButton:focus { border: 1px solid palette(highlight); }
QPushButton:checked { color: white; background: palette(highlight); border-color: palette(highlight); }
QPushButton:checked:focus { border: 1px solid #1F2933; }
QPushButton:disabled { color: #9AA5B1; background: palette(window); border-color: #C3CCD5; }
QPushButton[small="true"] { padding: 0.15em 0.7em; }
QPushButton[primary="true"] { color: white; background: palette(highlight); border-color: palette(highlight); }
QPushButton[primary="true"]:hover { background: #3A7BBF; }
QPushButton[primary="true"]:pressed { background: #245A93; }
QPushButton[primary="true"]:focus { border: 1px solid #1F2933; }
QPushButton[primary="true"]:disabled { background: #A9BFD6; border-color: #A9BFD6; }
QTabBar#TabStrip_Top { background: palette(window); }
QTabBar#TabStrip_Top::tab { padding: 0.5em 1.2em; margin-bottom: 4px; border-top: 3px solid palette(window); border-left: 3px solid palette(window); border-right: 3px solid palette(window); border-bottom: 3px solid palette(window); }
QTabBar#TabStrip_Top::tab:selected { color: #2B6CB0; font-weight: bold; border-top: 3px solid palette(window); border-left: 3px solid palette(window); border-right: 3px solid palette(window); border-bottom: 3px solid #2B6CB0; }
QTabBar#TabStrip_Top::tab:hover:!selected { background: #EAF1F8; }
QTabBar#TabStrip_Top::tab:selected:focus { background: #EAF1F8; }
QTabBar[modes="true"]::tab { padding: 0.35em 1.4em; border: 1px solid #C3CCD5; background: palette(base); }
QTabBar[modes="true"]::tab:selected { color: white; background: palette(highlight); border-color: palette(highlight); }
QTabBar[modes="true"]::tab:selected:focus { border: 2px solid #1F2933; }
QLineEdit, QPlainTextEdit, QListWidget, QTableView { border: 1px solid #D8DEE4; border-radius: 4px; background: palette(base); }
QListWidget[plain="true"] { border: 1px solid transparent; }
QListWidget[plain="true"]:focus { border: 1px solid transparent; }
QLineEdit { padding: 0.25em 0.2em; }
QLineEdit:focus, QPlainTextEdit:focus, QListWidget:focus, QTableView:focus { border: 1px solid palette(highlight); }
QHeaderView::section { background: #EDF0F3; border: none; border-right: 1px solid #D8DEE4; border-bottom: 1px solid #D8DEE4; padding: 0.3em 0.4em; }
QStatusBar { border-top: 1px solid #D8DEE4; }
QStatusBar::item { border: none; }
)";

/// The style with dialog buttons that bear no icons: their captions say it.
class CalmStyle final : public QProxyStyle {
 public:
  CalmStyle() : QProxyStyle(u"Fusion"_s) {}
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
  }
};

}  // namespace

void applyTheme(QApplication& application) {
  QApplication::setStyle(new CalmStyle);
  QFont font = QApplication::font();
  font.setFamilies(
      {u"Noto Sans CJK SC"_s, u"Source Han Sans SC"_s, u"WenQuanYi Micro Hei"_s, u"Microsoft YaHei"_s, font.family()});
  font.setPointSizeF(10);
  QApplication::setFont(font);
  QApplication::setPalette(calmPalette());
  application.setStyleSheet(shapes.toString());
}

}  // namespace elevenfive
