#pragma once
#include "builtin_table.h"
#include "complex.h"
#include "equation.h"
#include "error_layer.h"
#include "function.h"
#include "host.h"
#include "instruction_code.h"
#include "integral_result.h"
#include "mathematics.h"
#include "name_use.h"
#include "point.h"
#include "precform.h"
#include "reporter.h"
#include "token_kind.h"
#include "variable.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quorvex::engine {

class FunctionLibrary;
struct PreciseValue;
}

namespace quorvex::number {
template <unsigned D>
struct ComplexDecimal;
}

namespace quorvex::engine {

// A value of the descent: the double pair the engine computes with and, in precise arithmetic,
// the value's own digits (null: nothing beyond the double).
struct Operand {
    complex z{0, 0};
    std::shared_ptr<const PreciseValue> precise;
};

// The engine: evaluates one line of text at a time while reading it, by recursive descent, one
// function per level of precedence. Variables live in the Parser and outlive evaluations; each
// document owns one Parser. Not re-entrant: one evaluation at a time.
class Parser {
public:
    explicit Parser(const BuiltinTable* builtins = nullptr, std::string system_dir = {}, std::string user_dir = {});
    ~Parser();
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    // --- evaluation -----------------------------------------------------------------------
    // Evaluates one line. Returns the answer text (owned by the Parser until the next call):
    // " = 5" with show_equal, "" for a line without a visible answer or after an error.
    const char* eval_exp(const char* text, complex& answer, bool silent, bool show_equal, bool as_fraction);
    const char* eval_exp(const char* text, bool silent, bool show_equal, bool as_fraction);
    // The whole text, NUL bytes included: a NUL is refused as an illegal character.
    const char* eval_exp(std::string_view text, bool silent, bool show_equal, bool as_fraction);
    const char* eval_exp(std::string_view text, complex& answer, bool silent, bool show_equal, bool as_fraction);

    // --- errors ---------------------------------------------------------------------------
    bool IsAnError() const;
    const char* GetLastError() const;
    void ClearLastError();
    void SetLastError(const char* text, int code);
    void SetSilentMode(bool silent);
    void SetSolvingMap(bool on);
    int error_code() const { return m_error_code; }
    bool unknown_name() const { return m_unknown_name; }

    void parser_exception(int code);
    void mathlib_exception(int code, int function_index, const char* text = nullptr);
    void special_exception(const char* format, const char* argument);
    void special_exception(const char* format, char c);
    void special_exception();
    void mapper_exception(int code, bool quiet);

    void set_reporter(Reporter* reporter);
    Reporter* reporter() const { return m_reporter; }
    Mathematics& mathematics() { return m_math; }
    ErrorLayer& statistics_layer() { return m_statistics; }
    ErrorLayer& deviates_layer() { return m_deviates; }

    // --- one-shot scanning for callers outside the engine ------------------------------------
    // Scans one token of `source`; returns the offset just behind it, or -1 on error or at the end.
    long get_token(const char* source, std::string& out, char& kind);
    bool find_token(const char* text, const char* name, char ignored = 0);

    // --- options ----------------------------------------------------------------------------
    int angle_type() const { return m_angle_type; }
    void set_angle_type(int type) { m_angle_type = type; }
    void set_auto_declare(bool on) { m_auto_declare = on; }
    bool auto_declare() const { return m_auto_declare; }
    void set_neg_sqrt(bool on) { m_neg_sqrt = on; }
    // Precise arithmetic: values carry about 34 significant decimal digits from step to step
    // (operators, variables, the elementary functions), so a shown answer of up to 14 digits is
    // the true value correctly rounded. Off, every step comes back through 15 digits.
    void set_precise(bool on) { m_precise = on; }
    bool precise() const { return m_precise; }
    void set_incremental_display(bool on) { m_incremental_display = on; }
    void set_use_square_brackets(bool on) { m_use_square_brackets = on; }
    bool use_square_brackets() const { return m_use_square_brackets; }
    PrecformType& answer_format() { return m_answer_format; }
    PrecformType& variable_format() { return m_variable_format; }

