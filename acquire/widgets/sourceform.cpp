#include "acquire/widgets/sourceform.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <vector>

#include "acquire/addresstester.h"
#include "acquire/catalogue.h"
#include "acquire/sources.h"
#include "model/ports.h"
#include "model/store.h"
#include "model/widgets/faultbox.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr int fieldCharacters = 56;

class SourceForm final : public QDialog {
 public:
  SourceForm(Store& store, Boxes& boxes, AddressTester& tester, QWidget* parent)
      : QDialog(parent), store_(store), boxes_(boxes), tester_(tester) {
    setObjectName(u"frmSource"_s);
    setWindowTitle(u"数据源"_s);
    auto* layout = new QVBoxLayout(this);
    auto* note = new QLabel(u"地址中的 %1 代表省份的简称，下载时换成所选彩种的省份。"_s.arg(provincePlace));
    note->setProperty("note", true);
    layout->addWidget(note);
    for (const SourceKind& kind : sourceKinds)
      addSource(*layout, kind);
    addButtons(*layout);
    withFaultBox(boxes_, [this] {
      for (Row& row : rows_) {
        row.stored = sourceAddress(store_, row.kind.name);
        row.address->setText(row.stored);
      }
    });
  }

 private:
  struct Row {
    SourceKind kind;
    QLineEdit* address;
    QPushButton* test;
    QLabel* outcome;
    QString stored;
  };

  void addSource(QVBoxLayout& layout, const SourceKind& kind) {
    const auto index = static_cast<int>(rows_.size());
    auto* heading = new QLabel(u"%1：%2"_s.arg(kind.name, kind.purpose), this);
    auto* address = new QLineEdit(this);
    address->setObjectName(u"Text_address_%1"_s.arg(index));
    address->setAccessibleName(kind.name.toString());
    address->setMaxLength(longestAddress);
    address->setMinimumWidth(fontMetrics().averageCharWidth() * fieldCharacters);
    heading->setBuddy(address);
    auto* test = new QPushButton(u"测试"_s, this);
    test->setObjectName(u"cmm_test_%1"_s.arg(index));
    test->setAccessibleName(u"测试%1"_s.arg(kind.name));
    test->setToolTip(u"看看服务器有没有答复"_s);
    test->setAutoDefault(false);
    auto* outcome = new QLabel(this);
    outcome->setObjectName(u"Label_outcome_%1"_s.arg(index));
    outcome->setTextFormat(Qt::PlainText);
    outcome->setProperty("note", true);
    auto* line = new QHBoxLayout;
    line->addWidget(address, 1);
    line->addWidget(test);
    layout.addSpacing(fontMetrics().height() / 2);
    layout.addWidget(heading);
    layout.addLayout(line);
    layout.addWidget(outcome);
    rows_.push_back({kind, address, test, outcome, {}});
    connect(test, &QPushButton::clicked, this, [this, index] { testAddress(rows_[static_cast<std::size_t>(index)]); });
    connect(address, &QLineEdit::textEdited, outcome, &QLabel::clear);
  }

  void addButtons(QVBoxLayout& layout) {
    auto* ok = new QPushButton(u"确 定"_s, this);
    ok->setObjectName(u"cmdOK"_s);
    ok->setDefault(true);
    auto* cancel = new QPushButton(u"取 消"_s, this);
    cancel->setObjectName(u"cmdCancel"_s);
    cancel->setAutoDefault(false);
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(ok);
    row->addWidget(cancel);
    layout.addSpacing(fontMetrics().height() / 2);
    layout.addLayout(row);
    connect(ok, &QPushButton::clicked, this, [this] { save(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  }

  /// One test at a time: a new one takes the place of the one that runs.
  void testAddress(Row& row) {
    for (const Row& other : rows_)
      if (other.outcome->text() == testing)
        other.outcome->clear();
    QString address = row.address->text().trimmed();
    QString province;
    withFaultBox(boxes_, [&] { province = provinceOf(Catalogue(store_).getLotteryName()); });
    if (address.contains(provincePlace) && province.isEmpty()) {
      row.outcome->setText(u"当前彩种所在的省份没有网页，请先选择别的彩种再测试。"_s);
      return;
    }
    row.outcome->setText(testing);
    tester_.test(address.replace(provincePlace.toString(), province),
                 [outcome = row.outcome](const QString& sentence) { outcome->setText(sentence); });
  }

  void save() {
    for (const Row& row : rows_) {
      const QString address = row.address->text().trimmed();
      if (address.isEmpty() || address == row.stored || isWebAddress(address))
        continue;
      boxes_.critical(u"“%1”的地址不正确，要以 http:// 或 https:// 开头。"_s.arg(row.kind.name));
      row.address->setFocus();
      return;
    }
    const bool stored = withFaultBox(boxes_, [this] {
      StoreTransaction transaction(store_);
      for (const Row& row : rows_)
        if (row.address->text().trimmed() != row.stored)
          setSourceAddress(store_, row.kind.name.toString(), row.address->text());
      transaction.commit();
    });
    if (stored)
      accept();
  }

  const QString testing = u"正在测试..."_s;

  Store& store_;
  Boxes& boxes_;
  AddressTester& tester_;
  std::vector<Row> rows_;
};

}  // namespace

void sourceForm(Store& store, Boxes& boxes, AddressTester& tester, QWidget* parent) {
  SourceForm form(store, boxes, tester, parent);
  form.exec();
  tester.cancel();
}

}  // namespace elevenfive
