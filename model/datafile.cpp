#include "model/datafile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <utility>

#include "model/compaction.h"
#include "model/errors.h"
#include "model/packfile.h"
#include "model/sideicon.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// What SQLite may leave beside a database whose process was ended.
constexpr QLatin1StringView journalSuffixes[] = {QLatin1StringView("-journal"), QLatin1StringView("-wal"),
                                                 QLatin1StringView("-shm")};

/// A name that nothing has yet: the time and, where that is not enough, a number are put behind it.
QString freeName(const QString& beginning) {
  const QString stamped = beginning + QDateTime::currentDateTime().toString(u"yyyyMMdd-HHmmss"_s);
  QString name = stamped;
  for (int n = 2; QFileInfo::exists(name); ++n)
    name = stamped + u"-%1"_s.arg(n);
  return name;
}

bool canBeReadToItsEnd(QFile& file) {
  std::array<char, 1 << 16> piece{};
  qint64 size = 1;
  while (size > 0)
    size = file.read(piece.data(), piece.size());
  return size == 0;
}

/// A pack that cannot be read says nothing about its content: nothing is moved or chosen because of it.
void demandReadable(const DataFolders& folders, const QString& path) {
  QFile pack(path);
  if (!pack.exists())
    return;
  QString sentence;
  if (!QFileInfo(pack).isFile())
    sentence = u"无法打开文件 %1：它不是普通文件。"_s;
  else if (!pack.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
    sentence = u"无法打开文件 %1，请检查它的权限。"_s;
  else if (!canBeReadToItsEnd(pack))
    sentence = u"无法读取文件 %1，请检查磁盘。"_s;
  else
    return;
  sentence = sentence.arg(path);
  if (path == folders.packedFile() && QFileInfo::exists(folders.backupFile()))
    sentence += u"上次启动时的数据还保存在 %1 中。"_s.arg(folders.backupFile());
  throw FileError(sentence);
}

}  // namespace

QString keepDamaged(FileAccess& files, const QString& path) {
  QString name = freeName(path + u".damaged-"_s);
  files.rename(path, name);
  return name;
}

QString formerName(const QString& path) {
  return freeName(path + u".old-"_s);
}

DataFile::DataFile(const DataFolders& folders, FileAccess& files, std::shared_ptr<QStringList> notices)
    : folders_(folders), files_(files), copies_(folders.bakFolder(), files), notices_(std::move(notices)) {}

bool DataFile::packToBak() {
  try {
    writePackToBak();
    return true;
  } catch (const Error&) {
    return false;
  }
}

bool DataFile::unpackToTemp() {
  try {
    readPackedFile();
    return true;
  } catch (const Error&) {
    return false;
  }
}

void DataFile::unpack() {
  makePrivateFolder(files_, folders_.temporary);
  keepStrayPack();
  keepInterrupted();  // the newer work: it gets the higher number
  bool packIsSound = false;
  if (!QFileInfo::exists(folders_.packedFile())) {
    useAnother({});
  } else {
    try {
      readPackedFile();
      packIsSound = true;
    } catch (const DamagedData& damage) {
      useAnother(damage.message());
    }
  }
  // Beside a pack that is sound the one in Bak is what a close could not put in its place, or someone has put back an older
  // one; otherwise it is the last close's work, which was put back and is gone since.
  tellStrayPack(packIsSound ? u"Bak 中的数据与数据文件不同，上次退出时可能没有写回，已保存为 %1。"_s
                            : u"上次退出时的数据已保存为 %1。"_s);
}

void DataFile::restore() {
  if (QFileInfo::exists(folders_.workingFile()))
    return;
  removeJournals();
  replaceByCopy(files_, folders_.backupFile(), folders_.workingFile());
}

void DataFile::prepare() {
  if (!QFileInfo::exists(folders_.sideFile()))
    writeSideFile();
  const QString fault = compactMainDb(folders_.workingFile(), true, folders_, files_);
  if (!fault.isEmpty()) {
    *notices_ << fault;
  } else if (QFileInfo(folders_.workingFile()).size() >= largestCompacted) {
    replaceByCopy(files_, folders_.backupFile(), folders_.workingFile());
  }
  settleInterrupted();
}

void DataFile::putBack() {
  const QString whereItIs = u"本次的改动没有写回数据文件，还保存在 %1 中。"_s.arg(folders_.workingFile());
  try {
    checkDatabase(folders_.workingFile(), StoreKind::main,
                  CheckDepth::pages);  // values are looked at as they are written
  } catch (const DamagedData& damage) {
    throw StoreError(u"工作数据库 %1 已损坏（%2），没有写回，原来的数据文件没有改动。"_s.arg(folders_.workingFile(),
                                                                                             damage.message()));
  } catch (const StoreError& fault) {
    throw StoreError(fault.message() + whereItIs);
  }
  try {
    if (!QFileInfo::exists(folders_.sideFile()))
      writeSideFile();
    writePackToBak();
    replaceByCopy(files_, folders_.packInTransit(), folders_.packedFile());
  } catch (const FileError& fault) {
    throw FileError(fault.message() + whereItIs);
  }
  discard();
}

