// The condition set as a whole: quick setup, previews, files, counts.
#include <QDate>
#include <QString>
#include <algorithm>
#include <utility>

#include "cli/command.h"
#include "cli/output.h"
#include "cli/session.h"
#include "cli/values.h"
#include "conditions/conditionfiles.h"
#include "conditions/conditionsummary.h"
#include "conditions/quicksetup.h"
#include "model/defaultrows.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

void printForm(Session& session, const std::vector<QuickSetup::Row>& rows) {
  printRow(session.out(), {u"编号"_s, u"条件名称"_s, u"used"_s, u"text"_s});
  for (const QuickSetup::Row& row : rows)
    printRow(session.out(), {QString::number(row.number), row.name, row.used ? u"1"_s : u"0"_s, row.text});
}

Action prepareQuickShow(const Arguments&) {
  return [](Session& session) { printForm(session, QuickSetup(session.store(), session.ports()).rows()); };
}

/// A text for a row of the form, from "ROW=TEXT".
struct RowText {
  int row;
  QString text;
};

RowText rowTextOf(const QString& word) {
  const qsizetype sign = word.indexOf(u'=');
  const std::optional<int> row = wholeNumber(word.left(sign));
  if (sign < 0 || !row)
    throw UsageError(u"参数 ROW=TEXT 应为编号、等号和范围，而不是“%1”。"_s.arg(word.left(40)));
  return {*row, word.mid(sign + 1)};
}

Action prepareQuickSubmit(const Arguments& arguments) {
  std::vector<RowText> texts;
  for (const QString& word : arguments.texts(u"ROW=TEXT"_s)) {
    RowText text = rowTextOf(word);
    if (std::any_of(texts.begin(), texts.end(), [&](const RowText& other) { return other.row == text.row; }))
      throw UsageError(u"编号 %1 的范围给出了两次。"_s.arg(text.row));
    texts.push_back(std::move(text));
  }
  return [texts](Session& session) {
    QuickSetup form(session.store(), session.ports());
    std::vector<QuickSetup::Row> rows = form.rows();
    for (const RowText& change : texts) {
      const auto row = std::find_if(rows.begin(), rows.end(), [&](const auto& r) { return r.number == change.row; });
      if (row == rows.end())
        throw MissingData(u"快速设置中没有编号 %1，没有改动。"_s.arg(change.row));
      row->text = change.text;
    }
    if (form.submit(rows))
      printForm(session, rows);
  };
}

Action prepareSummary(const Arguments&) {
  return [](Session& session) { printText(session.out(), buildConditionSummary(session.store())); };
}

/// Answers the question for a file with the command's argument.
class NamedFile final : public FileQuestion {
 public:
  explicit NamedFile(const QString& path) : path_(path) {}
  QString OpenSaveDialog(const QString&, const QString&, const QString&, const QString&, const QString&) override {
    return path_;
  }

 private:
  QString path_;
};

/// The condition files over a session, for the length of one command.
struct SessionFiles {
  SessionFiles(Session& session, const QString& path)
      : file(path),
        files(session.store(), session.program().panel, session.ports(), session.ports(), file,
              session.folders().program + u"/TJmode.tjmod"_s) {}
  NamedFile file;
  ConditionFiles files;
};

Action prepareConditionsExport(const Arguments& arguments) {
  const QString path = pathOf(arguments, u"FILE"_s);
  return [path](Session& session) {
    if (!SessionFiles(session, path).files.exportConditions(QDate::currentDate()))
      throw Refused();
  };
}

Action prepareConditionsImport(const Arguments& arguments) {
  const QString path = pathOf(arguments, u"FILE"_s);
  return [path](Session& session) {
    requireReadable(path);
    SessionFiles(session, path).files.importConditions();
    if (session.ports().lastText != u"导入完成！"_s)
      throw Refused();
  };
}

Action prepareConditionsRestore(const Arguments&) {
  return [](Session& session) {
    SessionFiles(session, {}).files.restoreDefaults();
    session.program().picking.clearBack();
    session.program().picking.clearFront();
  };
}

Action prepareCount(const Arguments&) {
  return [](Session& session) {
    session.program().driver.showXuanhaoTip();
    printText(session.out(), session.ports().choseNumberTip);
  };
}

Action prepareCountConditions(const Arguments&) {
  return [](Session& session) {
    printText(session.out(), QString::number(session.program().driver.countRongcuoTiaojian()));
  };
}

Action preparePreview(const Arguments& arguments) {
  const int code = numberOf(arguments, u"CODE"_s);
  const auto& codes = conditionCodes();
  if (!std::binary_search(codes.begin(), codes.end(), code))
    throw UsageError(u"没有编号为 %1 的条件。"_s.arg(code));
  return [code](Session& session) { printText(session.out(), session.program().panel.rangePreview(code)); };
}

constexpr QStringView quickText = u"the quick setup form: its 22 rows; change the texts of some rows and submit";
constexpr QStringView quickPrint = u"编号 条件名称 used text";
constexpr QStringView textsText = u"rangePreview, buildConditionSummary";
constexpr QStringView filesText = u"condition-set files (an existing FILE is overwritten: Yes)";
constexpr QStringView countsText = u"showXuanhaoTip; countRongcuoTiaojian";
constexpr QStringView countsPrint = u"its lines; the number";

constexpr Command commands[] = {
    {u"quick show", quickText, quickPrint, prepareQuickShow},
    {u"quick submit ROW=TEXT ...", quickText, quickPrint, prepareQuickSubmit},
    {u"preview CODE", textsText, u"text", preparePreview},
    {u"summary", textsText, u"text", prepareSummary},
    {u"conditions export FILE", filesText, u"", prepareConditionsExport},
    {u"conditions import FILE", filesText, u"", prepareConditionsImport},
    {u"conditions restore", filesText, u"", prepareConditionsRestore, u"restore: back to the factory conditions"},
    {u"count", countsText, countsPrint, prepareCount},
    {u"count --conditions", countsText, countsPrint, prepareCountConditions},
};

}  // namespace

std::span<const Command> setupCommands() {
  return commands;
}

}  // namespace elevenfive
