#include "builtin_functions.h"

#include "builtin_index.h"
#include "engine/parser.h"

#include <array>
#include <cctype>
#include <string>
#include <unordered_map>

namespace quorvex::functions {

namespace {

constexpr std::array<const char*, BUILTIN_COUNT> k_names = {
    "SQRT", "LN", "LOG10", "LOG", "EXP", "POW", "ABS", "ROUND", "TRUNC", "REM", "FLOOR", "CEIL", "GCD", "LCM",
    "RTOP", "PTOR", "BASECON", "CUBERT", "REAL", "IMAG", "NORM", "CMAG", "CANGLE", "PTOC", "CONJ", "DEG", "RAD",
    "SIN", "COS", "TAN", "SINH", "COSH", "TANH", "ASIN", "ACOS", "ATAN", "ASINH", "ACOSH", "ATANH", "HYPOT",
    "MEAN", "GMEAN", "HMEAN", "QMEAN", "MEDIAN", "MODE", "MIN", "MAX", "SUMX", "SUMXSQ", "SUMDEV", "AVGDEV",
    "SUMDEVSQ", "RANGE", "COUNT", "RANK", "SVAR", "PVAR", "SSTDEV", "PSTDEV", "STSTDEV", "NORDIST", "NORPROB",
    "NORMX", "ZSCORE", "SKEW", "KURT", "PRCTLE", "LQRTLE", "UQRTLE", "COMB", "PERM", "WSNORM", "ERF", "ERFC",
    "RMS", "RAND", "NORDEV", "EXPDEV", "RAYDEV", "BERDEV", "BETADEV", "BNLDEV", "CAUDEV", "CHIDEV", "DEXPDEV",
    "FDEV", "GAMDEV", "LOGDEV", "NCHIDEV", "BETACDF", "BETAPDF", "BETAX", "CAUCHYCDF", "CAUCHYPDF", "CAUCHYX",
    "DBLEXPCDF", "DBLEXPPDF", "DBLEXPX", "EXPCDF", "EXPPDF", "EXPX", "GAMMACDF", "GAMMAPDF", "GAMMAX",
    "LOGISTICCDF", "LOGISTICPDF", "LOGISTICX", "LOGNORMCDF", "LOGNORMPDF", "LOGNORMX", "RAYLEIGHCDF",
    "RAYLEIGHPDF", "RAYLEIGHX", "UNIFORMCDF", "UNIFORMPDF", "UNIFORMX", "WEIBULLCDF", "WEIBULLPDF", "WEIBULLX",
    "CHISQCDF", "CHISQPDF", "CHISQX", "FRATIOCDF", "FRATIOPDF", "FRATIOX", "NORMALCDF", "NORMALPDF", "NORMALX",
    "STUDTCDF", "STUDTPDF", "STUDTX", "CP", "CPL", "CPU", "CPK", "CPM", "PP", "PPL", "PPU", "PPK", "AND", "OR",
    "NOT", "IF", "SRESIST", "PRESIST",
};

struct Constant {
    const char* name;
    long double value;
};

// PI, e and EULER are the nearest doubles, widened: their tails are those of the double.
constexpr std::array<Constant, 16> k_constants = {{
    {"PI", static_cast<long double>(3.141592653589793)},
    {"e", static_cast<long double>(2.718281828459045)},
    {"PLANK", 6.6262e-34L},
    {"BOLTZMANN", 1.38062e-23L},
    {"AVAGADRO", 6.02217e23L},
    {"FARADAY", 96486.7L},
    {"GAS", 8.31434L},
    {"GRAVCON", 6.6732e-11L},
    {"GRAVITY", 9.80665L},
    {"LIGHT", 299792458.0L},
    {"SOUND", 331.45L},
    {"ABSTEMP", -273.15L},
    {"PERMITIVITY", 8.85419e-12L},
    {"EULER", static_cast<long double>(0.577215664901532)},
    {"TRUE", 1.0L},
    {"FALSE", 0.0L},
}};

// Functions whose families arrive with the statistics library answer that they are not
// available yet, in the language's own words.
engine::complex not_available(engine::Parser& parser, std::ostringstream&, int function) {
    parser.mathlib_exception(30, function);
    return {0, 0};
}

Entry entry_for(int function) {
    if (Entry entry = scalar_entry(function)) return entry;
    if (Entry entry = logic_entry(function)) return entry;
    if (Entry entry = list_entry(function)) return entry;
    if (Entry entry = distribution_entry(function)) return entry;
    if (Entry entry = deviate_entry(function)) return entry;
    if (Entry entry = capability_entry(function)) return entry;
    return not_available;
}

} // namespace

int BuiltinFunctions::function_index(std::string_view name) const {
    // Every name a line or a document declares is checked against the built-ins: a hash of the
    // upper-case names, made once, answers without walking the table.
    static const std::unordered_map<std::string, int> by_name = [] {
        std::unordered_map<std::string, int> index;
        for (size_t i = 0; i < k_names.size(); ++i) index.emplace(k_names[i], static_cast<int>(i));
        return index;
    }();
    constexpr size_t k_longest = 16;
    if (name.empty() || name.size() > k_longest) return -1;
    std::string key(name);
    for (char& c : key) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    const auto found = by_name.find(key);
    return found == by_name.end() ? -1 : found->second;
}

const char* BuiltinFunctions::function_name(int index) const {
    return index >= 0 && index < BUILTIN_COUNT ? k_names[static_cast<size_t>(index)] : nullptr;
}

engine::complex BuiltinFunctions::call(int index, engine::Parser& parser, std::ostringstream& out) const {
    static const auto entries = [] {
        std::array<Entry, BUILTIN_COUNT> table{};
        for (int i = 0; i < BUILTIN_COUNT; ++i) table[static_cast<size_t>(i)] = entry_for(i);
        return table;
    }();
    if (index < 0 || index >= BUILTIN_COUNT) return {0, 0};
    return entries[static_cast<size_t>(index)](parser, out, index);
}

int BuiltinFunctions::constant_index(std::string_view name) const {
    for (size_t i = 0; i < k_constants.size(); ++i)
        if (name == k_constants[i].name) return static_cast<int>(i);
    return -1;
}

const char* BuiltinFunctions::constant_name(int index) const {
    return index >= 0 && index < static_cast<int>(k_constants.size()) ? k_constants[static_cast<size_t>(index)].name
                                                                      : "";
}

long double BuiltinFunctions::constant_value(int index) const {
    return index >= 0 && index < static_cast<int>(k_constants.size()) ? k_constants[static_cast<size_t>(index)].value
                                                                      : 0.0L;
}

const BuiltinFunctions& builtin_functions() {
    static const BuiltinFunctions table;
    return table;
}

} // namespace quorvex::functions
