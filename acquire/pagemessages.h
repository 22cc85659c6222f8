// What the program and its page process tell each other: one JSON object a line, UTF-8.
//
//   to the process    {"load": ADDRESS}                 once, first
//                     {"read": "text" | "markup", "id"} answered by "text"
//   from the process  {"tell": "complete", "address"}   the top-level document is complete, or could not be had
//                     {"tell": "away", "address"}       the server sent the load off its site, and it was not let
//                     {"tell": "fault", "text"}         the page cannot be read; the process ends
//                     {"tell": "text", "text", "id"}    the answer to the reading of this number
//
// A line that is none of these reads as nothing.
#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <optional>

namespace elevenfive {

enum class PagePart { text, markup };

struct PageRequest {
  enum class Kind { load, read } kind = Kind::load;
  QUrl address;                    ///< load
  PagePart part = PagePart::text;  ///< read
  int id = 0;                      ///< read: its number, which the answer bears too
};

struct PageTold {
  enum class Kind { complete, away, fault, text } kind = Kind::complete;
  QUrl address;  ///< complete, away
  QString text;  ///< fault, text
  int id = 0;    ///< text
};

/// With the line end.
QByteArray lineOf(const PageRequest& request);
QByteArray lineOf(const PageTold& told);

std::optional<PageRequest> pageRequest(const QByteArray& line);
std::optional<PageTold> pageTold(const QByteArray& line);

}  // namespace elevenfive
