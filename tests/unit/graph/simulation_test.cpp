// A family of curves played as a simulation: its frames, their padded labels, the wrap after the
// last frame and the bounds of the delay.
#include "graph/simulation.h"

#include <gtest/gtest.h>

using namespace quorvex::graph;

TEST(Simulation, EveryCurveIsAFramePlayedInTurnAtABoundedPace) {
    ChartData data(1, 3, 2);
    for (size_t s = 0; s < 3; ++s)
        for (size_t p = 0; p < 2; ++p) {
            data.set_x(s, p, static_cast<double>(p));
            data.set_y(s, p, static_cast<double>(10 * s + p));
        }
    data.set_label(0, "f (y=1)");
    data.set_label(1, "f (y=1.5)");
    data.set_label(2, "f (y=2)");
    Simulation play(data);
    ASSERT_TRUE(play.playable());
    EXPECT_EQ(play.frame(1).y, (std::vector<double>{10, 11}));
    EXPECT_EQ(play.frame(2).x, (std::vector<double>{0, 1})); // the shared X, in every frame
    EXPECT_EQ(play.frame(0).label, "f (y=1)  ");

    EXPECT_EQ(&play.advance(), &play.frame(1));
    play.advance();
    EXPECT_EQ(&play.advance(), &play.frame(0)); // after the last, the first again

    for (int i = 0; i < 20; ++i) play.slower();
    EXPECT_EQ(play.delay(), Simulation::k_longest_delay);
    for (int i = 0; i < 20; ++i) play.faster();
    EXPECT_EQ(play.delay(), 0);

    EXPECT_FALSE(Simulation(ChartData(1, 1, 2)).playable()); // one curve is no family
}
