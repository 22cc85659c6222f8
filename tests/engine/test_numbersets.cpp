#include "engine/numbersets.h"

#include "model/errors.h"
#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

class NumberSets : public EngineTest {};

TEST_F(NumberSets, AColumnIsReadByNumber) {
  const NumberSet big = readNumberSet(workspace.store(), u"大数"_s);
  for (int n = 1; n <= numberCount; ++n)
    EXPECT_EQ(big[static_cast<std::size_t>(n)], n >= 6) << n;
  EXPECT_EQ(countIn(big, {1, 5, 6, 10, 11}), 3);
}

TEST_F(NumberSets, SeveralColumnsComeInTheirOrder) {
  const auto sets = readNumberSets(workspace.store(), {u"尾1"_s, u"尾0"_s});
  ASSERT_EQ(sets.size(), 2U);
  EXPECT_TRUE(sets[0][1] && sets[0][11] && !sets[0][10]);
  EXPECT_TRUE(sets[1][10] && !sets[1][1]);
}

TEST_F(NumberSets, ANameThatIsNoColumnNeverReachesTheStore) {
  EXPECT_THROW(readNumberSet(workspace.store(), u"大数\" FROM 号码特性; DROP TABLE 历史记录; --"_s), StoreError);
  EXPECT_THROW(readNumberSet(workspace.store(), u"号码"_s), StoreError);
  EXPECT_TRUE(workspace.store().hasTable(u"历史记录"_s));
}

}  // namespace elevenfive
