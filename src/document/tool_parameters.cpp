// The math tools' sections and the matrices: written and read field by field, in saved order.
#include "document.h"
#include "section_writer.h"

#include "graph/graph_colors.h"
#include "store/ini_file.h"

#include <string>

namespace quorvex::document {

namespace {

constexpr const char* k_integration = "INTEGRATION PARAMETERS";
constexpr const char* k_differentiation = "DIFFERENTIATION PARAMETERS";
constexpr const char* k_root_finder = "ROOT FINDER PARAMETERS";
constexpr const char* k_quick_calc = "QUICK CALC PARAMETERS";
constexpr const char* k_curve_fitting = "CURVE FITTING PARAMETERS";
constexpr const char* k_stat_plotting = "STAT PLOTTING PARAMETERS";
constexpr const char* k_quick_graph = "QUICK GRAPH PARAMETERS";
constexpr const char* k_matrices = "MATRIX PARAMETERS";

// The key suffixes of a quick-graph function, in saved order.
struct QuickGraphField {
    const char* suffix;
    std::string QuickGraphFunction::*member;
};
constexpr QuickGraphField k_quick_graph_fields[] = {
    {"Func", &QuickGraphFunction::Func}, {"Var", &QuickGraphFunction::Var},   {"Xo", &QuickGraphFunction::Xo},
    {"Xn", &QuickGraphFunction::Xn},     {"In", &QuickGraphFunction::In},     {"Var2", &QuickGraphFunction::Var2},
    {"Xo2", &QuickGraphFunction::Xo2},   {"Xn2", &QuickGraphFunction::Xn2},   {"In2", &QuickGraphFunction::In2},
};

std::string matrix_section(size_t index) { return "Matrix" + std::to_string(index); }
std::string cell_key(int row, int column) {
    return "Value(" + std::to_string(row) + "," + std::to_string(column) + ")";
}

} // namespace

void Document::WriteCalculusParameters(SectionWriter& out) {
    step("Writing The Integration Parameters", 0);
    const IntegrationParameters& in = Tools.Integration;
    out.Begin(k_integration);
    out.PutInt("IntType", in.IntType);
    out.PutInt("IntPrecision", in.IntPrecision);
    out.PutInt("IntAccuracy", in.IntAccuracy);
    out.Put("IntFunc", in.IntFunc);
    out.Put("IntXParam", in.IntXParam);
    out.Put("IntXLoLimit", in.IntXLoLimit);
    out.Put("IntXHiLimit", in.IntXHiLimit);
    out.Put("IntYParam", in.IntYParam);
    out.Put("IntYLoLimit", in.IntYLoLimit);
    out.Put("IntYHiLimit", in.IntYHiLimit);
    out.Put("IntZParam", in.IntZParam);
    out.Put("IntZLoLimit", in.IntZLoLimit);
    out.Put("IntZHiLimit", in.IntZHiLimit);

    const DifferentiationParameters& d = Tools.Differentiation;
    out.Begin(k_differentiation);
    out.Put("DiffFunc", d.DiffFunc);
    out.Put("DiffVar", d.DiffVar);
    out.Put("DiffXo", d.DiffXo);
    out.Put("DiffXn", d.DiffXn);
    out.Put("DiffIn", d.DiffIn);
    out.PutInt("DiffPrecision", d.DiffPrecision);
    out.PutInt("DiffDispFunc", d.DiffDispFunc);
    out.PutInt("DiffDispFirstDir", d.DiffDispFirstDir);
    out.PutInt("DiffDispSecondDir", d.DiffDispSecondDir);
    out.PutInt("DiffDispThirdDir", d.DiffDispThirdDir);
}

void Document::ReadCalculusParameters(const store::IniFile& ini) {
    IntegrationParameters& in = Tools.Integration;
    in.IntType = ini.GetInt(k_integration, "IntType", 1);
    in.IntPrecision = ini.GetInt(k_integration, "IntPrecision", 14);
    in.IntAccuracy = ini.GetInt(k_integration, "IntAccuracy", 20);
    in.IntFunc = ini.GetString(k_integration, "IntFunc");
    in.IntXParam = ini.GetString(k_integration, "IntXParam");
    in.IntXLoLimit = ini.GetString(k_integration, "IntXLoLimit");
    in.IntXHiLimit = ini.GetString(k_integration, "IntXHiLimit");
    in.IntYParam = ini.GetString(k_integration, "IntYParam");
    in.IntYLoLimit = ini.GetString(k_integration, "IntYLoLimit");
    in.IntYHiLimit = ini.GetString(k_integration, "IntYHiLimit");
    in.IntZParam = ini.GetString(k_integration, "IntZParam");
    in.IntZLoLimit = ini.GetString(k_integration, "IntZLoLimit");
    in.IntZHiLimit = ini.GetString(k_integration, "IntZHiLimit");

    DifferentiationParameters& d = Tools.Differentiation;
    d.DiffFunc = ini.GetString(k_differentiation, "DiffFunc");
    d.DiffVar = ini.GetString(k_differentiation, "DiffVar");
    d.DiffXo = ini.GetString(k_differentiation, "DiffXo");
    d.DiffXn = ini.GetString(k_differentiation, "DiffXn");
    d.DiffIn = ini.GetString(k_differentiation, "DiffIn");
    d.DiffPrecision = ini.GetInt(k_differentiation, "DiffPrecision", 14);
    d.DiffDispFunc = ini.GetInt(k_differentiation, "DiffDispFunc", 1);
    d.DiffDispFirstDir = ini.GetInt(k_differentiation, "DiffDispFirstDir", 1);
    d.DiffDispSecondDir = ini.GetInt(k_differentiation, "DiffDispSecondDir", 1);
    d.DiffDispThirdDir = ini.GetInt(k_differentiation, "DiffDispThirdDir", 1);
}

void Document::WriteMathUtilityParameters(SectionWriter& out) {
    step("Writing The Math Utility Parameters", 0);
    const RootFinderParameters& r = Tools.RootFinder;
    out.Begin(k_root_finder);
    out.Put("RootFinderFunc", r.RootFinderFunc);
    out.Put("RootFinderVar", r.RootFinderVar);
    out.Put("RootFinderXo", r.RootFinderXo);
    out.Put("RootFinderXn", r.RootFinderXn);
    out.Put("RootFinderIn", r.RootFinderIn);
    out.PutInt("RootFinderPrecision", r.RootFinderPrecision);
    for (int i = 0; i < RootFinderParameters::NumPoints; ++i)
        if (!r.RootFinderXp[static_cast<size_t>(i)].empty())
            out.Put("RootFinderXp" + std::to_string(i), r.RootFinderXp[static_cast<size_t>(i)]);

    const QuickCalcParameters& q = Tools.QuickCalc;
    out.Begin(k_quick_calc);
    out.Put("QuickCalcFunc", q.QuickCalcFunc);
    out.Put("QuickCalcVar", q.QuickCalcVar);
    out.Put("QuickCalcXo", q.QuickCalcXo);
    out.Put("QuickCalcXn", q.QuickCalcXn);
    out.Put("QuickCalcIn", q.QuickCalcIn);
    out.PutInt("RootFinderPrecision", q.QuickCalcPrecision); // the saved form; never read back

    const CurveFittingParameters& c = Tools.CurveFitting;
    out.Begin(k_curve_fitting);
    out.Put("CurveFittingCorrCoeff", c.CurveFittingCorrCoeff);
    out.Put("CurveFittingPolynomial", c.CurveFittingPolynomial);
    out.Put("CurveFittingFuncName", c.CurveFittingFuncName);
    out.PutInt("CurveFittingPrecision", c.CurveFittingPrecision);
    out.PutInt("CurveFittingNumCoefficients", c.CurveFittingNumCoefficients);
    out.PutInt("CurveFittingSmoothGraph", c.CurveFittingSmoothGraph);
    WriteDataSet(out, c.DataSet, 1);

    const StatPlottingParameters& s = Tools.StatPlotting;
    out.Begin(k_stat_plotting);
    out.PutInt("StatPlottingPrecision", s.StatPlottingPrecision);
    out.PutInt("StatPlottingNumIntervals", s.StatPlottingNumIntervals);
    out.PutInt("StatPlottingSetIntervals", s.StatPlottingSetIntervals);
    out.PutInt("StatPlottingHystogramPlot", s.StatPlottingHystogramPlot);
    out.PutInt("StatPlottingAutoCompute", s.StatPlottingAutoCompute);
    out.PutInt("StatPlottingAutoGraph", s.StatPlottingAutoGraph);
    WriteDataSet(out, s.DataSet, 1);

    const QuickGraphParameters& g = Tools.QuickGraph;
    out.Begin(k_quick_graph);
    for (const QuickGraphField& field : k_quick_graph_fields)
        out.Put(std::string("QuickGraph2DFunction") + field.suffix, g.Graph2D.*field.member);
    out.PutInt("QuickGraph2DGraphType", g.QuickGraph2DGraphType);
    for (const QuickGraphField& field : k_quick_graph_fields)
        out.Put(std::string("QuickGraph3DFunction") + field.suffix, g.Graph3D.*field.member);
    out.Put("QuickGraph3DGraphType", g.QuickGraph3DGraphType);

    if (Matrices.empty()) return;
    step("Writing The Matrix Parameters", 0);
    out.Begin(k_matrices);
    out.PutInt("NumberOfMatrices", static_cast<long>(Matrices.size()));
    for (size_t m = 0; m < Matrices.size(); ++m) {
        const numerics::QvxMatrix& matrix = Matrices[m];
        out.Begin(matrix_section(m));
        out.Put("Name", matrix.Name());
        out.PutInt("NumRows", matrix.NumRows());
        out.PutInt("NumCols", matrix.NumCols());
        for (int row = 0; row < matrix.NumRows(); ++row)
            for (int column = 0; column < matrix.NumCols(); ++column)
                if (const auto& cell = matrix.GetStrValue(row, column)) out.Put(cell_key(row, column), *cell);
    }
}

// A tool's data set is saved only when it has a name, so a document whose tool was never used
// holds no data-set keys: that is no damage and is read without a word. A set whose keys are
// there but whose name is not is reported as damaged.
void Document::read_tool_data_set(graph::StrDataPnts& set, const store::IniFile& ini, const char* section,
                                  const char* title) {
    bool has_keys = false;
    for (const std::string& key : ini.GetKeyNames(section))
        has_keys = has_keys || key.rfind("DataSet", 0) == 0 || key.rfind("DataLabel", 0) == 0;
    if (has_keys) ReadDataSet(set, ini, section, title, 1);
}

void Document::ReadMathUtilityParameters(const store::IniFile& ini) {
    RootFinderParameters& r = Tools.RootFinder;
    r.RootFinderFunc = ini.GetString(k_root_finder, "RootFinderFunc");
    r.RootFinderVar = ini.GetString(k_root_finder, "RootFinderVar");
    r.RootFinderXo = ini.GetString(k_root_finder, "RootFinderXo");
    r.RootFinderXn = ini.GetString(k_root_finder, "RootFinderXn");
    r.RootFinderIn = ini.GetString(k_root_finder, "RootFinderIn");
    r.RootFinderPrecision = ini.GetInt(k_root_finder, "RootFinderPrecision", 14);
    for (int i = 0; i < RootFinderParameters::NumPoints; ++i)
        r.RootFinderXp[static_cast<size_t>(i)] = ini.GetString(k_root_finder, "RootFinderXp" + std::to_string(i));

    QuickCalcParameters& q = Tools.QuickCalc;
    q.QuickCalcFunc = ini.GetString(k_quick_calc, "QuickCalcFunc");
    q.QuickCalcVar = ini.GetString(k_quick_calc, "QuickCalcVar");
    q.QuickCalcXo = ini.GetString(k_quick_calc, "QuickCalcXo");
    q.QuickCalcXn = ini.GetString(k_quick_calc, "QuickCalcXn");
    q.QuickCalcIn = ini.GetString(k_quick_calc, "QuickCalcIn");
    q.QuickCalcPrecision = ini.GetInt(k_quick_calc, "QuickCalcPrecision", 14);

    CurveFittingParameters& c = Tools.CurveFitting;
    c.CurveFittingCorrCoeff = ini.GetString(k_curve_fitting, "CurveFittingCorrCoeff");
    c.CurveFittingPolynomial = ini.GetString(k_curve_fitting, "CurveFittingPolynomial");
    c.CurveFittingFuncName = ini.GetString(k_curve_fitting, "CurveFittingFuncName");
    c.CurveFittingPrecision = ini.GetInt(k_curve_fitting, "CurveFittingPrecision", 14);
    c.CurveFittingNumCoefficients = ini.GetInt(k_curve_fitting, "CurveFittingNumCoefficients", 2);
    c.CurveFittingSmoothGraph = ini.GetInt(k_curve_fitting, "CurveFittingSmoothGraph", 0);
    c.DataSet = {};
    read_tool_data_set(c.DataSet, ini, k_curve_fitting, "Curve Fitting Data");

    StatPlottingParameters& s = Tools.StatPlotting;
    s.StatPlottingPrecision = ini.GetInt(k_stat_plotting, "StatPlottingPrecision", 14);
    s.StatPlottingNumIntervals = ini.GetInt(k_stat_plotting, "StatPlottingNumIntervals", 10);
    s.StatPlottingSetIntervals = ini.GetInt(k_stat_plotting, "StatPlottingSetIntervals", 0);
    s.StatPlottingHystogramPlot = ini.GetInt(k_stat_plotting, "StatPlottingHystogramPlot", 1);
    s.StatPlottingAutoCompute = ini.GetInt(k_stat_plotting, "StatPlottingAutoCompute", 0);
    s.StatPlottingAutoGraph = ini.GetInt(k_stat_plotting, "StatPlottingAutoGraph", 0);
    s.DataSet = {};
    read_tool_data_set(s.DataSet, ini, k_stat_plotting, "Stat Plotting Data");

    QuickGraphParameters& g = Tools.QuickGraph;
    for (const QuickGraphField& field : k_quick_graph_fields)
        g.Graph2D.*field.member = ini.GetString(k_quick_graph, std::string("QuickGraph2DFunction") + field.suffix);
    g.QuickGraph2DGraphType = ini.GetInt(k_quick_graph, "QuickGraph2DGraphType", 14);
    for (const QuickGraphField& field : k_quick_graph_fields)
        g.Graph3D.*field.member = ini.GetString(k_quick_graph, std::string("QuickGraph3DFunction") + field.suffix);
    g.QuickGraph3DGraphType = ini.GetString(k_quick_graph, "QuickGraph3DGraphType");

    step("Reading The Defined Matrices", 0);
    Matrices.clear();
    const int count = ini.GetInt(k_matrices, "NumberOfMatrices", 0);
    // A count beyond the sections present would only add empty matrices; a damaged count is
    // bounded by what the file holds.
    for (int m = 0; m < count && ini.HasSection(matrix_section(static_cast<size_t>(m))); ++m) {
        const std::string section = matrix_section(static_cast<size_t>(m));
        numerics::QvxMatrix matrix(ini.GetString(section, "Name"), 10, 10);
        matrix.SetSize(ini.GetInt(section, "NumRows", 10), ini.GetInt(section, "NumCols", 10));
        for (int row = 0; row < matrix.NumRows(); ++row)
            for (int column = 0; column < matrix.NumCols(); ++column) {
                const std::string key = cell_key(row, column);
                const std::string text = ini.GetString(section, key);
                if (!text.empty()) matrix.SetStrValue(row, column, text);
            }
        Matrices.push_back(std::move(matrix));
    }
}

} // namespace quorvex::document
