// User functions: declared as "f[x,y] = body", and expanded before evaluation by putting the body,
// with the arguments in place of the variables, where each call stood.
#include "parser.h"

#include "evaluation_aborted.h"

#include <algorithm>

namespace quorvex::engine {

namespace {

// However deep functions call one another in a real document, they stay far below these; a
// cycle of functions (f calls g, g calls f), or calls that multiply at every level, reach them
// quickly and stop there, before the work grows beyond a moment.
constexpr int k_max_expansions = 20000;
constexpr size_t k_max_growth = 200000;

std::string spelled_relation(const std::string& token) {
    switch (token.empty() ? 0 : token[0]) {
    case relational::less: return "<";
    case relational::less_equal: return "<=";
    case relational::greater: return ">";
    case relational::greater_equal: return ">=";
    case relational::equal: return "==";
    case relational::not_equal: return "!=";
    default: return token;
    }
}

std::string trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

} // namespace

int Parser::find_function(const char* text) {
    if (!text || !*text || m_functions.empty()) return -1;
    std::string name = text;
    if (name.find_first_of("[]()") != std::string::npos) {
        replace_brackets(name, 1);
        const size_t open = name.find('['), close = name.find(']');
        if (open == std::string::npos || close == std::string::npos || close < open) return -1;
        const std::string rest = trimmed(name.substr(close + 1));
        if (!rest.empty() && rest[0] != '=') return -1;
        name.resize(open);
    }
    if (!m_function_index_valid) {
        m_function_index.clear();
        for (size_t i = 0; i < m_functions.size(); ++i)
            m_function_index.emplace(m_functions[i]->short_name(), static_cast<int>(i));
        m_function_index_valid = true;
    }
    const auto found = m_function_index.find(name);
    if (found == m_function_index.end()) return -1;
    m_current_function = found->second;
    return m_current_function;
}

void Parser::add_function(std::unique_ptr<Function> function) {
    if (m_function_index_valid) m_function_index.emplace(function->short_name(), function_count());
    m_functions.push_back(std::move(function));
    m_current_function = function_count() - 1;
}

const Function* Parser::function_at(int index) const {
    if (index == -1) index = m_current_function;
    if (index < 0 || index >= function_count()) return nullptr;
    return m_functions[static_cast<size_t>(index)].get();
}

const char* Parser::get_func_str(int index) {
    const Function* function = function_at(index);
    if (!function) return nullptr;
    m_function_text = function->GetFuncFullNameAndValue();
    return m_function_text.c_str();
}

void Parser::delete_function(int index) {
    if (index == -1) index = m_current_function;
    if (index < 0 || index >= function_count()) return;
    m_functions.erase(m_functions.begin() + index);
    invalidate_function_index();
    m_current_function = -1;
    m_funcs_saved = false;
}

void Parser::delete_all_funcs() {
    m_functions.clear();
    invalidate_function_index();
    m_current_function = -1;
    m_funcs_saved = false;
}

bool Parser::is_function_declaration() {
    // The shape "name[a, b, ...] = body", with the name in the token.
    if (m_expression.find('=') == std::string::npos) return false;
    get_token();
    if (m_token != "[" && m_token != "(") return false;
    for (;;) {
        get_token();
        if (m_token == "i")
            special_exception("The character ' %s ' is reserved for the use of complex numbers, please use another "
                              "variable name in your function definition!",
                              "i");
        if (m_token_kind != VARIABLE) return false;
        if (is_internal_function(m_token.c_str()))
            special_exception("The variable ' %s ' is currently defined as an internal function, please use another "
                              "variable name in your function definition!",
                              m_token.c_str());
        if (is_constant(m_token.c_str()))
            special_exception("The variable ' %s ' is currently defined as an internal constant, please use another "
                              "variable name in your function definition!",
                              m_token.c_str());
        get_token();
        if (m_token == ",") continue;
        if (m_token != "]" && m_token != ")") return false;
        break;
    }
    get_token();
    if (m_token != "=") return false;
    get_token();
    return m_token != "=";
}

void Parser::declare_function() {
    m_input_pos = m_input_start;
    get_token();
    const std::string short_name = m_token;
    std::string full_name = short_name;
    std::vector<std::string> variables;
    while (get_token() && !m_token.empty() && m_token != "=") {
        full_name += m_token;
        if (m_token_kind == VARIABLE) variables.push_back(m_token);
    }
    replace_brackets(full_name, 1);
    const size_t body_start = m_input_pos;

    // Every dependent variable must occur in the body.
    std::vector<std::string> body_names;
    while (get_token() && !m_token.empty())
        if (m_token_kind == VARIABLE) body_names.push_back(m_token);
    for (const std::string& variable : variables) {
        if (std::find(body_names.begin(), body_names.end(), variable) == body_names.end()) {
            m_last_error = "Invalid function declaration, ' " + full_name + " ' is not a function of ' " + variable +
                           " '!";
            special_exception();
        }
    }

    // Every other name of the body must be known, and the function may not call itself.
    m_input_pos = body_start;
    while (get_token() && !m_token.empty()) {
        if (m_token_kind != VARIABLE) continue;
        const bool call = at(m_input_pos) == '[';
        if (m_token == short_name && call)
            special_exception("Function ' %s ' can not be a function of itself!", short_name.c_str());
        const char* name = m_token.c_str();
        if (is_function(name) || is_internal_function(name)) continue;
        if (is_library_function(name)) {
            check_library_call(m_token);
            continue;
        }
        if (is_constant(name) || is_variable(name)) continue;
        if (call) special_exception("' %s ' is not currently defined as a function!", name);
        if (!variables.empty() && std::find(variables.begin(), variables.end(), m_token) == variables.end())
            special_exception("Variable ' %s ' Has Not Yet Been Defined!", name);
    }

    // The body as stored: tokens with the relations spelled out and blanks dropped, except one
    // between two operands that a blank separated, so that "x y" stays a product.
    m_input_pos = body_start;
    std::string body;
    char previous_kind = DELIMITER;
    for (;;) {
        const size_t before = m_input_pos;
        if (!get_token() || m_token.empty()) break;
        const bool operand = m_token_kind != DELIMITER;
        const bool separated = m_input_pos - m_token.size() > before;
        if (operand && previous_kind != DELIMITER && separated) body += ' ';
        body += spelled_relation(m_token);
        previous_kind = m_token_kind;
    }

    if (m_name_use) m_name_use->written.insert(NameUse::function_key(short_name));
    const int existing = find_function(full_name.c_str());
    if (existing < 0) {
        add_function(std::make_unique<Function>(full_name, body));
        record_instruction(NEW_FUNCTION, {}, full_name.c_str());
        for (const std::string& variable : variables) record_instruction(NEW_VARIABLE, {}, variable.c_str());
    } else {
        Function& function = *m_functions[static_cast<size_t>(existing)];
        if (function.full_name() != full_name) {
            function.SetFuncName(full_name);
            record_instruction(FUNCTION_NAME, {}, full_name.c_str());
        }
        function.SetFuncValue(body);
    }
    record_instruction(FUNCTION_VALUE, {}, body.c_str());
    m_var_changed = true;
    m_func_declared = true;
}

void Parser::check_library_call(const std::string& name) {
    // A call in a body must have its bracket and as many arguments as the library function has
    // variables; the scanner stays where it was.
    if (at(m_input_pos) != '[')
        special_exception("Bracket of type ' [ ' expected for call to function ' %s ' !", name.c_str());
    int depth = 0, count = 0;
    bool empty = true;
    for (size_t p = m_input_pos; p < m_expression.size(); ++p) {
        const char c = m_expression[p];
        if (c == '[' || c == '(') {
            if (depth++ == 0) continue;
        } else if (c == ']' || c == ')') {
            if (--depth == 0) break;
        } else if (c == ',' && depth == 1) {
            ++count;
            continue;
        }
        if (c != ' ') empty = false;
    }
    if (!empty || count > 0) ++count;
    check_argument_count(*m_cur_lib_function, count);
}

void Parser::insert_functions() {
    m_input_pos = m_input_start;
    while (get_token() && !m_token.empty()) {
        if (m_token_kind != VARIABLE || at(m_input_pos) != '[') continue;
        const int index = find_function(m_token.c_str());
        if (index >= 0)
            eval_function(index);
        else if (is_library_function(m_token.c_str()))
            eval_lib_function();
    }
}

void Parser::count_expansion() {
    // A cycle among the functions the line reaches is found before the first expansion, rather
    // than after thousands of them over an ever longer line.
    if (m_expansions++ == 0 && functions_form_a_cycle())
        special_exception("The functions of this line call each other without end, so the line can not be "
                          "evaluated!",
                          nullptr);
    if (m_expansions <= k_max_expansions && m_expression.size() <= m_original_length + k_max_growth) return;
    special_exception("The functions of this line write out to more than 20000 calls or 200000 characters, "
                      "which is more than a line can hold, so the line can not be evaluated!",
                      nullptr);
}

std::vector<std::string> Parser::read_call_arguments() {
    std::vector<std::string> arguments;
    get_token(); // "["
    get_token(); // the first token of the first argument
    while (!m_token.empty() && m_token != "]") {
        // The argument's own text, up to a comma or the closing bracket at its level.
        const size_t argument_start = m_input_pos - m_token.size();
        int depth = 0;
        while (!m_token.empty()) {
            if (m_token == "[") ++depth;
            if (m_token == "]" && depth-- == 0) break;
            if (m_token == "," && depth == 0) break;
            get_token();
        }
        const size_t argument_end = m_token.empty() ? m_input_pos : m_input_pos - m_token.size();
        arguments.push_back(trimmed(m_expression.substr(argument_start, argument_end - argument_start)));
        if (m_token == ",")
            get_token();
        else if (m_token != "]")
            parser_exception(3);
    }
    return arguments;
}

void Parser::check_argument_count(const Function& function, int count) {
    if (count == function.num_variables()) return;
    m_last_error = "Function ' " + function.full_name() + " ' requires ' " + std::to_string(function.num_variables()) +
                   " ' dependent variables, ' " + std::to_string(count) + (count == 1 ? " ' was used!" : " ' were used!") +
                   " Commas may only be used to separate function parameters or define an incremental variable!";
    special_exception();
}

void Parser::eval_function(int index) {
    Function& function = *m_functions[static_cast<size_t>(index)];
    if (m_name_use) m_name_use->read.insert(NameUse::function_key(function.short_name()));
    count_expansion();
    const size_t start = m_input_pos - function.short_name().size();
    function.ResetModFuncValue();
    int count = 0;
    for (const std::string& argument : read_call_arguments())
        if (++count <= function.num_variables()) function.ModFuncValue(count, "(" + argument + ")");
    check_argument_count(function, count);
    check_balanced_parens(function.mod_value());
    insert_function(function.mod_value(), start, m_input_pos);
    function.ResetModFuncValue();
    m_input_pos = start;
}

void Parser::insert_function(const std::string& value, size_t position, size_t tail) {
    m_expression = m_expression.substr(0, position) + "(" + value + ")" + m_expression.substr(tail);
}

} // namespace quorvex::engine
