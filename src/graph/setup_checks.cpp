#include "setup_checks.h"

#include "graph_limits.h"
#include "graph_types.h"

#include "engine/parser.h"

#include <algorithm>
#include <cctype>

namespace quorvex::graph {

namespace {

using Problem = std::optional<SetupProblem>;

SetupProblem problem(SetupPage page, std::string message, bool question = false) {
    SetupProblem found;
    found.page = page;
    found.message = std::move(message);
    found.proceed_question = question;
    return found;
}

std::string upper(std::string text) {
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

// Reversed limits are put the right way round without a word; then the range must be one.
Problem check_axis(engine::Variable& variable, const char* axis) {
    if (variable.high().real() < variable.low().real()) variable.SwapLimits();
    const std::string name = variable.name();
    if (variable.low().real() == variable.high().real())
        return problem(SetupPage::Variables, "The low and high limits of the " + std::string(axis) + " axis variable ' " +
                                                 name + " ' are equal: give it a range.");
    if (variable.num_points() < 2)
        return problem(SetupPage::Variables, "The " + std::string(axis) + " axis variable ' " + name +
                                                 " ' needs at least 2 points.");
    return std::nullopt;
}

// The variables every function has, in the order they first appear.
std::list<Variable> shared_variables(const GraphData& graph) {
    if (!graph.ComVars.empty() || graph.Functions.empty()) return graph.ComVars;
    GraphData listed = graph;
    listed.SetComVarList();
    return listed.ComVars;
}

Problem check_functions(const GraphData& graph, engine::Parser& parser) {
    if (graph.Functions.empty() && graph.DataSets.empty())
        return problem(SetupPage::Functions, "There is nothing to graph: choose a function or enter data points.");
    const bool three_d = graph.GetGraphType() == 2;
    if (three_d && !graph.Functions.empty() && !graph.DataSets.empty())
        return problem(SetupPage::Functions, "You can not graph both equations and data points in 3-dimensions, you "
                                             "must remove the equation or the data points!");
    if (three_d && graph.Functions.size() > 1)
        return problem(SetupPage::Functions, "A 3-dimensional graph shows one equation: remove all but one.");
    for (const engine::Function& function : graph.Functions) {
        const std::string& name = function.full_name();
        const std::string bare = name.substr(0, name.find('['));
        if (parser.find_function(name.c_str()) < 0 && !parser.is_internal_function(bare.c_str()) &&
            !parser.is_library_function(bare.c_str()))
            return problem(SetupPage::Functions, "The function ' " + name + " ' is no longer defined.");
    }
    return std::nullopt;
}

Problem check_variables(GraphData& graph, engine::Parser& parser, bool allow_warnings) {
    if (graph.Functions.empty()) return std::nullopt;
    if (!graph.XAxisVar && !graph.ZAxisVar) {
        const std::list<Variable> shared = shared_variables(graph);
        if (shared.empty())
            return problem(SetupPage::Variables, "The functions graphed have no variable in common, so none can run "
                                                 "along the X axis.");
        SetupProblem offer = problem(SetupPage::Variables, "No axis variable has been chosen. Do you want to use the "
                                                           "defaults, with ' " + shared.front().name() +
                                                               " ' on the X axis?");
        offer.offer = SetupOffer::DefaultAxis;
        offer.variable = shared.front().name();
        return offer;
    }
    if (graph.XAxisVar)
        if (Problem found = check_axis(*graph.XAxisVar, "X")) return found;
    if (graph.ZAxisVar)
        if (Problem found = check_axis(*graph.ZAxisVar, "Z")) return found;
    if (graph.XAxisVar && graph.ZAxisVar && !allow_warnings) {
        const long total = graph.XAxisVar->num_points() * graph.ZAxisVar->num_points();
        if (total > 10000)
            return problem(SetupPage::Variables,
                           "The graph has " + std::to_string(total) +
                               " points, which takes a while to compute and draw. Do you want to go on?",
                           true);
    }
    if (graph.GetGraphType() == 1 && graph.Type == graph_type::Pie && graph.XAxisVar && graph.XAxisVar->num_points() > 20)
        return problem(SetupPage::Variables, "A pie graph shows at most 20 slices: give the X axis variable 20 points "
                                             "or fewer.");
    // Every other variable of a function needs a value of its own.
    for (const engine::Function& function : graph.Functions)
        for (int n = 1; n <= function.num_variables(); ++n) {
            const std::string& name = function.GetFuncVariable(n);
            const bool axis = (graph.XAxisVar && graph.XAxisVar->name() == name) ||
                              (graph.ZAxisVar && graph.ZAxisVar->name() == name);
            if (axis || parser.var_assigned(name.c_str())) continue;
            const std::string head = "The variable ' " + name + " ' of ' " + function.full_name() + " ' has no value";
            SetupProblem offer = problem(SetupPage::Variables,
                                         graph.ZAxisVar ? head + ". Do you want to define it now?"
                                                        : head + ", and only the X axis variable runs in a "
                                                                 "2-dimensional graph. Do you want to define it now?");
            offer.offer = SetupOffer::DefineVariable;
            offer.variable = name;
            offer.refusal = "The variable ' " + name + " ' must be defined, or made an axis variable, before ' " +
                            function.full_name() + " ' can be graphed.";
            return offer;
        }
    return std::nullopt;
}

size_t filled(const StrDataPnts::Slots& slots) {
    return static_cast<size_t>(std::count_if(slots.begin(), slots.end(), [](const auto& slot) {
        return slot.has_value() && !slot->empty();
    }));
}

Problem check_data(const GraphData& graph) {
    size_t first_count = 0;
    bool first = true;
    for (const StrDataPnts& set : graph.DataSets) {
        const size_t xs = filled(set.XPoints), ys = filled(set.YPoints);
        if (xs == 0 && ys == 0)
            return problem(SetupPage::Data, "The data set ' " + set.Name + " ' has no points.");
        if (xs != ys)
            return problem(SetupPage::Data, "The data set ' " + set.Name + " ' has " + std::to_string(xs) +
                                                " X values and " + std::to_string(ys) + " Y values: every point needs both.");
        if (graph.DataLayout == 1 && !first && xs != first_count)
            return problem(SetupPage::Data, "The data sets of this graph share their X values, so each needs as many "
                                            "points as the first; ' " + set.Name + " ' has " + std::to_string(xs) + ".");
        if (first) first_count = xs, first = false;
    }
    return std::nullopt;
}

// A 3-D graph of data sets is a grid: one line of points per set at the set's Z value, every set
// over the same rising X values.
Problem check_data_3d(const GraphData& graph, engine::Parser& parser) {
    if (graph.GetGraphType() != 2 || graph.DataSets.empty()) return std::nullopt;
    if (graph.DataSets.size() < 2)
        return problem(SetupPage::Data, "A 3-dimensional graph of data points needs at least 2 data sets, each at "
                                        "a Z value of its own.");
    const auto value_of = [&parser](const std::string* text, double& out) {
        if (!text || text->empty()) return false;
        engine::complex value;
        parser.eval_exp(text->c_str(), value, true, false, false);
        const bool failed = parser.IsAnError();
        parser.ClearLastError();
        out = value.real();
        return !failed;
    };
    std::vector<double> first_xs, zs;
    bool first = true;
    for (const StrDataPnts& set : graph.DataSets) {
        double z = 0;
        if (!value_of(set.GetZDataPoint(), z))
            return problem(SetupPage::Data, "The data set ' " + set.Name + " ' needs a Z value: in a 3-dimensional "
                                                                         "graph each set lies at one Z.");
        if (std::find(zs.begin(), zs.end(), z) != zs.end())
            return problem(SetupPage::Data, "The data set ' " + set.Name + " ' has the Z value of another set: each "
                                                                         "set needs a Z value of its own.");
        zs.push_back(z);
        std::vector<double> xs;
        for (int p = 0; p < static_cast<int>(set.XPoints.size()); ++p) {
            double x = 0;
            if (!value_of(set.GetXDataPoint(p), x))
                return problem(SetupPage::Data, "The X value of point " + std::to_string(p + 1) + " of ' " + set.Name +
                                                    " ' can not be computed.");
            if (!xs.empty() && !(x > xs.back()))
                return problem(SetupPage::Data, "The X values of ' " + set.Name +
                                                    " ' must rise from point to point in a 3-dimensional graph.");
            xs.push_back(x);
        }
        if (first) {
            first_xs = xs;
            first = false;
        } else if (xs != first_xs) {
            return problem(SetupPage::Data, "The data set ' " + set.Name + " ' has other X values than ' " +
                                                graph.DataSets.front().Name +
                                                " ': in a 3-dimensional graph all sets share their X values.");
        }
    }
    return std::nullopt;
}

Problem check_type(const GraphData& graph) {
    if (graph.GetGraphType() != 1) return std::nullopt;
    const size_t series = graph.Functions.size() + graph.DataSets.size();
    using namespace graph_type;
    if (graph.Type == HiLo && series < 2)
        return problem(SetupPage::Types, "A HiLo graph needs at least 2 functions or data sets together.");
    if ((graph.Type == HiLoOpenClose || graph.Type == Candle) && series < 4)
        return problem(SetupPage::Types, std::string(graph.Type == Candle ? "A Candle" : "A HiLo Open Close") +
                                             " graph needs at least 4 functions or data sets together.");
    const int needs_shared[] = {Bar, StackingBar, HiLo, HiLoOpenClose, Candle, Radar, RadarFilled};
    if (graph.DataLayout == 2 && std::find(std::begin(needs_shared), std::end(needs_shared), graph.Type) != std::end(needs_shared))
        return problem(SetupPage::Types, "The " + upper(graph_type_caption(graph.Type)) +
                                             " graph needs data sets of equal length that share their X values.");
    return std::nullopt;
}

// How much the graph asks of the machine: refused past what one graph can hold, asked about past
// what takes a while. Bars and pie slices are bounded apart.
Problem check_size(const GraphData& graph, bool allow_warnings) {
    const SetupPage page = graph.Functions.empty() ? SetupPage::Data : SetupPage::Variables;
    const size_t work = graph_work(graph);
    if (work > k_max_graph_work) return problem(page, graph_work_refusal(work));
    if (graph.GetGraphType() == 1)
        if (std::optional<std::string> why = too_many_bars(graph)) return problem(SetupPage::Types, *why);
    if (work > k_large_graph_work && !allow_warnings) return problem(page, graph_work_question(work), true);
    return std::nullopt;
}

} // namespace

std::optional<SetupProblem> check_page(SetupPage page, GraphData& graph, engine::Parser& parser, bool allow_warnings) {
    switch (page) {
    case SetupPage::Functions: return check_functions(graph, parser);
    case SetupPage::Variables: return check_variables(graph, parser, allow_warnings);
    case SetupPage::Data:
        if (Problem found = check_data(graph)) return found;
        return check_data_3d(graph, parser);
    case SetupPage::Labels: return check_titles(graph);
    case SetupPage::Types: return check_type(graph);
    default: return std::nullopt;
    }
}

std::optional<SetupProblem> check_graph(GraphData& graph, engine::Parser& parser, bool allow_warnings) {
    if (Problem found = check_functions(graph, parser)) return found;
    if (Problem found = check_variables(graph, parser, allow_warnings)) return found;
    if (Problem found = check_data(graph)) return found;
    if (Problem found = check_data_3d(graph, parser)) return found;
    if (Problem found = check_type(graph)) return found;
    return check_size(graph, allow_warnings);
}

std::optional<SetupProblem> check_titles(const GraphData& graph) {
    const bool three_d = graph.GetGraphType() == 2;
    if (graph.Header.empty() || graph.Footer.empty() || graph.XAxisTitle.empty() || graph.YAxisTitle.empty() ||
        (three_d && graph.ZAxisTitle.empty()))
        return problem(SetupPage::Labels, "Give the graph its header, its footer and a title for each axis.");
    return std::nullopt;
}

bool pick_default_x_axis(GraphData& graph) {
    const std::list<Variable> shared = shared_variables(graph);
    if (shared.empty()) return false;
    graph.SetXAxisVar(&shared.front());
    return true;
}

std::optional<SetupProblem> check_function_to_add(const std::vector<Function>& graphed, const std::string& candidate,
                                                  engine::Parser& parser) {
    if (candidate.empty())
        return problem(SetupPage::Functions, "Select a function in the list of Defined Functions to add it to the "
                                             "Functions To Graph.");
    for (const Function& each : graphed)
        if (each.full_name() == candidate)
            return problem(SetupPage::Functions, "The function ' " + candidate + " ' is graphed already.");
    if (graphed.empty()) return std::nullopt;
    // The variables all the graphed functions share are what an axis can be.
    const Function added(candidate, std::string());
    for (int n = 1; n <= added.num_variables(); ++n) {
        const std::string& name = added.GetFuncVariable(n);
        if (std::all_of(graphed.begin(), graphed.end(), [&](const Function& f) { return f.IsFuncVariable(name); }))
            return std::nullopt;
    }
    const std::string bare = candidate.substr(0, candidate.find('['));
    if (parser.find_function(candidate.c_str()) < 0 && parser.is_library_function(bare.c_str()))
        return problem(SetupPage::Functions, "The library function ' " + candidate + " ' has no variable in common "
                                             "with the functions graphed, so it can not be graphed with them.");
    SetupProblem offer = problem(SetupPage::Functions, "The function ' " + candidate + " ' has no variable in common "
                                                       "with the functions graphed, so it can not be graphed with "
                                                       "them. Do you want to edit it?");
    offer.offer = SetupOffer::EditFunction;
    offer.variable = candidate;
    return offer;
}

std::optional<SetupProblem> check_function_to_remove(size_t graphed, bool selected) {
    if (graphed == 0) return problem(SetupPage::Functions, "There are no functions to remove from the graph.");
    if (!selected)
        return problem(SetupPage::Functions, "Select a function in the list of Functions To Graph to remove it.");
    return std::nullopt;
}

std::optional<SetupProblem> check_new_set_name(const std::vector<std::string>& names, const std::string& name) {
    if (name.empty()) return problem(SetupPage::Data, "Give the new data set a name.");
    if (std::find(names.begin(), names.end(), name) != names.end())
        return problem(SetupPage::Data, "A data set named ' " + name + " ' exists already: give the new set a name "
                                        "of its own.");
    return std::nullopt;
}

} // namespace quorvex::graph
