#include "model/store.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <limits>

#include "model/errors.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

/// A fresh store with one small table.
class StoreTest : public ::testing::Test {
 protected:
  StoreTest() : store(folder.filePath(u"库.db"_s), StoreAccess::create) {
    store.execute("test",
                  "CREATE TABLE t (a INTEGER PRIMARY KEY CHECK (a < 1000), b REAL, c TEXT, d INTEGER UNIQUE,"
                  " e INTEGER NOT NULL DEFAULT 0) STRICT");
  }

  int count() { return store.value("test", "SELECT COUNT(*) FROM t").value_or(-1); }

  template <typename Call>
  std::string faultOf(Call&& call) {
    try {
      call();
    } catch (const StoreError& fault) {
      return fault.message().toStdString();
    }
    return "no fault";
  }

  QTemporaryDir folder;
  Store store;
};

TEST_F(StoreTest, BindsAndReadsEveryKindOfValue) {
  store.execute("test", "INSERT INTO t (a, b, c, d) VALUES (?, ?, ?, ?)", 1, 2.5, u"期号 '\"%_;"_s, qint64{1} << 40);
  Statement row = store.query("test", "SELECT a, b, c, d FROM t");
  ASSERT_TRUE(row.next());
  EXPECT_EQ(row.integer(0), 1);
  EXPECT_EQ(row.real(1), 2.5);
  EXPECT_EQ(row.text(2), u"期号 '\"%_;"_s);
  EXPECT_EQ(row.integer64(3), qint64{1} << 40);
  EXPECT_TRUE(row.isInteger(0));
  EXPECT_TRUE(row.isReal(1));
  EXPECT_FALSE(row.isReal(0));
  EXPECT_FALSE(row.next());
}

TEST_F(StoreTest, BindsNullForNothingForAnEmptyOptionalAndForMissingValues) {
  store.execute("test", "INSERT INTO t (a, b, c, d) VALUES (?, ?, ?, ?)", 1, nullptr, std::optional<QString>());
  Statement row = store.query("test", "SELECT b, c, d FROM t");
  ASSERT_TRUE(row.next());
  EXPECT_TRUE(row.isNull(0));
  EXPECT_TRUE(row.isNull(1));
  EXPECT_TRUE(row.isNull(2));
}

TEST_F(StoreTest, BindsTheValueOfAFilledOptional) {
  store.execute("test", "INSERT INTO t (a, c) VALUES (?, ?)", std::optional<int>(7), std::optional<QString>(u"x"_s));
  EXPECT_EQ(store.value("test", "SELECT a FROM t WHERE c = 'x'"), 7);
}

TEST_F(StoreTest, AnEmptyTextIsNotNull) {
  store.execute("test", "INSERT INTO t (a, c) VALUES (1, ?)", QString());
  EXPECT_EQ(store.value("test", "SELECT c IS NULL FROM t"), 0);
}

TEST_F(StoreTest, NullReadsAsZeroAndAsAnEmptyText) {
  store.execute("test", "INSERT INTO t (a) VALUES (1)");
  Statement row = store.query("test", "SELECT b, c, d FROM t");
  ASSERT_TRUE(row.next());
  EXPECT_EQ(row.real(0), 0.0);
  EXPECT_EQ(row.text(1), QString());
  EXPECT_EQ(row.integer(2), 0);
}

TEST_F(StoreTest, ATextIsDataAndNeverPartOfTheStatement) {
  store.execute("test", "INSERT INTO t (a, c) VALUES (1, ?)", u"'); DROP TABLE t; --"_s);
  EXPECT_EQ(store.value("test", "SELECT a FROM t WHERE c = ?", u"'); DROP TABLE t; --"_s), 1);
}

TEST_F(StoreTest, ATextKeepsANulCharacterInside) {
  const QString text = u"a"_s + QChar(0) + u'b';
  store.execute("test", "INSERT INTO t (a, c) VALUES (1, ?)", text);
  Statement row = store.query("test", "SELECT c FROM t");
  ASSERT_TRUE(row.next());
  EXPECT_EQ(row.text(0), text);
}

TEST_F(StoreTest, NamesItsColumns) {
  const Statement row = store.query("test", "SELECT a AS 期号, b FROM t");
  EXPECT_EQ(row.columnCount(), 2);
  EXPECT_EQ(row.columnName(0), u"期号"_s);
}

TEST_F(StoreTest, RunTellsHowManyRowsItChanged) {
  Statement insert = store.query("test", "INSERT INTO t (a) VALUES (?)");
  EXPECT_EQ(insert.run(1), 1);
  EXPECT_EQ(insert.run(2), 1);
  EXPECT_EQ(store.execute("test", "UPDATE t SET b = 1"), 2);
  EXPECT_EQ(store.execute("test", "UPDATE t SET b = 1 WHERE a > 5"), 0);
  EXPECT_EQ(store.execute("test", "DELETE FROM t"), 2);
}

