#include "shell/userfiles.h"

#include <QFileInfo>
#include <QStringList>
#include <algorithm>

#include "conditions/conditioncopy.h"
#include "conditions/conditiontemplate.h"
#include "model/compaction.h"
#include "model/datafile.h"
#include "model/errors.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr QStringView reservedCharacters = u"/\\:*?\"<>|";
constexpr QStringView reservedNames[] = {u"CON", u"PRN", u"AUX", u"NUL"};

/// CON, COM1 and their like are devices on some systems, whatever stands behind a dot.
bool isDeviceName(const QString& name) {
  const QString stem = name.section(u'.', 0, 0).trimmed().toUpper();
  if (std::any_of(std::begin(reservedNames), std::end(reservedNames), [&](QStringView n) { return stem == n; }))
    return true;
  return stem.size() == 4 && (stem.startsWith(u"COM"_s) || stem.startsWith(u"LPT"_s)) && stem[3] >= u'1' &&
         stem[3] <= u'9';
}

bool isReserved(QChar ch) {
  return reservedCharacters.contains(ch) || ch.category() == QChar::Other_Control ||
         ch.category() == QChar::Other_Format || ch.category() == QChar::Separator_Line ||
         ch.category() == QChar::Separator_Paragraph;
}

}  // namespace

bool isUserFileName(const QString& name) {
  if (name.isEmpty() || name.size() > longestUserText || !name.isValidUtf16())
    return false;
  const auto bordering = [](QChar ch) { return ch == u'.' || ch.isSpace(); };
  return !bordering(name.front()) && !bordering(name.back()) && std::none_of(name.begin(), name.end(), isReserved) &&
         !isDeviceName(name);
}

QString UserFiles::path(const QString& name) const {
  if (!isUserFileName(name))
    throw FileError(u"用户名“%1”不能用作文件名。"_s.arg(name));
  return folders_.program + u'/' + name + u".uVorex"_s;
}

bool UserFiles::load(const QString& name) {
  if (!isUserFileName(name) || !QFileInfo(path(name)).isFile())
    return false;
  const QString file = path(name);
  demandOwnRows(gConn_);
  try {
    checkDatabase(file, StoreKind::conditionTemplate);
    StoreTransaction transaction(gConn_, OnFault::undo);
    Store source(file, StoreAccess::readOnly);
    demandAllRows(source);
    copyConditionSet(source, gConn_);
    transaction.commit();
    return true;
  } catch (const DamagedData&) {
    // Told by the result.
  }
  keepDamaged(files_, file);
  return false;
}

QString UserFiles::setAside(const QString& name) {
  const QString file = path(name);
  if (!QFileInfo::exists(file))
    return {};
  const QString aside = formerName(file);
  files_.rename(file, aside);
  return aside;
}

bool UserFiles::save(const QString& name) {
  const QString place = path(name);
  try {
    fillTemplate(gConn_, folders_, files_);
  } catch (const DamagedData&) {
    return false;
  }
  replaceByCopy(files_, folders_.templateFile(), place);
  return true;
}

void UserFiles::remove(const QString& name) {
  files_.remove(path(name));
}

}  // namespace elevenfive
