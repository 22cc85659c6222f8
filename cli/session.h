// One run of the companion: the open workspace with the operations' objects over it, and where its output goes.
//
// The data is opened by the first command that needs it and stays open until close(), so that what lives "until the program
// ends" lives through a whole batch.
#pragma once

#include <QString>
#include <exception>
#include <iosfwd>
#include <memory>

#include "cli/cliports.h"
#include "model/workspace.h"

namespace elevenfive {

/// An operation was refused and has told so in a box of its own: the call ends with status 1 and no further word.
class Refused final : public std::exception {
 public:
  [[nodiscard]] const char* what() const noexcept override { return "refused"; }
};

class Session final {
 public:
  Session(Workspace::Folders folders, std::ostream& out, std::ostream& err);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  [[nodiscard]] const Workspace::Folders& folders() const noexcept { return folders_; }
  [[nodiscard]] std::ostream& out() noexcept { return out_; }
  [[nodiscard]] CliPorts& ports() noexcept { return ports_; }

  [[nodiscard]] Workspace& workspace();
  [[nodiscard]] Store& store() { return workspace().gConn; }

  /// Puts the data back, as the window's close does.
  void close();

 private:
  Workspace::Folders folders_;
  std::ostream& out_;
  CliPorts ports_;
  std::unique_ptr<Workspace> workspace_;
};

}  // namespace elevenfive
