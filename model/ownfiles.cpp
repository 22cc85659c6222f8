#include "model/ownfiles.h"

#include <QFileInfo>
#include <QRegularExpression>

#include "model/errors.h"
#include "model/fileaccess.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

bool isOwnName(const QString& name) {
  static const QRegularExpression own(
      uR"(\A(elevenfive(-cli|-page)?|elevenfive\.(dat|bak|ico|lock|installing)([.-].*)?|elevenfive-\d+-.*\.bak.*|)"
      uR"(TJmode\.tjmod.*|Temp_fu.*|.*\.uVorex(\..*)?)\z)"_s);
  return own.match(name).hasMatch();
}

/// The folder in which a file stands or is to stand, by its one true name; empty where there is none.
QString folderOf(const QString& path) {
  return QFileInfo(QFileInfo(path).absolutePath()).canonicalFilePath();
}

[[noreturn]] void refuse(const QString& path) {
  throw FileError(u"文件 %1 是程序自己的文件，请换一个文件名。"_s.arg(path));
}

}  // namespace

bool isSamePlace(const QString& path, const QString& other) {
  const QString first = placeOf(path);
  const QString second = placeOf(other);
  return QFileInfo(first).fileName() == QFileInfo(second).fileName() && folderOf(first) == folderOf(second);
}

void demandForeignFile(const QString& path, const DataFolders& folders) {
  const QString place = placeOf(path);
  const QString folder = folderOf(place);
  if (folder.isEmpty() || !isOwnName(QFileInfo(place).fileName()))
    return;
  for (const QString& own : {folders.program, folders.bakFolder(), folders.temporary})
    if (folder == QFileInfo(own).canonicalFilePath())
      refuse(path);
}

void demandForeignFile(const QString& path) {
  const QString folder = folderOf(placeOf(path));
  const auto isLocked = [](const QString& one) { return QFileInfo::exists(one + u"/elevenfive.lock"_s); };
  if (isLocked(folder))
    demandForeignFile(path, {folder, folder});
  else if (folder.endsWith(u"/Bak"_s) && isLocked(QFileInfo(folder).path()))
    demandForeignFile(path, {QFileInfo(folder).path(), folder});
}

}  // namespace elevenfive
