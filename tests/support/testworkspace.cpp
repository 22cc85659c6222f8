#include "tests/support/testworkspace.h"

#include <stdexcept>

namespace elevenfive {

using namespace Qt::StringLiterals;

TestWorkspace::TestWorkspace() {
  if (!folder_.isValid())
    throw std::runtime_error("no temporary folder");
  folders = {folder_.filePath(u"program"_s), folder_.filePath(u"temp"_s)};
  Workspace::create(folders, false, files_);
  reopen();
}

void TestWorkspace::reopen() {
  close();
  workspace_ = std::make_unique<Workspace>(folders, Workspace::Options{&files_, {}});
}

void TestWorkspace::close() {
  if (workspace_)
    workspace_->close();
  workspace_.reset();
}

void TestWorkspace::addDraws(const QString& lines) {
  StoreTransaction transaction(store());
  Statement insert = store().query("test",
                                   "INSERT OR REPLACE INTO 历史记录 (期号, 开奖日期, 号码1, 号码2, 号码3, 号码4, "
                                   "号码5, 已完成) VALUES (?, 43000, ?, ?, ?, ?, ?, 'Y')");
  for (const QString& line : lines.split(u'\n', Qt::SkipEmptyParts)) {
    const qsizetype blank = line.trimmed().indexOf(u' ');
    const Draw draw = drawFrom(line.trimmed().mid(blank + 1));
    insert.run(line.trimmed().left(blank).toInt(), draw[0], draw[1], draw[2], draw[3], draw[4]);
  }
  transaction.commit();
}

QStringList TestWorkspace::rows(const char* sql) {
  QStringList lines;
  Statement statement = store().query("test", sql);
  while (statement.next()) {
    QStringList cells;
    for (int c = 0; c < statement.columnCount(); ++c)
      cells << (statement.isNull(c) ? u"-"_s : statement.text(c));
    lines << cells.join(u' ');
  }
  return lines;
}

Draw drawFrom(const QString& text) {
  const QStringList fields = text.split(u' ', Qt::SkipEmptyParts);
  if (fields.size() != drawSize)
    throw std::runtime_error("not five numbers: " + text.toStdString());
  Draw draw{};
  for (int i = 0; i < drawSize; ++i)
    draw[static_cast<std::size_t>(i)] = fields[i].toInt();
  return draw;
}

}  // namespace elevenfive
