#pragma once
#include "engine/complex.h"

#include <functional>
#include <string>
#include <string_view>

namespace quorvex::engine {
class Parser;
class Reporter;
} // namespace quorvex::engine
namespace quorvex::document {
class Document;
}
namespace quorvex::graph {
class GraphData;
}

namespace quorvex::desktop {

// What a document's windows are told when its engine changes through the hub.
struct HubListener {
    std::function<void()> variables_changed;
    std::function<void()> functions_changed;
    std::function<void(std::string_view sound)> play;
    // An error while a graph is computed goes to the graph's error list, never to a box per point.
    std::function<void(std::string_view message)> graph_error;
};

// The one way the tools, managers and graphs of a document reach its engine and its graphs: it
// adds, edits and deletes variables and functions with the questions and sounds that go with
// them, computes values quietly, and keeps graph names unique.
class DocumentHub {
public:
    DocumentHub(engine::Parser& parser, document::Document& document, engine::Reporter& reporter,
                HubListener listener = {});

    // "name=value", or the bare name for an empty value, through the engine; true when a variable
    // changed.
    bool AddEditVariable(std::string_view name, std::string_view value);
    // The same for a function; true when a function was declared.
    bool AddEditFunction(std::string_view name, std::string_view value);
    // Deletes the variable at `index`. A variable that a function uses is asked about even when
    // `ask` is false. False for no such variable or a No.
    bool DeleteVariable(int index, bool update, bool ask);
    // Deletes the function at `index`; one that a graph draws is asked about even when `ask` is
    // false.
    bool DeleteFunction(int index, bool update, bool ask);
    // Whether a graph of the document draws the function (its full name, case kept).
    bool FunUsedInGraph(std::string_view full_name) const;
    // Evaluates `expression` silently; false after the error sound and sending the engine's
    // message to `graph_error`.
    bool ComputeValue(std::string_view expression, engine::complex& value);
    // Where `graph_error` goes from now on: the graph being computed sets its error list.
    void set_graph_error(std::function<void(std::string_view message)> sink) { m_listener.graph_error = std::move(sink); }

    // True for an empty name, no graphs, or no other graph (but `except`) of that name; case kept.
    bool IsUniqueGraphName(std::string_view name, const graph::GraphData* except = nullptr) const;
    // `name`, or `name #1`, `name #2`, ... the first that no graph has.
    std::string GetUniqueGraphName(std::string_view name) const;

    engine::Parser& parser() { return m_parser; }
    document::Document& document() { return m_document; }

private:
    void play(std::string_view sound) const;
    // "name=value", or the bare name, through the engine, which reports what it refuses.
    void declare(std::string_view name, std::string_view value);

    engine::Parser& m_parser;
    document::Document& m_document;
    engine::Reporter& m_reporter;
    HubListener m_listener;
};

} // namespace quorvex::desktop
