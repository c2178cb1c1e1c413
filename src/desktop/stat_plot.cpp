#include "stat_plot.h"

#include "document/document.h"
#include "engine/host.h"
#include "engine/parser.h"
#include "engine/variable.h"
#include "graph/data_columns.h"
#include "graph/graph_types.h"
#include "quick_calc.h"

#include <cmath>
#include <sstream>

namespace quorvex::desktop {

namespace {

// An imaginary part below this is the rounding of a real value.
constexpr double k_imaginary = 1e-14;

std::string value_text(long double value, int precision) {
    std::ostringstream out;
    engine::Variable::StreamVariable({static_cast<double>(value), 0}, out, precision);
    return out.str();
}

std::string trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// A value of the data: real, or none with `error` set to the engine's reason or the refusal of an
// imaginary value.
std::optional<long double> real_value(engine::Parser& parser, const std::string& text, std::string& error) {
    engine::complex value;
    parser.ClearLastError();
    parser.eval_exp(text.c_str(), value, true, false, false);
    if (parser.IsAnError()) {
        const char* why = parser.GetLastError();
        error = why ? why : "The value can not be computed.";
        parser.ClearLastError();
        return std::nullopt;
    }
    if (std::abs(value.imag()) > k_imaginary || !std::isfinite(value.real())) {
        error = "The data point coordinate values must be real numbers!";
        return std::nullopt;
    }
    return value.real();
}

} // namespace

std::string stat_value_text(engine::Parser& parser, const std::string* text, int precision) {
    if (!text || trimmed(*text).empty()) return {};
    std::string error;
    const std::optional<long double> value = real_value(parser, *text, error);
    return value ? value_text(*value, precision) : std::string();
}

std::vector<std::string> stat_value_texts(engine::Parser& parser, const graph::StrDataPnts& data, int precision,
                                          engine::Host* host, bool* stopped) {
    std::vector<std::string> rows;
    if (stopped) *stopped = false;
    const int last = data.GetLastXIndex();
    for (int i = 0; i <= last; ++i) {
        if (host) {
            host->pump();
            host->progress(i, last + 1);
            if (host->aborted()) {
                if (stopped) *stopped = true;
                break;
            }
        }
        rows.push_back(stat_value_text(parser, data.GetXDataPoint(i), precision));
    }
    return rows;
}

std::optional<std::vector<functions::Frequency>> frequency_distribution(engine::Parser& parser,
                                                                        const std::vector<std::string>& shown,
                                                                        const StatPlotChoice& choice,
                                                                        std::string& error) {
    if (shown.size() < 2) {
        error = "At least two data points are needed to build a frequency distribution.";
        return std::nullopt;
    }
    functions::DataList values;
    values.reserve(shown.size());
    for (size_t i = 0; i < shown.size(); ++i) {
        const std::string number = std::to_string(i + 1);
        const std::string text = trimmed(shown[i]);
        if (text.empty()) {
            error = fill_text("Data point %1 has no value, please correct this before continuing.", number);
            return std::nullopt;
        }
        std::string why;
        const std::optional<long double> value = real_value(parser, text, why);
        if (!value) {
            error = fill_text("Data point %1 can not be used: %2", number, why);
            return std::nullopt;
        }
        values.push_back(*value);
    }
    int count = 0;
    if (choice.intervals == IntervalChoice::SetEqualIntervals) {
        if (choice.count < k_fewest_intervals || choice.count > k_most_intervals) {
            error = "The number of intervals must be from " + std::to_string(k_fewest_intervals) + " to " +
                    std::to_string(k_most_intervals) + ".";
            return std::nullopt;
        }
        count = choice.count;
    }
    auto frequencies = functions::statistics::buildFreqDist(
        values, choice.pareto, static_cast<functions::statistics::ClassScheme>(choice.intervals), count);
    if (!frequencies)
        error = choice.intervals == IntervalChoice::AutoEqualProbabilities
                    ? "Equal probability intervals need at least 5 data points for each interval: use at least 5 "
                      "data points, or equal intervals."
                    : "The data points give no interval.";
    return frequencies;
}

std::string interval_text(const functions::Frequency& frequency, int precision) {
    return value_text(frequency.lower, precision) + (frequency.first ? "" : "+") + " to " +
           value_text(frequency.upper, precision);
}

std::string frequency_table_text(const std::vector<functions::Frequency>& frequencies, int precision,
                                 const std::string& separator) {
    std::string text = "Interval" + separator + "Frequency\n";
    for (const functions::Frequency& frequency : frequencies)
        text += interval_text(frequency, precision) + separator + std::to_string(frequency.count) + '\n';
    return text;
}

std::string frequency_graph_name(const graph::StrDataPnts& data) {
    return "Frequency Plot for " + (data.Name.empty() ? std::string("Data Set") : data.Name);
}

int graph_frequencies(document::Document& document, const graph::StrDataPnts& data,
                      const std::vector<functions::Frequency>& frequencies, bool pareto,
                      const std::string& unique_name, const store::IniFile* user_settings) {
    const std::string name = frequency_graph_name(data);
    const std::string data_name = data.Name.empty() ? std::string("Data Set") : data.Name;
    int index = -1;
    for (size_t i = 0; i < document.Graphs.size(); ++i)
        if (document.Graphs[i].Data.Name == name) index = static_cast<int>(i);
    if (index < 0) {
        document::DocumentGraph made;
        graph::GraphData& fresh = made.Data;
        fresh.Name = unique_name.empty() ? name : unique_name;
        fresh.DataLayout = 1;
        fresh.SetUserDefaults(user_settings);
        // Bars stand flat, seen from the front.
        fresh.Rotation = fresh.Inclination = fresh.DefaultInclination = fresh.DefaultRotation = 0;
        // The interval captions under the bars are long.
        fresh.MarginBottom2D = fresh.DefaultMarginBottom2D = 150;
        document.Graphs.push_back(std::move(made));
        index = static_cast<int>(document.Graphs.size()) - 1;
    }
    graph::GraphData& graph = document.Graphs[static_cast<size_t>(index)].Data;
    graph.Type = pareto ? graph::graph_type::Pareto : graph::graph_type::Hystogram;

    graph::StrDataPnts set;
    if (!graph.DataSets.empty() && graph.DataSets.front().HasLineColor) {
        set.LineColor = graph.DataSets.front().LineColor;
        set.HasLineColor = true;
    }
    set.SetName(data_name.c_str());
    set.SetLabel("Freq. Dist");
    for (size_t i = 0; i < frequencies.size(); ++i) {
        const functions::Frequency& f = frequencies[i];
        set.PutXDataPoint(value_text((f.lower + f.upper) * 0.5L, 14), static_cast<int>(i));
        set.PutYDataPoint(std::to_string(f.count), static_cast<int>(i));
    }
    set.DeleteZDataPoint();
    if (graph.DataSets.empty())
        graph.DataSets.push_back(std::move(set));
    else
        graph.DataSets.front() = std::move(set);

    if (!graph.FooterSet) {
        graph.SetFooter(((pareto ? "Pareto Chart for " : "Hystogram for ") + data_name).c_str(), false);
        graph.SetHeader(name.c_str(), false);
    }
    if (!graph.YTitleSet) graph.SetYAxisTitle("Frequency", false);
    if (!graph.XTitleSet) graph.SetXAxisTitle(("Frequency Intervals for " + data_name).c_str(), false);
    graph.FlushLabels();
    return index;
}

std::optional<graph::StrDataPnts> read_stat_values(engine::Parser& parser, const std::string& path,
                                                   std::string& error) {
    std::string text;
    if (!graph::read_data_text(path, text, error)) return std::nullopt;
    std::optional<graph::StrDataPnts> data =
        graph::single_values(graph::split_data_columns(text, graph::data_value_check(parser)), path, error);
    if (!data) return std::nullopt;
    if (data->GetNumXDataPoints() == 0) {
        error = "No Data Found In The ' " + path + " ' Data File!";
        return std::nullopt;
    }
    const size_t slash = path.find_last_of("/\\");
    std::string base = path.substr(slash == std::string::npos ? 0 : slash + 1);
    if (const size_t dot = base.find_last_of('.'); dot != std::string::npos && dot > 0) base.erase(dot);
    data->SetName(base.c_str());
    return data;
}

} // namespace quorvex::desktop
