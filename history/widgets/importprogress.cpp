#include "history/widgets/importprogress.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr int repaintIntervalMs = 16;

QProgressBar* bar(const QString& name, const QString& accessibleName, const QString& format, QWidget* parent) {
  auto* made = new QProgressBar(parent);
  made->setObjectName(name);
  made->setAccessibleName(accessibleName);
  made->setFormat(format);
  made->hide();
  return made;
}

}  // namespace

ImportProgress::ImportProgress(QWidget* parent)
    : QFrame(parent),
      done_(new QLabel(this)),
      slash_(new QLabel(u"/"_s, this)),
      total_(new QLabel(this)),
      unit_(new QLabel(u" 行"_s, this)),
      lineBar_(bar(u"ProgressBar_Lines"_s, u"行进度"_s, u"%p%"_s, this)),
      stopButton_(new QPushButton(u"停 止(&P)"_s, this)),
      derivationBar_(bar(u"ProgressBar_TuBiao"_s, u"属性计算进度"_s, u"正在计算各期属性 %p%"_s, this)),
      lines_(*lineBar_),
      derivation_(*derivationBar_) {
  setObjectName(u"FrameJindu"_s);
  done_->setObjectName(u"Label_jindu_0"_s);
  done_->setAccessibleName(u"已处理行数"_s);
  total_->setObjectName(u"Label_jindu_1"_s);
  total_->setAccessibleName(u"总行数"_s);
  stopButton_->setObjectName(u"CmmDaoruStop"_s);
  stopButton_->setAccessibleName(u"停止导入"_s);

  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(done_);
  layout->addWidget(slash_);
  layout->addWidget(total_);
  layout->addWidget(unit_);
  layout->addWidget(lineBar_, 1);
  layout->addWidget(stopButton_);
  layout->addWidget(derivationBar_, 1);
  connect(stopButton_, &QPushButton::clicked, this, &ImportProgress::requestStop);
  showParts(false);
}

void ImportProgress::showParts(bool visible) {
  for (QWidget* part : std::initializer_list<QWidget*>{done_, slash_, total_, unit_})
    part->setVisible(visible);
  stopButton_->setVisible(visible && canStop_);
}

void ImportProgress::show(int lineCount) {
  lineCount_ = lineCount;
  done_->setText(u"0"_s);
  total_->setText(QString::number(lineCount));
  showParts(true);
  lines_.setMinimum(0);
  lines_.setMaximum(std::max(lineCount, 1));
  lines_.setValue(0);
  lines_.setVisible(true);
  sinceShown_.invalidate();
}

void ImportProgress::setDone(int lines) {
  lines_.setValue(lines);
  if (lines < lineCount_ && sinceShown_.isValid() && sinceShown_.elapsed() < repaintIntervalMs)
    return;
  done_->setText(QString::number(lines));
  sinceShown_.start();
}

void ImportProgress::hide() {
  lines_.setVisible(false);
  showParts(false);
}

}  // namespace elevenfive
