#include "shell/widgets/startforms.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "acquire/catalogue.h"
#include "model/widgets/faultbox.h"
#include "shell/users.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr int gameColumns = 3;

QPushButton* formButton(QDialog& form, const QString& name, const QString& caption) {
  auto* button = new QPushButton(caption, &form);
  button->setObjectName(name);
  button->setAccessibleName(caption);
  button->setAutoDefault(false);
  return button;
}

QHBoxLayout* buttonRow(std::initializer_list<QPushButton*> buttons) {
  auto* row = new QHBoxLayout;
  row->addStretch();
  for (QPushButton* button : buttons)
    row->addWidget(button);
  return row;
}

}  // namespace

bool askUserModeForm(int& gUserMode, QWidget* parent) {
  QDialog form(parent);
  form.setObjectName(u"frmFirstrun"_s);
  form.setWindowTitle(u"设置用户模式"_s);
  auto* text = new QLabel(
      u"如果这台电脑上只有你一个人使用此软件请选择“单用户模式”\n\n"
      "如果这台电脑上有多个用户使用到此软件请选择“多用户模式”\n\n"
      "(投注站等可能有多用户使用的情况下请选择“多用户模式”)\n"_s,
      &form);
  text->setObjectName(u"Text1"_s);
  auto* layout = new QVBoxLayout(&form);
  layout->addWidget(text);
  auto* modes = new QButtonGroup(&form);
  for (const auto& [mode, caption] : {std::pair{1, u"单用户模式"_s}, std::pair{2, u"多用户模式"_s}}) {
    auto* option = new QRadioButton(caption, &form);
    option->setObjectName(u"Option_userMode_%1"_s.arg(mode));
    option->setAccessibleName(caption);
    option->setChecked(mode == gUserMode);
    modes->addButton(option, mode);
    layout->addWidget(option);
  }
  QObject::connect(modes, &QButtonGroup::idToggled, &form, [&gUserMode](int mode, bool checked) {
    if (checked)
      gUserMode = mode;
  });
  QPushButton* ok = formButton(form, u"cmdOK"_s, u"下一步"_s);
  ok->setDefault(true);
  QPushButton* end = formButton(form, u"cmd_End"_s, u"退出系统"_s);
  layout->addLayout(buttonRow({ok, end}));
  QObject::connect(ok, &QPushButton::clicked, &form, &QDialog::accept);
  QObject::connect(end, &QPushButton::clicked, &form, &QDialog::reject);
  return form.exec() == QDialog::Accepted;
}

LogOn logOnForm(Users& users, Boxes& boxes, QWidget* parent) {
  QDialog form(parent);
  form.setObjectName(u"frmODBCLogon"_s);
  form.setWindowTitle(u"用户登录"_s);
  auto* name = new QComboBox(&form);
  name->setObjectName(u"Combo_userName"_s);
  name->setAccessibleName(u"用户名"_s);
  name->setEditable(true);
  // What is typed is the name to the letter: nothing completes it to another's, nothing adds it to the list.
  name->setCompleter(nullptr);
  name->setInsertPolicy(QComboBox::NoInsert);
  withFaultBox(boxes, [&] { name->addItems(users.userNames()); });
  name->setCurrentIndex(-1);  // nobody's name until one is chosen or typed
  auto* password = new QLineEdit(&form);
  password->setObjectName(u"txtPWD"_s);
  password->setAccessibleName(u"密码"_s);
  password->setEchoMode(QLineEdit::Password);
  auto* fields = new QFormLayout;
  fields->addRow(u"用户名:"_s, name);
  fields->addRow(u"密  码:"_s, password);
  QPushButton* ok = formButton(form, u"cmdOK"_s, u"登 陆"_s);
  ok->setDefault(true);
  QPushButton* isNew = formButton(form, u"cmd_newUser"_s, u"我是新用户"_s);
  QPushButton* end = formButton(form, u"cmd_End"_s, u"退出系统"_s);
  auto* layout = new QVBoxLayout(&form);
  layout->addLayout(fields);
  layout->addLayout(buttonRow({ok, isNew, end}));
  QObject::connect(ok, &QPushButton::clicked, &form, [&] {
    withFaultBox(boxes, [&] {
      if (users.cmdOK(name->currentText(), password->text()))
        form.accept();
    });
  });
  QObject::connect(isNew, &QPushButton::clicked, &form, [&] {
    withFaultBox(boxes, [&] { users.cmd_newUser(); });
    password->clear();
    name->setFocus();
  });
  bool ended = false;
  QObject::connect(end, &QPushButton::clicked, &form, [&] {
    ended = true;
    form.reject();
  });
  if (form.exec() == QDialog::Accepted)
    return LogOn::done;
  return ended ? LogOn::end : LogOn::shut;
}

bool chooseGameForm(Catalogue& catalogue, Boxes& boxes, QWidget* parent) {
  QDialog form(parent);
  form.setObjectName(u"frmDB"_s);
  form.setWindowTitle(u"选择彩种"_s);
  const QString prompt = u"请选择您要使用的彩种："_s;
  auto* frame = new QGroupBox(prompt, &form);
  frame->setObjectName(u"fraStep3"_s);
  auto* grid = new QGridLayout(frame);
  auto* games = new QButtonGroup(&form);
  withFaultBox(boxes, [&] {
    for (int place = 0; const GameOption& game : catalogue.showCaizongList()) {
      auto* option = new QRadioButton(game.name, frame);
      option->setObjectName(u"OptionSSC_%1"_s.arg(game.index));
      option->setAccessibleName(game.name);
      games->addButton(option, game.index);
      grid->addWidget(option, place / gameColumns, place % gameColumns);
      ++place;
    }
  });
  QObject::connect(games, &QButtonGroup::idClicked, &form, [&](int game) {
    if (withFaultBox(boxes, [&] { catalogue.selectCaizong(game); }))
      frame->setTitle(prompt + games->button(game)->text());
  });
  QPushButton* ok = formButton(form, u"cmdOK"_s, u"确 定"_s);
  ok->setDefault(true);
  QObject::connect(ok, &QPushButton::clicked, &form, &QDialog::accept);
  auto* layout = new QVBoxLayout(&form);
  layout->addWidget(frame);
  layout->addLayout(buttonRow({ok}));
  return form.exec() == QDialog::Accepted;
}

}  // namespace elevenfive
