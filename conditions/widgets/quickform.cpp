#include "conditions/widgets/quickform.h"

#include <QCheckBox>
#include <QEvent>
#include <QFocusEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "conditions/pendingaction.h"
#include "conditions/widgets/changestored.h"
#include "model/store.h"
#include "model/widgets/ball.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

/// The rows of the first page: sums, spans and temperatures. The second has the counts.
constexpr std::size_t firstPageRows = 10;

constexpr int actionColumns = 2;

/// What cmmHow shows.
constexpr QStringView quickHelpText =
    u"怎样填写取值范围：\r\n\r\n"
    u"1. 允许 20 到 60，但不要 40 和 45：[20-39],[41-44],[46-60]\r\n"
    u"2. 只允许一个值 8：[8]\r\n"
    u"3. 允许 1 到 5，两种写法相同：[1],[2],[3],[4],[5] 或者 [1-5]\r\n"
    u"4. 允许 20 到 60：[20-60]";

/// Whether a focus came by the keyboard.
bool byKeyboard(Qt::FocusReason reason) {
  return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
}

}  // namespace

QuickForm::QuickForm(Store& gConn, Boxes& boxes, QWidget* parent)
    : QDialog(parent), boxes_(boxes), quick_(gConn, boxes) {
  setObjectName(u"Frm_kuaisusizi"_s);
  setWindowTitle(u"过滤条件快速设置"_s);
  setAttribute(Qt::WA_DeleteOnClose);
  withFaultBox(boxes_, [this] { rows_ = quick_.rows(); });
  lines_.resize(rows_.size());
  auto* top = new QHBoxLayout;
  top->addWidget(buildPages(), 1);
  top->addWidget(buildActions());
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addWidget(buildButtons());
  setChanged(false);
}

QPushButton* QuickForm::button(const QString& name, const QString& caption) {
  auto* made = new QPushButton(caption, this);
  made->setObjectName(name);
  made->setAccessibleName(caption);
  made->setAutoDefault(false);  // Enter in a text must not press one
  return made;
}

QWidget* QuickForm::buildPages() {
  auto* card = new QFrame(this);
  card->setProperty("card", true);
  pages_ = new QStackedWidget(card);
  for (int page = 0; page < 2; ++page)
    pages_->addWidget(buildPage(page));
  turn_ = button(u"Label_page"_s, {});
  turn_->setProperty("small", true);
  auto* below = new QHBoxLayout;
  below->addStretch();
  below->addWidget(turn_);
  auto* column = new QVBoxLayout(card);
  column->addWidget(pages_, 1);
  column->addLayout(below);
  connect(turn_, &QPushButton::clicked, this, [this] { showPage(1 - page()); });
  return card;
}

QWidget* QuickForm::buildPage(int page) {
  auto* frame = new QWidget(this);
  frame->setObjectName(u"Frame1_tj_%1"_s.arg(page));
  auto* grid = new QGridLayout(frame);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setColumnStretch(1, 1);
  const std::size_t begin = page == 0 ? 0 : firstPageRows;
  const std::size_t end = page == 0 ? firstPageRows : rows_.size();
  int place = 0;
  for (std::size_t row = begin; row < end && row < rows_.size(); ++row, ++place) {
    buildLine(frame, row);
    grid->addWidget(lines_[row].use, place, 0);
    grid->addWidget(lines_[row].text, place, 1);
  }
  grid->setRowStretch(place, 1);
  return frame;
}

void QuickForm::buildLine(QWidget* page, std::size_t row) {
  Line& line = lines_[row];
  line.use = new QCheckBox(page);
  line.use->setObjectName(u"Check_sfsy_%1"_s.arg(rows_[row].number));
  line.text = new QLineEdit(page);
  line.text->setObjectName(u"Text_quzifanwei_%1"_s.arg(rows_[row].number));
  line.text->setMinimumWidth(fontMetrics().averageCharWidth() * 28);
  line.text->installEventFilter(this);
  connect(line.use, &QCheckBox::clicked, this, [this, row](bool checked) { clickUse(row, checked); });
  connect(line.text, &QLineEdit::textEdited, this, [this] { setChanged(true); });
}

QWidget* QuickForm::buildActions() {
  auto* card = new QFrame(this);
  card->setProperty("card", true);
  auto* grid = new QGridLayout;
  int place = 0;
  for (const PendingAction& action : pendingActions) {
    if (action.control != u"cmmQitatj")
      continue;
    grid->addWidget(actionButton(action.code), place / actionColumns, place % actionColumns);
    ++place;
  }
  auto* note = new QLabel(pendingNote.toString(), card);
  note->setProperty("note", true);
  note->setWordWrap(true);
  auto* column = new QVBoxLayout(card);
  column->addLayout(grid);
  column->addWidget(note);
  column->addStretch();
  return card;
}

