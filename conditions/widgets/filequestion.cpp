#include "conditions/widgets/filequestion.h"

#include <QFileInfo>

namespace elevenfive {

using namespace Qt::StringLiterals;

QString DialogFileQuestion::OpenSaveDialog(const QString& action, const QString& title, const QString& extension,
                                           const QString& label, const QString& defaultName) {
  const QString filter = u"%1(*.%2);;所有文件(*.*)"_s.arg(label, extension);
  if (action.compare(u"open"_s, Qt::CaseInsensitive) == 0)
    return dialogs_.openFile(title, filter);
  const QString path = dialogs_.saveFile(title, filter, defaultName);
  return path.isEmpty() || !QFileInfo(path).suffix().isEmpty() ? path : path + u".exe"_s;
}

}  // namespace elevenfive
