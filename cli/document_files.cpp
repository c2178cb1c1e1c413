#include "document_files.h"

#include "line_evaluator.h"

#include "document/document.h"
#include "graph/graph_types.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace quorvex::cli {

bool is_document_path(const std::string& path) {
    if (path.size() < 4) return false;
    std::string ending = path.substr(path.size() - 4);
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return ending == ".qvx";
}

int process_document(const CliOptions& options, engine::Parser& parser, engine::Reporter& reporter,
                     const std::string& path, std::ostream& out, std::ostream& err) {
    document::Document doc(parser, &reporter);
    if (!doc.Read(path)) {
        err << "quorvex-cli: cannot read the document " << path << '\n';
        return 2;
    }
    // Each line through the editor's processing, in order, as if Enter were pressed on each.
    std::ostringstream processed;
    CliOptions line_options = options;
    line_options.answers = false;
    LineEvaluator evaluator(line_options, parser, processed, err);
    bool all_ok = true;
    for (size_t i = 0; i < doc.Lines.size(); ++i) {
        processed.str("");
        all_ok = evaluator.run(doc.Lines[i], path + ":" + std::to_string(i + 1)) && all_ok;
        std::string text = processed.str();
        if (!text.empty() && text.back() == '\n') text.pop_back();
        doc.Lines[i] = text;
    }
    const std::string target = options.in_place ? path : options.output;
    if (!target.empty()) {
        if (!doc.Write(target)) {
            // The document has told why through the reporter; this line says what it means.
            err << "quorvex-cli: " << target << " was not saved\n";
            return 2;
        }
    } else {
        std::string text;
        doc.Compose(text);
        out << text;
        out.flush();
    }
    return all_ok ? 0 : 1;
}

namespace {

const char* on_off(bool on) { return on ? "on" : "off"; }

void dump_formats(engine::Parser& parser, std::ostream& out) {
    const auto& answer = parser.answer_format();
    out << "Settings: angles in " << (parser.angle_type() == 1 ? "radians" : "degrees") << "; answers "
        << answer.precision << " digits, " << (answer.format == 1 ? "scientific" : "decimal") << ", zero below "
        << answer.zero_precision << ", decimal point " << on_off(answer.dec_point) << ", leading sign "
        << on_off(answer.lead_sign) << '\n';
}

void dump_graphs(const document::Document& doc, std::ostream& out) {
    out << "Graphs (" << doc.Graphs.size() << ")\n";
    for (const document::DocumentGraph& entry : doc.Graphs) {
        const graph::GraphData& graph = entry.Data;
        out << "  " << graph.Name << ": ";
        switch (graph.GetGraphType()) {
        case 0: out << "empty"; break;
        case 2: out << "3-D " << graph::type3d_form_caption(graph::Get3DTypeBit(graph.Type3D, graph::type3d::Surface)); break;
        default: {
            const char* caption = graph::graph_type_caption(graph.Type);
            out << "2-D " << (caption && *caption ? caption : "?");
        }
        }
        out << ", \"" << graph.Header << "\"\n";
        for (const engine::Function& function : graph.Functions)
            out << "    function " << function.full_name() << " = " << function.value() << '\n';
        for (const graph::StrDataPnts& set : graph.DataSets)
            out << "    data set " << set.Name << ", " << set.GetNumXYZPoints() << " points\n";
        if (graph.GetNumNotes() > 0) out << "    notes: " << graph.GetNumNotes() << '\n';
    }
}

// The fields of a tool that hold something, as "Key=value" pairs.
void dump_tools(const document::ToolParameters& tools, std::ostream& out) {
    out << "Tools\n";
    const auto field = [&](const char* tool, std::initializer_list<std::pair<const char*, const std::string*>> fields) {
        std::string line;
        for (const auto& [key, value] : fields)
            if (!value->empty()) line += std::string(line.empty() ? "" : ", ") + key + "=" + *value;
        if (!line.empty()) out << "  " << tool << ": " << line << '\n';
    };
    const auto& i = tools.Integration;
    field("integration", {{"IntFunc", &i.IntFunc}, {"IntXParam", &i.IntXParam}, {"IntXLoLimit", &i.IntXLoLimit},
                          {"IntXHiLimit", &i.IntXHiLimit}});
    const auto& d = tools.Differentiation;
    field("differentiation", {{"DiffFunc", &d.DiffFunc}, {"DiffVar", &d.DiffVar}, {"DiffXo", &d.DiffXo},
                              {"DiffXn", &d.DiffXn}, {"DiffIn", &d.DiffIn}});
    const auto& r = tools.RootFinder;
    field("root finder", {{"RootFinderFunc", &r.RootFinderFunc}, {"RootFinderVar", &r.RootFinderVar},
                          {"RootFinderXo", &r.RootFinderXo}, {"RootFinderXn", &r.RootFinderXn},
                          {"RootFinderIn", &r.RootFinderIn}});
    const auto& q = tools.QuickCalc;
    field("quick calc", {{"QuickCalcFunc", &q.QuickCalcFunc}, {"QuickCalcVar", &q.QuickCalcVar},
                         {"QuickCalcXo", &q.QuickCalcXo}, {"QuickCalcXn", &q.QuickCalcXn},
                         {"QuickCalcIn", &q.QuickCalcIn}});
    const auto& c = tools.CurveFitting;
    field("curve fitting", {{"CurveFittingPolynomial", &c.CurveFittingPolynomial},
                            {"CurveFittingFuncName", &c.CurveFittingFuncName}, {"data set", &c.DataSet.Name}});
    field("stat plotting", {{"data set", &tools.StatPlotting.DataSet.Name}});
    const auto& g = tools.QuickGraph;
    field("quick graph", {{"2-D", &g.Graph2D.Func}, {"3-D", &g.Graph3D.Func}});
}

} // namespace

int dump_document(engine::Parser& parser, engine::Reporter& reporter, const std::string& path, std::ostream& out,
                  std::ostream& err) {
    document::Document doc(parser, &reporter);
    if (!doc.Read(path)) {
        err << "quorvex-cli: cannot read the document " << path << '\n';
        return 2;
    }
    out << "Document " << path << '\n';
    out << "Text: " << doc.Lines.size() << " lines\n";
    const int precision = parser.answer_format().precision;
    out << "Variables (" << parser.variable_count() << ")\n";
    for (int i = 0; i < parser.variable_count(); ++i) out << "  " << parser.get_var_str(i, precision, true) << '\n';
    out << "Functions (" << parser.function_count() << ")\n";
    for (int i = 0; i < parser.function_count(); ++i) out << "  " << parser.get_func_str(i) << '\n';
    dump_formats(parser, out);
    dump_graphs(doc, out);
    out << "Matrices (" << doc.Matrices.size() << ")\n";
    for (const numerics::QvxMatrix& matrix : doc.Matrices)
        out << "  " << matrix.Name() << ": " << matrix.NumRows() << " x " << matrix.NumCols() << '\n';
    dump_tools(doc.Tools, out);
    return 0;
}

} // namespace quorvex::cli