    bool show_equal() const { return m_show_equal; }
    bool var_changed() const { return m_var_changed; }
    bool func_declared() const { return m_func_declared; }
    // While set, every evaluation adds the names it reads and writes to `use` (null: none kept).
    void track_names(NameUse* use) { m_name_use = use; }
    bool root_taken() const { return m_root_taken; }
    bool vars_saved() const { return m_vars_saved; }
    void set_vars_saved(bool saved) { m_vars_saved = saved; }

    // --- variables ---------------------------------------------------------------------------
    // An index of -1 means the entry found by the last successful lookup.
    int find_variable(const char* name);
    Variable* find_var(const char* name);
    bool is_variable(const char* name);
    bool var_assigned(const char* name);
    bool var_incremented(const char* name);
    int variable_count() const { return static_cast<int>(m_variables.size()); }
    const Variable* variable_at(int index) const;
    complex get_var_value(const char* name);
    void set_var_value(complex value, const char* name);
    void set_var_lowlimit(complex value, const char* name);
    void set_var_hilimit(complex value, const char* name);
    void set_var_numpoints(long points, const char* name);
    bool is_var_locked(const char* name);
    void set_var_lock(const char* name, bool locked);
    void delete_variable(int index);
    void delete_all_vars();
    bool is_variable(int index) { return variable_at(index) != nullptr; }
    bool var_assigned(int index);
    bool var_incremented(int index);
    int max_var_length() const;
    const char* get_var_name(int index) const;
    complex get_var_lowlimit(const char* name);
    complex get_var_lowlimit(int index);
    complex get_var_hilimit(const char* name);
    complex get_var_hilimit(int index);
    complex get_var_increment(const char* name);
    complex get_var_increment(int index);
    long get_var_numpoints(const char* name);
    long get_var_numpoints(int index);
    void switch_vars(int first, int second);
    void move_var(int from, int to);

    // Variable texts, owned by the Parser until the next call of the same family.
    const char* get_var_value(int index, int precision);
    const char* get_var_value(const char* name, int precision);
    const char* get_var_inc_str_value(int index, int precision);
    const char* get_var_str_value(const char* name, int precision, bool definition);
    const char* get_var_str_value(int index, int precision, bool definition);
    const char* get_var_str(int index, int precision, bool definition);
    size_t get_var_str_value_len(const char* name, int precision, bool definition);
    size_t get_var_str_value_len(int index, int precision, bool definition);
    // Undoes the value-and-range text: returns the part behind the last "(" with the increment
    // cut off, or the text unchanged when it holds no range.
    static char* get_var_dec_value(char* text);
    void init_variable_stream(std::ostringstream& out);

    // --- user functions -------------------------------------------------------------------------
    // Finds "f", "f[x]", "f(x)" or "f[x] = ..." by its short name; -1 when there is none. The
    // entry found stays current for the -1 forms.
    int find_function(const char* text);
    bool is_function(const char* name) { return find_function(name) >= 0; }
    int function_count() const { return static_cast<int>(m_functions.size()); }
    const Function* function_at(int index) const;
    // "f[x] = x^2", owned by the Parser until the next call.
    const char* get_func_str(int index);
    void delete_function(int index);
    void delete_all_funcs();
    void switch_funcs(int first, int second);
    void move_func(int from, int to);
    int max_func_length() const;
    bool is_func_variable(const char* function, const char* variable);
    int get_num_func_vars(int index) const;
    const char* get_func_name(int index) const;
    const char* get_func_short_name(int index) const;
    const char* get_func_value(int index);
    const char* get_func_value(const char* name);
    void set_func_value(const char* name, const char* value); // a null name means the current entry
    void set_func_name(const char* full_name, int index);
    const char* get_func_modvalue(int index) const;
    bool modify_func_value(int variable, const char* text, int index);
    void reset_func_modvalue(int index);
    const char* get_func_name_value(int index);
    // The n-th dependent variable (first or next by `first`), as the list panes walk them.
    const char* get_func_variable(int index, bool first);
    size_t get_func_value_len(int index) const;
    size_t get_tot_func_value_len() const;
    // The same texts with parentheses for the function brackets, as shown while the option to
    // show square function brackets is off.
    const char* get_func_name_ex(int index);
    const char* get_func_value_ex(int index);
    const char* get_func_str_ex(int index);
    bool funcs_saved() const { return m_funcs_saved; }
    void set_funcs_saved(bool saved) { m_funcs_saved = saved; }

