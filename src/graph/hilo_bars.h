#pragma once
#include "chart_data.h"
#include "plot_frame.h"

#include <optional>
#include <vector>

namespace quorvex::graph {

// One bar of a HiLo chart: at X, a line from the low to the high value; a HiLo Open Close bar
// also has a tick to the left at the opening value and one to the right at the closing value.
struct HiLoBar {
    size_t point = 0;
    double x = 0, high = 0, low = 0;
    std::optional<double> open, close;
};

// The bars of a HiLo chart (series 0 the high values, series 1 the low ones) or, with
// `open_close`, of a HiLo Open Close or Candle chart (series 2 the opening values, series 3 the
// closing ones). X is the first series'. A point whose X, high or low is a hole has no bar; a hole
// in the opening or closing value leaves only that tick out.
std::vector<HiLoBar> hilo_bars(const ChartData& data, bool open_close);

struct PixelSegment {
    Pixel from, to;
};

// How long the ticks of the bars are, in pixels: a third of the narrowest gap between two
// neighbouring bars as drawn, never below 2 nor above 12 pixels.
double hilo_tick_length(const std::vector<HiLoBar>& bars, const PlotFrame& frame);

// The lines that draw the bars in the plot area: per bar its vertical line, then (with `ticks`)
// the opening tick to the left and the closing tick to the right. A bar that can not be placed (a
// value at or below zero on a logarithmic axis) is left out; the lines are not clipped.
std::vector<PixelSegment> hilo_segments(const std::vector<HiLoBar>& bars, const PlotFrame& frame, bool ticks = true);

// The body of a candle: from the opening to the closing value, as wide as two ticks; `rising`
// when it closed at or above its opening (drawn hollow).
struct PixelBox {
    double left = 0, top = 0, width = 0, height = 0;
    bool rising = false;
};
// The bodies of the bars that have both an opening and a closing value.
std::vector<PixelBox> candle_bodies(const std::vector<HiLoBar>& bars, const PlotFrame& frame);

} // namespace quorvex::graph