void DataFile::leaveUnchanged() noexcept {
  try {
    if (!twinStands_) {
      files_.makeFolder(folders_.bakFolder());
      replaceByCopy(files_, folders_.packedFile(), folders_.packInTransit());
    }
  } catch (const Error&) {
    // The packed data file stands; the next close makes its twin.
  }
  discard();
}

void DataFile::discard() noexcept {
  try {
    files_.remove(folders_.workingFile());
    removeJournals();
    files_.remove(folders_.sideFile());
  } catch (const FileError&) {
    // What is left equals what was packed; the next start sees that and replaces it.
  }
}

void DataFile::keepAll() {
  if (QFileInfo(folders_.backupFile()).size() > 0)
    copies_.keep(folders_.backupFile());
  for (const QString& pack :
       {folders_.packedFile(), folders_.packInTransit()})  // where they differ, a close was cut off
    if (QFileInfo::exists(pack) && keepPack(pack).isEmpty())
      keepDamaged(files_, pack);
}

QString DataFile::keepPack(const QString& packFile) {
  const QString database = folders_.mainScratch();
  const QString icon = database + u".ico"_s;
  QString copy;
  try {
    readPack(packFile, icon, database, files_, [](const QString& fresh) { checkDatabase(fresh, StoreKind::main); });
    copy = copies_.keep(database);
  } catch (const DamagedData&) {
    // Nothing in it that could be kept.
  }
  files_.remove(database);
  files_.remove(icon);
  return copy;
}

void DataFile::writePackToBak() {
  files_.makeFolder(folders_.bakFolder());
  writePack(folders_.workingFile(), folders_.sideFile(), folders_.packInTransit(), files_);
}

/// The journal of the former working database must be gone before another one takes its name: it would be rolled back into
/// the new one. A pack whose twin in Bak holds the same bytes is what the last close has written.
void DataFile::readPackedFile() {
  const CheckDepth depth = twinStands_ ? CheckDepth::pages : CheckDepth::values;
  readPack(folders_.packedFile(), folders_.sideFile(), folders_.workingFile(), files_, [&](const QString& fresh) {
    checkDatabase(fresh, StoreKind::main, depth);
    removeJournals();
  });
}

/// A working database that is there now was left by a run that did not end: it goes to Bak before anything replaces it,
/// unless it holds just what the pack holds.
void DataFile::keepInterrupted() {
  const QString& working = folders_.workingFile();
  if (QFileInfo(working).size() == 0)
    return;
  bool readable = true;
  try {
    // Opening it undoes what its last transaction did not finish. Nothing less than a writing connection does that.
    Store store(working, StoreAccess::readWrite);
  } catch (const StoreError&) {
    readable = false;
  }
  if (packHolds(folders_.packedFile(), working))
    return;
  const QString copy = copies_.keep(working);
  const QString journal = working + journalSuffixes[0];
  if (!readable && QFileInfo(journal).size() > 0)
    replaceByCopy(files_, journal, copy + journalSuffixes[0]);
  interrupted_ = copy;
}

/// The pack in Bak differs from the packed data file only where the last step of a close failed, or where someone has taken
/// the packed data file away or damaged it: then it may be the newest work there is, also where it is not sound.
/// Throws FileError before anything is moved where either cannot be read.
void DataFile::keepStrayPack() {
  const QString stray = folders_.packInTransit();
  const bool strayStands = QFileInfo(stray).isFile();  // opening a pipe would wait for ever
  twinStands_ = strayStands && QFileInfo(folders_.packedFile()).isFile() && sameContent(stray, folders_.packedFile());
  if (twinStands_)  // both have been read to their end
    return;
  demandReadable(folders_, folders_.packedFile());
  if (!strayStands)
    return;
  demandReadable(folders_, stray);
  const QString copy = keepPack(stray);
  if (!copy.isEmpty()) {
    files_.remove(stray);  // else each start would keep it anew, in the place of newer work
    stray_ = copy;
    return;
  }
  // Under its own name the next close writes over it.
  *notices_ << u"Bak 中的数据包已损坏，保留为 %1。"_s.arg(keepDamaged(files_, stray));
}

void DataFile::tellStrayPack(const QString& text) {
  if (stray_.isEmpty() || stray_ == interrupted_)  // a close that was cut off: it is told as such
    return;
  *notices_ << text.arg(stray_);
  stray_.clear();
}

void DataFile::tellInterrupted() {
  *notices_ << u"上次没有正常退出，当时没有保存的数据留在 %1。"_s.arg(interrupted_);
}

/// Work that still stands in the temporary folder is found again, and told then.
void DataFile::tellKept() {
  tellStrayPack(u"Bak 中的数据已保存为 %1。"_s);
  if (!interrupted_.isEmpty() && !continuesInterrupted_ && !sameContent(interrupted_, folders_.workingFile()))
    tellInterrupted();
}

