// The program that the kill test ends at random instants.
//
//   worker_datafile PROGRAM TEMPORARY     one run: prints the value found, writes the next one, closes, prints "done"
//   worker_datafile PROGRAM TEMPORARY hold     starts, prints "open", waits for the end of its input
//
// Exit status 0, 3 where another instance runs, 4 on any other fault (its sentence on standard error).
#include <QCoreApplication>
#include <QFile>
#include <cstdio>

#include "model/errors.h"
#include "model/workspace.h"

namespace {

using namespace elevenfive;

void run(const Workspace::Folders& folders) {
  Workspace workspace(folders);
  const int found = workspace.gConn.value("read", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900").value_or(-1);
  std::printf("found %d\n", found);
  std::fflush(stdout);
  {
    // Every row carries the value, so a half-written state cannot pass for a whole one.
    StoreTransaction transaction(workspace.gConn);
    Statement update = workspace.gConn.query("write", "UPDATE 过滤条件 SET VALUE = ? WHERE ID >= 3900 AND ID <= 4040");
    update.run(found + 1);
    Statement insert = workspace.gConn.query("write", "INSERT INTO 日志表 (序号, 期号) VALUES (?, ?)");
    for (int row = 0; row < 2000; ++row)
      insert.run(row, found + 1);
    workspace.gConn.execute("write", "DELETE FROM 日志表 WHERE 期号 < ?", found);
    transaction.commit();
  }
  std::printf("wrote %d\n", found + 1);
  std::fflush(stdout);
  workspace.close();
  std::printf("done\n");
}

void hold(const Workspace::Folders& folders) {
  Workspace workspace(folders);
  std::printf("open\n");
  std::fflush(stdout);
  while (std::getchar() != EOF) {
  }
  workspace.close();
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  if (argc < 3)
    return 2;
  const Workspace::Folders folders{QFile::decodeName(argv[1]), QFile::decodeName(argv[2])};
  try {
    argc > 3 ? hold(folders) : run(folders);
    return 0;
  } catch (const AlreadyRunning& fault) {
    std::fprintf(stderr, "%s\n", fault.what());
    return 3;
  } catch (const Error& fault) {
    std::fprintf(stderr, "%s\n", fault.what());
    return 4;
  }
}
