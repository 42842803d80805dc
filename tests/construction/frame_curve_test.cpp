// The frame generator's curve: the B-spline against de Casteljau, its ends,
// the locality of a lower order, the doubling, the handles and the marks.
#include <gtest/gtest.h>

#include <cmath>

#include "construction/frame_curve.h"

namespace tarvokin {
namespace {

FramePoints wavyHandles(int count) {
    FramePoints h;
    for (int i = 0; i < count; ++i) h.push_back({10.0 * i + 3 * std::sin(i), 50 + 20 * std::cos(1.3 * i), 0});
    return h;
}

FramePoint deCasteljau(FramePoints p, double u) {
    for (size_t r = 1; r < p.size(); ++r)
        for (size_t i = 0; i + r < p.size(); ++i) {
            p[i].x = (1 - u) * p[i].x + u * p[i + 1].x;
            p[i].y = (1 - u) * p[i].y + u * p[i + 1].y;
        }
    return p[0];
}

TEST(BSpline, FullOrderIsTheBezierArcOfTheHandles) {
    for (int count : {3, 5, 9}) {
        const FramePoints h = wavyHandles(count);
        FramePoints out;
        EvaluateBSpline(h, count, 17, out);
        ASSERT_EQ(out.size(), 17u);
        for (size_t s = 0; s < out.size(); ++s) {
            const FramePoint b = deCasteljau(h, double(s) / 16);
            EXPECT_NEAR(out[s].x, b.x, 1e-9) << count << " handles, sample " << s;
            EXPECT_NEAR(out[s].y, b.y, 1e-9) << count << " handles, sample " << s;
        }
    }
}

TEST(BSpline, EndsAreTheEndHandlesExactlyAtEveryOrder) {
    const FramePoints h = wavyHandles(9);
    for (int order = 2; order <= 9; ++order)
        for (int count : {2, 3, 12, 13}) {
            FramePoints out;
            EvaluateBSpline(h, order, count, out);
            ASSERT_EQ(static_cast<int>(out.size()), count);
            EXPECT_EQ(out.front(), h.front());
            EXPECT_EQ(out.back(), h.back());
        }
}

TEST(BSpline, LowerOrderMovesOnlyTheSamplesNearTheHandle) {
    // Order 3 on 9 handles: knots 0 0 0 1 2 3 4 5 6 7 7 7; handle i acts on
    // t in [t_i, t_(i+3)). Moving handle 0 touches t < 1 only, handle 8 t > 6.
    FramePoints h = wavyHandles(9);
    FramePoints before, after;
    const int samples = 71;  // t = s / 10
    EvaluateBSpline(h, 3, samples, before);
    h[0].y += 40;
    EvaluateBSpline(h, 3, samples, after);
    for (int s = 10; s < samples; ++s) EXPECT_EQ(after[s], before[s]) << s;
    EXPECT_NE(after[5].y, before[5].y);

    h = wavyHandles(9);
    h[8].x -= 25;
    EvaluateBSpline(h, 3, samples, after);
    for (int s = 0; s <= 60; ++s) EXPECT_EQ(after[s], before[s]) << s;
    EXPECT_NE(after[65].x, before[65].x);

    // At full order every inner sample feels every handle.
    FramePoints full, moved;
    h = wavyHandles(9);
    EvaluateBSpline(h, 9, 12, full);
    h[0].y += 40;
    EvaluateBSpline(h, 9, 12, moved);
    for (int s = 1; s < 11; ++s) EXPECT_NE(moved[s].y, full[s].y) << s;
}

TEST(BSpline, DegenerateInputsStayFinite) {
    FramePoints out;
    EvaluateBSpline({}, 3, 10, out);
    EXPECT_TRUE(out.empty());
    EvaluateBSpline({{5, 6, 0}}, 3, 4, out);
    ASSERT_EQ(out.size(), 4u);
    EXPECT_EQ(out[2], (FramePoint{5, 6, 0}));
    // An order beyond the handles is held to their count, a count below 2 to 2.
    const FramePoints h = wavyHandles(4);
    FramePoints a, b;
    EvaluateBSpline(h, 40, 1, a);
    EvaluateBSpline(h, 4, 2, b);
    EXPECT_EQ(a, b);
}

TEST(FrameGenerator, StartsWithNineHandlesEndsOnTheAxisAndTheStartCounts) {
    FrameState f;
    InitFrameGenerator(f);
    EXPECT_EQ(f.ControlCount, 8);
    EXPECT_EQ(f.PointCount, 12);
    EXPECT_EQ(f.CurveOrder, 9);
    ASSERT_EQ(f.ControlPoints.size(), 9u);
    EXPECT_EQ(f.ControlPoints.front().x, f.AxeX);
    EXPECT_EQ(f.ControlPoints.back().x, f.AxeX);
    EXPECT_EQ(f.ControlPoints.back().y, f.BaseLineY);
    // The inner handles stand off the round by the start offsets.
    const double middle = (f.ControlPoints.front().y + f.ControlPoints.back().y) / 2;
    const double radius = f.BaseLineY - middle;
    const FramePoint& h4 = f.ControlPoints[4];
    EXPECT_NEAR(std::hypot(h4.x - f.AxeX, h4.y - middle), radius + kFrameStartOffsets[3], 1e-9);
    ASSERT_EQ(f.CurveRight.size(), 12u);
    for (size_t i = 0; i < 12; ++i) {
        EXPECT_DOUBLE_EQ(f.CurveLeft[i].x, 2 * f.AxeX - f.CurveRight[i].x);
        EXPECT_EQ(f.CurveLeft[i].y, f.CurveRight[i].y);
    }
}

TEST(FrameGenerator, DoublingOffsetsEachHandleInsideByTheThickness) {
    FrameState f;
    InitFrameGenerator(f);
    f.Thickness = 12;
    ApplyDoubling(f);
    ASSERT_EQ(f.DoubledControl.size(), f.ControlPoints.size());
    for (size_t i = 0; i < f.ControlPoints.size(); ++i) {
        const FramePoint& a = f.ControlPoints[i];
        const FramePoint& d = f.DoubledControl[i];
        EXPECT_NEAR(std::hypot(d.x - a.x, d.y - a.y), 12, 1e-9) << i;
    }
    // The ends stay on the axis and move inside (down at the top, up at the base).
    EXPECT_EQ(f.DoubledControl.front().x, f.AxeX);
    EXPECT_NEAR(f.DoubledControl.front().y, f.ControlPoints.front().y + 12, 1e-9);
    EXPECT_NEAR(f.DoubledControl.back().y, f.ControlPoints.back().y - 12, 1e-9);
    // The widest handle moves towards the axis.
    EXPECT_LT(f.DoubledControl[4].x, f.ControlPoints[4].x);
}

TEST(FrameGenerator, DragMovesTheHandleAndTheDoubledOneOnlyWhenSlaved) {
    FrameState f;
    InitFrameGenerator(f);
    f.Doubling = true;
    ApplyDoubling(f);
    const FramePoint h3 = f.ControlPoints[3];
    FramePress(f, h3.x + 2, h3.y - 3, 1, true);
    EXPECT_EQ(f.ActiveHandle, 3);
    const FramePoints doubledBefore = f.DoubledControl;
    EXPECT_TRUE(FrameMove(f, h3.x + 30, h3.y, true));
    EXPECT_EQ(f.ControlPoints[3].x, h3.x + 30);
    EXPECT_NE(f.DoubledControl[3], doubledBefore[3]);
    FrameRelease(f);
    EXPECT_FALSE(FrameMove(f, 0, 0, true));
    EXPECT_EQ(f.ActiveHandle, 3);  // kept until the next press

    // Decoupled: the doubled curve stays until the thickness changes.
    f.Slaved = false;
    const FramePoints doubled = f.DoubledControl;
    const FramePoints doubledCurve = f.DoubledRight;
    FramePress(f, f.ControlPoints[5].x, f.ControlPoints[5].y, 1, true);
    EXPECT_TRUE(FrameMove(f, f.ControlPoints[5].x - 20, f.ControlPoints[5].y, true));
    EXPECT_EQ(f.DoubledControl, doubled);
    EXPECT_EQ(f.DoubledRight, doubledCurve);
}

TEST(FrameGenerator, FindHandleTakesTheFirstHitAndOtherButtonsToggleTheMark) {
    FrameState f;
    InitFrameGenerator(f);
    // Two handles on one spot: the lower index wins.
    f.ControlPoints[2] = f.ControlPoints[6];
    EXPECT_EQ(FindHandle(f, f.ControlPoints[6].x, f.ControlPoints[6].y, true), 2);
    const FramePoint h = f.ControlPoints[1];
    EXPECT_EQ(FindHandle(f, h.x + kHandleSize / 2, h.y, true), 1);  // on the box's edge
    EXPECT_EQ(FindHandle(f, h.x + kHandleSize / 2 + 0.5, h.y, true), -1);
    EXPECT_EQ(FindHandle(f, 1, 1, true), -1);

    FramePress(f, h.x, h.y, 2, true);
    EXPECT_EQ(f.HandleMarks[1], "1");
    EXPECT_FALSE(f.HandleRed[1]);
    FramePress(f, h.x, h.y, 2, true);
    EXPECT_EQ(f.HandleMarks[1], "");
    EXPECT_TRUE(f.HandleRed[1]);
    EXPECT_FALSE(FrameMove(f, h.x + 10, h.y, true));  // a right press drags nothing
}

}  // namespace
}  // namespace tarvokin
