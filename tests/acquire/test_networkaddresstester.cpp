#include "acquire/networkaddresstester.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTcpServer>
#include <QTcpSocket>
#include <optional>

#include "tests/support/httpserver.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

/// A server of one answer, in this process.
class AddressTest : public ::testing::Test {
 protected:
  AddressTest() {
    EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
    QObject::connect(&server, &QTcpServer::newConnection, &server, [this] {
      QTcpSocket* socket = server.nextPendingConnection();
      QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
        request += socket->readAll();
        if (!answer.isEmpty())
          socket->write(answer);
        if (hangsUp)
          socket->disconnectFromHost();
      });
    });
  }

  QString address() const { return u"http://127.0.0.1:%1/x"_s.arg(server.serverPort()); }

  /// The outcome of one test; nothing where none comes in five seconds.
  std::optional<QString> outcomeOf(const QString& tested) {
    std::optional<QString> outcome;
    tester.test(tested, [&](const QString& sentence) { outcome = sentence; });
    EXPECT_FALSE(outcome.has_value());  // never before the call returns
    const QDeadlineTimer deadline(5000);
    while (!outcome && !deadline.hasExpired())
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    tester.cancel();
    return outcome;
  }

  QTcpServer server;
  QByteArray answer;
  bool hangsUp = false;
  QByteArray request;
  NetworkAddressTester tester{300};
};

TEST_F(AddressTest, AServerThatAnswersIsSaidToAnswer) {
  answer = "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nhi";
  const auto outcome = outcomeOf(address());
  ASSERT_TRUE(outcome);
  EXPECT_TRUE(outcome->startsWith(u"服务器有答复（HTTP 200，"_s) && outcome->endsWith(u" 秒）。"_s));
  EXPECT_TRUE(request.startsWith("GET /x HTTP/1.1\r\n"));
}

TEST_F(AddressTest, TheHeadOfTheAnswerIsEnough) {
  answer = "HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n";  // the body never comes
  const auto outcome = outcomeOf(address());
  ASSERT_TRUE(outcome);
  EXPECT_TRUE(outcome->startsWith(u"服务器有答复（HTTP 200，"_s));
}

TEST_F(AddressTest, ARefusalOfTheServerIsToldWithItsStatus) {
  answer = "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n";
  EXPECT_EQ(outcomeOf(address()), u"服务器有答复，但没有给出网页（HTTP 404）。"_s);
}

TEST_F(AddressTest, ARedirectOnTheSiteIsFollowed) {
  HttpServer site;
  HttpReply there;
  there.status = 302;
  there.headers = {{"Location", "/there"}};
  site.answer("/", there);
  site.answer("/there", pageReply("hi"));
  const auto outcome = outcomeOf(site.url(u"/"_s));
  ASSERT_TRUE(outcome);
  EXPECT_TRUE(outcome->startsWith(u"服务器有答复（HTTP 200，"_s)) << outcome->toStdString();
  EXPECT_EQ(site.requests().size(), 2U);
}

TEST_F(AddressTest, ARedirectOffTheSiteIsToldAndNotFollowed) {
  HttpServer elsewhere;
  elsewhere.answer("/", pageReply("hi"));
  answer = "HTTP/1.1 302 Found\r\nContent-Length: 0\r\nLocation: " + elsewhere.url(u"/"_s).toUtf8() + "\r\n\r\n";
  EXPECT_EQ(outcomeOf(address()), u"服务器把网页转到其它网站（127.0.0.1:%1），没有读取。"_s.arg(elsewhere.port()));
  EXPECT_EQ(elsewhere.requests().size(), 0U);
}

TEST_F(AddressTest, AServerThatSaysNothingIsToldAfterTheTimeOut) {
  EXPECT_EQ(outcomeOf(address()), u"服务器 127.0.0.1 在 1 秒内没有答复。"_s);
}

TEST_F(AddressTest, AServerThatHangsUpIsTold) {
  hangsUp = true;
  EXPECT_EQ(outcomeOf(address()), u"服务器 127.0.0.1 中断了连接。"_s);
}

TEST_F(AddressTest, NobodyAtThePortIsTold) {
  const QString nobody = address();
  server.close();
  EXPECT_EQ(outcomeOf(nobody), u"服务器 127.0.0.1 拒绝连接。"_s);
}

TEST_F(AddressTest, AnAddressWithoutItsSchemeIsAskedOverHttp) {
  answer = "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n";
  EXPECT_TRUE(
      outcomeOf(address().mid(u"http://"_s.size())).value_or(QString()).startsWith(u"服务器有答复（HTTP 200，"_s));
}

TEST_F(AddressTest, WhatIsNoWebAddressIsNotAskedAtAll) {
  EXPECT_EQ(outcomeOf(u"ftp://127.0.0.1/"_s), u"地址不正确，要以 http:// 或 https:// 开头。"_s);
  EXPECT_EQ(outcomeOf(u"  "_s), u"地址还没有设置。"_s);
  EXPECT_EQ(outcomeOf(u"https://gd.results.example"_s), u"地址还没有设置。"_s);
}

TEST_F(AddressTest, ANewTestEndsTheOldOneUnheard) {
  int old = 0;
  tester.test(address(), [&](const QString&) { ++old; });
  tester.test(u""_s, [&](const QString&) { ++old; });
  answer = "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n";
  EXPECT_TRUE(outcomeOf(address()));
  EXPECT_EQ(old, 0);
}

}  // namespace
}  // namespace elevenfive