    // --- function libraries ----------------------------------------------------------------------
    // The folders of the system library (Quorvex.lib) and of the user's (QuorvexUser.lib); an
    // empty folder means no such library. Both are opened on first use and read once.
    void set_library_dirs(const std::string& system_dir, const std::string& user_dir);
    // Uses the libraries another Parser has opened already, without reading or reporting again.
    void share_libraries(const Parser& other);
    // Whether the file can be read; if not, the user is told once, under "File Access".
    bool CheckFunctionLibraryAccess(const std::string& path);
    // True when the name is a function of a library (the system's first); that function is then
    // the current library function.
    bool is_library_function(const char* name);
    const Function* current_library_function() const { return m_cur_lib_function.get(); }
    FunctionLibrary* system_library();
    FunctionLibrary* user_library();

    // --- names the evaluator resolves besides variables ---------------------------------------
    const BuiltinTable* builtins() const { return m_builtins; }
    // The folder of the system's data: the function library and the statistics tables.
    const std::string& system_dir() const { return m_system_dir; }
    int internal_function(const char* name) const;
    bool is_internal_function(const char* name) const { return internal_function(name) >= 0; }
    const char* get_function_name(int index) const;
    int constant_index(const char* name) const;
    bool is_constant(const char* name) const { return constant_index(name) >= 0; }
    const char* get_constant_name(int index) const;
    long double get_constant_value(const char* name);

    // --- what a built-in entry uses to read its parameters -------------------------------------
    // The token stands on the first token of a parameter on entry; commas are consumed, and the
    // token behind the last parameter is left in place. Codes are those of the function-library
    // messages; `function` is the caller's row index.
    const std::string& token() const { return m_token; }
    char token_kind() const { return m_token_kind; }
    void next_token() { get_token(); }
    void read_expression(complex& value, std::ostringstream& out) { eval_exp1(value, out); }
    // A parameter as a value of the descent, its precise digits included.
    void eval_exp1(complex& value, std::ostringstream& out);
    void set_check_digits(bool on) { m_check_digits = on; }
    void get_one_par(std::ostringstream& out, complex& a, int function);
    void get_two_pars(std::ostringstream& out, complex& a, complex& b, int function);
    void get_three_pars(std::ostringstream& out, complex& a, complex& b, complex& c, int function);
    void get_four_pars(std::ostringstream& out, complex& a, complex& b, complex& c, complex& d, int function);
    void get_five_pars(std::ostringstream& out, complex& a, complex& b, complex& c, complex& d, complex& e,
                       int function);
    void get_one_real_par(std::ostringstream& out, complex& a, int function);
    void get_two_real_pars(std::ostringstream& out, complex& a, complex& b, int function);
    void get_three_real_pars(std::ostringstream& out, complex& a, complex& b, complex& c, int function);
    void get_four_real_pars(std::ostringstream& out, complex& a, complex& b, complex& c, complex& d, int function);
    void get_five_real_pars(std::ostringstream& out, complex& a, complex& b, complex& c, complex& d, complex& e,
                            int function);
    void get_two_real_pos_pars(std::ostringstream& out, complex& a, complex& b, int function);
    void check_no_right_bracket(int code, int function);
    void check_right_bracket(int code, int function);
    void check_no_right_brace(int code, int function);
    void check_left_brace(int code, int function);
    void check_comma(int code, int function);
    void check_no_comma(int code, int function);
    void check_no_other_parameter(int code, int function);
    void check_more(int code, int function);
    bool check_no_imag_compnts(int code, int function, const complex& a, const complex& b = {},
                               const complex& c = {}, const complex& d = {}, const complex& e = {});
    bool check_pos_integers(int function, const complex& a, const complex& b);
    // A whole-line entry (RTOP, PTOR, BASECON) must be the line: it begins it, and after its
    // parameters nothing but the closing bracket is left.
    // A data list in braces, "{1, 2, 3}", or the name of a data file in braces. The token stands
    // on "{" on entry and behind "}" afterwards.
    void get_data(std::ostringstream& out, std::vector<long double>& list, int function);
    void get_comline_data(std::ostringstream& out, std::vector<long double>& list, int function);

