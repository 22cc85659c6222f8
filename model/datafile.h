// The life of the packed data file across one run: unpacked to the temporary folder, worked on there, packed again.
//
//   unpack()    keeps what an interrupted run left, then unpacks the packed data file
//   restore()   puts the backup in its place where no working database is there
//   prepare()   takes a new backup, compacts, applies the size rule
//   putBack()   packs the working database into Bak and copies that pack over the packed data file
//   discard()   drops a working database that nothing has changed
//
// Promises: the packed data file is replaced only by a complete, flushed and compared one, so at no instant is there no good
// copy. A database that is not sound is never started on and never packed. Interrupted work goes to Bak (the newest three
// stay) before anything replaces it; a damaged pack, the one in Bak too, stays where it is under another name. The folders
// must be locked.
#pragma once

#include <QString>
#include <QStringList>
#include <memory>

#include "model/fileaccess.h"
#include "model/folders.h"
#include "model/keptcopies.h"

namespace elevenfive {

class DataFile final {
 public:
  /// The list gets each notice as soon as there is one, so that whoever holds it has them also of a start that fails.
  DataFile(const DataFolders& folders, FileAccess& files,
           std::shared_ptr<QStringList> notices = std::make_shared<QStringList>());

  /// Packs the working database and the side file into the folder Bak; false on any fault.
  bool packToBak();
  /// Unpacks the packed data file into the temporary folder. False on any fault, a database that is not sound included; what
  /// stood there stays.
  bool unpackToTemp();

  /// The first step of a start. Throws FileError where a file cannot be read, written or kept, StoreError where neither the
  /// pack nor the backup nor a working database is usable; nothing is lost then. The sentence of the StoreError names the
  /// newest copy in Bak from which the person can go on, that of a pack that cannot be read the backup.
  void unpack();

  /// The second; afterwards a sound working database stands in the temporary folder. Throws as unpack() does.
  void restore();

  /// The last; afterwards it is compacted, and the backup holds it as it was. Throws as unpack() does.
  void prepare();

  /// Where one of these has failed: makes notices of the copies that it had not come to tell and of which the next start
  /// finds no trace.
  void tellKept();

  /// Puts the working database back and removes it from the temporary folder. Throws StoreError where it is not sound or
  /// another program has it, FileError where a file cannot be written; the packed data file is then the old one and the
  /// working database stays, so that it can be tried again. The sentence says where it is.
  void putBack();

  /// The end of a run that has changed nothing: the pack in Bak is made equal to the packed data file where it is not, and
  /// the working database goes. Nothing depends on it, so a fault goes unheard.
  void leaveUnchanged() noexcept;

  /// Removes the working database and the side file.
  void discard() noexcept;

  /// What the person should know about this start, one sentence each.
  [[nodiscard]] const QStringList& notices() const noexcept { return *notices_; }

  /// Whether the packed data file must be written at the close even where the run changes nothing.
  [[nodiscard]] bool needsPutBack() const noexcept { return needsPutBack_; }

  /// Before all of it is replaced: keeps the databases of the backup and of both packs in Bak, the newest last; a pack that
  /// is not sound stays where it is under another name. Throws FileError or StoreError where that fails.
  void keepAll();

  /// Keeps the database of a pack in Bak; an empty path where the pack is missing or not sound.
  QString keepPack(const QString& packFile);

 private:
  void keepInterrupted();
  void keepStrayPack();
  void tellStrayPack(const QString& text);
  void tellInterrupted();
  void readPackedFile();
  void writePackToBak();
  void useAnother(const QString& reason);
  [[noreturn]] void refuseStart(const QString& reason);
  bool isUsable(const QString& path) const;
  [[nodiscard]] QString newestUsableCopy() const;
  void settleInterrupted();
  void removeJournals();
  void removeLeftovers() noexcept;
  void writeSideFile();

  DataFolders folders_;
  FileAccess& files_;
  KeptCopies copies_;
  std::shared_ptr<QStringList> notices_;
  bool twinStands_ = false;            ///< the pack in Bak equals the packed data file
  QString stray_;                      ///< the copy of a pack in Bak that this start made and has not told yet
  QString interrupted_;                ///< the same of the interrupted run's database
  bool continuesInterrupted_ = false;  ///< the run goes on with that database
  bool needsPutBack_ = false;
};

/// Gives a damaged file a name beside its place that nothing has yet, under which it can stay, and returns that. Throws FileError.
QString keepDamaged(FileAccess& files, const QString& path);
/// The same for a file that a new one is to replace.
QString formerName(const QString& path);

/// From this size on, in bytes, a compacted working database is replaced by the backup just taken of it.
inline constexpr qint64 largestCompacted = 51685169;

}  // namespace elevenfive
