#include "conditions/conditiontemplate.h"

#include "conditions/conditioncopy.h"
#include "model/compaction.h"
#include "model/errors.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// The copy that is filled; gone with the object.
class Scratch final {
 public:
  Scratch(const DataFolders& folders, FileAccess& files)
      : path(folders.temporary + u"/Temp_user.uVorex"_s), files_(files) {}
  ~Scratch() {
    try {
      files_.remove(path);
      files_.remove(journal());
    } catch (const FileError&) {
      // The next one removes it first.
    }
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  [[nodiscard]] QString journal() const { return path + u"-journal"_s; }

  const QString path;

 private:
  FileAccess& files_;
};

/// With the template known to be sound, whatever does not fit is the main database's.
void copyInto(const QString& path, Store& gConn) {
  Store file(path, StoreAccess::readWrite);
  demandAllRows(file);
  demandOwnRows(gConn);
  try {
    copyConditionSet(gConn, file);
  } catch (const DamagedData& damage) {
    raiseOwnDamage(damage);
  }
}

}  // namespace

void fillTemplate(Store& gConn, const DataFolders& folders, FileAccess& files) {
  checkDatabase(folders.templateFile(), StoreKind::conditionTemplate);
  makePrivateFolder(files, folders.temporary);  // someone may have cleared it away while the program runs
  const Scratch scratch(folders, files);
  // The journal of a run that was ended while it filled one would be rolled back into the new copy.
  files.remove(scratch.journal());
  replaceByCopy(files, folders.templateFile(), scratch.path);
  compactUserDb(scratch.path, false, folders, files);
  copyInto(scratch.path, gConn);
  try {
    checkDatabase(scratch.path, StoreKind::conditionTemplate);
  } catch (const DamagedData& damage) {
    throw StoreError(u"过滤条件没有保存：%1。"_s.arg(damage.message()));
  }
  replaceByCopy(files, scratch.path, folders.templateFile());
}

}  // namespace elevenfive