    // --- data files: tokens separated by blanks, commas, tabs and line ends; labels like "12)"
    // are skipped; at most 32766 points. `function` is the calling built-in's row, whose
    // messages then speak, or -1 for the messages of a loading dialog.
    // The tokens as text; the number of columns, 1 when the lines differ, 0 on failure.
    int get_file_data(std::vector<std::string>& list, const char* file, int function);
    // Every token evaluated as an expression by a fresh parser; false on failure (list emptied).
    bool get_file_data(std::vector<long double>& list, const char* file, int function);
    // Points as text, one a line: x, y and z from the line's first tokens. With `single` a point
    // is one value (and a comma is no separator); otherwise it needs an x and a y. The first bad
    // line gets a specific message, the second a general one, later ones none; answering No to
    // a message sets `abort` and ends the reading. False when the file gave no points.
    bool get_file_points(std::vector<StrPoint>& list, const char* file, int function, bool& abort, bool quiet,
                         bool single);
    // Points as numbers: up to three numbers a line (an explicit sign allowed), one point a line.
    // The messages are those of the list readers; false when the file gave no points.
    bool get_file_points(std::vector<Point>& list, const char* file, int function);
    // Removes the entry in position `column` (from 1) from each row of `columns` entries.
    static bool rem_data_column(std::vector<std::string>& list, int columns, int column);
    bool line_begins_with(const char* name) const;
    bool at_last_bracket() const;
    // While mapping, appends a step to the current equation; `value` is a literal's, `text` the
    // name a step reads.
    void record_instruction(int code, complex value = {}, const char* text = nullptr);

    // --- the equation mapper ------------------------------------------------------------------
    // Mapping: new_equation() makes an equation current; with set_mapping(true) the next
    // eval_exp records its steps into it (mapping ends with that evaluation). Equations are
    // numbered from 1 in the order they were added.
    int new_equation();
    void set_mapping(bool on) { m_mapping = on; }
    bool mapping() const { return m_mapping; }
    // Maps `text` into a new equation: its number, or 0 (nothing kept) when the evaluation failed.
    int map_expression(const char* text);
    int equation_count() const { return static_cast<int>(m_equations.size()); }
    Equation* current_equation() { return m_current_equation; }
    // Runs equation `equation` (0: the current one) and returns its value; errors do not unwind,
    // so test IsAnError() after every run. `quiet` keeps messages from being shown.
    complex solve_equation(int equation, bool reset, bool quiet, bool symbolic = false);
    // No symbolic service is part of this program: always null.
    const char* solve_symbolic(int equation, bool reset, bool quiet);
    void delete_equation(int equation);
    int max_stack_depth() const { return m_max_stack_depth; }

