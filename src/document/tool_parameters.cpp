// The math tools' sections and the matrices: written and read field by field, in saved order.
#include "document.h"
#include "section_fields.h"
#include "section_writer.h"

#include "graph/graph_colors.h"
#include "store/ini_file.h"

#include <algorithm>
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

using Int = IntegrationParameters;
constexpr SectionField<Int> k_integration_fields[] = {
    number("IntType", &Int::IntType),          number("IntPrecision", &Int::IntPrecision),
    number("IntAccuracy", &Int::IntAccuracy),  text("IntFunc", &Int::IntFunc),
    text("IntXParam", &Int::IntXParam),        text("IntXLoLimit", &Int::IntXLoLimit),
    text("IntXHiLimit", &Int::IntXHiLimit),    text("IntYParam", &Int::IntYParam),
    text("IntYLoLimit", &Int::IntYLoLimit),    text("IntYHiLimit", &Int::IntYHiLimit),
    text("IntZParam", &Int::IntZParam),        text("IntZLoLimit", &Int::IntZLoLimit),
    text("IntZHiLimit", &Int::IntZHiLimit),
};

using Diff = DifferentiationParameters;
constexpr SectionField<Diff> k_differentiation_fields[] = {
    text("DiffFunc", &Diff::DiffFunc),
    text("DiffVar", &Diff::DiffVar),
    text("DiffXo", &Diff::DiffXo),
    text("DiffXn", &Diff::DiffXn),
    text("DiffIn", &Diff::DiffIn),
    number("DiffPrecision", &Diff::DiffPrecision),
    number("DiffDispFunc", &Diff::DiffDispFunc),
    number("DiffDispFirstDir", &Diff::DiffDispFirstDir),
    number("DiffDispSecondDir", &Diff::DiffDispSecondDir),
    number("DiffDispThirdDir", &Diff::DiffDispThirdDir),
};

using Root = RootFinderParameters;
constexpr SectionField<Root> k_root_finder_fields[] = {
    text("RootFinderFunc", &Root::RootFinderFunc), text("RootFinderVar", &Root::RootFinderVar),
    text("RootFinderXo", &Root::RootFinderXo),     text("RootFinderXn", &Root::RootFinderXn),
    text("RootFinderIn", &Root::RootFinderIn),     number("RootFinderPrecision", &Root::RootFinderPrecision),
};

// The precision is not in the table: it is saved under the root finder's key and read under
// its own (see QuickCalcParameters).
using Quick = QuickCalcParameters;
constexpr SectionField<Quick> k_quick_calc_fields[] = {
    text("QuickCalcFunc", &Quick::QuickCalcFunc), text("QuickCalcVar", &Quick::QuickCalcVar),
    text("QuickCalcXo", &Quick::QuickCalcXo),     text("QuickCalcXn", &Quick::QuickCalcXn),
    text("QuickCalcIn", &Quick::QuickCalcIn),
};

using Fit = CurveFittingParameters;
constexpr SectionField<Fit> k_curve_fitting_fields[] = {
    text("CurveFittingCorrCoeff", &Fit::CurveFittingCorrCoeff),
    text("CurveFittingPolynomial", &Fit::CurveFittingPolynomial),
    text("CurveFittingFuncName", &Fit::CurveFittingFuncName),
    number("CurveFittingPrecision", &Fit::CurveFittingPrecision),
    number("CurveFittingNumCoefficients", &Fit::CurveFittingNumCoefficients),
    number("CurveFittingSmoothGraph", &Fit::CurveFittingSmoothGraph),
};

using Stat = StatPlottingParameters;
constexpr SectionField<Stat> k_stat_plotting_fields[] = {
    number("StatPlottingPrecision", &Stat::StatPlottingPrecision),
    number("StatPlottingNumIntervals", &Stat::StatPlottingNumIntervals),
    number("StatPlottingSetIntervals", &Stat::StatPlottingSetIntervals),
    number("StatPlottingHystogramPlot", &Stat::StatPlottingHystogramPlot),
    number("StatPlottingAutoCompute", &Stat::StatPlottingAutoCompute),
    number("StatPlottingAutoGraph", &Stat::StatPlottingAutoGraph),
};

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
    out.Begin(k_integration);
    put_fields(out, Tools.Integration, k_integration_fields);
    out.Begin(k_differentiation);
    put_fields(out, Tools.Differentiation, k_differentiation_fields);
}

void Document::ReadCalculusParameters(const store::IniFile& ini) {
    get_fields(ini, k_integration, Tools.Integration, k_integration_fields);
    get_fields(ini, k_differentiation, Tools.Differentiation, k_differentiation_fields);
}

void Document::WriteMathUtilityParameters(SectionWriter& out) {
    step("Writing The Math Utility Parameters", 0);
    const RootFinderParameters& r = Tools.RootFinder;
    out.Begin(k_root_finder);
    put_fields(out, r, k_root_finder_fields);
    for (int i = 0; i < RootFinderParameters::NumPoints; ++i)
        if (!r.RootFinderXp[static_cast<size_t>(i)].empty())
            out.Put("RootFinderXp" + std::to_string(i), r.RootFinderXp[static_cast<size_t>(i)]);

    out.Begin(k_quick_calc);
    put_fields(out, Tools.QuickCalc, k_quick_calc_fields);
    out.PutInt("RootFinderPrecision", Tools.QuickCalc.QuickCalcPrecision); // the saved form; never read back

    out.Begin(k_curve_fitting);
    put_fields(out, Tools.CurveFitting, k_curve_fitting_fields);
    WriteDataSet(out, Tools.CurveFitting.DataSet, 1);

    out.Begin(k_stat_plotting);
    put_fields(out, Tools.StatPlotting, k_stat_plotting_fields);
    WriteDataSet(out, Tools.StatPlotting.DataSet, 1);

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
    get_fields(ini, k_root_finder, r, k_root_finder_fields);
    for (int i = 0; i < RootFinderParameters::NumPoints; ++i)
        r.RootFinderXp[static_cast<size_t>(i)] = ini.GetString(k_root_finder, "RootFinderXp" + std::to_string(i));

    get_fields(ini, k_quick_calc, Tools.QuickCalc, k_quick_calc_fields);
    Tools.QuickCalc.QuickCalcPrecision = ini.GetInt(k_quick_calc, "QuickCalcPrecision", 14);

    get_fields(ini, k_curve_fitting, Tools.CurveFitting, k_curve_fitting_fields);
    Tools.CurveFitting.DataSet = {};
    read_tool_data_set(Tools.CurveFitting.DataSet, ini, k_curve_fitting, "Curve Fitting Data");

    get_fields(ini, k_stat_plotting, Tools.StatPlotting, k_stat_plotting_fields);
    Tools.StatPlotting.DataSet = {};
    read_tool_data_set(Tools.StatPlotting.DataSet, ini, k_stat_plotting, "Stat Plotting Data");

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
        const int rows = ini.GetInt(section, "NumRows", 10), columns = ini.GetInt(section, "NumCols", 10);
        const int max = numerics::QvxMatrix::MaxSize;
        if (!matrix.SetSize(std::clamp(rows, 1, max), std::clamp(columns, 1, max)) || rows > max || columns > max ||
            rows < 1 || columns < 1)
            report("Matrix ' " + matrix.Name() + " ' is saved as " + std::to_string(rows) + " by " +
                       std::to_string(columns) + ", but a matrix has 1 to " + std::to_string(max) +
                       " rows and columns: only the cells within " + std::to_string(matrix.NumRows()) + " by " +
                       std::to_string(matrix.NumCols()) + " were loaded.",
                   "File Open");
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