TEST_F(StoreTest, AStatementThatChangesNoRowsTellsZeroAlsoBehindOneThatDid) {
  store.execute("test", "INSERT INTO t (a) VALUES (1), (2)");
  EXPECT_EQ(store.execute("test", "CREATE TABLE u (a INTEGER) STRICT"), 0);
  EXPECT_EQ(store.execute("test", "BEGIN"), 0);
  EXPECT_EQ(store.execute("test", "COMMIT"), 0);
}

TEST_F(StoreTest, ValueIsNothingWithoutARowAndForNull) {
  EXPECT_EQ(store.value("test", "SELECT a FROM t"), std::nullopt);
  store.execute("test", "INSERT INTO t (a) VALUES (0)");
  EXPECT_EQ(store.value("test", "SELECT a FROM t"), 0);
  EXPECT_EQ(store.value("test", "SELECT d FROM t"), std::nullopt);
}

TEST_F(StoreTest, BindStartsAStatementOver) {
  store.execute("test", "INSERT INTO t (a) VALUES (1), (2), (3)");
  Statement above = store.query("test", "SELECT a FROM t WHERE a > ? ORDER BY a", 0);
  ASSERT_TRUE(above.next());
  above.bind(1);
  ASSERT_TRUE(above.next());
  EXPECT_EQ(above.integer(0), 2);
}

TEST_F(StoreTest, BindDropsTheValuesOfTheRunBefore) {
  Statement insert = store.query("test", "INSERT INTO t (a, c) VALUES (?, ?)");
  insert.run(1, u"x"_s);
  insert.run(2);
  EXPECT_EQ(store.value("test", "SELECT a FROM t WHERE c IS NULL"), 2);
}

TEST_F(StoreTest, AScriptRunsAllItsStatements) {
  store.executeScript("test", "INSERT INTO t (a) VALUES (1); INSERT INTO t (a) VALUES (2);");
  EXPECT_EQ(count(), 2);
}

TEST_F(StoreTest, KnowsItsTables) {
  EXPECT_TRUE(store.hasTable(u"t"_s));
  EXPECT_FALSE(store.hasTable(u"u"_s));
}

TEST_F(StoreTest, AFaultNamesThePurposeOfTheStatement) {
  EXPECT_EQ(faultOf([&] { store.execute("删除记录", "DELETE FROM missing"); }).rfind("删除记录失败：", 0), 0U);
  EXPECT_EQ(faultOf([&] { (void)store.value("读取条件", "SELECT x FROM t"); }).rfind("读取条件失败：", 0), 0U);
  EXPECT_EQ(faultOf([&] { store.executeScript("整理", "nonsense"); }).rfind("整理失败：", 0), 0U);
}

TEST_F(StoreTest, AFaultGivesItsReasonInPlainWords) {
  store.execute("test", "INSERT INTO t (a, d) VALUES (1, 1)");
  const auto insert = [&](const auto& a, const auto& d) {
    return faultOf([&] { store.execute("写入", "INSERT INTO t (a, d) VALUES (?, ?)", a, d); });
  };
  EXPECT_EQ(insert(1000, 2), "写入失败：数值超出允许的范围。");
  EXPECT_EQ(insert(1, 2), "写入失败：已有相同的记录。");
  EXPECT_EQ(insert(2, 1), "写入失败：已有相同的记录。");
  EXPECT_EQ(insert(u"x"_s, 2), "写入失败：数值的类型不符。");
  EXPECT_EQ(insert(2, u"x"_s), "写入失败：数值的类型不符。");
  EXPECT_EQ(faultOf([&] { store.execute("写入", "UPDATE t SET e = NULL"); }), "写入失败：缺少必填的值。");
}

TEST_F(StoreTest, AStatementRunsAgainAfterAFault) {
  Statement insert = store.query("写入", "INSERT INTO t (a) VALUES (?)");
  EXPECT_THROW(insert.run(1000), StoreError);
  EXPECT_EQ(insert.run(1), 1);
  EXPECT_EQ(count(), 1);
}

TEST_F(StoreTest, TooManyValuesAreAFault) {
  EXPECT_THROW(store.execute("test", "INSERT INTO t (a) VALUES (?)", 1, 2), StoreError);
}

TEST_F(StoreTest, AColumnThatTheRowDoesNotHaveIsAFault) {
  store.execute("test", "INSERT INTO t (a) VALUES (1)");
  Statement row = store.query("读取", "SELECT a FROM t");
  EXPECT_THROW((void)row.integer(0), StoreError);  // no row yet
  ASSERT_TRUE(row.next());
  EXPECT_THROW((void)row.integer(1), StoreError);
  EXPECT_THROW((void)row.text(-1), StoreError);
  EXPECT_THROW((void)row.columnName(1), StoreError);
}

// Transactions.

struct Stop final {};  // some exception that is not the store's own

