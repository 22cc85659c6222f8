// The reader of condition-set files over any bytes: it either copies values or refuses; rows are never added or lost.
#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>
#include <cstddef>
#include <cstdint>

#include "conditions/conditioncopy.h"
#include "fuzz/check.h"
#include "model/errors.h"
#include "model/schema.h"
#include "model/store.h"

namespace elevenfive::fuzz {

namespace {

int rowCount(Store& store, const char* sql) {
  return store.value("fuzz", sql).value_or(-1);
}

/// What the target must look like after every attempt.
void checkTarget(Store& target) {
  demand(rowCount(target, "SELECT COUNT(*) FROM 过滤条件") == 1280, "1280 values stay");
  demand(rowCount(target, "SELECT COUNT(*) FROM 过滤条件使用情况") == 63, "63 switches stay");
  demand(rowCount(target, "SELECT COUNT(*) FROM 号码特性") == 11, "eleven numbers stay");
  demand(rowCount(target, "SELECT COUNT(*) FROM 历史数据过滤") == 1, "one match row stays");
  demand(rowCount(target, "SELECT COUNT(*) FROM sqlite_master WHERE type <> 'index'") == 4, "four tables stay");
  demand(!target.inTransaction(), "no transaction stays open");
}

/// A fresh condition set in memory, made once.
Store& freshTarget() {
  static Store store(QString::fromUtf8(":memory:"), StoreAccess::create);
  static const bool made = [] {
    createSchema(store, StoreKind::conditionTemplate);
    return true;
  }();
  demand(made, "the target is made");
  return store;
}

}  // namespace

}  // namespace elevenfive::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace elevenfive;
  static const QTemporaryDir folder;
  const QString path = folder.filePath(QString::fromUtf8("set.Vorex"));
  {
    QFile file(path);
    fuzz::demand(file.open(QIODevice::WriteOnly | QIODevice::Truncate), "the file can be written");
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
  }
  Store& target = fuzz::freshTarget();
  try {
    Store source(path, StoreAccess::readOnly);
    copyConditionSet(source, target);
  } catch (const Error& fault) {
    fuzz::demand(!fault.message().isEmpty(), "a refusal says why");
  }
  fuzz::checkTarget(target);
  return 0;
}
