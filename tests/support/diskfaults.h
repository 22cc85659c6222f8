// Faults of the system itself: no permission, no room. They hold for the length of a scope.
#pragma once

#include <sys/resource.h>
#include <unistd.h>

#include <QDir>
#include <QString>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace elevenfive {

/// Makes this thread an ordinary user, who owns the folder given, for the length of a scope: root is bound by no permissions.
class OrdinaryUser final {
 public:
  explicit OrdinaryUser(const QString& folder) {
    if (geteuid() != 0)
      return;
    constexpr uid_t nobody = 65534;
    for (const QString& entry : QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
      give(folder + u'/' + entry, nobody);
    give(folder, nobody);
    changed_ = seteuid(nobody) == 0;
  }
  ~OrdinaryUser() {
    if (changed_ && seteuid(0) != 0)
      std::abort();
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

  [[nodiscard]] static bool isBound() { return geteuid() != 0; }

 private:
  static void give(const QString& path, uid_t user) {
    if (chown(path.toLocal8Bit().constData(), user, user) != 0)
      throw std::runtime_error("cannot give a file away");
  }
  bool changed_ = false;
};

/// No file may grow beyond this size, for the length of a scope: writing to the disk itself fails.
class FilesNoLargerThan final {
 public:
  explicit FilesNoLargerThan(qint64 bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &old_);
    const rlimit limit{static_cast<rlim_t>(bytes), old_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FilesNoLargerThan() {
    setrlimit(RLIMIT_FSIZE, &old_);
    std::signal(SIGXFSZ, signal_);
  }
  FilesNoLargerThan(const FilesNoLargerThan&) = delete;
  FilesNoLargerThan& operator=(const FilesNoLargerThan&) = delete;

 private:
  rlimit old_{};
  void (*signal_)(int);
};

}  // namespace elevenfive
