#include "cli/program.h"

#include <QDir>
#include <QFileInfo>
#include <csignal>
#include <iostream>
#include <memory>
#include <new>
#include <sstream>
#include <string>

#include "cli/commandtable.h"
#include "cli/output.h"
#include "cli/session.h"
#include "cli/words.h"
#include "model/errors.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// The words in front of the command.
struct GlobalOptions {
  QString folder;
  QString temporary;
  bool help = false;
};

QString folderPath(const QString& given) {
  return QDir::cleanPath(QFileInfo(given).absoluteFilePath());
}

/// Takes the global options off the words; throws WrongWords.
GlobalOptions takeGlobalOptions(QStringList& words) {
  GlobalOptions options;
  while (!words.isEmpty() && words.first().startsWith(u"--"_s)) {
    const QString option = words.takeFirst();
    if (option == u"--help"_s) {
      options.help = true;
      return options;
    }
    if (option != u"--folder"_s && option != u"--temp"_s)
      throw WrongWords{u"没有这个选项：%1。"_s.arg(option.left(40)), {}};
    if (words.isEmpty() || words.first().isEmpty())
      throw WrongWords{u"选项 %1 后面缺少 DIR。"_s.arg(option), {}};
    (option == u"--folder"_s ? options.folder : options.temporary) = folderPath(words.takeFirst());
  }
  return options;
}

Workspace::Folders foldersOf(const GlobalOptions& options) {
  Workspace::Folders folders{options.folder, options.temporary};
  if (folders.program.isEmpty())
    folders.program = Workspace::defaultFolders().program;
  if (folders.temporary.isEmpty())
    folders.temporary = getTempDir();
  return folders;
}

std::vector<const Command*> everyCommand() {
  std::vector<const Command*> all;
  for (const Command& command : allCommands())
    all.push_back(&command);
  return all;
}

void printWholeHelp(std::ostream& out) {
  printCallUsage(out);
  out << '\n';
  printHelp(out, everyCommand());
  printBatchHelp(out);
}

/// Runs one step and turns what it throws into a status and its line on standard error.
template <typename Step>
int guarded(Session& session, const Streams& streams, Step&& step) {
  try {
    step();
    return exitDone;
  } catch (const WrongWords& wrong) {
    streams.out.flush();
    printWrongWords(streams.err, wrong);
    return exitUsage;
  } catch (const Refused&) {
    return exitFailed;  // its box is out
  } catch (const AlreadyRunning& fault) {
    session.ports().information(fault.message());
  } catch (const Error& fault) {
    streams.out.flush();
    session.ports().critical(fault.message());
  } catch (const std::bad_alloc&) {
    session.ports().critical(u"内存不足，操作没有完成。"_s);
  } catch (const std::exception& fault) {
    session.ports().critical(QString::fromUtf8(fault.what()));
  }
  session.tellNotices();  // of an opening that failed
  return exitFailed;
}

void runWords(Session& session, const QStringList& words) {
  if (words.isEmpty())
    throw WrongWords{u"缺少命令。"_s, {}};
  if (words.size() > 1 && words.last() == u"--help"_s) {
    const std::vector<const Command*> meant = commandsOf(words.first(words.size() - 1));
    if (meant.empty())
      throw WrongWords{u"没有这个命令：“%1”。"_s.arg(words.first().left(40)), {}};
    printHelp(session.out(), meant);
    return;
  }
  session.run(prepareCommand(words));
}

/// Bytes that are no text were decoded to replacement characters: two different words would become one.
void demandText(const QString& text) {
  if (text.contains(QChar(u'\0')) || text.contains(QChar(QChar::ReplacementCharacter)))
    throw WrongWords{u"命令行含有不能使用的字符。"_s, {}};
}

void runLine(Session& session, const QString& line) {
  const std::optional<QStringList> words = splitWords(line);
  if (!words)
    throw WrongWords{u"引号没有成对。"_s, {}};
  demandText(line);
  runWords(session, *words);
}

/// The lines are UTF-8; one that is not is wrong words, as it is in a call.
int runBatch(Session& session, const Streams& streams, std::istream& lines) {
  std::string bytes;
  int status = exitDone;
  while (status == exitDone && std::getline(lines, bytes)) {
    QString line = QString::fromStdString(bytes);
    if (line.endsWith(u'\r'))
      line.chop(1);
    if (isPassedOver(line))
      continue;
    streams.out << "> " << line.toUtf8().constData() << '\n' << std::flush;
    status = guarded(session, streams, [&] { runLine(session, line); });
    streams.out.flush();
  }
  return status;
}

/// batch [FILE | -]
int runBatchCommand(Session& session, const Streams& streams, const QStringList& arguments) {
  QString wrong;
  if (arguments.size() > 1)
    wrong = u"batch 之后只能有一个文件名。"_s;
  else if (!arguments.isEmpty() && arguments.first().isEmpty())
    wrong = u"batch 之后的文件名不能为空。"_s;
  else if (!arguments.isEmpty() && arguments.first().startsWith(u"--"_s))
    wrong = u"没有这个选项：%1。"_s.arg(arguments.first().left(40));
  if (!wrong.isEmpty()) {
    printText(streams.err, wrong);
    printCallUsage(streams.err);
    return exitUsage;
  }
  if (arguments.isEmpty() || arguments.first() == u"-"_s)
    return runBatch(session, streams, streams.in);
  // A file is read as every text file is, as a whole; of standard input each line is run before the next one is there.
  std::istringstream file;
  const int status =
      guarded(session, streams, [&] { file.str(decodeText(readFileText(arguments.first())).toStdString()); });
  return status == exitDone ? runBatch(session, streams, file) : status;
}

/// The command behind the global options, and the session's end.
int runSession(const GlobalOptions& options, const QStringList& words, const Streams& streams) {
  Session session(foldersOf(options), options.folder.isEmpty(), streams.out, streams.err);
  const int status = words.value(0) == u"batch"_s && words.value(1) != u"--help"_s
                         ? runBatchCommand(session, streams, words.mid(1))
                         : guarded(session, streams, [&] { runWords(session, words); });
  std::signal(SIGINT, SIG_IGN);  // what is left to do takes a fraction of a second, and then the process ends
  const int closed = guarded(session, streams, [&] { session.close(); });
  streams.out.flush();
  if (!streams.out)
    return guarded(session, streams, [] { throw FileError(u"无法写入标准输出。"_s); });
  return status == exitDone ? closed : status;
}

}  // namespace

int runProgram(const QStringList& words, const Streams& streams) {
  QStringList rest = words;
  try {
    demandText(words.join(u' '));
    const GlobalOptions options = takeGlobalOptions(rest);
    if (options.help || (rest.value(0) == u"batch"_s && rest.value(1) == u"--help"_s)) {
      options.help ? printWholeHelp(streams.out) : printBatchHelp(streams.out);
      streams.out.flush();
      return exitDone;
    }
    return runSession(options, rest, streams);
  } catch (const WrongWords& wrong) {
    printWrongWords(streams.err, wrong);
    return exitUsage;
  }
}

}  // namespace elevenfive
