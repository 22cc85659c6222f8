#include "shell/widgets/statusline.h"

#include <QDate>
#include <QLabel>
#include <QStatusBar>

#include "acquire/versionnotice.h"
#include "history/statusline.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

StatusLine::StatusLine(QStatusBar& bar) {
  bar.setObjectName(u"StatusBar"_s);
  for (std::size_t i = 1; i < panels_.size(); ++i) {
    panels_[i] = new QLabel(&bar);
    panels_[i]->setObjectName(u"StatusBar_%1"_s.arg(i));
    panels_[i]->setAccessibleName(u"状态栏 %1"_s.arg(i));
    bar.addWidget(panels_[i], static_cast<int>(i) == runningPass ? 1 : 0);
  }
  auto* version = new QLabel(u"版本 "_s + programVersion(), &bar);
  version->setObjectName(u"Text1_1"_s);
  version->setAccessibleName(u"版本"_s);
  bar.addPermanentWidget(version);
}

void StatusLine::setPanel(int panel, const QString& text) {
  panels_.at(static_cast<std::size_t>(panel))->setText(text);
}

void StatusLine::update(Store& store) {
  updateStatusLine(store, *this, QDate::currentDate());
}

}  // namespace elevenfive
