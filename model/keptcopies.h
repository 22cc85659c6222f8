// Copies of work that never reached the packed data file, kept in the folder Bak as plain databases.
//
// A copy is called elevenfive-NUMBER-DATE-TIME.bak; the highest number is the newest.
#pragma once

#include <QString>
#include <QStringList>

#include "model/fileaccess.h"

namespace elevenfive {

class KeptCopies final {
 public:
  /// So many stay.
  static constexpr int most = 3;

  KeptCopies(const QString& folder, FileAccess& files) : folder_(folder), files_(files) {}

  /// Paths of the copies, oldest first.
  [[nodiscard]] QStringList list() const;

  /// Keeps a copy of a file, flushed and compared; returns its path. A copy with the same content that is there already
  /// becomes the newest instead. Throws FileError where it cannot be written.
  QString keep(const QString& path);

  /// Removes all but the newest ones, and what a copying that was cut off has left.
  void prune();

 private:
  [[nodiscard]] QString nextPath(const QStringList& copies) const;
  void renew(const QString& copy, const QString& path);

  QString folder_;
  FileAccess& files_;
};

}  // namespace elevenfive