    // --- numerical calculus on a mapped equation ---------------------------------------------
    // Each sets `variable`, runs the equation quietly and reads the real part. Decisions about
    // convergence are made in decimal. The host, when there is one, is asked before every
    // evaluation whether to stop; a stop returns at once (0 or false) with no message.
    void set_host(Host* host) { m_host = host; }
    Host* host() const { return m_host; }
    // Romberg integration; mapper error 3 (by `quiet`) after 20 stages, with the last estimate.
    long double RombIntegrate(int equation, const char* variable, long double lower, long double upper,
                              long double accuracy, bool quiet);
    // Whether the last RombIntegrate met its accuracy (or found a true zero). False after it gave
    // its best estimate because the estimates began to grow, ran out of stages, failed or was
    // stopped: a value returned then is no answer to the accuracy asked for.
    bool integral_converged() const { return m_integral_converged; }
    // The text that tells a user the integral did not meet its accuracy.
    static const char* integral_not_converged_message();
    // An integral that converges where Romberg cannot: Romberg first, with fewer stages; when it
    // misses the accuracy or an end cannot be evaluated, the double-exponential (tanh-sinh) rule,
    // which never evaluates the ends; then adaptive Gauss-Kronrod, which follows kinks and peaks.
    // The first that meets the accuracy answers. When none does, the estimate with the smallest
    // error is returned, not converged, with mapper error 3 (by `quiet`). A stop returns 0, not
    // converged, with no message; an error of the expression inside the interval stands.
    IntegralResult integrate(int equation, const char* variable, long double lower, long double upper,
                             long double accuracy, bool quiet);
    // A double or triple integral: `levels` from the innermost out. The limits of a level are
    // mapped equations, run with the variables of the levels outside it set, so that an inner
    // range may depend on them. Converged only when every inner integral converged as well.
    IntegralResult integrate_nested(int equation, const std::vector<IntegralLevel>& levels, long double accuracy,
                                    bool quiet);
    // The extended trapezoid rule at `stage` (from 1), refining the running sum of the stages before.
    long double Trapazoid(int equation, const char* variable, long double lower, long double upper, int stage);
    // Neville's interpolation of the n points xa[1..n], ya[1..n] at x: value and last correction.
    void PolyInterpolate(const long double* xa, const long double* ya, int n, long double x, long double* y,
                         long double* dy);
    // Ridders' extrapolation of central differences with the step shrinking tenfold; orders 2
    // and 3 are derivatives of derivatives.
    long double Derivative(int equation, const char* variable, const long double& x, const long double& step,
                           int order, long double& tolerance, bool refine);
    // The same with a step chosen for the order and the point: large, and smaller where the
    // function fails within its reach.
    long double DerivativeAuto(int equation, const char* variable, const long double& x, int order,
                               long double& tolerance);
    // One central difference; true means stop (an error is set).
    bool Slope(int equation, const char* variable, const long double& x, const long double& offset,
               const long double& step, int order, long double& tolerance, long double& slope, bool refine);
    // Bisection with inverse quadratic interpolation; true when `root` holds an answer.
    bool Root(int equation, const char* variable, long double x1, long double x2, long double accuracy,
              int max_iterations, long double& root, bool ignored);
    long double GetY(int equation, const char* variable, long double x, long double accuracy, long double& ymax,
                     long double& ymin, bool& converged);

    // --- kernels behind the operators; also used by built-in entries -----------------------------
    complex _pow(complex& z, complex& w);
    complex _factorial(complex& z);
    void set_root_taken() { m_root_taken = true; }
    // Random deviates draw from this, seeded once when the Parser is made; tests seed it anew.
    std::mt19937_64& random_engine() { return m_random; }
    // The mode of few points of variable data is shaky; the user may turn this warning off.
    void warn_insignificant_mode();
    bool neg_sqrt() const { return m_neg_sqrt; }

    // --- formatting ---------------------------------------------------------------------------
    void stream_answer(complex& value, std::ostringstream& out, int precision, bool as_fraction);
    void stream_variable(complex& value, std::ostringstream& out, int precision);

