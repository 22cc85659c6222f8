#include "model/keptcopies.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
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

/// What is kept with a database that could not be opened.
QString journalOf(const QString& copy) {
  return copy + u"-journal"_s;
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
  QString fresh = nextPath(copies);
  for (auto copy = copies.rbegin(); copy != copies.rend(); ++copy) {
    if (!sameContent(*copy, path))
      continue;
    if (copy == copies.rbegin())
      return *copy;
    renew(*copy, fresh);
    return fresh;
  }
  files_.makeFolder(folder_);
  replaceByCopy(files_, path, fresh);
  return fresh;
}

QString KeptCopies::nextPath(const QStringList& copies) const {
  const int number = copies.isEmpty() ? 1 : numberOf(copies.last()) + 1;
  const QString stamp = QDateTime::currentDateTime().toString(u"yyyyMMdd-HHmmss"_s);
  return folder_ + u'/' + prefix() + u"%1-%2.bak"_s.arg(number, 4, 10, QChar(u'0')).arg(stamp);
}

/// Gives an old copy a new number: of equal work the last time counts, or it would be pruned before what is older.
void KeptCopies::renew(const QString& copy, const QString& path) {
  files_.rename(copy, path);
  if (QFileInfo::exists(journalOf(copy)))
    files_.rename(journalOf(copy), journalOf(path));
  files_.flushFolder(folder_);
}

void KeptCopies::prune() {
  const QStringList copies = list();
  for (qsizetype i = 0; i + most < copies.size(); ++i) {
    files_.remove(copies[i]);
    files_.remove(journalOf(copies[i]));
  }
  for (const QString& name : QDir(folder_).entryList({nameBeside(prefix() + u"*.bak*"_s)}, QDir::Files))
    files_.remove(folder_ + u'/' + name);  // a copy that was cut off
}

}  // namespace elevenfive
