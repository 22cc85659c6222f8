// The words that a command takes, read from its own usage line, so that the help and the check can never differ.
//
// | in the usage line     | stands for
// | history, all          | this very word (small letters only)
// | QIHAO, N1, ID[-LAST]  | one word of the user's
// | [QIHAO]               | a word that may be left out; only at the end
// | left|right            | one of these words
// | ROW=TEXT ...          | one word or more
// | [--plain]             | a switch
// | [--date YYYY-MM-DD]   | an option with a word behind it; without brackets it must be given
//
// Options may stand anywhere behind the command's first word; behind a lone "--" every word is taken as it stands.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <vector>

namespace elevenfive {

/// The user's words by the name that they have in the usage line; options under their own name with the dashes.
class Arguments final {
 public:
  [[nodiscard]] bool has(const QString& name) const { return words_.contains(name); }
  [[nodiscard]] QString text(const QString& name) const { return words_.value(name).value(0); }
  [[nodiscard]] QStringList texts(const QString& name) const { return words_.value(name); }
  void add(const QString& name, const QString& word) { words_[name] << word; }

 private:
  QMap<QString, QStringList> words_;
};

class Usage final {
 public:
  explicit Usage(QStringView line);

  /// What became of the user's words.
  struct Match {
    bool contradicts = false;   ///< a word stands where another very word must stand
    int literals = 0;           ///< how many very words are there
    bool lacksLiteral = false;  ///< a very word is missing
    bool knowsOptions = true;   ///< every option that is there is one of the command's
    QString fault;              ///< why the words do not fit, in one sentence; empty where they do
    Arguments arguments;
  };

  [[nodiscard]] Match match(const QStringList& words) const;

 private:
  struct Position {
    enum class Kind { literal, word, choice };
    Kind kind;
    QString name;
    bool optional = false;
    bool repeated = false;
  };
  struct Option {
    QString name;
    QString value;  ///< the name of the word behind it; empty: a switch
    bool optional = false;
  };

  [[nodiscard]] const Option* findOption(const QString& name) const;
  QStringList takeOptions(const QStringList& words, Match& match) const;
  void takePositions(const QStringList& words, Match& match) const;

  std::vector<Position> positions_;
  std::vector<Option> options_;
};

}  // namespace elevenfive