QPushButton* QuickForm::actionButton(int code) {
  const PendingAction& action = *pendingActionOf(code);
  QPushButton* made = button(u"%1_%2"_s.arg(action.control).arg(action.index), action.caption.toString());
  connect(made, &QPushButton::clicked, this, [this, code] { Q_EMIT actionLeft(code); });
  return made;
}

QWidget* QuickForm::buildButtons() {
  auto* strip = new QWidget(this);
  auto* row = new QHBoxLayout(strip);
  row->setContentsMargins(0, 0, 0, 0);
  for (const PendingAction& action : pendingActions)
    if (action.control == u"cmmDaocutj")
      row->addWidget(actionButton(action.code));
  QPushButton* how = button(u"cmmHow"_s, u"怎样设置？"_s);
  submit_ = button(u"cmm_submit"_s, u"提交修改"_s);
  submit_->setDefault(true);
  row->addStretch();
  row->addWidget(how);
  row->addWidget(submit_);
  auto* help = new QLabel(quickHelpText.toString(), this);
  help->setObjectName(u"Text_juli"_s);
  help->setTextFormat(Qt::PlainText);
  help->hide();  // it keeps the text that the button shows
  connect(how, &QPushButton::clicked, this, [this, help] {
    boxes_.plain(help->text());
    activateWindow();
  });
  connect(submit_, &QPushButton::clicked, this, &QuickForm::submit);
  return strip;
}

void QuickForm::openAt(int page) {
  load();
  showPage(page);
  if (!isVisible() && !testAttribute(Qt::WA_Moved))
    moveAside();
  show();
  raise();
  activateWindow();
}

/// To the lower right of the main window, whose list of tabs stays in view.
void QuickForm::moveAside() {
  adjustSize();
  const QRect area = parentWidget()->window()->frameGeometry();
  const int margin = fontMetrics().height();
  move(area.right() - width() - margin, area.bottom() - height() - 3 * margin);
}

void QuickForm::load() {
  withFaultBox(boxes_, [this] { rows_ = quick_.rows(); });
  for (std::size_t row = 0; row < lines_.size() && row < rows_.size(); ++row) {
    const QuickSetup::Row& fact = rows_[row];
    lines_[row].use->setText(fact.name);
    lines_[row].use->setAccessibleName(u"使用 "_s + fact.name);
    lines_[row].use->setChecked(fact.used);
    lines_[row].text->setToolTip(fact.tip);
    lines_[row].text->setAccessibleName(fact.name + u" 的取值范围"_s);
    if (!lines_[row].text->isModified())
      lines_[row].text->setText(fact.text);
  }
}

int QuickForm::page() const {
  return pages_->currentIndex();
}

void QuickForm::showPage(int page) {
  pages_->setCurrentIndex(page);
  turn_->setText(page == 0 ? u"下一页>"_s : u"<上一页"_s);
  turn_->setAccessibleName(turn_->text());
  Q_EMIT pageShown(page);
}

void QuickForm::clickUse(std::size_t row, bool checked) {
  std::optional<int> tab;
  QuickSetup::Row& fact = rows_[row];
  changeAndShow(  // a code may have no row
      boxes_, [&] { tab = quick_.clickUse(fact, checked); },
      [&] {
        fact.used = quick_.getQuickUse(fact.code) > 0;
        lines_[row].use->setChecked(fact.used);
      });
  if (tab)
    Q_EMIT tabWanted(*tab);
}

bool QuickForm::eventFilter(QObject* watched, QEvent* event) {
  const bool clicked = event->type() == QEvent::MouseButtonPress;
  if (clicked || (event->type() == QEvent::FocusIn && byKeyboard(static_cast<QFocusEvent*>(event)->reason())))
    for (std::size_t row = 0; row < lines_.size(); ++row)
      if (lines_[row].text == watched)
        Q_EMIT tabWanted(rows_[row].tab);
  return QDialog::eventFilter(watched, event);
}

void QuickForm::submit() {
  for (std::size_t row = 0; row < lines_.size(); ++row) {
    rows_[row].text = lines_[row].text->text();
    rows_[row].used = lines_[row].use->isChecked();
  }
  bool written = false;
  withFaultBox(boxes_, [&] { written = quick_.submit(rows_, [this](const QuickSetup::Row& row) { showText(row); }); });
  activateWindow();  // the boxes took the focus
  if (!written)
    return;
  for (const Line& line : lines_)
    line.text->setModified(false);
  Q_EMIT submitted();
  setChanged(false);
}

void QuickForm::showText(const QuickSetup::Row& row) {
  QLineEdit& text = *lines_[static_cast<std::size_t>(&row - rows_.data())].text;
  const bool modified = text.isModified();
  text.setText(row.text);
  text.setModified(modified);
}

void QuickForm::setChanged(bool changed) {
  submit_->setEnabled(changed);
  const QColor color(rgbOfBgr(quickChangedColor));
  submit_->setStyleSheet(changed ? u"QPushButton { background-color: %1; color: black; border: 1px solid %2; }"_s.arg(
                                       color.name(), color.darker(130).name())
                                 : QString());
}

}  // namespace elevenfive
