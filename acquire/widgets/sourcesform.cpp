#include "acquire/widgets/sourcesform.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>

#include "acquire/catalogue.h"
#include "acquire/detailpage.h"
#include "acquire/pagerules.h"
#include "acquire/pagetext.h"
#include "acquire/sources.h"
#include "acquire/versionnotice.h"
#include "model/navigators.h"
#include "model/store.h"
#include "model/widgets/faultbox.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr int addressWidth = 46;  // in average characters

constexpr std::array<SourceKind, 4> kinds{resultsSite, secondSite, noticeServer, detailPage};

QString purposeOf(const QString& name) {
  for (const SourceKind& kind : kinds)
    if (kind.name == name)
      return kind.purpose.toString();
  return {};
}

QPushButton* formButton(const QString& name, const QString& caption, QWidget* parent) {
  auto* button = new QPushButton(caption, parent);
  button->setObjectName(name);
  button->setAccessibleName(caption);
  button->setAutoDefault(false);
  return button;
}

}  // namespace

SourcesForm::SourcesForm(Store& gConn, Boxes& boxes, PageLoaderFactory loaders, QWidget* parent,
                         const SourcesTimes& times)
    : QDialog(parent),
      gConn_(gConn),
      boxes_(boxes),
      reader_(std::move(loaders), times.tickMs),
      server_(times.serverMs),
      verdict_(new QLabel(this)) {
  setObjectName(u"frmSources"_s);
  setWindowTitle(u"数据源设置"_s);
  auto* layout = new QVBoxLayout(this);
  auto* note = new QLabel(u"地址中的 {province} 会换成所用彩种的省份简称，如广东为 gd。"_s, this);
  layout->addWidget(note);
  withFaultBox(boxes_, [this] { buildRows(); });
  verdict_->setObjectName(u"Label_ceshi"_s);
  verdict_->setAccessibleName(u"测试结果"_s);
  verdict_->setTextFormat(Qt::PlainText);
  layout->addWidget(verdict_);
  auto* ok = formButton(u"cmdOK"_s, u"确 定"_s, this);
  ok->setDefault(true);
  auto* cancel = formButton(u"cmdCancel"_s, u"取 消"_s, this);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);
  connect(ok, &QPushButton::clicked, this, [this] {
    if (areAddresses() && withFaultBox(boxes_, [this] { store(); }))
      accept();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void SourcesForm::buildRows() {
  auto* grid = new QGridLayout;
  for (const SourceRow& source : sourceRows(gConn_)) {
    const int index = static_cast<int>(rows_.size());
    auto* address = new QLineEdit(source.address, this);
    address->setObjectName(u"Text_dizhi_%1"_s.arg(index));
    address->setAccessibleName(source.name);
    address->setAccessibleDescription(purposeOf(source.name));
    address->setMaxLength(longestAddress);
    address->setMinimumWidth(addressWidth * fontMetrics().averageCharWidth());
    address->setCursorPosition(0);
    auto* purpose = new QLabel(purposeOf(source.name), this);
    purpose->setForegroundRole(QPalette::PlaceholderText);
    auto* test = formButton(u"cmm_ceshi_%1"_s.arg(index), u"测 试"_s, this);
    test->setAccessibleName(u"测试%1"_s.arg(source.name));
    grid->addWidget(new QLabel(source.name + u"："_s, this), 2 * index, 0);
    grid->addWidget(address, 2 * index, 1);
    grid->addWidget(test, 2 * index, 2);
    grid->addWidget(purpose, 2 * index + 1, 1);
    rows_.push_back({source.name, address, test});
    connect(test, &QPushButton::clicked, this, [this, index] {
      withFaultBox(boxes_, [this, index] { this->test(rows_[static_cast<std::size_t>(index)]); });
    });
  }
  static_cast<QVBoxLayout*>(layout())->addLayout(grid);
}

/// What is no address keeps the form open.
bool SourcesForm::areAddresses() {
  bool all = true;
  withFaultBox(boxes_, [&] {
    for (const Row& row : rows_) {
      if (isSourceAddress(row.address->text()))
        continue;
      boxes_.critical(wrongAddressText(row.name));
      row.address->setFocus();
      all = false;
      return;
    }
  });
  return all;
}

void SourcesForm::store() {
  StoreTransaction transaction(gConn_);
  for (const Row& row : rows_)
    setSourceAddress(gConn_, row.name, row.address->text());
  transaction.commit();
}

/// What is asked for with the address where it is used.
QUrl SourcesForm::pageOf(const Row& row) const {
  const QString game = Catalogue(gConn_).getLotteryName();
  const QString address = row.address->text();
  if (row.name == resultsSite.name)
    return sourceUrl(resultsPageUrl(address, game));
  if (row.name == noticeServer.name)
    return noticeAddress(provinceAddress(address, game));
  if (const Qihao newest = getLastQihao(gConn_); row.name == detailPage.name && newest > 0)
    return detailUrl(address, game, QString::number(newest));
  return sourceUrl(provinceAddress(address, game));
}

void SourcesForm::test(const Row& row) {
  if (testing_)
    return;
  const QString address = row.address->text();
  if (isUnsetAddress(address)) {
    verdict_->setText(address.trimmed().isEmpty() ? u"地址为空。"_s : u"地址还没有设置。"_s);
    return;
  }
  const QUrl page = pageOf(row);
  if (!isWebAddress(page)) {
    const bool lacksPage = isSourceAddress(address) && provinceOf(Catalogue(gConn_).getLotteryName()).isEmpty();
    verdict_->setText(lacksPage ? u"所用彩种在%1没有网页，无法测试。"_s.arg(row.name) : u"不是可用的网址。"_s);
    return;
  }
  testing_ = true;
  for (const Row& other : rows_)
    other.test->setEnabled(false);
  verdict_->setText(u"正在读取 %1 ……"_s.arg(page.toString()));
  const QString text = reader_.openUrlText(page, true);
  testing_ = false;
  for (const Row& other : rows_)
    other.test->setEnabled(true);
  if (!isVisible())  // closed meanwhile: nobody wants to know any more
    verdict_->clear();
  else if (text.isEmpty() && !reader_.fault().isEmpty())
    verdict_->setText(u"“%1”：%2"_s.arg(row.name, reader_.fault()));
  else if (text.isEmpty())
    tellWhyNot(row.name, page);
  else if (row.name == resultsSite.name && !text.contains(resultsPageMark))
    verdict_->setText(u"“%1”：网页可以打开，但不是开奖数据的网页。"_s.arg(row.name));
  else
    verdict_->setText(u"“%1”：网页可以打开，共 %2 字。"_s.arg(row.name).arg(text.size()));
}

void SourcesForm::tellWhyNot(const QString& name, const QUrl& page) {
  const QString verdict = u"“%1”：网页打不开，或者没有内容。"_s.arg(name);
  verdict_->setText(verdict);
  server_.test(page.toString(), [this, verdict](const QString& reason) {
    if (!testing_ && verdict_->text() == verdict)
      verdict_->setText(verdict + reason);
  });
}

void SourcesForm::done(int result) {
  server_.cancel();
  reader_.requestStop();
  QDialog::done(result);
}

}  // namespace elevenfive
