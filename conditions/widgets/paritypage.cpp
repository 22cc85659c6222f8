#include "conditions/widgets/paritypage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include "conditions/conditionpanel.h"
#include "conditions/widgets/changestored.h"
#include "conditions/widgets/wheelguard.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

ParityPage::ParityPage(Store& gConn, ConditionPanel& panel, Boxes& boxes, QWidget* parent)
    : QFrame(parent), panel_(panel), boxes_(boxes), parity_(gConn, panel) {
  setObjectName(u"Frame1_pcMain"_s);
  auto* title = new QLabel(u"排除特定的单双组合"_s, this);
  title->setProperty("heading", true);
  auto* card = new QFrame(this);
  card->setProperty("card", true);
  auto* grid = new QGridLayout(card);
  for (int column = 1; column <= parityColumnCount; ++column) {
    auto* head = new QLabel(u"号码%1"_s.arg(column), card);
    head->setProperty("note", true);
    head->setAlignment(Qt::AlignCenter);
    grid->addWidget(head, 0, column);
  }
  for (int row = 0; row < parityRowCount; ++row)
    buildRow(row, *grid);
  grid->setColumnStretch(parityColumnCount + 1, 1);
  auto* help = new QLabel(parityHelp.toString(), this);
  help->setProperty("note", true);
  help->setTextFormat(Qt::PlainText);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(title);
  layout->addWidget(card);
  layout->addWidget(help);
  layout->addStretch(1);
}

void ParityPage::buildRow(int row, QGridLayout& grid) {
  const auto r = static_cast<std::size_t>(row);
  checks_[r] = new QCheckBox(this);
  checks_[r]->setObjectName(u"Check1_paicu_%1"_s.arg(row));
  grid.addWidget(checks_[r], row + 1, 0);
  connect(checks_[r], &QCheckBox::toggled, this, [this, row](bool checked) {
    if (!panel_.loadingPanel)
      changeAndShow(
          boxes_, [&] { parity_.clickRow(row, checked); }, [this] { showStored(); });
    Q_EMIT changed();
  });
  for (int column = 1; column <= parityColumnCount; ++column) {
    auto* signs = new QComboBox(this);
    passWheelOn(*signs);
    signs->setObjectName(u"Combo1_dansuang_%1"_s.arg(row * 10 + column));
    signs->setAccessibleName(row == 0 ? u"上一期 号码%1 的单双"_s.arg(column)
                                      : u"排除%1 号码%2 的单双"_s.arg(row).arg(column));
    for (std::size_t i = 0; i < std::size(parityItems); ++i)
      signs->addItem(parityItems[i].toString(), parityItemValues[i]);
    grid.addWidget(signs, row + 1, column);
    connect(signs, &QComboBox::currentIndexChanged, this, [this, row, column, signs] {
      if (panel_.loadingPanel)
        return;
      changeAndShow(  // the choice has ticked the row's box
          boxes_, [&] { parity_.choose(row, column, signs->currentData().toInt()); }, [this] { showStored(); });
      Q_EMIT changed();
    });
    signs_[r][static_cast<std::size_t>(column - 1)] = signs;
  }
  patterns_[r] = new QLabel(this);
  patterns_[r]->setObjectName(u"Label_paicu_%1"_s.arg(row));
  patterns_[r]->setTextFormat(Qt::PlainText);
  grid.addWidget(patterns_[r], row + 1, parityColumnCount + 1);
}

void ParityPage::open() {
  changeAndShow(
      boxes_, [this] { parity_.open(); }, [this] { showStored(); });
}

void ParityPage::showStored() {
  const QScopedValueRollback loading(panel_.loadingPanel, true);
  const auto rows = parity_.rows();
  for (std::size_t row = 0; row < rows.size(); ++row) {
    checks_[row]->setText(rows[row].caption);
    checks_[row]->setAccessibleName(rows[row].caption);
    checks_[row]->setChecked(rows[row].checked);
    patterns_[row]->setText(rows[row].pattern);
    for (std::size_t column = 0; column < rows[row].values.size(); ++column)
      signs_[row][column]->setCurrentIndex(signs_[row][column]->findData(rows[row].values[column]));
  }
}

}  // namespace elevenfive
