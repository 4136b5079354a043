#include "base/RuntimeError.h"
#include "display/PlotScale.h"
#include "support/Panel.h"

namespace {

using support::Panel;

class Plot : public testing::Test {
 protected:
  void SetUp() override { p.started(); }
  LockParameters& r() { return p.record(); }
  controls::PictureBox& picture() { return p.main().Picture1; }
  void apply(int exponent, int offset) {
    r().AmplitudeExponent = static_cast<std::int16_t>(exponent);
    r().PlotOffset = static_cast<std::int16_t>(offset);
    PlotScale::ApplyDisplaySettings(p.program());
  }
  float bottom() { return picture().scaleTop() + picture().scaleHeight(); }
  std::string caption(std::size_t label) { return p.main().Label2[label].caption(); }
  Panel p;
};

TEST_F(Plot, theAmplitudeIsClampedTo1To16) {
  apply(0, 0);
  EXPECT_EQ(r().AmplitudeExponent, 1);
  EXPECT_EQ(r().PlotMax, 2);
  EXPECT_EQ(r().PlotMin, -2);
  apply(-5, 0);
  EXPECT_EQ(r().AmplitudeExponent, 1);
  apply(20, 0);
  EXPECT_EQ(r().AmplitudeExponent, 16);
  EXPECT_EQ(r().PlotMax, 65536);
  EXPECT_EQ(r().PlotMin, -65536);
  apply(17, 0);
  EXPECT_EQ(r().AmplitudeExponent, 16);
  for (int exponent = 1; exponent <= 16; ++exponent) {
    apply(exponent, 0);
    EXPECT_EQ(r().AmplitudeExponent, exponent);
    EXPECT_EQ(r().PlotMax, 1 << exponent);
  }
}

TEST_F(Plot, theOffsetIsClampedToAHundredPercent) {
  apply(9, 101);
  EXPECT_EQ(r().PlotOffset, 100);
  apply(9, 100);
  EXPECT_EQ(r().PlotOffset, 100);
  apply(9, -101);
  EXPECT_EQ(r().PlotOffset, -100);
  apply(9, 32767);
  EXPECT_EQ(r().PlotOffset, 100);
}

TEST_F(Plot, theOffsetMovesTheZeroLineUp) {
  apply(9, 0);
  EXPECT_EQ(picture().scaleTop(), 512);
  EXPECT_EQ(bottom(), -512);
  apply(9, 25);
  EXPECT_EQ(picture().scaleTop(), 384);
  EXPECT_EQ(bottom(), -640);
  apply(9, 100);
  EXPECT_EQ(picture().scaleTop(), 0);
  EXPECT_EQ(bottom(), -1024);
  apply(9, -100);
  EXPECT_EQ(picture().scaleTop(), 1024);
  EXPECT_EQ(bottom(), 0);
}

TEST_F(Plot, theSweepRangeIsTheWidth) {
  r().SweepLower = -1000;
  r().SweepUpper = 3000;
  PlotScale::SetupPlot(p.program());
  EXPECT_EQ(picture().scaleLeft(), -1000);
  EXPECT_EQ(picture().scaleWidth(), 4000);
  const PlotCursor& cursor = p.program().cursor;
  EXPECT_EQ(cursor.leftEdge, -1000);
  EXPECT_EQ(cursor.rightEdge, 3000);
  EXPECT_EQ(cursor.centre, 1000);
  EXPECT_EQ(cursor.plotWidth, 4000);
  EXPECT_EQ(cursor.plotHeight, 1024);
  EXPECT_EQ(cursor.PlotTop, 512);
  EXPECT_EQ(cursor.PlotBottom, -512);
}

TEST_F(Plot, theGridIsNineLinesEachWayInOlive) {
  r().SweepLower = 0;
  r().SweepUpper = 800;
  apply(3, 0);
  const auto& lines = p.canvas().lines;
  ASSERT_EQ(lines.size(), 18U);
  for (std::size_t i = 0; i <= 8; ++i) {
    const float x = 100.0F * static_cast<float>(i), y = 8 - 2.0F * static_cast<float>(i);
    EXPECT_EQ(lines[i].x1, x);
    EXPECT_EQ(lines[i].x2, x);
    EXPECT_EQ(lines[i].y1, 8);
    EXPECT_EQ(lines[i].y2, -8);
    EXPECT_EQ(lines[9 + i].y1, y);
    EXPECT_EQ(lines[9 + i].y2, y);
    EXPECT_EQ(lines[9 + i].x1, 0);
    EXPECT_EQ(lines[9 + i].x2, 800);
    EXPECT_EQ(p.program().cursor.gridY[i], y);
  }
  for (const auto& line : lines) {
    EXPECT_EQ(line.colour, controls::rgb(128, 128, 0));
    EXPECT_EQ(line.width, 1);
  }
  EXPECT_EQ(picture().drawWidth(), 2);
}

TEST_F(Plot, settingUpClearsAndRedrawingDoesNot) {
  const int clears = p.canvas().clears;
  PlotScale::SetupPlot(p.program());
  EXPECT_EQ(p.canvas().clears, clears + 1);
  picture().line(0, 0, 1, 1, 0);
  r().SweepUpper += 1000;
  const float width = picture().scaleWidth();
  PlotScale::RedrawPlotBackground(p.program());
  EXPECT_EQ(p.canvas().clears, clears + 1);
  EXPECT_EQ(picture().scaleWidth(), width) << "the present scale stays";
  EXPECT_EQ(p.canvas().lines.size(), 18U + 1 + 18);
}

TEST_F(Plot, nothingHappensWhileMinimised) {
  p.platform.windows().minimise(p.main());
  const float width = picture().scaleWidth();
  const int clears = p.canvas().clears;
  r().SweepUpper += 5000;
  PlotScale::SetupPlot(p.program());
  EXPECT_EQ(picture().scaleWidth(), width);
  EXPECT_EQ(p.canvas().clears, clears);
}

TEST_F(Plot, theThresholdMarkerIsRedrawnWhileItIsOn) {
  p.program().autoLock.NoiseThreshold = 100;
  PlotScale::SetupPlot(p.program());
  EXPECT_EQ(p.canvas().lines.size(), 18U);
  p.program().autoLock.ThresholdShown = true;
  PlotScale::SetupPlot(p.program());
  ASSERT_EQ(p.canvas().lines.size(), 19U);
  EXPECT_EQ(p.canvas().lines.back().y1, 100);
  EXPECT_EQ(p.canvas().lines.back().y2, 100);
}

TEST_F(Plot, theLabelsShowTheEdgesInTheChosenUnit) {
  r().SweepLower = -1234;
  r().SweepUpper = 5000;
  r().Frequency = 46.04;
  r().DisplayUnits = 0;
  PlotScale::SetupPlot(p.program());
  EXPECT_EQ(caption(0), "-1234");
  EXPECT_EQ(caption(1), "5000");
  EXPECT_EQ(caption(2), "1883");
  EXPECT_EQ(caption(3), "512");
  EXPECT_EQ(caption(4), "-512");
  r().DisplayUnits = 1;
  PlotScale::SetupPlot(p.program());
  EXPECT_EQ(caption(0), "-57 Hz");
  EXPECT_EQ(caption(1), "230 Hz");
  r().DisplayUnits = 2;
  PlotScale::SetupPlot(p.program());
  EXPECT_EQ(caption(0), "-1.23 ppm");
  EXPECT_EQ(caption(1), "5 ppm");
  EXPECT_EQ(caption(3), "512") << "the vertical scale has no unit";
}

TEST_F(Plot, anUnknownUnitLeavesTheFieldLabels) {
  PlotScale::SetupPlot(p.program());
  const std::string left = caption(0), right = caption(1), middle = caption(2);
  r().DisplayUnits = 3;
  r().SweepLower = -99;
  r().SweepUpper = 99;
  apply(4, 0);
  EXPECT_EQ(caption(0), left);
  EXPECT_EQ(caption(1), right);
  EXPECT_EQ(caption(2), middle);
  EXPECT_EQ(caption(3), "16");
  EXPECT_EQ(PlotScale::FormatAxisValue(p.program(), 1), std::nullopt);
}

TEST_F(Plot, theLabelsStandAtTheirEdges) {
  PlotScale::SetupPlot(p.program());
  const auto& label = p.main().Label2;
  for (const std::size_t i : {0U, 1U, 2U}) EXPECT_EQ(label[i].top(), 0);
  for (const std::size_t i : {0U, 3U, 4U}) EXPECT_EQ(label[i].left(), 0);
  EXPECT_EQ(label[1].left() + label[1].width(), picture().width());
  EXPECT_EQ(label[2].left(), picture().width() / 2);
  EXPECT_EQ(label[4].top() + label[4].height(), picture().height());
  EXPECT_GE(label[3].top(), label[0].top() + label[0].height()) << "two texts in one corner";
}

TEST_F(Plot, halvesRoundUpTowardsPlusInfinity) {
  r().PPMperDAC = 1;
  r().Frequency = 1;
  r().DisplayUnits = 1;
  EXPECT_EQ(PlotScale::FormatAxisValue(p.program(), -2.5F), "-2 Hz");
  EXPECT_EQ(PlotScale::FormatAxisValue(p.program(), 2.5F), "3 Hz");
  EXPECT_EQ(PlotScale::FormatAxisValue(p.program(), -0.4F), "0 Hz");
  r().DisplayUnits = 2;
  EXPECT_EQ(PlotScale::FormatAxisValue(p.program(), -0.125F), "-0.12 ppm");
  EXPECT_EQ(PlotScale::FormatAxisValue(p.program(), 0.125F), "0.13 ppm");
}

TEST_F(Plot, choosingAUnitRelabels) {
  p.menu("Preferences/Display Units/Hz");
  EXPECT_EQ(r().DisplayUnits, 1);
  EXPECT_NE(caption(1).find(" Hz"), std::string::npos);
}

TEST_F(Plot, aSweepWithoutWidthDrawsInPeace) {
  r().SweepLower = r().SweepUpper = 0;
  PlotScale::SetupPlot(p.program());
  EXPECT_EQ(caption(0), "0");
}

TEST(SolventFrequency, followsTheConstantsOfTheFile) {
  Panel p;
  p.started();
  EXPECT_NEAR(PlotScale::SolventLockFrequency(p.program(), 4.8F), 46.0446373, 1e-12);
  EXPECT_NEAR(PlotScale::SolventLockFrequency(p.program(), 7.26F), 46.0447506, 1e-12);
}

TEST(SolventFrequency, isCutToTenthsOfAHertzBeforeTheOffset) {
  Panel p;
  p.started();
  p.record().ProtonDelta = 0;
  p.record().ProtonFreq = 0.99999999;
  p.record().GammaRatio = 1;
  p.record().SidebandFreq = 0.05;
  EXPECT_DOUBLE_EQ(PlotScale::SolventLockFrequency(p.program(), 0), 0.9999999 + 0.05e-6);
  p.record().GammaRatio = -1;
  EXPECT_DOUBLE_EQ(PlotScale::SolventLockFrequency(p.program(), 0), -1 + 0.05e-6) << "towards minus infinity";
}

TEST(SolventFrequency, withoutARatioThereIsNoneToSend) {
  Panel p;
  p.started();
  p.record().GammaRatio = 0;
  EXPECT_THROW(PlotScale::SolventLockFrequency(p.program(), 4.8F), base::RuntimeError);
}

} // namespace
