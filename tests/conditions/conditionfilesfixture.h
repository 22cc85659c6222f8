// What the tests of condition-set files share: a workspace, a condition set that can be told apart from the factory's, and a
// person who names a file.
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <functional>
#include <string>

#include "conditions/conditionfiles.h"
#include "conditions/conditionpanel.h"
#include "model/store.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

/// Answers with a fixed path and keeps what it was asked.
class FixedFile final : public FileQuestion {
 public:
  QString path;
  QStringList asked;
  std::function<void()> onAsked;
  QString OpenSaveDialog(const QString& action, const QString& title, const QString& extension, const QString& label,
                         const QString& defaultName) override {
    asked << QStringList{action, title, extension, label, defaultName}.join(u'|');
    if (onAsked)
      onAsked();
    return path;
  }
};

inline constexpr const char* setTables[] = {
    "SELECT * FROM 过滤条件 ORDER BY ID",
    "SELECT * FROM 过滤条件使用情况 ORDER BY 条件",
    "SELECT * FROM 号码特性 ORDER BY 号码",
    "SELECT * FROM 历史数据过滤",
};

class ConditionFilesTest : public ::testing::Test {
 protected:
  QTemporaryDir folder;
  TestWorkspace workspace;
  RecordingPorts ports;
  ConditionPanel panel{workspace.store()};
  FixedFile question;
  QString templatePath = workspace.folders.program + QStringLiteral("/TJmode.tjmod");
  ConditionFiles files{workspace.store(), panel, ports, ports, question, templatePath};
  const QDate today{2026, 3, 9};
  const QString formatError = QStringLiteral("文件格式错误无法导入数据！");

  void SetUp() override { question.path = folder.filePath(QStringLiteral("set.Vorex")); }

  void run(const char* sql) { workspace.store().execute("test", sql); }

  QStringList set() {
    QStringList all;
    for (const char* sql : setTables)
      all << workspace.rows(sql);
    return all;
  }

  /// The rows of a statement on a file.
  static QStringList rowsOf(const QString& path, const char* sql) {
    Store store(path, StoreAccess::readOnly);
    QStringList lines;
    Statement statement = store.query("test", sql);
    while (statement.next()) {
      QStringList cells;
      for (int c = 0; c < statement.columnCount(); ++c)
        cells << statement.text(c);
      lines << cells.join(u' ');
    }
    return lines;
  }

  static QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
  }

  /// Gives every value of the set another one.
  void changeEverything() {
    run("UPDATE 过滤条件 SET VALUE = (VALUE + 1) % 3");
    run("UPDATE 过滤条件使用情况 SET 使用情况 = 1 - 使用情况");
    run("UPDATE 号码特性 SET 大数 = 1 - 大数, 区间1 = 1 - 区间1, 自定义组20 = 1, 第7位 = 1");
    run("UPDATE 历史数据过滤 SET 使用状态 = 0, 最小值 = 1, 最大值 = 2, 匹配值 = 3");
  }

  void exportSet() {
    ASSERT_TRUE(files.exportConditions(today));
    ports.boxes.clear();
    question.asked.clear();
  }

  /// Runs a script on the exported file.
  void alterFile(const std::string& script) {
    Store store(question.path, StoreAccess::readWrite);
    store.executeScript("test", script);
  }

  void expectFormatError() {
    EXPECT_TRUE(files.importConditions());
    ASSERT_EQ(ports.boxes.size(), 1U);
    EXPECT_EQ(ports.boxes[0].kind, BoxKind::plain);
    EXPECT_EQ(ports.boxes[0].text, formatError);
  }
};

}  // namespace elevenfive
