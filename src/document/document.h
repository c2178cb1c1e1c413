#pragma once
#include "font_record.h"
#include "tool_parameters.h"

#include "engine/host.h"
#include "engine/parser.h"
#include "engine/reporter.h"
#include "graph/graph_data.h"
#include "numerics/qvx_matrix.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex::store {
class IniFile;
}

namespace quorvex::document {

class SectionWriter;

// How one function of a graph is drawn. The graph keeps the functions; the document keeps
// their line styles beside them, in the same order.
struct FunctionStyle {
    std::optional<store::TColor> LineColor; // none: the chart chooses
    int LineWidth = 1;
    bool operator==(const FunctionStyle&) const = default;
};

struct DocumentGraph {
    graph::GraphData Data;
    std::vector<FunctionStyle> FunctionStyles; // one per function of Data, missing ones default
    const FunctionStyle& StyleOf(size_t function) const;
};

// Told as each step of a load or a save begins: the step's text and the percent done so far.
using ProgressSink = std::function<void(std::string_view text, int percent)>;

// A math-editor document: the editor's text, the engine's variables and functions and its number
// formats, the font, the parameters of the math tools, matrices and graphs, and the .qvx file that
// holds them all. The text comes first in the file, the sections follow; nothing but the first
// declaration header marks where the text ends.
//
// The engine is the caller's: the editor owns its Parser and lends it to the document, as the
// tools and the command line use the same one. Read replaces the Parser's variables and
// functions and sets its formats and angle type; Write reads them.
class Document {
public:
    explicit Document(engine::Parser& parser, engine::Reporter* reporter = nullptr, engine::Host* host = nullptr);

    // Loads the file, replacing everything the document and its engine held. A field with a bad
    // value is reported and keeps its default; the load goes on. False when the file can not be
    // read or the load was cancelled.
    bool Read(const std::string& path);
    // Saves to the file as one step: a save that fails or is cancelled leaves the file as it was.
    // A file the user may not write is refused with a message.
    bool Write(const std::string& path);
    // The file as Write would save it; false when the host asked to stop.
    bool Compose(std::string& text);
    // Takes a whole document text as if read from a file.
    bool ReadText(std::string_view bytes);

    void set_reporter(engine::Reporter* reporter) { m_reporter = reporter; }
    void set_host(engine::Host* host) { m_host = host; }
    void set_progress(ProgressSink sink) { m_progress = std::move(sink); }
    // The engine offers no way to ask whether it declares unknown names by itself; loading turns
    // that on for a while and then leaves it as set here.
    void set_engine_auto_declare(bool on) { m_auto_declare = on; }
    // The reason of the last failed save, in the program's words.
    const std::string& LastError() const { return m_last_error; }

    engine::Parser& parser() { return m_parser; }

    // Precise arithmetic. A document may keep a choice of its own, saved in its [SETUP] as
    // PreciseArithmetic and taken back on load; a document without one follows the program's
    // option. Either way the engine is switched at once.
    std::optional<bool> precise_choice() const { return m_precise_choice; }
    void set_precise_choice(std::optional<bool> choice);
    // The program's option changed: the engine follows it unless the document has its own choice.
    void set_program_precise(bool on);

    // The editor's text, one entry per line, without line ends.
    std::vector<std::string> Lines;
    FontRecord Font;
    ToolParameters Tools;
    std::vector<numerics::QvxMatrix> Matrices;
    std::vector<DocumentGraph> Graphs;

    // Back to a new document: no text, default font and tools, no matrices, no graphs. The
    // engine is left alone.
    void Clear();

private:
    // One step of the load or save chain: tells the progress, lets the interface breathe, and
    // says whether to go on.
    bool step(std::string_view text, int percent);
    bool cancelled() const { return m_host && m_host->aborted(); }
    void report(const std::string& text, std::string_view caption) const;
    // Evaluates quietly; true without an engine error. The error is cleared either way.
    bool evaluate(const std::string& text);
    bool evaluate(const std::string& text, engine::complex& value);
    // A coordinate text of a data set: plain numbers pass without the engine.
    bool is_valid_value(const std::string& text);

    // Writing (document_write.cpp, tool_parameters.cpp, document_graphs.cpp).
    bool WriteVariables(SectionWriter& out);
    bool WriteFunctions(SectionWriter& out);
    void WriteSettings(SectionWriter& out);
    void WriteFont(SectionWriter& out);
    void WriteCalculusParameters(SectionWriter& out);
    void WriteMathUtilityParameters(SectionWriter& out);
    bool WriteGraphs(SectionWriter& out);
    void WriteGraph(SectionWriter& out, const DocumentGraph& graph);
    static void WriteDataSet(SectionWriter& out, const graph::StrDataPnts& set, int index);

    // Reading (document_read.cpp, tool_parameters.cpp, document_graphs.cpp).
    bool ReadVariables(const store::IniFile& ini);
    bool ReadFunctions(const store::IniFile& ini);
    void ReadSettings(const store::IniFile& ini);
    void ReadFont(const store::IniFile& ini);
    void ReadCalculusParameters(const store::IniFile& ini);
    void ReadMathUtilityParameters(const store::IniFile& ini);
    bool ReadGraphs(const store::IniFile& ini);
    void ReadGraph(const store::IniFile& ini, const std::string& section, DocumentGraph& graph);
    void read_tool_data_set(graph::StrDataPnts& set, const store::IniFile& ini, const char* section,
                            const char* title);
    // False (after the message) for a set without a name.
    bool ReadDataSet(graph::StrDataPnts& set, const store::IniFile& ini, const std::string& section,
                     const std::string& title, int index);
    bool ReadNote(graph::GraphNote& note, const store::IniFile& ini, const std::string& section,
                  const std::string& title, int index);

    engine::Parser& m_parser;
    engine::Reporter* m_reporter;
    engine::Host* m_host;
    ProgressSink m_progress;
    bool m_auto_declare = false;
    std::string m_last_error;
    std::optional<bool> m_precise_choice;
    bool m_program_precise; // what the engine goes back to when the document drops its own choice
};

// Splits text into lines at LF, dropping the CR of each CR LF; a line end at the very end does not
// start another line.
std::vector<std::string> split_lines(std::string_view text);
// Where a reader of `file` takes the text to end: the number of bytes ahead of the first
// declaration header.
size_t start_of_declarations(std::string_view file);
// The line of `lines` at which a reader of `file` (those lines followed by sections) would end the
// text, because the line equals a section header; none when the text comes back whole.
std::optional<size_t> first_cut_line(const std::vector<std::string>& lines, std::string_view file);

} // namespace quorvex::document
