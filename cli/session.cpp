#include "cli/session.h"

#include <exception>
#include <utility>

#include "model/errors.h"
#include "model/navigators.h"
#include "shell/startup.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

OpenProgram::OpenProgram(const Workspace::Folders& folders, const Workspace::Options& options, CliPorts& ports,
                         ResultFileDialogs& dialogs)
    : workspace(folders, options),
      driver(workspace.gConn, {ports, ports, ports, ports, ports, ports, ports, &dialogs}),
      panel(workspace.gConn),
      picking(workspace.gConn, driver, ports, ports),
      groups(workspace.gConn, panel, ports, ports),
      zones(workspace.gConn, panel, ports),
      users(workspace, ports),
      commonEntries(commonGroupEntries(getNextQihao(workspace.gConn))) {}

Session::Session(Workspace::Folders folders, bool fillsFolder, std::ostream& out, std::ostream& err)
    : folders_(Workspace::apart(std::move(folders))), fillsFolder_(fillsFolder), out_(out), ports_(err) {}

Session::~Session() = default;

OpenProgram& Session::program() {
  if (!program_) {
    if (fillsFolder_)
      Workspace::install(folders_);
    const Workspace::Options options;
    notices_ = options.notices;
    program_ = std::make_unique<OpenProgram>(folders_, options, ports_, resultFiles_);
    if (readBallColors(program_->workspace.gConn).size() < std::size_t{numberCount}) {  // as the window's start
      ports_.plain(u"程序初始化出错,即将退出。。。"_s);
      program_->workspace.abandon();
      program_.reset();
      tellNotices();
      throw Refused();
    }
    tellNotices();
  }
  return *program_;
}

/// As information: a critical box would fail the command, which has nothing to do with what the start found.
void Session::tellNotices() {
  if (const std::shared_ptr<QStringList> notices = std::exchange(notices_, nullptr))
    for (const QString& notice : *notices)
      ports_.information(notice);
}

void Session::run(const std::function<void(Session&)>& action) {
  ports_.beginCommand();
  action(*this);
  if (ports_.refused)
    throw Refused();
}

void Session::saveUser() {
  const QString name = program().workspace.gUserName;
  if (!name.isEmpty() && !program().users.saveUserFile(name))
    throw Refused();
}

void Session::close() {
  if (!program_)
    return;
  // The data goes back even where the user's file cannot be written.
  std::exception_ptr fault;
  try {
    saveUser();
  } catch (const Error&) {
    fault = std::current_exception();
  } catch (const Refused&) {
    fault = std::current_exception();
  }
  program_->workspace.close();
  program_.reset();
  if (fault)
    std::rethrow_exception(fault);
}

}  // namespace elevenfive
