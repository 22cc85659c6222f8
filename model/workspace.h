// The open workspace: the one object that owns the working database and what lives as long as it is open.
//
// Its construction is the program's start, close() its end: between the two the data lies unpacked in the temporary folder.
#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "model/datafile.h"
#include "model/fileaccess.h"
#include "model/folderlock.h"
#include "model/folders.h"
#include "model/numbers.h"
#include "model/store.h"

namespace elevenfive {

class Workspace final {
 public:
  using Folders = DataFolders;

  /// What a start may be given beside its folders.
  struct Options {
    FileAccess* files = nullptr;          ///< null: the disk itself
    std::function<void()> unpacked = {};  ///< called once the data is unpacked and this is the only instance
    std::function<void()> restored = {};  ///< called once a working database stands, before its backup is taken
    /// Gets what notices() gives, also where the start fails.
    std::shared_ptr<QStringList> notices = std::make_shared<QStringList>();
  };

  /// Takes the single-instance locks, unpacks the data, keeps what an interrupted run left, restores the backup where that
  /// is called for, compacts with a new backup and opens. Throws AlreadyRunning where another instance has one of the
  /// folders, StoreError where no usable data is there, FileError where a file cannot be read or written.
  explicit Workspace(const Folders& folders) : Workspace(folders, Options{}) {}
  Workspace(const Folders& folders, const Options& options);
  /// close() where it was not called; a fault goes unheard, and the next start keeps the changes in Bak.
  ~Workspace();
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;

  /// Closes gConn and, where anything has changed, puts the data back: packed into Bak, copied over the packed data file.
  /// A working database whose file was removed meanwhile is written anew first. Throws StoreError or FileError where that
  /// fails; the old packed data file then still stands, the changes stay in the working database, or in Bak where that is
  /// gone, and another call tries again. Further calls after a success do nothing.
  void close();

  /// Ends the run with nothing saved: the packed data file stays as it is and the working database goes, unless the packed
  /// data file was not usable.
  void abandon() noexcept;

  /// Ends the run with nothing saved, as a power cut would: what has changed stays in the working database, and the next start
  /// keeps it in Bak.
  void leave() noexcept;

  /// Writes a fresh packed data file and template with the default rows into the folder. Throws FileError where one, or a
  /// backup of one, stands there already and force is not given; old ones are replaced only by complete new ones. The old
  /// data goes to Bak: that of the packed data file, of a pack there that differs from it, and of the backup. A pack that is
  /// not sound stays where it is under another name.
  static void create(const Folders& folders, bool force, FileAccess& files = realFiles());

  /// These folders, or a temporary one of its own below the program folder where both are the same: each holds a file
  /// called elevenfive.dat.
  static Folders apart(Folders folders);

  /// Whether the folder holds a packed data file.
  static bool exists(const Folders& folders);

  /// The program folder of this executable, and the temporary folder.
  static Folders defaultFolders();

  /// The folder of the executables where it holds or can hold the data file, else the user's application data folder. Where
  /// the program is installed, the folder of the executables is shared by all users and holds no data of theirs.
  static QString programFolder(const QString& executables);

  /// Where an installation keeps the files that a program folder begins with, which are read only.
  static Folders shippedFolders(const QString& executables);
  static Folders shippedFolders();

  /// Fills a program folder in which nothing of the program stands yet: from the shipped files where there are any, else
  /// with fresh ones. A folder that holds any of its files is left alone, but for a template that is lost, and unless a filling
  /// was cut off there: then it is finished. Throws AlreadyRunning where an instance has the folder, FileError where it cannot be written.
  static void install(const Folders& folders, const Folders& shipped = shippedFolders(),
                      FileAccess& files = realFiles());

  [[nodiscard]] const Folders& folders() const noexcept { return folders_; }

  /// What the person should know about this start, one sentence each: a damaged file, interrupted work that was kept.
  [[nodiscard]] const QStringList& notices() const noexcept { return data_.notices(); }

  /// Whether anything was written since the start.
  [[nodiscard]] bool hasChanged() const;

 private:
  void rescueRemoved();
  [[noreturn]] void raiseRemoved(const QString& reason);
  void dropRescueCopy() noexcept;

  Folders folders_;
  FileAccess& files_;
  std::vector<FolderLock> locks_;
  DataFile data_;

 public:
  Store gConn;  ///< the one connection to the working database

  int gUserMode = 0;  ///< 0 not asked yet, 1 one user, 2 several
  QString gUserName;
  std::array<int, numberCount + 1> yilouNow{};  ///< current miss by number; slot 0 the largest of them

 private:
  quint32 changeCounter_ = 0;  ///< of the working database when it was opened
  bool rescued_ = false;       ///< its file had to be written anew, and must go back
  QString rescueCopy_;         ///< where its content lies in Bak since it could not be written anew
  bool closed_ = false;
};

}  // namespace elevenfive
