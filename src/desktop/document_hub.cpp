#include "document_hub.h"

#include "document/document.h"
#include "engine/parser.h"
#include "engine/reporter.h"
#include "engine/function.h"

namespace quorvex::desktop {

DocumentHub::DocumentHub(engine::Parser& parser, document::Document& document, engine::Reporter& reporter,
                         HubListener listener)
    : m_parser(parser), m_document(document), m_reporter(reporter), m_listener(std::move(listener)) {}

void DocumentHub::play(std::string_view sound) const {
    if (m_listener.play) m_listener.play(sound);
}

void DocumentHub::declare(std::string_view name, std::string_view value) {
    const std::string text = value.empty() ? std::string(name) : std::string(name) + "=" + std::string(value);
    m_parser.eval_exp(text, false, true, false);
}

bool DocumentHub::AddEditVariable(std::string_view name, std::string_view value) {
    declare(name, value);
    if (!m_parser.var_changed()) return false;
    if (m_listener.variables_changed) m_listener.variables_changed();
    play("Add.wav");
    return true;
}

bool DocumentHub::AddEditFunction(std::string_view name, std::string_view value) {
    declare(name, value);
    if (!m_parser.func_declared()) return false;
    if (m_listener.functions_changed) m_listener.functions_changed();
    if (m_parser.var_changed()) {
        // A declaration that also made a variable: the only case in which this sound plays.
        if (m_listener.variables_changed) m_listener.variables_changed();
        play("Add.wav");
    }
    return true;
}

bool DocumentHub::DeleteVariable(int index, bool update, bool ask) {
    const char* name = m_parser.get_var_name(index);
    if (!m_parser.is_variable(index) || !name) return false;
    const std::string variable = name;
    std::string user;
    for (int i = 0; i < m_parser.function_count() && user.empty(); ++i) {
        const engine::Function* function = m_parser.function_at(i);
        if (function && function->IsFuncVariable(variable)) user = function->full_name();
    }
    std::string question;
    if (!user.empty())
        question = "Variable ' " + variable + " ' is used in the function body of ' " + user +
                   " ',\ndo you still want to delete this variable?";
    else if (ask)
        question = "Are you sure that you want to delete '" + variable + "'?";
    if (!question.empty() && !m_reporter.ask(question, "Variables Manager")) return false;
    m_parser.delete_variable(index);
    if (update) {
        if (m_listener.variables_changed) m_listener.variables_changed();
        play("Delete.wav");
    }
    return true;
}

bool DocumentHub::DeleteFunction(int index, bool update, bool ask) {
    const engine::Function* function = m_parser.function_at(index);
    if (!function) return false;
    const std::string full_name = function->full_name();
    std::string question;
    if (FunUsedInGraph(full_name))
        question = "Function \"" + full_name +
                   "\" is required for one or more defined graphs, do you still want to delete the function?";
    else if (ask)
        question = "Are you sure that you want to delete '" + full_name + "'?";
    if (!question.empty() && !m_reporter.ask(question, "Function Manager")) return false;
    m_parser.delete_function(index);
    if (update) {
        if (m_listener.functions_changed) m_listener.functions_changed();
        play("Delete.wav");
    }
    return true;
}

bool DocumentHub::FunUsedInGraph(std::string_view full_name) const {
    for (const document::DocumentGraph& graph : m_document.Graphs)
        for (const engine::Function& function : graph.Data.Functions)
            if (function.full_name() == full_name) return true;
    return false;
}

bool DocumentHub::ComputeValue(std::string_view expression, engine::complex& value) {
    const std::string text(expression);
    m_parser.eval_exp(text.c_str(), value, true, false, false);
    if (!m_parser.IsAnError()) return true;
    const char* message = m_parser.GetLastError();
    play("Error.wav");
    if (m_listener.graph_error && message) m_listener.graph_error(message);
    m_parser.ClearLastError();
    return false;
}

bool DocumentHub::IsUniqueGraphName(std::string_view name, const graph::GraphData* except) const {
    if (name.empty()) return true;
    for (const document::DocumentGraph& graph : m_document.Graphs)
        if (&graph.Data != except && graph.Data.Name == name) return false;
    return true;
}

std::string DocumentHub::GetUniqueGraphName(std::string_view name) const {
    if (IsUniqueGraphName(name)) return std::string(name);
    for (int n = 1;; ++n) {
        std::string candidate = std::string(name) + " #" + std::to_string(n);
        if (IsUniqueGraphName(candidate)) return candidate;
    }
}

} // namespace quorvex::desktop