    // --- pieces of the scanner, public so that tests can drive them ---------------------------
    static void remove_end_spaces(std::string& text);
    static void replace_brackets(std::string& text, int mode);
    void insert_brackets(std::string& text, int mode);
    void check_balanced_parens(const std::string& text);

private:
    // Scanner over m_expression.
    const char* get_token();
    void putback();
    void copy_token(char& kind, std::string& name) const;
    void copy_token_back(char kind, const std::string& name);
    void check_valid_input(const std::string& text);
    bool comma_starts_incremental_declaration();
    char at(size_t pos) const { return pos < m_expression.size() ? m_expression[pos] : '\0'; }
    size_t skip_spaces(size_t pos) const;
    bool token_is(const char* text) const { return m_token == text; }

    // Declaration and expansion of user functions.
    bool is_function_declaration();
    void declare_function();
    void insert_functions();
    void eval_function(int index);
    void eval_lib_function();
    void insert_function(const std::string& value, size_t position, size_t tail);
    // The argument texts of the call whose name was just read, up to its closing bracket.
    std::vector<std::string> read_call_arguments();
    void check_argument_count(const Function& function, int count);
    void check_library_call(const std::string& name);
    // Every expansion counts against a bound, so functions that call each other stop.
    void count_expansion();
    // True when a function that the line reaches calls itself through other functions.
    bool functions_form_a_cycle();
    bool reachable_functions_form_a_cycle();
    // The body that a call of `name` expands to: a user or library function's, or none.
    std::optional<std::string> callee_body(const std::string& name);
    void open_libraries();
    std::shared_ptr<FunctionLibrary> open_library(const std::string& path);
    // One step of a mapped run; false ends the run at once (after an error was raised).
    bool run_step(int code, Equation& equation, MachineState& machine);
    const std::string& next_name(Equation& equation);
    // The variable named next in a mapped program, by the position cached for that name while the
    // table keeps its layout; null when no variable has the name (now).
    const Variable* next_variable(Equation& equation);
    bool text_holds_name(const std::string& text, const std::string& name);

    // The levels of the descent.
    void eval_exp0(Operand& value, std::ostringstream& out);
    void declare_variable(Operand& value, std::ostringstream& out, const std::string& name);
    void eval_exp1(Operand& value, std::ostringstream& out);
    void eval_exp2(Operand& value, std::ostringstream& out);
    void eval_exp3(Operand& value, std::ostringstream& out);
    void eval_exp4(Operand& value, std::ostringstream& out);
    void eval_exp5(Operand& value, std::ostringstream& out);
    void eval_exp6(Operand& value, std::ostringstream& out);
    void atom(Operand& value, std::ostringstream& out);
    void atom_name(Operand& value, std::ostringstream& out);
    void atom_number(Operand& value, std::ostringstream& out);
    // Reads the exponent behind a mantissa; returns the power of ten applied to it.
    long get_scientific_value(long double& value);

    bool compare(char relation, bool flag, const complex& a, const complex& b);

    // Precise arithmetic (parser_precise.cpp). The four operators work on the digits alone (their
    // only faults, a zero divisor and an overflow, are checked there); the rest take the double the
    // default rules computed, with their checks and messages, and add the value's own digits.
    void precise_operator(char op, Operand& value, const Operand& other);
    void precise_power(Operand& value, const Operand& exponent, const complex& result);
    void precise_negate(Operand& value);
    void precise_literal(Operand& value, const std::string& digits, long exponent, bool imaginary);
    bool precise_constant(Operand& value, const std::string& name);
    void precise_imaginary(Operand& value, const Operand& factor);
    void precise_factorial(Operand& value, const Operand& argument);
    // The built-in's double result, or the precise kernel's value where it has one and agrees.
    void precise_builtin(Operand& value, int function, std::ostringstream& out);
    // The precise kernel's value on the parameters just read, where there is one.
    std::optional<number::ComplexDecimal<21>> precise_kernel(int function) const;
    bool precise_compare(char relation, bool flag, const Operand& a, const Operand& b);
    void precise_variable(Operand& value, const Variable& variable);
    void store_precise(const std::string& name, const Operand& value);
    // The answer as it is shown: each part rounded once to the digits shown.
    complex precise_shown(const Operand& value, int digits) const;
    // The parameters of the built-in being called, as they were read (see eval_exp1(complex&)).
    std::vector<Operand> m_call_arguments;

