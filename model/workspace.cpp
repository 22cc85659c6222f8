#include "model/workspace.h"

#include <SQLiteCpp/Database.h>
#include <sqlite3.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QtEndian>
#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "model/compaction.h"
#include "model/defaultrows.h"
#include "model/errors.h"
#include "model/packfile.h"
#include "model/schema.h"
#include "model/sideicon.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Why the system's temporary folder cannot hold one of the program's.
QString temporaryFault() {
  const QString system = QDir::tempPath();  // empty where it does not exist
  if (system.isEmpty())
    return u"系统的临时文件夹 %1 不存在，请检查环境变量 TMPDIR。"_s.arg(qEnvironmentVariable("TMPDIR"));
  if (!isWritableFolder(system))
    return u"系统的临时文件夹 %1 不能写入。"_s.arg(system);
  return u"系统的临时文件夹 %1 中不能建立本程序的文件夹：同名的文件已存在，或属于其他用户。"_s.arg(system);
}

std::vector<FolderLock> lockFolders(const DataFolders& folders, FileAccess& files) {
  if (!QFileInfo(folders.program).isDir())
    throw FileError(u"找不到程序文件夹 %1。"_s.arg(folders.program));
  if (folders.temporary.isEmpty())
    throw FileError(temporaryFault());
  makePrivateFolder(files, folders.temporary);
  std::vector<FolderLock> locks;
  locks.emplace_back(folders.program);
  locks.emplace_back(folders.temporary);
  return locks;
}

/// Runs the start's file steps, so that the store can be opened behind them.
DataFile& made(DataFile& data, const Workspace::Options& options) {
  try {
    data.unpack();
    if (options.unpacked)
      options.unpacked();
    data.restore();
    if (options.restored)
      options.restored();
    data.prepare();
  } catch (const Error&) {
    data.tellKept();
    throw;
  }
  return data;
}

/// SQLite counts its writing transactions in the file's header.
quint32 changeCounter(const QString& path) {
  constexpr qint64 place = 24;
  QFile file(path);
  std::array<char, 4> bytes{};
  if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || !file.seek(place) ||
      file.read(bytes.data(), bytes.size()) != qint64{bytes.size()})
    throw FileError(u"无法读取文件 %1。"_s.arg(path));
  return qFromBigEndian<quint32>(bytes.data());
}

/// Whether the file of an open store is no longer what stands under its name.
bool isRemoved(Store& store) {
  int moved = 0;
  return sqlite3_file_control(store.database().getHandle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK &&
         moved != 0;
}

/// A fresh store in a scratch file.
void createStore(FileAccess& files, const QString& path, StoreKind kind) {
  files.remove(path);
  {
    Store store(path, StoreAccess::create);
    createSchema(store, kind);
  }
  files.remove(path + u"-journal"_s);
}

/// Stands in a program folder for as long as it is being filled.
QString fillingMark(const DataFolders& folders) {
  return folders.program + u"/elevenfive.installing"_s;
}

/// Whether anything stands in the folders that only a run or a filling leaves there.
bool holdsAnything(const DataFolders& folders) {
  const QString traces[] = {folders.packedFile(), folders.backupFile(), folders.templateFile(), folders.bakFolder(),
                            folders.workingFile()};
  return std::any_of(std::begin(traces), std::end(traces), [](const QString& path) { return QFileInfo::exists(path); });
}

/// Whether data stands there whose packed data file is gone: the next start would go on with it, or name the copy that holds
/// it.
bool holdsFormerData(const DataFolders& folders, FileAccess& files) {
  return QFileInfo::exists(folders.backupFile()) || QFileInfo::exists(folders.packInTransit()) ||
         !KeptCopies(folders.bakFolder(), files).list().isEmpty();
}

/// A fresh template.
void writeTemplate(const DataFolders& folders, FileAccess& files) {
  createStore(files, folders.userScratch(), StoreKind::conditionTemplate);
  replaceByCopy(files, folders.userScratch(), folders.templateFile());
  files.remove(folders.userScratch());
}

/// A fresh packed data file with the default rows and the icon.
void writePackedFile(const DataFolders& folders, FileAccess& files) {
  const QString icon = folders.mainScratch() + u".ico"_s;
  const QByteArray picture = sideIcon();
  createStore(files, folders.mainScratch(), StoreKind::main);
  replaceFile(
      files, icon, [&](OutputFile& file) { file.write(picture.constData(), picture.size()); }, [](const QString&) {});
  writePack(folders.mainScratch(), icon, folders.packedFile(), files);
  files.remove(folders.mainScratch());
  files.remove(icon);
}

bool isShipped(const DataFolders& shipped) {
  return Workspace::exists(shipped) && QFileInfo::exists(shipped.templateFile());
}

/// The template that an installation begins with.
void installTemplate(const DataFolders& folders, const DataFolders& shipped, FileAccess& files) {
  if (isShipped(shipped))
    replaceByCopy(files, shipped.templateFile(), folders.templateFile());
  else
    writeTemplate(folders, files);
}

/// Beside data that stands. The program works without its template, so nothing of this keeps it from starting.
void installLostTemplate(const DataFolders& folders, const DataFolders& shipped, FileAccess& files) {
  try {
    const std::vector<FolderLock> locks = lockFolders(folders, files);
    installTemplate(folders, shipped, files);
  } catch (const Error&) {
    // What needs the template tells that it is lost.
  }
}

}  // namespace

