// The form in which the addresses of the web are set: each with what it is for, and a test whether it can be read.
#pragma once

#include <QDialog>
#include <vector>

#include "acquire/networkaddresstester.h"
#include "acquire/openurltext.h"
#include "model/ports.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace elevenfive {

class Store;

/// How long a test waits, in milliseconds.
struct SourcesTimes {
  int tickMs = 100;  ///< of the page's reader
  int serverMs = NetworkAddressTester::longestMs;
};

class SourcesForm final : public QDialog {
  Q_OBJECT

 public:
  SourcesForm(Store& gConn, Boxes& boxes, PageLoaderFactory loaders, QWidget* parent = nullptr,
              const SourcesTimes& times = {});

  void done(int result) override;

 private:
  struct Row {
    QString name;
    QLineEdit* address;
    QPushButton* test;
  };

  void buildRows();
  [[nodiscard]] bool areAddresses();
  void store();
  void test(const Row& row);
  void tellWhyNot(const QString& name, const QUrl& page);
  [[nodiscard]] QUrl pageOf(const Row& row) const;

  Store& gConn_;
  Boxes& boxes_;
  OpenUrlText reader_;
  NetworkAddressTester server_;  ///< tells why a page cannot be read
  std::vector<Row> rows_;
  QLabel* verdict_;
  bool testing_ = false;
};

}  // namespace elevenfive
