// The version notice: what the notice server is asked, and what its answer says.
#pragma once

#include <QString>
#include <QUrl>

namespace elevenfive {

/// The version of this program, as "1.2.3".
QString programVersion();

/// The question: the server's address, in which a province has its place already, with the version, scrambled, and the
/// program's name. Empty where no server is set.
QUrl noticeAddress(const QString& server);

/// Whether the text of the answer tells of a new version.
bool isNotice(const QString& answer);

/// What the person is told then.
QString noticeText();

}  // namespace elevenfive
