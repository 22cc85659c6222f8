// The catalogue of games: table 彩票类型, of which one row is the game in use.
//
// Changing the game changes nothing else: the history keeps the draws of the game before.
#pragma once

#include <QString>
#include <vector>

namespace elevenfive {

class Store;

/// A row of the catalogue, as its option button shows it.
struct GameOption {
  int index = 0;  ///< 序号, also the index of OptionSSC
  QString name;
  bool inUse = false;
};

/// An address with the short name of a game's province in its place; empty where the address is empty, or where it has the
/// place and the game no province.
QString provinceAddress(const QString& address, const QString& lotteryName);

/// The page of the latest 100 draws of a game on a results site; empty where the address is, or where the game's province
/// has no page.
QString resultsPageUrl(const QString& siteAddress, const QString& lotteryName);

class Catalogue final {
 public:
  explicit Catalogue(Store& gConn) : gConn_(gConn) {}

  /// All games in the order of 序号: captions of OptionSSC, and which is selected.
  [[nodiscard]] std::vector<GameOption> showCaizongList();

  /// Puts a game in use, and no other. Throws MissingData where there is no such row; nothing is changed then.
  void selectCaizong(int index);

  /// 名称 of the game in use; empty where none is.
  [[nodiscard]] QString getLotteryName();

  /// Page of the latest 100 draws of the game in use, on the results site of 数据源. Empty where no game is in use, where its
  /// province has no page, or where the site's address is empty.
  [[nodiscard]] QString getSourceUrl();

  /// 实时更新地址 of the game selected last in this run; nothing reads it.
  [[nodiscard]] const QString& updateAddress() const noexcept { return updateAddress_; }

 private:
  Store& gConn_;
  QString updateAddress_;
};

}  // namespace elevenfive