TEST_F(StoreTest, AScopeLeftWithoutAnExceptionIsKept) {
  {
    const StoreTransaction transaction(store);
    EXPECT_TRUE(store.inTransaction());
    store.execute("test", "INSERT INTO t (a) VALUES (1)");
  }
  EXPECT_FALSE(store.inTransaction());
  EXPECT_EQ(count(), 1);
}

TEST_F(StoreTest, ALoopThatIsStoppedKeepsTheRowsUntilThen) {
  const auto pass = [&](int stopAt) {
    const StoreTransaction transaction(store);
    Statement insert = store.query("test", "INSERT INTO t (a) VALUES (?)");
    for (int row = 1; row <= 10; ++row) {
      insert.run(row);
      if (row == stopAt)
        return;
    }
  };
  pass(4);
  EXPECT_EQ(count(), 4);
}

TEST_F(StoreTest, AnExceptionUndoesTheScope) {
  EXPECT_THROW(
      {
        const StoreTransaction transaction(store, OnFault::undo);
        store.execute("test", "INSERT INTO t (a) VALUES (1)");
        throw Stop{};
      },
      Stop);
  EXPECT_FALSE(store.inTransaction());
  EXPECT_EQ(count(), 0);
}

TEST_F(StoreTest, AnExceptionKeepsWhatWasDoneWhereAskedFor) {
  EXPECT_THROW(
      {
        const StoreTransaction transaction(store, OnFault::keep);
        store.execute("test", "INSERT INTO t (a) VALUES (1)");
        store.execute("test", "INSERT INTO t (a) VALUES (1000)");
      },
      StoreError);
  EXPECT_FALSE(store.inTransaction());
  EXPECT_EQ(count(), 1);
}

TEST_F(StoreTest, WhatWasCommittedStaysWhenAnExceptionFollows) {
  EXPECT_THROW(
      {
        StoreTransaction transaction(store);
        store.execute("test", "INSERT INTO t (a) VALUES (1)");
        transaction.commit();
        throw Stop{};
      },
      Stop);
  EXPECT_EQ(count(), 1);
}

TEST_F(StoreTest, CommittingTwiceIsHarmless) {
  StoreTransaction transaction(store);
  store.execute("test", "INSERT INTO t (a) VALUES (1)");
  transaction.commit();
  EXPECT_NO_THROW(transaction.commit());
  EXPECT_EQ(count(), 1);
}

TEST_F(StoreTest, AnInnerScopeLeavesTheDecisionToTheOuterOne) {
  EXPECT_THROW(
      {
        const StoreTransaction outer(store);
        {
          StoreTransaction inner(store);
          store.execute("test", "INSERT INTO t (a) VALUES (1)");
          inner.commit();
          EXPECT_TRUE(store.inTransaction());
        }
        EXPECT_TRUE(store.inTransaction());
        throw Stop{};
      },
      Stop);
  EXPECT_EQ(count(), 0);
}

TEST_F(StoreTest, AnInnerFaultThatIsCaughtDoesNotEndTheOuterScope) {
  {
    const StoreTransaction outer(store);
    store.execute("test", "INSERT INTO t (a) VALUES (1)");
    try {
      const StoreTransaction inner(store, OnFault::undo);
      store.execute("test", "INSERT INTO t (a) VALUES (2)");
      throw Stop{};
    } catch (const Stop&) {
      EXPECT_TRUE(store.inTransaction());
    }
    store.execute("test", "INSERT INTO t (a) VALUES (3)");
  }
  EXPECT_EQ(count(), 3);
}

TEST_F(StoreTest, AScopeEnteredWhileAnExceptionUnwindsCommitsAllTheSame) {
  struct WritesAtTheEnd {
    Store& store;
    ~WritesAtTheEnd() {
      const StoreTransaction transaction(store);
      store.execute("test", "INSERT INTO t (a) VALUES (9)");
    }
  };
  EXPECT_THROW(
      {
        const WritesAtTheEnd last{store};
        throw Stop{};
      },
      Stop);
  EXPECT_EQ(count(), 1);
}

TEST_F(StoreTest, RowsCanBeReadWhileOthersAreWritten) {
  store.execute("test", "INSERT INTO t (a) VALUES (1), (2), (3)");
  {
    const StoreTransaction transaction(store);
    Statement rows = store.query("test", "SELECT a FROM t ORDER BY a");
    Statement update = store.query("test", "UPDATE t SET b = a * 2 WHERE a = ?");
    while (rows.next())
      update.run(rows.integer(0));
  }
  EXPECT_EQ(store.value("test", "SELECT SUM(b) FROM t"), 12);
}

TEST_F(StoreTest, IsReadBackByASecondOpening) {
  store.execute("test", "INSERT INTO t (a) VALUES (42)");
  Store second(store.path(), StoreAccess::readOnly);
  EXPECT_EQ(second.value("test", "SELECT a FROM t"), 42);
}

}  // namespace
}  // namespace elevenfive