bool DataFile::isUsable(const QString& path) const {
  if (!QFileInfo(path).isFile())
    return false;
  try {
    checkDatabase(path, StoreKind::main);
    return true;
  } catch (const DamagedData&) {
    return false;
  }
}

/// Chooses what takes the place of a pack that is missing (no reason) or damaged. With no pack at all a working database that
/// is still there goes before the backup; with a damaged one the backup goes first.
void DataFile::useAnother(const QString& reason) {
  const bool missing = reason.isEmpty();
  const bool hasBackup = isUsable(folders_.backupFile());
  const bool useWorking = (missing || !hasBackup) && isUsable(folders_.workingFile());
  if (!useWorking && !hasBackup)
    refuseStart(reason);
  if (!missing) {
    const QString name = keepDamaged(files_, folders_.packedFile());
    *notices_ << u"数据文件已损坏（%1），已改用%2；损坏的文件保留为 %3。"_s.arg(
        reason, useWorking ? u"上次没有保存的数据"_s : u"备份"_s, name);
  } else if (!useWorking) {
    *notices_ << u"找不到数据文件，已改用备份。"_s;
  } else {
    *notices_ << u"找不到数据文件，已改用上次没有保存的数据。"_s;
  }
  if (!hasBackup && QFileInfo(folders_.backupFile()).isFile())  // the backup of this start would replace it
    *notices_ << u"备份文件也已损坏，保留为 %1。"_s.arg(keepDamaged(files_, folders_.backupFile()));
  if (useWorking)
    continuesInterrupted_ = true;
  if (!useWorking) {
    files_.remove(folders_.workingFile());
    removeJournals();
  }
  needsPutBack_ = true;
}

/// No pack, no backup, no working database. Copies in Bak are never started on unasked: they may be of any age.
void DataFile::refuseStart(const QString& reason) {
  const QString copy = newestUsableCopy();
  QString sentence = u"找不到数据文件，也没有备份，程序无法启动，请重新安装！"_s;
  if (!reason.isEmpty())
    sentence = u"数据文件已损坏（%1），没有可用的备份，程序无法启动。"_s.arg(reason);
  else if (QFileInfo::exists(folders_.backupFile()))
    sentence = u"找不到数据文件，备份文件已损坏，程序无法启动。"_s;
  else if (!copy.isEmpty())
    sentence = u"找不到数据文件，也没有备份，程序无法启动。"_s;  // installing anew is the last thing to do here
  if (!copy.isEmpty()) {
    if (copy == stray_)
      stray_.clear();  // named once is enough
    sentence += u"以前的数据保存在 %1 中，把它复制为 %2 就能继续使用。"_s.arg(copy, folders_.backupFile());
  }
  throw StoreError(sentence);
}

QString DataFile::newestUsableCopy() const {
  const QStringList copies = copies_.list();
  const auto newest = std::find_if(copies.rbegin(), copies.rend(), [this](const QString& copy) {
    try {
      return isUsable(copy);
    } catch (const StoreError&) {
      return false;  // another program has it
    }
  });
  return newest == copies.rend() ? QString() : *newest;
}

/// A copy that holds no more than the working database just compacted need not stay, where a packed data file stands.
void DataFile::settleInterrupted() {
  if (!interrupted_.isEmpty()) {
    if (!needsPutBack_ && sameContent(interrupted_, folders_.workingFile()))
      files_.remove(interrupted_);
    else if (!continuesInterrupted_)
      tellInterrupted();
    interrupted_.clear();
  }
  copies_.prune();
  removeLeftovers();
}

void DataFile::removeJournals() {
  for (const QLatin1StringView suffix : journalSuffixes)
    files_.remove(folders_.workingFile() + suffix);
}

/// What processes that were ended left of files that never came into their places. All of it is ours: the folders are locked.
void DataFile::removeLeftovers() noexcept {
  const std::pair<QString, QStringList> leftovers[] = {
      {folders_.program, {u"elevenfive.*.new"_s, u"TJmode.tjmod*.new"_s, u"*.uVorex*.new"_s}},
      {folders_.bakFolder(), {u"elevenfive.dat*.new"_s}},
      {folders_.temporary, {u"elevenfive.*.new"_s, u"Temp_fu*.mdb*"_s, u"Temp_user.uVorex*"_s}},
  };
  try {
    for (const auto& [folder, names] : leftovers)
      for (const QString& name : QDir(folder).entryList(names, QDir::Files))
        files_.remove(folder + u'/' + name);
  } catch (const FileError&) {
    // They are in nobody's way; the next start tries again.
  }
}

void DataFile::writeSideFile() {
  const QByteArray icon = sideIcon();
  replaceFile(
      files_, folders_.sideFile(), [&](OutputFile& file) { file.write(icon.constData(), icon.size()); },
      [](const QString&) {});
}

}  // namespace elevenfive