    void enter_nesting();
    complex checked(const complex& value);

    // An unknown name at the start of a line, with the message and caption the user sees.
    void report_unknown_name(const std::string& name);
    // A data-file failure in the form the caller asked for; false, for the caller to return.
    bool report_file_error(const std::string& message, int function, int code, const char* file);
    // The text of a data file, with `pos` on its first token; false, after reporting, for a file
    // that is missing, too large or empty.
    bool read_data_text(const char* name, int function, std::string& text, size_t& pos);
    void init_answer_stream(std::ostringstream& out);
    void reset();
    void add_variable(const std::string& name);
    Variable* variable_for(const char* name);
    Variable* mutable_variable_at(int index);
    const char* with_parentheses(const char* text);

    // Error layers: the parser's own state and the three lower layers.
    const BuiltinTable* m_builtins;
    Mathematics m_math;
    ErrorLayer m_statistics;
    ErrorLayer m_deviates;
    Reporter* m_reporter = nullptr;
    bool m_error_flag = false;
    int m_error_code = -1;
    bool m_silent = false;
    bool m_solving_map = false;
    bool m_unknown_name = false;
    std::optional<std::string> m_last_error;

    // Options copied from the settings.
    bool m_beep = false;
    bool m_use_square_brackets = false;
    bool m_incremental_display = false;
    int m_angle_type = 0;
    bool m_auto_declare = false;
    bool m_declare_args = false;
    bool m_check_digits = false;
    bool m_root_taken = false;
    long double m_derivative_error = 0; // the error estimate of the last Derivative's answer
    bool m_neg_sqrt = false;
    bool m_precise = false;
    bool m_mode_warning = true;
    std::mt19937_64 m_random{std::random_device{}()};

    // Scanner state, alive during one evaluation.
    std::string m_expression;
    size_t m_input_pos = 0;
    size_t m_input_start = 0;
    bool m_scanning = false; // false stands for "no text to scan"
    std::string m_token;
    char m_token_kind = DELIMITER;
    std::string m_var_name;
    bool m_implied_mult = false;
    bool m_show_equal = false;
    int m_depth = 0; // nesting of brackets and imaginary factors, bounded so the stack cannot run out

    std::string m_system_dir;
    // The data files whose points are being evaluated around this Parser, outermost first: a
    // point may itself read a data file, and a file must not read itself.
    std::vector<std::string> m_data_file_chain;
    bool m_data_chain_refused = false; // the error names a file that reads itself, or too deep a chain
    // Data files of plain numbers already read, by their canonical path, with the time and size
    // that tell whether they changed since.
    struct DataFileStamp {
        std::filesystem::file_time_type time;
        std::uintmax_t size = 0;
        bool operator==(const DataFileStamp&) const = default;
    };
    struct CachedDataFile {
        DataFileStamp stamp;
        std::vector<long double> values;
    };
    std::unordered_map<std::string, CachedDataFile> m_data_file_cache;
    static std::optional<DataFileStamp> data_file_stamp(const char* name);
    std::string m_system_library_path;
    std::string m_user_library_path;
    std::shared_ptr<FunctionLibrary> m_system_library;
    std::shared_ptr<FunctionLibrary> m_user_library;
    bool m_libraries_opened = false;
    std::unique_ptr<Function> m_cur_lib_function;
    PrecformType m_answer_format;
    PrecformType m_variable_format;
    std::string m_answer_text;
    std::string m_variable_text;

