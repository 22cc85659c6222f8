// Which processes a process has started, as the system tells under /proc.
#pragma once

#include <QDir>
#include <QFile>
#include <QMultiMap>
#include <QString>

namespace elevenfive {

/// A line "Name:\tvalue" of a process's status; empty where the process is gone.
inline QString statusOf(qint64 process, const QString& name) {
  QFile file(QStringLiteral("/proc/%1/status").arg(process));
  if (!file.open(QIODevice::ReadOnly))
    return {};
  for (const QByteArray& line : file.readAll().split('\n'))
    if (line.startsWith(name.toUtf8() + ':'))
      return QString::fromUtf8(line.mid(name.size() + 1)).trimmed().section(u'\t', 0, 0);
  return {};
}

/// The processes that a process has started, and theirs.
inline QList<qint64> descendants(qint64 process) {
  QMultiMap<qint64, qint64> children;
  for (const QString& entry : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs))
    if (const qint64 id = entry.toLongLong(); id > 0)
      children.insert(statusOf(id, QStringLiteral("PPid")).toLongLong(), id);
  QList<qint64> found = children.values(process);
  for (qsizetype i = 0; i < found.size(); ++i)
    found += children.values(found[i]);
  return found;
}

/// The process that runs a page's scripts: the engine begins it last, out of one it has begun for that. 0 where none runs yet.
inline qint64 rendererOf(qint64 pageProcess) {
  const QList<qint64> begun = descendants(pageProcess);
  if (begun.isEmpty() || statusOf(begun.last(), QStringLiteral("PPid")).toLongLong() == pageProcess)
    return 0;
  return begun.last();
}

/// Whether a process still runs; one that has ended and waits for its parent's word does not.
inline bool isAtWork(qint64 process) {
  const QString state = statusOf(process, QStringLiteral("State"));
  return !state.isEmpty() && !state.startsWith(u'Z');
}

}  // namespace elevenfive
