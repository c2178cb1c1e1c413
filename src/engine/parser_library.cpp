// Function libraries: the system's Quorvex.lib and the user's QuorvexUser.lib. A library
// function is expanded like a user function, with its body taken from the first library that
// has it, the system's first.
#include "parser.h"

#include "evaluation_aborted.h"
#include "function_library.h"

#include <algorithm>
#include <fstream>

namespace quorvex::engine {

namespace {

const char* const k_system_library = "Quorvex.lib";
const char* const k_user_library = "QuorvexUser.lib";

std::string library_path(const std::string& dir, const char* file) {
    if (dir.empty()) return {};
    return dir.back() == '/' ? dir + file : dir + "/" + file;
}

} // namespace

void Parser::set_library_dirs(const std::string& system_dir, const std::string& user_dir) {
    m_system_library_path = library_path(system_dir, k_system_library);
    m_user_library_path = library_path(user_dir, k_user_library);
    m_system_library.reset();
    m_user_library.reset();
    m_libraries_opened = false;
}

void Parser::share_libraries(const Parser& other) {
    m_system_library_path = other.m_system_library_path;
    m_user_library_path = other.m_user_library_path;
    m_system_library = other.m_system_library;
    m_user_library = other.m_user_library;
    m_libraries_opened = other.m_libraries_opened;
}

bool Parser::CheckFunctionLibraryAccess(const std::string& path) {
    std::ifstream probe(path, std::ios::binary);
    if (probe) return true;
    if (m_reporter)
        m_reporter->report("The Quorvex function library file \" " + path +
                               " \" could not be opened! If the file exist's, check your system level access "
                               "privilages.",
                           "File Access", MessageKind::Warning);
    return false;
}

void Parser::open_libraries() {
    if (m_libraries_opened) return;
    m_libraries_opened = true;
    if (!m_system_library_path.empty() && CheckFunctionLibraryAccess(m_system_library_path))
        m_system_library = open_library(m_system_library_path);
    if (!m_user_library_path.empty() && CheckFunctionLibraryAccess(m_user_library_path))
        m_user_library = open_library(m_user_library_path);
}

std::shared_ptr<FunctionLibrary> Parser::open_library(const std::string& path) {
    auto library = std::make_shared<FunctionLibrary>(path);
    // A built-in keeps its meaning everywhere: a library entry of the same name is left out, and
    // the user is told once, when the library is read.
    const std::vector<std::string> skipped =
        library->skip_reserved([this](std::string_view name) { return is_internal_function(std::string(name).c_str()); });
    if (!skipped.empty() && m_reporter) {
        std::string names;
        for (size_t i = 0; i < skipped.size(); ++i)
            names += (i == 0 ? "' " : i + 1 == skipped.size() ? " and ' " : ", ' ") + skipped[i] + " '";
        m_reporter->report("The function library \" " + path + " \" defines " + names +
                               (skipped.size() == 1 ? ", which is the name of a built-in function. The entry is"
                                                    : ", which are names of built-in functions. The entries are") +
                               " skipped and the built-in functions are used.",
                           "Function Library", MessageKind::Warning);
    }
    // Bytes that belong to no text, or a system library without a single category, mean a
    // damaged file rather than one that merely defines nothing yet.
    const std::string& text = library->file().Text();
    const bool binary = std::any_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\r' && c != '\n';
    });
    const bool empty_system = path == m_system_library_path && library->file().GetFunctionCatagories().empty();
    if (m_reporter && (binary || empty_system))
        m_reporter->report("The function library \" " + path + " \" " +
                               (binary ? "holds bytes that are no text" : "holds no category of functions") +
                               ": the file may be damaged, and what can not be read of it is left out.",
                           "Function Library", MessageKind::Warning);
    const std::vector<int> unreadable = library->unreadable_lines();
    if (!unreadable.empty() && m_reporter) {
        std::string where;
        for (size_t i = 0; i < unreadable.size() && i < 5; ++i) where += (i ? ", " : "") + std::to_string(unreadable[i]);
        if (unreadable.size() > 5) where += " and " + std::to_string(unreadable.size() - 5) + " more";
        m_reporter->report("The function library \" " + path + " \" holds lines that are no function entries (line " +
                               where + "); they are left out. The file may be damaged.",
                           "Function Library", MessageKind::Warning);
    }
    return library;
}

FunctionLibrary* Parser::system_library() {
    open_libraries();
    return m_system_library.get();
}

FunctionLibrary* Parser::user_library() {
    open_libraries();
    return m_user_library.get();
}

bool Parser::is_library_function(const char* name) {
    m_cur_lib_function.reset();
    if (!name || !*name) return false;
    open_libraries();
    const Function* found = nullptr;
    if (m_system_library) found = m_system_library->find(name);
    if (!found && m_user_library) found = m_user_library->find(name);
    if (!found) return false;
    m_cur_lib_function = std::make_unique<Function>(*found);
    return true;
}

bool Parser::text_holds_name(const std::string& text, const std::string& name) {
    // The body is scanned in place of the line; the line's scanner state comes back afterwards,
    // and a body that does not scan simply holds no such name.
    std::string saved_expression = std::move(m_expression);
    const size_t saved_pos = m_input_pos, saved_start = m_input_start;
    const std::string saved_token = m_token;
    const char saved_kind = m_token_kind;
    const bool saved_scanning = m_scanning, saved_error = m_error_flag, saved_silent = m_silent;
    const int saved_code = m_error_code;
    const std::optional<std::string> saved_message = m_last_error;

    m_expression = text;
    m_input_start = m_input_pos = 0;
    m_scanning = true;
    m_silent = true;
    bool found = false;
    try {
        while (get_token() && !m_token.empty()) {
            if (m_token_kind == VARIABLE && m_token == name) {
                found = true;
                break;
            }
        }
    } catch (const EvaluationAborted&) {
    }

    m_expression = std::move(saved_expression);
    m_input_pos = saved_pos;
    m_input_start = saved_start;
    m_token = saved_token;
    m_token_kind = saved_kind;
    m_scanning = saved_scanning;
    m_silent = saved_silent;
    m_error_flag = saved_error;
    m_error_code = saved_code;
    m_last_error = saved_message;
    return found;
}

void Parser::eval_lib_function() {
    Function& function = *m_cur_lib_function;
    const std::string name = m_token;
    if (m_name_use) m_name_use->read.insert(NameUse::function_key(name));
    if (text_holds_name(function.value(), name))
        special_exception("The library function ' %s ' can not be a function of itself!",
                          function.GetFuncFullNameAndValue().c_str());
    count_expansion();

    const size_t start = m_input_pos - name.size();
    function.ResetModFuncValue();
    const std::vector<std::string> arguments = read_call_arguments();
    const size_t tail = m_input_pos;
    int count = 0;
    for (const std::string& argument : arguments) {
        ++count;
        // Library bodies put their variables in parentheses themselves, so the argument goes in
        // as it was written.
        if (count <= function.num_variables() && !function.ModFuncValue(count, argument)) {
            m_last_error = "Invalid library function, ' " + function.short_name() + " ' is not a function of ' " +
                           function.GetFuncVariable(count) + " ' !";
            special_exception();
        }
    }
    check_argument_count(function, count);
    check_balanced_parens(function.mod_value());
    insert_function(function.mod_value(), start, tail);
    m_input_pos = start;
    m_cur_lib_function.reset();
}

} // namespace quorvex::engine
