// The page with the details of one draw: the period is asked for, and the page is shown in the person's browser where there is
// one about it.
#pragma once

#include <QUrl>
#include <functional>

#include "model/ports.h"

namespace elevenfive {

class OpenUrlText;
class Store;
class StatusPanels;

struct DetailPorts {
  Boxes& boxes;
  Inputs& inputs;
  StatusPanels& panels;                       ///< tells the address while its page is read
  std::function<void(const QUrl&)> openPage;  ///< shows a page in the person's browser
};

/// The page of a period as it was typed in, of which the last five characters count: "2008118" has BASE08118.html. Empty where
/// the base address is no address of the web, or has the province's place and the game no province.
QUrl detailUrl(const QString& base, const QString& lotteryName, const QString& period);

/// cmm_kjqk. Runs the event loop while the page is read; a stop of the reader ends it without a word. Throws StoreError.
void showDetailPage(Store& gConn, OpenUrlText& reader, const DetailPorts& ports);

/// Where the address of the detail page is set, for one that never was.
QString unsetDetailText();

}  // namespace elevenfive