Workspace::Workspace(const Folders& folders, const Options& options)
    : folders_(apart(folders)),
      files_(options.files ? *options.files : realFiles()),
      locks_(lockFolders(folders_, files_)),
      data_(folders_, files_, options.notices),
      gConn((made(data_, options), folders_.workingFile()), StoreAccess::readWrite) {
  checkSchema(gConn, StoreKind::main);
  changeCounter_ = changeCounter(gConn.path());
  insertLostRows(gConn);
  gUserMode = gConn.value("读取用户模式", "SELECT 模式 FROM 用户模式").value_or(0);
}

Workspace::~Workspace() {
  try {
    close();
  } catch (const Error&) {
    // Nothing is lost: the working database stays.
  }
}

bool Workspace::hasChanged() const {
  return changeCounter(gConn.path()) != changeCounter_;
}

void Workspace::close() {
  if (closed_)
    return;
  rescueRemoved();
  gConn.close();
  if (rescued_ || hasChanged() || data_.needsPutBack())
    data_.putBack();
  else
    data_.leaveUnchanged();
  dropRescueCopy();
  closed_ = true;
  locks_.clear();
}

/// Whoever clears the temporary folder while the program runs takes the file's name only: the connection still has its
/// content. What stands under the name by now is not ours.
void Workspace::rescueRemoved() {
  if (!gConn.isOpen() || !isRemoved(gConn))
    return;
  rescued_ = true;
  try {
    makePrivateFolder(files_, folders_.temporary);
    if (!locks_.back().isCurrent())  // it went too, and another instance may have the folder now
      locks_.emplace_back(folders_.temporary);
    if (QFileInfo::exists(folders_.workingFile()))
      KeptCopies(folders_.bakFolder(), files_).keep(folders_.workingFile());
    files_.remove(folders_.mainScratch());
    gConn.execute("保存数据", "VACUUM INTO ?", folders_.mainScratch());
    files_.rename(folders_.mainScratch(), folders_.workingFile());
  } catch (const Error& fault) {
    raiseRemoved(fault.message());
  }
}

/// Where the working database cannot be written anew its content goes to Bak at once: once the connection is closed nothing
/// else holds it.
void Workspace::raiseRemoved(const QString& reason) {
  const QString scratch = nameBeside(folders_.packInTransit());
  QString what = u"本次的改动还没有保存。"_s;
  try {
    files_.makeFolder(folders_.bakFolder());
    files_.remove(scratch);
    gConn.execute("保存数据", "VACUUM INTO ?", scratch);
    const QString copy = KeptCopies(folders_.bakFolder(), files_).keep(scratch);
    if (copy != rescueCopy_)
      dropRescueCopy();
    rescueCopy_ = copy;
    what = u"本次的改动已保存为 %1。"_s.arg(copy);
    files_.remove(scratch);
  } catch (const Error&) {
    // The sentence says how far it got; the next start removes the scratch file.
  }
  throw FileError(reason + u"工作数据库 %1 在运行中被删除，"_s.arg(folders_.workingFile()) + what);
}

