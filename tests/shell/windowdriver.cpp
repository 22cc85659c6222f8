// What stands in for the person in front of the window program while it is tested as a process: a plugin that the toolkit
// loads into it. It stores one draw, closes the window and answers every box, or, told to hold, only shows that it is up.
//
// On standard output: "period N" (the next period as the window offers it), "stored N", "box TEXT", "up".
#include <QApplication>
#include <QGenericPlugin>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <cstdio>

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

void say(const QString& line) {
  std::puts(QString(line).replace(u'\n', u' ').toUtf8().constData());
  std::fflush(stdout);
}

}  // namespace

class WindowDriver final : public QObject {
  Q_OBJECT

 public:
  explicit WindowDriver(bool holds) : holds_(holds) { wait(); }

 private:
  /// A new timer each time: one that repeats would be silent while a box that it has led to is open.
  void wait() { QTimer::singleShot(1, this, &WindowDriver::look); }

  void look() {
    if (isDone_)
      return;
    wait();
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
      say(u"box "_s + box->text());
      if (box->defaultButton() != nullptr)
        box->defaultButton()->click();
      else
        box->buttons().constFirst()->click();
      return;
    }
    for (QWidget* window : QApplication::topLevelWidgets())
      if (window->objectName() == u"Form_main"_s && window->isVisible())
        work(*window);
  }

  void work(QWidget& window) {
    if (QApplication::activeModalWidget() != nullptr || ++looks_ < 3)  // boxes of the start come first
      return;
    if (holds_) {
      say(u"up"_s);
      isDone_ = true;
      return;
    }
    auto* period = window.findChild<QLineEdit*>(u"TextHistory_0"_s);
    auto* store = window.findChild<QPushButton*>(u"cmmUpdateHistory_0"_s);
    if (period == nullptr || store == nullptr || !store->isEnabled())
      return;
    if (!stored_) {
      stored_ = true;
      const QString offered = period->text();
      say(u"period "_s + offered);
      for (int i = 1; i <= 5; ++i)
        window.findChild<QLineEdit*>(u"TextHistory_%1"_s.arg(i))->setText(QString::number(i));
      store->click();
      say(u"stored "_s + offered);
      return;
    }
    if (!closing_) {
      closing_ = true;
      window.close();
    }
  }

  int looks_ = 0;
  bool isDone_ = false;
  bool holds_;
  bool stored_ = false;
  bool closing_ = false;
};

class WindowDriverPlugin final : public QGenericPlugin {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "windowdriver.json")

 public:
  QObject* create(const QString&, const QString& specification) override {
    return new WindowDriver(specification == u"hold"_s);
  }
};

}  // namespace elevenfive

#include "windowdriver.moc"
