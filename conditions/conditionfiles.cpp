#include "conditions/conditionfiles.h"

#include <QFileInfo>

#include "conditions/conditioncopy.h"
#include "conditions/conditionpanel.h"
#include "conditions/customgroups.h"
#include "conditions/filledtemplate.h"
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

/// The program's own files are no condition sets, whatever a dialog answers.
void demandForeign(const QString& path, const DataFolders& folders) {
  demandForeignFile(path, folders);
}

QString defaultFileName(const QDate& today) {
  return u"条件设置"_s + twoDigits(today.month()) + twoDigits(today.day()) + u'.' + conditionFileExtension.toString();
}

}  // namespace

bool ConditionFiles::exportConditions(const QDate& today) {
  if (!isFile(templatePath_)) {
    boxes_.plain(u"数据模板文件丢失无法导出，请重新安装！"_s);
    return false;
  }
  const DataFolders folders{QFileInfo(templatePath_).absolutePath(), QFileInfo(gConn_.path()).absolutePath()};
  try {
    FilledTemplate filled(gConn_, folders);
    const QString path = files_.OpenSaveDialog(u"save"_s, u"保存文件"_s, conditionFileExtension.toString(),
                                               conditionFileLabel.toString(), defaultFileName(today));
    if (path.isEmpty())
      return false;
    demandForeign(path, folders);
    if (isFile(path) && !boxes_.ask(u"要覆盖这个文件吗？"_s))
      return false;
    filled.copyTo(path);
  } catch (const DamagedData& damage) {
    throw StoreError(u"数据模板文件已损坏（%1），请重新安装。"_s.arg(damage.message()));
  }
  boxes_.plain(u"导出完成！"_s);
  return true;
}

bool ConditionFiles::importConditions() {
  const QString path = files_.OpenSaveDialog(u"open"_s, u"选择文件"_s, conditionFileExtension.toString(),
                                             conditionFileLabel.toString(), QString());
  if (path.isEmpty() || !isFile(path))
    return false;
  try {
    Store file(path, StoreAccess::readOnly);
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
