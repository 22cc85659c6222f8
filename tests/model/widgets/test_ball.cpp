// Numbers as balls in the cells of a grid.
#include "model/widgets/ball.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QStandardItemModel>

namespace elevenfive {

namespace {

constexpr QSize usual(60, 28);

/// A cell that shows a number, on white.
QImage cellOf(const BallDelegate& delegate, int number, const QSize& size = usual) {
  QStandardItemModel model(1, 1);
  model.setData(model.index(0, 0), number);
  QImage picture(size, QImage::Format_RGB32);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  QStyleOptionViewItem option;
  option.rect = picture.rect();
  delegate.paint(&painter, option, model.index(0, 0));
  return picture;
}

/// The colour of a ball of that cell size where no digit stands: above the middle, a little below the rim.
QColor bodyOf(const QImage& picture) {
  return picture.pixelColor(picture.width() / 2, picture.height() * 5 / 24);
}

TEST(BallDelegate, ANumberStandsInAColouredBallWithNothingAroundIt) {
  const BallDelegate delegate;
  const QImage picture = cellOf(delegate, 3);
  EXPECT_GT(bodyOf(picture).red(), 150);
  EXPECT_LT(bodyOf(picture).blue(), 120);
  EXPECT_EQ(picture.pixelColor(1, usual.height() / 2), QColor(Qt::white));
  EXPECT_EQ(picture.pixelColor(usual.width() / 2, 0), QColor(Qt::white));
}

TEST(BallDelegate, EveryNumberHasAPictureOfItsOwnThatStaysTheSame) {
  const BallDelegate delegate;
  EXPECT_EQ(cellOf(delegate, 3), cellOf(delegate, 3));
  EXPECT_NE(cellOf(delegate, 3), cellOf(delegate, 8));
}

TEST(BallDelegate, AnotherColourShowsAtOnce) {
  BallDelegate delegate;
  ASSERT_GT(bodyOf(cellOf(delegate, 3)).red(), 150);
  delegate.setColor(3, ballColor(1));
  EXPECT_LT(bodyOf(cellOf(delegate, 3)).red(), 120);
  EXPECT_GT(bodyOf(cellOf(delegate, 3)).blue(), 150);
  EXPECT_GT(bodyOf(cellOf(delegate, 4)).red(), 150);
}

TEST(BallDelegate, ABallGrowsWithItsCell) {
  const BallDelegate delegate;
  const QImage large = cellOf(delegate, 3, usual * 2);
  ASSERT_GT(bodyOf(cellOf(delegate, 3)).red(), 150);
  EXPECT_LT(large.pixelColor(usual.width(), 7).blue(), 200);  // the rim of the small ball would not reach here
  EXPECT_LT(large.pixelColor(usual.width(), usual.height() * 2 - 7).blue(), 200);
}

TEST(BallDelegate, WhatIsNoNumberOfTheGameIsNoBall) {
  const BallDelegate delegate;
  EXPECT_EQ(bodyOf(cellOf(delegate, 12)), QColor(Qt::white));
}

}  // namespace

}  // namespace elevenfive
