// What the hidden page may fetch and where it may go: pure decisions over addresses.
//
// A page is read for its text, so it gets what builds a text (documents, scripts, data, style sheets) from its own site and
// nothing else. Its site is the host it was asked for together with the hosts beside and below it: "gd.site.example" has
// "static.site.example". A host without a name (an IP address) or of one label is a site of its own.
#pragma once

#include <QUrl>

namespace elevenfive {

/// What a request of a page is for.
enum class FetchKind {
  document,  ///< the page itself, also after a redirect
  frame,
  buildsText,  ///< scripts, style sheets and the data that scripts ask for
  other,       ///< pictures, fonts, media, downloads, prefetches, pings
};

/// How a page comes to leave for an address.
enum class LeaveKind {
  asked,     ///< the load itself
  redirect,  ///< by the server, or by a script or a refresh element that asks for another address
  script,    ///< by a script that loads it again or sends a form
  person,    ///< a link or form, for which there is nobody
};

/// How a person is told where a page was led: its host, and the port where the host is the one that was asked; of an address
/// without a host its kind ("mailto").
QString toldPlace(const QUrl& asked, const QUrl& address);

/// The hosts of a page's site as rules of the engine's resolver: "EXCLUDE *.site.test", which finds it as ever, for names, and
/// "MAP 10.0.0.1:80 10.0.0.1:80" for a host without a name, of which the page's own port alone is its site.
QStringList hostRules(const QUrl& asked);

/// Whether an address can be loaded at all: http or https with a host.
bool isWebAddress(const QUrl& address);

/// Whether an address lies on the very host and port that were asked for; http may have become https.
bool isSameHost(const QUrl& asked, const QUrl& address);

/// Whether an address lies on the site of the address that was asked for.
bool isSameSite(const QUrl& asked, const QUrl& address);

/// Whether the page itself may stand at an address: on the site it was asked for, on the same port of the same host, and not
/// plain where it was asked for securely.
bool mayHoldPage(const QUrl& asked, const QUrl& address);

/// Whether a request may go out.
bool mayFetch(const QUrl& asked, const QUrl& address, FetchKind kind);

/// Whether the page (top) or one of its frames may go to an address.
bool mayGo(const QUrl& asked, const QUrl& address, LeaveKind kind, bool top);

}  // namespace elevenfive