/// What has been put back after all, or kept anew, need not stay in Bak.
void Workspace::dropRescueCopy() noexcept {
  try {
    if (!rescueCopy_.isEmpty())
      files_.remove(rescueCopy_);
    rescueCopy_.clear();
  } catch (const Error&) {
    // Rather one copy too many.
  }
}

void Workspace::abandon() noexcept {
  if (closed_)
    return;
  gConn.close();
  if (!data_.needsPutBack())  // else the working database may be all there is
    data_.discard();
  closed_ = true;
  locks_.clear();
}

void Workspace::leave() noexcept {
  if (closed_)
    return;
  try {
    rescueRemoved();
  } catch (const Error&) {
    // What could be saved lies in Bak.
  }
  gConn.close();
  bool kept = true;
  try {
    kept = rescued_ || hasChanged() || data_.needsPutBack();
  } catch (const Error&) {
    // Rather one copy too many.
  }
  if (!kept)
    data_.discard();
  closed_ = true;
  locks_.clear();
}

Workspace::Folders Workspace::apart(Folders folders) {
  if (QFileInfo(folders.program).absoluteFilePath() == QFileInfo(folders.temporary).absoluteFilePath() ||
      (QFileInfo::exists(folders.program) &&
       QFileInfo(folders.program).canonicalFilePath() == QFileInfo(folders.temporary).canonicalFilePath()))
    folders.temporary = folders.program + u"/Temp"_s;
  return folders;
}

void Workspace::create(const Folders& given, bool force, FileAccess& files) {
  const Folders folders = apart(given);
  files.makeFolder(folders.program);
  const std::vector<FolderLock> locks = lockFolders(folders, files);
  if (exists(folders) && !force)
    throw FileError(u"文件夹 %1 中已有数据文件，没有改动。"_s.arg(folders.program));
  if (!force && !exists(folders) && holdsFormerData(folders, files))
    throw FileError(u"文件夹 %1 中没有数据文件，但还有以前的备份，没有改动。"_s.arg(folders.program));
  DataFile(folders, files).keepAll();

  writeTemplate(folders, files);
  writePackedFile(folders, files);
  if (QFileInfo::exists(folders.packInTransit()))
    replaceByCopy(files, folders.packedFile(), folders.packInTransit());
}

bool Workspace::exists(const Folders& folders) {
  return QFileInfo::exists(folders.packedFile());
}

Workspace::Folders Workspace::defaultFolders() {
  return {programFolder(QCoreApplication::applicationDirPath()), getTempDir()};
}

QString Workspace::programFolder(const QString& executables) {
  const Folders beside{executables, {}};
  const bool canHold = isWritableFolder(executables) && !exists(shippedFolders(executables));
  return exists(beside) || canHold ? executables : QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

Workspace::Folders Workspace::shippedFolders() {
  return shippedFolders(QCoreApplication::applicationDirPath());
}

Workspace::Folders Workspace::shippedFolders(const QString& executables) {
  return {executables + u"/../share/elevenfive"_s, {}};
}

void Workspace::install(const Folders& given, const Folders& shipped, FileAccess& files) {
  const Folders folders = apart(given);
  const QString mark = fillingMark(folders);
  if (!QFileInfo::exists(mark) && holdsAnything(folders)) {
    if (exists(folders) && !QFileInfo::exists(folders.templateFile()))
      installLostTemplate(folders, shipped, files);
    return;
  }
  files.makeFolder(folders.program);
  const std::vector<FolderLock> locks = lockFolders(folders, files);
  if (!QFileInfo::exists(mark)) {
    if (holdsAnything(folders))
      return;  // another instance was faster
    replaceFile(
        files, mark, [](OutputFile&) {}, [](const QString&) {});
  }
  installTemplate(folders, shipped, files);
  // Once the packed data file stands it is complete, and may hold a person's work.
  if (!exists(folders)) {
    if (isShipped(shipped))
      replaceByCopy(files, shipped.packedFile(), folders.packedFile());
    else
      writePackedFile(folders, files);
  }
  files.remove(mark);
}

}  // namespace elevenfive
