// The import of a history text over any bytes: whatever the file holds, the store keeps whole rows and can be exported.
//
// One store serves all inputs of a process and is emptied before each.
#include <QFile>
#include <QTemporaryDir>
#include <cstddef>
#include <cstdint>

#include "fuzz/check.h"
#include "history/historytable.h"
#include "history/textfiles.h"
#include "model/schema.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive::fuzz {

namespace {

using namespace Qt::StringLiterals;

struct Silent final : Boxes, Progress, Events, LineProgress {
  int lineCount = 0;
  int linesDone = 0;
  bool frameShown = false;
  bool barShown = false;
  int boxes = 0;

  Answer show(const Box&) override {
    ++boxes;
    return Answer::yes;
  }
  void setMinimum(int) override {}
  void setMaximum(int) override {}
  void setValue(int) override {}
  void setVisible(bool visible) override { barShown = visible; }
  void show(int lines) override {
    lineCount = lines;
    frameShown = true;
  }
  void setDone(int lines) override { linesDone = lines; }
  void hide() override { frameShown = false; }
  [[nodiscard]] bool stopRequested() const override { return false; }
  void yield() override {}
};

struct Bench {
  QTemporaryDir folder;
  Store store{folder.filePath(u"fuzz.db"_s), StoreAccess::create};
  Bench() { createSchema(store, StoreKind::main); }
};

int countWhere(Store& store, const char* condition) {
  return store.value("fuzz", std::string("SELECT COUNT(*) FROM 历史记录 WHERE ") + condition).value_or(-1);
}

void checkRows(Store& store) {
  demand(countWhere(store, "期号 < 1") == 0, "periods are positive");
  demand(countWhere(store, "NOT (号码1 BETWEEN 1 AND 11 AND 号码4 BETWEEN 4 AND 11)") == 0, "four numbers are there");
  demand(countWhere(store, "NOT (号码1 < 号码2 AND 号码2 < 号码3 AND 号码3 < 号码4)") == 0, "four numbers are sorted");
  demand(countWhere(store, "号码5 NOT BETWEEN 0 AND 11") == 0, "the fifth number is one or 0");
  demand(countWhere(store, "已完成 IS NOT 'Y'") == 0, "every row is marked as saved");
  demand(countWhere(store, "(和值 IS NULL) <> (连号 IS NULL)") == 0, "a row is derived whole or not at all");
}

}  // namespace

void importBytes(const QByteArray& bytes) {
  static Bench bench;
  clearHistoryTable(bench.store, *std::make_unique<Silent>());
  const QString path = bench.folder.filePath(u"draws.txt"_s);
  QFile file(path);
  demand(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "the input can be written to a file");
  file.close();

  Silent ports;
  importHistoryText(bench.store, path, true, {ports, ports, ports, ports});
  demand(!ports.frameShown && !ports.barShown, "nothing stays on the screen");
  demand(ports.boxes >= 1, "the end is told");
  demand(ports.linesDone == ports.lineCount, "all lines are read");
  checkRows(bench.store);

  const QString out = bench.folder.filePath(u"out.txt"_s);
  demand(exportHistoryText(bench.store, out, ports, ports) == countHistory(bench.store), "every draw is exported");
}

}  // namespace elevenfive::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  elevenfive::fuzz::importBytes(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  return 0;
}
