#include "model/keptcopies.h"

#include <QDateTime>
#include <QDir>
#include <algorithm>

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

const QString& prefix() {
  static const QString text = u"elevenfive-"_s;
  return text;
}

/// The number in a copy's name, 0 where the name is none.
int numberOf(const QString& path) {
  return path.section(u'/', -1).mid(prefix().size()).section(u'-', 0, 0).toInt();
}

}  // namespace

QStringList KeptCopies::list() const {
  QStringList paths;
  for (const QString& name : QDir(folder_).entryList({prefix() + u"*.bak"_s}, QDir::Files))
    if (numberOf(name) > 0)
      paths << folder_ + u'/' + name;
  std::sort(paths.begin(), paths.end(), [](const QString& a, const QString& b) { return numberOf(a) < numberOf(b); });
  return paths;
}

QString KeptCopies::keep(const QString& path) {
  const QStringList copies = list();
  for (const QString& copy : copies)
    if (sameContent(copy, path))
      return copy;
  files_.makeFolder(folder_);
  const int number = copies.isEmpty() ? 1 : numberOf(copies.last()) + 1;
  const QString stamp = QDateTime::currentDateTime().toString(u"yyyyMMdd-HHmmss"_s);
  QString copy = folder_ + u'/' + prefix() + u"%1-%2.bak"_s.arg(number, 4, 10, QChar(u'0')).arg(stamp);
  replaceByCopy(files_, path, copy);
  return copy;
}

void KeptCopies::prune() {
  const QStringList copies = list();
  for (qsizetype i = 0; i + most < copies.size(); ++i) {
    files_.remove(copies[i]);
    files_.remove(copies[i] + u"-journal"_s);  // kept with a database that could not be opened
  }
  for (const QString& name : QDir(folder_).entryList({nameBeside(prefix() + u"*.bak*"_s)}, QDir::Files))
    files_.remove(folder_ + u'/' + name);  // a copy that was cut off
}

}  // namespace elevenfive
