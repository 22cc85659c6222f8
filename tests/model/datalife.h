// What the tests of the data file's life share: a program folder, its temporary folder, and one value in it.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <functional>

#include "model/errors.h"
#include "model/packfile.h"
#include "model/workspace.h"
#include "tests/support/faultyfiles.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

/// Another program that has a file to itself.
class FileOfAnother final {
 public:
  explicit FileOfAnother(const QString& path) : store_(path, StoreAccess::readWrite) {
    store_.executeScript("test", "BEGIN EXCLUSIVE");
  }

 private:
  Store store_;
};

class DataLife : public ::testing::Test {
 protected:
  DataLife() { Workspace::create(folders, false, unflushed); }

  QTemporaryDir folder;
  mutable UnflushedFiles unflushed;
  Workspace::Folders folders{folder.filePath(QStringLiteral("program")), folder.filePath(QStringLiteral("temp"))};

  static QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
  }

  static void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
  }

  /// Writes other bytes over the middle of a file.
  static void spoil(const QString& path, qint64 offset, qint64 size) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.seek(offset));
    ASSERT_EQ(file.write(QByteArray(size, '\xA5')), size);
  }

  static int valueOf(Store& store) {
    return store.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900").value_or(-1);
  }

  static void setValue(Store& store, int value) {
    store.execute("test", "UPDATE 过滤条件 SET VALUE = ? WHERE ID = 3900", value);
  }

  /// One whole run that writes the value.
  void runWriting(int value) const {
    Workspace workspace(folders, {&unflushed, {}});
    setValue(workspace.gConn, value);
    workspace.close();
  }

  /// One run that writes the value and ends without a close.
  void crashWriting(int value) const {
    crash([value](Store& store) { setValue(store, value); });
  }

  /// One run that does this and then loses its disk, so that no step of a close works.
  void crash(const std::function<void(Store&)>& action) const {
    FaultyFiles files;
    Workspace workspace(folders, {&files, {}});
    action(workspace.gConn);
    files.failingStep = 0;
  }

  /// The value that the next start finds.
  int nextStart() const {
    Workspace workspace(folders, {&unflushed, {}});
    const int value = valueOf(workspace.gConn);
    workspace.close();
    return value;
  }

  /// The sentence with which a start, or its close, ends.
  QString startFault() const {
    try {
      Workspace workspace(folders, {&unflushed, {}});
      workspace.close();
    } catch (const Error& fault) {
      return fault.message();
    }
    return QStringLiteral("no fault");
  }

  static int valueInFile(const QString& path) {
    Store store(path, StoreAccess::readOnly);
    return valueOf(store);
  }

  QStringList programFiles(const QString& pattern = QStringLiteral("*")) const {
    return QDir(folders.program).entryList({pattern}, QDir::Files, QDir::Name);
  }

  QStringList keptCopies() const {
    return QDir(folders.bakFolder()).entryList({QStringLiteral("elevenfive-*.bak")}, QDir::Files, QDir::Name);
  }

  QString pathOfCopy(qsizetype index) const { return folders.bakFolder() + u'/' + keptCopies().value(index); }

  /// The values in the kept copies, by their names.
  QList<int> keptValues() const {
    QList<int> values;
    for (const QString& name : keptCopies())
      values << valueInFile(folders.bakFolder() + u'/' + name);
    return values;
  }

  /// Takes the packed data file away and puts one of another value into Bak, as a close whose last copy failed leaves it.
  void strayPack(int value) const {
    const QByteArray pack = read(folders.packedFile());
    runWriting(value);
    write(folders.packedFile(), pack);
  }
};

}  // namespace elevenfive
