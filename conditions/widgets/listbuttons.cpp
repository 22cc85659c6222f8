#include "conditions/widgets/listbuttons.h"

#include <QPushButton>

#include "conditions/widgets/chiplist.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

QPushButton* listButton(const ChipList& list, const QString& prefix, const QString& caption, const QString& tip) {
  auto* button = new QPushButton(caption, list.parentWidget());
  button->setObjectName(prefix + list.objectName());
  button->setAccessibleName(tip);
  button->setToolTip(tip);
  button->setProperty("small", true);
  return button;
}

}  // namespace

std::array<QPushButton*, 3> listButtons(ChipList& list) {
  QPushButton* all = listButton(list, u"cmmAll_"_s, u"全选"_s, u"允许全部取值"_s);
  QPushButton* invert = listButton(list, u"cmmInvert_"_s, u"反选"_s, u"允许与不允许互换"_s);
  QPushButton* none = listButton(list, u"cmmNone_"_s, u"清空"_s, u"不允许任何取值"_s);
  QObject::connect(all, &QPushButton::clicked, &list, &ChipList::selectAll);
  QObject::connect(invert, &QPushButton::clicked, &list, &ChipList::invertSelection);
  QObject::connect(none, &QPushButton::clicked, &list, &ChipList::clearSelection);
  return {all, invert, none};
}

}  // namespace elevenfive
