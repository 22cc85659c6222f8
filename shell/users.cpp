#include "shell/users.h"

#include <utility>

#include "conditions/conditioncopy.h"
#include "model/daycount.h"
#include "model/errors.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// An account not used for so many days goes at the next logon of anyone.
constexpr int idleDays = 30;

/// What a new user begins with in 历史数据过滤.
constexpr int defaultMatchValue = 5;

double dayCountOf(const QDateTime& moment) {
  constexpr double secondsOfDay = 86400.0;
  const int seconds = moment.time().msecsSinceStartOfDay() / 1000;
  return elevenfive::dayCountOf(moment.date()) + seconds / secondsOfDay;
}

}  // namespace

Users::Users(Workspace& workspace, Boxes& boxes, FileAccess& files, Clock now)
    : workspace_(workspace),
      boxes_(boxes),
      userFiles_(workspace.gConn, workspace.folders(), files),
      now_(std::move(now)) {}

QStringList Users::userNames() {
  QStringList names;
  Statement query = workspace_.gConn.query("读取用户表", "SELECT 用户名 FROM 用户表 ORDER BY 用户名");
  while (query.next())
    names << query.text(0);
  return names;
}

void Users::cmd_newUser() {
  boxes_.information(
      u"请在<用户名>及<密码>栏中输入一个新的用户名称及设置密码；\r\n然后再点击<登陆>按钮，系统将为您建立一个相应的新用户..."_s);
}

bool Users::isRefusedName(const QString& name) {
  if (name.isEmpty()) {
    boxes_.critical(u"用户名不能为空！"_s);
    return true;
  }
  if (!isUserFileName(name)) {
    boxes_.critical(
        u"用户名不能用作文件名（最多50个字符，不能含有 / \\ : * ? \" < > | 等符号，首尾不能是点，"
        "也不能是 CON、NUL、COM1 等设备名），请换一个用户名！"_s);
    return true;
  }
  return false;
}

bool Users::cmdOK(const QString& userName, const QString& password) {
  const QString name = userName.trimmed();
  const QString pwd = password.trimmed();
  if (isRefusedName(name))
    return false;
  Store& store = workspace_.gConn;
  const bool known = store.value("查找用户", "SELECT 1 FROM 用户表 WHERE 用户名 = ?", name).has_value();
  if (!known && !createUser(name, pwd))
    return false;
  if (known && name != temporaryUser &&
      !store.value("核对密码", "SELECT 1 FROM 用户表 WHERE 用户名 = ? AND 密码 = ?", name, pwd)) {
    boxes_.plain(u"密码错误！(注意大小写区分)"_s);
    return false;
  }
  logonFinish(name);
  return true;
}

bool Users::createUser(const QString& name, const QString& password) {
  if (password.size() > longestUserText) {
    boxes_.critical(u"密码太长，最多50个字符！"_s);
    return false;
  }
  if (!boxes_.ask(u"用户不存在，要以当前的用户名及密码来建立新用户吗？"_s))
    return false;
  // An account that was lost with its run may have left its conditions.
  const QString former = userFiles_.setAside(name);
  if (!former.isEmpty())
    boxes_.information(u"用户“%1”以前的用户文件保留为 %2。"_s.arg(name, former));
  {
    // A disk that is full takes back the account with its conditions.
    StoreTransaction transaction(workspace_.gConn);
    workspace_.gConn.execute("建立用户", "INSERT INTO 用户表 (用户名, 密码) VALUES (?, ?)", name, password);
    resetToDefault();
    saveNewUserFile(name);
    touch(name);
    transaction.commit();
  }
  workspace_.gUserName = name;  // from here on the conditions are the new user's, whatever fails behind it
  return true;
}

void Users::touch(const QString& name) {
  workspace_.gConn.execute("更新登陆时间", "UPDATE 用户表 SET 最后登陆时间 = ? WHERE 用户名 = ?", dayCountOf(now_()),
                           name);
}

void Users::logonFinish(const QString& name) {
  touch(name);
  loadUserFile(name);
  workspace_.gUserName = name;
  removeIdleUsers();
  clearRunLog(0);
}

void Users::removeIdleUsers() {
  // Midnight of the thirtieth day before today: whoever logged on later on that day stays.
  const double limit = elevenfive::dayCountOf(now_().date()) - idleDays;
  QStringList idle;
  {
    Statement query =
        workspace_.gConn.query("查找过期用户", "SELECT 用户名 FROM 用户表 WHERE 最后登陆时间 <= ? AND 用户名 <> ?",
                               limit, temporaryUser.toString());
    while (query.next())
      idle << query.text(0);
  }
  for (const QString& name : std::as_const(idle)) {
    try {
      if (isUserFileName(name))  // any other name never had a file
        userFiles_.remove(name);
    } catch (const FileError&) {
      continue;  // no reason to keep anyone out; the next logon tries again
    }
    workspace_.gConn.execute("删除过期用户", "DELETE FROM 用户表 WHERE 用户名 = ?", name);
  }
}

void Users::resetToDefault() {
  StoreTransaction transaction(workspace_.gConn);
  copyFactoryConditions(workspace_.gConn);
  workspace_.gConn.execute("还原历史数据过滤", "UPDATE 历史数据过滤 SET 使用状态 = 0, 匹配值 = ?", defaultMatchValue);
  transaction.commit();
}

bool Users::loadUserFile(const QString& name) {
  if (userFiles_.load(name))
    return true;
  boxes_.plain(u"用户文件丢失或损坏,无法打开！"_s);
  return false;
}

bool Users::saveNewUserFile(const QString& name) {
  if (userFiles_.save(name))
    return true;
  boxes_.plain(u"数据模板文件丢失无法导出，请重新安装！"_s);
  return false;
}

bool Users::saveUserFile(const QString& name) {
  return name == temporaryUser || saveNewUserFile(name);
}

void Users::clearRunLog(int period) {
  if (period == 0)
    workspace_.gConn.execute("清空号码", "DELETE FROM 日志表");
  else
    workspace_.gConn.execute("清空号码", "DELETE FROM 日志表 WHERE 期号 = ?", period);
}

QString Users::caption(const QString& gTitle) const {
  return gTitle + u"  —— "_s + workspace_.gUserName;
}

}  // namespace elevenfive
