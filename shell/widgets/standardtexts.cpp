#include "shell/widgets/standardtexts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <memory>

namespace elevenfive {

bool useChineseStandardTexts() {
  auto texts = std::make_unique<QTranslator>(QCoreApplication::instance());
  if (!texts->load(QStringLiteral("qtbase_zh_CN"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    return false;
  return QCoreApplication::installTranslator(texts.release());  // its parent is the application
}

}  // namespace elevenfive