    bool m_vars_saved = true;
    bool m_funcs_saved = true;
    std::vector<std::unique_ptr<Variable>> m_variables;
    // Name to position in m_variables, the first of a name winning as a scan would; rebuilt after
    // the table is reordered or shrunk. Documents hold thousands of variables, looked up by name
    // at every use.
    std::unordered_map<std::string, int> m_variable_index;
    bool m_variable_index_valid = false;
    // Counts the reorderings and deletions of the table: positions cached under an older count
    // may name another variable now.
    unsigned m_variable_layout = 0;
    void invalidate_variable_index() {
        m_variable_index_valid = false;
        ++m_variable_layout;
    }
    int m_current_variable = -1;
    std::vector<std::unique_ptr<Function>> m_functions;
    // Positions of the functions by short name (the first of equal names), so that a document of
    // many functions loads in linear time; rebuilt after the table is reordered or shrunk.
    std::unordered_map<std::string, int> m_function_index;
    bool m_function_index_valid = true;
    void invalidate_function_index() { m_function_index_valid = false; }
    void add_function(std::unique_ptr<Function> function);
    int m_current_function = -1;
    int m_expansions = 0; // function calls expanded in this evaluation, bounded against cycles
    size_t m_original_length = 0;
    std::string m_function_text;
    std::string m_extended_text;
    int m_function_variable_cursor = 0;
    bool m_var_changed = false;
    bool m_func_declared = false;
    NameUse* m_name_use = nullptr; // see track_names
    bool m_mapping = false;
    std::vector<std::unique_ptr<Equation>> m_equations;
    std::vector<complex> m_machine_stack; // the storage of solve_equation's stack between runs
    Equation* m_current_equation = nullptr;
    int m_max_stack_depth = 0;
    bool m_quiet = false;
    Host* m_host = nullptr;
    // One value of the function for a slope: taken, or the user stopped, or it failed (an error
    // of the evaluation, or a complex value).
    enum class SlopeSample { taken, stopped, failed };
    SlopeSample slope_sample(int equation, const char* variable, long double at, long double& value);
    bool m_integral_converged = false;
    // One value of an integrand: false when the expression failed or the user stopped.
    using Sampler = std::function<bool(long double x, long double& y)>;
    Sampler equation_sampler(int equation, const char* variable);
    long double trapezoid_stage(const Sampler& f, long double lower, long double upper, int stage,
                                long double& running);
    // Romberg over at most `stages` stages; `error` the larger of the extrapolation's estimate and
    // the change from the stage before; `exhausted` when it ran out of stages. Sets
    // m_integral_converged.
    long double romberg(const Sampler& f, long double lower, long double upper, long double accuracy, int stages,
                        long double& error, bool& exhausted);
    IntegralResult integrate_sampled(const Sampler& f, long double lower, long double upper, long double accuracy);
    // The double-exponential and Gauss-Kronrod rules on [lower, upper], lower < upper.
    std::optional<IntegralResult> integrate_by_rule(IntegrationMethod method, const Sampler& f, long double lower,
                                                    long double upper, long double accuracy);
    // Whether the same rule on the two halves agrees with an answer that met the accuracy.
    void confirm_by_halves(IntegrationMethod method, const Sampler& f, long double lower, long double upper,
                           long double accuracy, IntegralResult& found);
    bool m_slope_unresolved = false; // the last Slope's values differed only by rounding
    long double m_trapezoid_sum = 0; // the running sum of the trapezoid stages
    // Calculus helpers: one evaluation of the equation, and the host's moment before one.
    bool evaluate_at(int equation, const char* variable, long double x, long double& y);
    bool breathe();
    bool is_less(long double a, long double b);
    bool is_less_equal(long double a, long double b);
    bool stopped() const { return m_host && m_host->aborted(); }
};

} // namespace quorvex::engine
