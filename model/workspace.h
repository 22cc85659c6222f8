// The open workspace: the one object that owns the working database and what lives as long as it is open.
#pragma once

#include <QString>
#include <array>
#include <memory>

#include "model/numbers.h"
#include "model/store.h"

class QLockFile;

namespace elevenfive {

class Workspace final {
 public:
  /// Where the program keeps its files. Paths have no trailing separator.
  struct Folders {
    QString program;    ///< data file, template, backup
    QString temporary;  ///< working database
  };

  /// Takes the single-instance lock and opens the data of this folder. Throws AlreadyRunning where another instance has it,
  /// StoreError where the data file is missing, damaged or lacks a table.
  explicit Workspace(const Folders& folders);
  ~Workspace();
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;

  /// Writes a fresh data file and template with the default rows into the folder. Throws FileError where one stands there
  /// already and force is not given; the old ones are replaced only by complete new ones.
  static void create(const Folders& folders, bool force);

  /// Whether the folder holds a data file.
  static bool exists(const Folders& folders);

  /// The folder of the executable where it holds or can hold the data file, else the user's application data folder.
  static Folders defaultFolders();

  [[nodiscard]] const Folders& folders() const noexcept { return folders_; }

 private:
  Folders folders_;
  std::unique_ptr<QLockFile> lock_;

 public:
  Store gConn;  ///< the one connection to the working database

  int gUserMode = 0;  ///< 0 not asked yet, 1 one user, 2 several
  QString gUserName;
  std::array<int, numberCount + 1> yilouNow{};  ///< current miss by number; slot 0 the largest of them
};

}  // namespace elevenfive
