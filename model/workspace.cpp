#include "model/workspace.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>
#include <filesystem>

#include "model/errors.h"
#include "model/schema.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr QLatin1StringView dataFile("/elevenfive.dat");
constexpr QLatin1StringView templateFile("/TJmode.tjmod");
constexpr QLatin1StringView lockFile("/elevenfive.lock");

std::unique_ptr<QLockFile> lockFolder(const QString& folder) {
  if (!QFileInfo(folder).isDir())
    throw FileError(u"找不到程序文件夹 %1。"_s.arg(folder));
  auto lock = std::make_unique<QLockFile>(folder + lockFile);
  lock->setStaleLockTime(0);  // only a process that has ended leaves a stale lock
  if (lock->tryLock(0))
    return lock;
  if (lock->error() == QLockFile::LockFailedError)
    throw AlreadyRunning(u"程序正在运行,不允许同时打开多个!!!"_s);
  throw FileError(u"无法在文件夹 %1 中写入文件。"_s.arg(folder));
}

/// The journal that a closed store leaves beside its file.
void removeJournal(const QString& path) {
  QFile::remove(path + u"-journal"_s);
}

/// A fresh store beside its place, put there only when it is whole.
void createStore(const QString& path, StoreKind kind) {
  const QString fresh = path + u".new"_s;
  QFile::remove(fresh);
  try {
    Store store(fresh, StoreAccess::create);
    createSchema(store, kind);
  } catch (...) {
    QFile::remove(fresh);
    removeJournal(fresh);
    throw;
  }
  removeJournal(fresh);
  removeJournal(path);  // what a crash left for the old store must not be played back into the new one
  std::error_code fault;
  std::filesystem::rename(fresh.toStdString(), path.toStdString(), fault);  // replaces an old one in one step
  if (fault) {
    QFile::remove(fresh);
    throw FileError(u"无法写入文件 %1。"_s.arg(path));
  }
}

bool isWritableFolder(const QString& folder) {
  return QFileInfo(folder).isDir() && QFileInfo(folder).isWritable();
}

}  // namespace

Workspace::Workspace(const Folders& folders)
    : folders_(folders),
      lock_(lockFolder(folders.program)),
      gConn(folders.program + dataFile, StoreAccess::readWrite) {
  checkSchema(gConn, StoreKind::main);
  gUserMode = gConn.value("读取用户模式", "SELECT 模式 FROM 用户模式").value_or(0);
}

Workspace::~Workspace() = default;

void Workspace::create(const Folders& folders, bool force) {
  if (!QDir().mkpath(folders.program))
    throw FileError(u"无法建立文件夹 %1。"_s.arg(folders.program));
  const std::unique_ptr<QLockFile> lock = lockFolder(folders.program);
  if (exists(folders) && !force)
    throw FileError(u"文件夹 %1 中已有数据文件，没有改动。"_s.arg(folders.program));
  createStore(folders.program + templateFile, StoreKind::conditionTemplate);
  createStore(folders.program + dataFile, StoreKind::main);
}

bool Workspace::exists(const Folders& folders) {
  return QFileInfo::exists(folders.program + dataFile);
}

Workspace::Folders Workspace::defaultFolders() {
  Folders folders{QCoreApplication::applicationDirPath(), getTempDir()};
  if (!exists(folders) && !isWritableFolder(folders.program))
    folders.program = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
  return folders;
}

}  // namespace elevenfive
