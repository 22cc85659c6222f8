#include "conditions/conditionfiles.h"

#include <QFile>
#include <QFileInfo>

#include "conditions/conditioncopy.h"
#include "conditions/conditionpanel.h"
#include "conditions/conditiontemplate.h"
#include "conditions/customgroups.h"
#include "model/errors.h"
#include "model/ownfiles.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// What a restore writes into 历史数据过滤; 最大值 stays.
constexpr int factoryMatchMinimum = 5;
constexpr int factoryMatchValue = 4;

bool isFile(const QString& path) {
  return QFileInfo(path).isFile();
}

/// A condition-set file has some forty thousand bytes; anything far above holds something else.
constexpr qint64 largestFile = qint64{4} * 1024 * 1024;

/// What stands beside a database file of this name belongs to its content, as long as it is the same file.
constexpr QStringView sideSuffixes[] = {u"-wal", u"-shm", u"-journal"};

void removeBeside(const QString& path) {
  for (const QStringView suffix : sideSuffixes)
    QFile::remove(path + suffix.toString());
}

/// What is read in the place of a file that someone chose. Opened where it lies, a file in write-ahead mode would get two more
/// files beside it, and what another program has left there would be taken for a part of it. Gone with the object.
class FileCopy final {
 public:
  FileCopy(const QString& from, const QString& folder) : path(folder + u"/Temp_fuDaoru.mdb"_s) {
    remove();
    if (!QFile::copy(from, path))
      throw FileError(u"无法读取文件 %1。"_s.arg(from));
  }
  ~FileCopy() { remove(); }
  FileCopy(const FileCopy&) = delete;
  FileCopy& operator=(const FileCopy&) = delete;

  const QString path;

 private:
  void remove() const {
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    QFile::remove(path);
    removeBeside(path);
  }
};

/// Throws StoreError where nothing can be written now: the disk is full, the working database was taken away. Not asked within
/// a transaction, which the undoing would end.
void demandWritable(Store& gConn) {
  if (gConn.inTransaction())
    return;
  StoreTransaction transaction(gConn);
  gConn.execute("写入过滤条件", "UPDATE 过滤条件 SET VALUE = ~VALUE");  // another value of the same range
  gConn.execute("撤销写入", "ROLLBACK");
}

QString defaultFileName(const QDate& today) {
  return u"条件设置"_s + twoDigits(today.month()) + twoDigits(today.day()) + u'.' + conditionFileExtension.toString();
}

}  // namespace

bool ConditionFiles::exportConditions(const QDate& today) {
  const DataFolders folders{QFileInfo(templatePath_).absolutePath(), QFileInfo(gConn_.path()).absolutePath()};
  try {
    fillTemplate(gConn_, folders);
  } catch (const DamagedData&) {
    boxes_.plain(u"数据模板文件丢失无法导出，请重新安装！"_s);
    return false;
  }
  const QString path = files_.OpenSaveDialog(u"save"_s, u"保存文件"_s, conditionFileExtension.toString(),
                                             conditionFileLabel.toString(), defaultFileName(today));
  if (path.isEmpty())
    return false;
  demandForeignFile(path, folders);  // its own files are no condition sets, whatever the dialog answers
  const bool replaced = isFile(path);
  if (replaced && !boxes_.ask(u"要覆盖这个文件吗？"_s))
    return false;
  replaceByCopy(realFiles(), folders.templateFile(), path);
  if (replaced)  // only now: until it was replaced, they were a part of the old file
    removeBeside(placeOf(path));
  boxes_.plain(u"导出完成！"_s);
  return true;
}

bool ConditionFiles::importConditions() {
  const QString path = files_.OpenSaveDialog(u"open"_s, u"选择文件"_s, conditionFileExtension.toString(),
                                             conditionFileLabel.toString(), QString());
  if (path.isEmpty() || !isFile(path))
    return false;
  demandOwnRows(gConn_);  // what is wrong on this side is no fault of the file
  demandWritable(gConn_);
  try {
    if (QFileInfo(path).size() > largestFile)
      throw DamagedData(u"文件太大"_s);
    const FileCopy copy(path, QFileInfo(gConn_.path()).absolutePath());
    Store file(copy.path, StoreAccess::readOnly);
    copyConditionSet(file, gConn_);
  } catch (const Error&) {
    boxes_.plain(u"文件格式错误无法导入数据！"_s);
    return true;
  }
  boxes_.plain(u"导入完成！"_s);
  return true;
}

void ConditionFiles::restoreDefaults() {
  {
    StoreTransaction transaction(gConn_);
    copyFactoryConditions(gConn_);
    gConn_.execute("还原历史数据过滤", "UPDATE 历史数据过滤 SET 使用状态 = 1, 最小值 = ?, 匹配值 = ?",
                   factoryMatchMinimum, factoryMatchValue);
    CustomGroups(gConn_, panel_, boxes_, inputs_).clearAll();
    transaction.commit();
  }
  boxes_.plain(u"全部过滤条件已还原为默认值！"_s);
}

}  // namespace elevenfive
