#pragma once
#include "graph/data_points.h"

#include <array>
#include <string>

namespace quorvex::document {

// What each math tool had on its page when the document was saved, so that reopening the
// document shows the tools as they were left. Texts are the fields as typed (expressions);
// the meaning of each belongs to its tool.

struct IntegrationParameters {
    int IntType = 1;
    int IntPrecision = 14;
    int IntAccuracy = 20;
    std::string IntFunc, IntXParam, IntXLoLimit, IntXHiLimit, IntYParam, IntYLoLimit, IntYHiLimit, IntZParam,
        IntZLoLimit, IntZHiLimit;
    bool operator==(const IntegrationParameters&) const = default;
};

struct DifferentiationParameters {
    std::string DiffFunc, DiffVar, DiffXo, DiffXn, DiffIn;
    int DiffPrecision = 14;
    int DiffDispFunc = 1;
    int DiffDispFirstDir = 1;
    int DiffDispSecondDir = 1;
    int DiffDispThirdDir = 1;
    bool operator==(const DifferentiationParameters&) const = default;
};

struct RootFinderParameters {
    static constexpr int NumPoints = 100; // the starting points the page keeps; more are not saved
    std::string RootFinderFunc, RootFinderVar, RootFinderXo, RootFinderXn, RootFinderIn;
    int RootFinderPrecision = 14;
    std::array<std::string, NumPoints> RootFinderXp; // empty slots are not saved
    bool operator==(const RootFinderParameters&) const = default;
};

struct QuickCalcParameters {
    std::string QuickCalcFunc, QuickCalcVar, QuickCalcXo, QuickCalcXn, QuickCalcIn;
    // Saved under the root finder's key and read under its own, so a reopened document always
    // has the default precision (the file form other programs read depends on this).
    int QuickCalcPrecision = 14;
    bool operator==(const QuickCalcParameters&) const = default;
};

struct CurveFittingParameters {
    std::string CurveFittingCorrCoeff, CurveFittingPolynomial, CurveFittingFuncName;
    int CurveFittingPrecision = 14;
    int CurveFittingNumCoefficients = 2;
    int CurveFittingSmoothGraph = 0;
    graph::StrDataPnts DataSet; // saved only when it has a name
};

struct StatPlottingParameters {
    int StatPlottingPrecision = 14;
    int StatPlottingNumIntervals = 10;
    int StatPlottingSetIntervals = 0;
    int StatPlottingHystogramPlot = 1;
    int StatPlottingAutoCompute = 0;
    int StatPlottingAutoGraph = 0;
    graph::StrDataPnts DataSet; // saved only when it has a name
};

struct QuickGraphFunction {
    std::string Func, Var, Xo, Xn, In, Var2, Xo2, Xn2, In2;
    bool operator==(const QuickGraphFunction&) const = default;
};

struct QuickGraphParameters {
    QuickGraphFunction Graph2D;
    int QuickGraph2DGraphType = 14;
    QuickGraphFunction Graph3D;
    std::string QuickGraph3DGraphType; // the text form of the 3-D type, kept as the tool wrote it
    bool operator==(const QuickGraphParameters&) const = default;
};

struct ToolParameters {
    IntegrationParameters Integration;
    DifferentiationParameters Differentiation;
    RootFinderParameters RootFinder;
    QuickCalcParameters QuickCalc;
    CurveFittingParameters CurveFitting;
    StatPlottingParameters StatPlotting;
    QuickGraphParameters QuickGraph;
};

} // namespace quorvex::document
