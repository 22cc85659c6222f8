#include "model/ownfiles.h"

#include "tests/model/datalife.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class OwnFiles : public DataLife {
 protected:
  static QString faultOf(const std::function<void()>& call) {
    try {
      call();
    } catch (const FileError& fault) {
      return fault.message();
    }
    return {};
  }

  static QString refusal(const QString& path) { return u"文件 %1 是程序自己的文件，请换一个文件名。"_s.arg(path); }

  QStringList own() const {
    QStringList paths{folders.packInTransit(), folders.bakFolder() + u"/elevenfive-0001-20261121-100000.bak"_s,
                      folders.workingFile(),   folders.workingFile() + u"-journal"_s,
                      folders.sideFile(),      folders.mainScratch(),
                      folders.userScratch()};
    for (const char* name : {"elevenfive.dat", "elevenfive.dat.damaged-20261121-100000", "elevenfive.bak",
                             "TJmode.tjmod", "elevenfive.lock", "甲.uVorex", "甲.uVorex.old-20261121-100000",
                             "elevenfive", "elevenfive-cli", "elevenfive-page"})
      paths << folders.program + u'/' + QString::fromUtf8(name);
    return paths;
  }

  QStringList foreign() const {
    QStringList paths{folder.filePath(u"elevenfive.dat"_s), folder.filePath(u"甲.uVorex"_s), u"none/elevenfive.dat"_s};
    for (const char* name : {"elevenfive.txt", "elevenfive-draws.txt", "条件设置1121.Vorex", "daocuTemp.txt"})
      for (const QString& place : {folders.program, folders.temporary, folders.bakFolder()})
        paths << place + u'/' + QString::fromUtf8(name);
    return paths;
  }
};

TEST_F(OwnFiles, AreRefusedInTheProgramsFoldersWhetherTheyAreThereOrNot) {
  runWriting(7);
  for (const QString& path : own())
    EXPECT_EQ(faultOf([&] { demandForeignFile(path, folders); }), refusal(path));
  for (const QString& path : foreign())
    EXPECT_EQ(faultOf([&] { demandForeignFile(path, folders); }), QString()) << path.toStdString();
}

TEST_F(OwnFiles, AreKnownWithoutTheFoldersWhileTheDataIsOpen) {
  runWriting(7);
  Workspace workspace(folders, {&unflushed, {}});
  for (const QString& path : own())
    EXPECT_EQ(faultOf([&] { demandForeignFile(path); }), refusal(path));
  for (const QString& path : foreign())
    EXPECT_EQ(faultOf([&] { demandForeignFile(path); }), QString()) << path.toStdString();
}

TEST_F(OwnFiles, AreSeenThroughLinksAndOtherWaysOfWriting) {
  const QString link = folder.filePath(u"link.txt"_s);
  const QString linked = folder.filePath(u"linked"_s);
  ASSERT_TRUE(QFile::link(folders.packedFile(), link) && QFile::link(folders.program, linked));
  for (const QString& path :
       {link, linked + u"/elevenfive.dat"_s, folders.program + u"/../program//./elevenfive.dat"_s})
    EXPECT_EQ(faultOf([&] { demandForeignFile(path, folders); }), refusal(path));
}

}  // namespace
}  // namespace elevenfive
