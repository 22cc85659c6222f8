// Packs of plain files; the data itself stays closed.
#include <QString>
#include <optional>

#include "cli/command.h"
#include "cli/session.h"
#include "cli/values.h"
#include "model/errors.h"
#include "model/folderlock.h"
#include "model/ownfiles.h"
#include "model/packfile.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

Action preparePack(const Arguments& arguments) {
  const QString file1 = pathOf(arguments, u"FILE1"_s);
  const QString file2 = pathOf(arguments, u"FILE2"_s);
  const QString pack = pathOf(arguments, u"PACK"_s);
  return [file1, file2, pack](Session& session) {
    std::optional<FolderLock> alone;
    if (isSamePlace(pack, session.folders().packedFile())) {  // which is a pack, and meant where it is named
      session.close();  // a run under way, ours or a window's, would write it over at its end
      alone.emplace(session.folders().program);
    } else {
      demandForeignFile(pack, session.folders());
    }
    writePack(file1, file2, pack, realFiles());
  };
}

Action prepareUnpack(const Arguments& arguments) {
  const QString pack = pathOf(arguments, u"PACK"_s);
  const QString file2 = pathOf(arguments, u"FILE2"_s);
  const QString file1 = pathOf(arguments, u"FILE1"_s);
  return [pack, file2, file1](Session& session) {
    for (const QString& path : {file1, file2})
      demandForeignFile(path, session.folders());
    try {
      readPack(pack, file2, file1, realFiles(), [](const QString&) {});
    } catch (const DamagedData& fault) {
      throw FileError(u"无法解开文件 %1：%2。"_s.arg(pack, fault.message()));
    }
  };
}

constexpr QStringView packsText = u"packFiles, unpackFiles on plain files";

constexpr Command commands[] = {
    {u"pack FILE1 FILE2 PACK", packsText, u"", preparePack},
    {u"unpack PACK FILE2 FILE1", packsText, u"", prepareUnpack},
};

}  // namespace

std::span<const Command> packCommands() {
  return commands;
}

}  // namespace elevenfive
