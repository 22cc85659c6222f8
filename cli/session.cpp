#include "cli/session.h"

#include <utility>

namespace elevenfive {

Session::Session(Workspace::Folders folders, std::ostream& out, std::ostream& err)
    : folders_(std::move(folders)), out_(out), ports_(err) {}

Session::~Session() = default;

Workspace& Session::workspace() {
  if (!workspace_)
    workspace_ = std::make_unique<Workspace>(folders_);
  return *workspace_;
}

void Session::close() {
  workspace_.reset();
}

}  // namespace elevenfive
