#include "conditions/filledtemplate.h"

#include "conditions/conditioncopy.h"
#include "model/compaction.h"
#include "model/errors.h"
#include "model/store.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

FilledTemplate::FilledTemplate(Store& gConn, const DataFolders& folders, FileAccess& files)
    : files_(files), scratch_(folders.temporary + u"/Temp_user.uVorex"_s) {
  checkDatabase(folders.templateFile(), StoreKind::conditionTemplate);
  try {
    fill(gConn, folders);
  } catch (const Error&) {
    removeScratch();
    throw;
  }
}

FilledTemplate::~FilledTemplate() {
  removeScratch();
}

void FilledTemplate::fill(Store& gConn, const DataFolders& folders) {
  // The journal of a run that was ended while it filled one would be rolled back into the new copy.
  files_.remove(scratch_ + u"-journal"_s);
  replaceByCopy(files_, folders.templateFile(), scratch_);
  compactUserDb(scratch_, false, folders, files_);
  {
    Store file(scratch_, StoreAccess::readWrite);
    copyConditionSet(gConn, file);
  }
  try {
    checkDatabase(scratch_, StoreKind::conditionTemplate);
  } catch (const DamagedData& damage) {
    throw StoreError(u"过滤条件没有保存：%1。"_s.arg(damage.message()));
  }
}

void FilledTemplate::copyTo(const QString& path) {
  replaceByCopy(files_, scratch_, path);
}

void FilledTemplate::removeScratch() {
  try {
    files_.remove(scratch_);
    files_.remove(scratch_ + u"-journal"_s);
  } catch (const FileError&) {
    // The next one removes it first.
  }
}

}  // namespace elevenfive
