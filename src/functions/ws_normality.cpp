#include "ws_normality.h"

#include "engine/parser.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <vector>

namespace quorvex::functions::statistics {

namespace {

// The values on the line for n, at most `count` of them; nothing when the file is missing or
// the line is not what it must be ("n) " followed by comma-separated numbers).
enum class TableStatus { Ok, Missing, Damaged };

TableStatus read_row(const std::string& path, size_t n, size_t count, std::vector<long double>& values) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return TableStatus::Missing;
    std::string line;
    for (size_t skip = 0; skip + 3 < n; ++skip)
        if (!std::getline(file, line)) return TableStatus::Damaged;
    if (!std::getline(file, line)) return TableStatus::Damaged;
    const std::string label = std::to_string(n) + ")";
    if (line.compare(0, label.size(), label) != 0) return TableStatus::Damaged;
    const char* p = line.c_str() + label.size();
    for (size_t i = 0; i < count; ++i) {
        if (i > 0) {
            while (*p == ' ') ++p;
            if (*p != ',') return values.empty() ? TableStatus::Damaged : TableStatus::Ok;
            ++p;
        }
        char* end = nullptr;
        const long double value = std::strtold(p, &end);
        if (end == p) return TableStatus::Damaged;
        values.push_back(value);
        p = end;
    }
    return TableStatus::Ok;
}

} // namespace

long double wsnormtest(DataList& x, int alpha, const std::string& tables_dir, engine::Parser& parser) {
    engine::ErrorLayer& errors = parser.statistics_layer();
    const size_t n = x.size();
    if (n < 3 || n > 99) {
        errors.raise(0);
        return 0;
    }
    static constexpr int k_alphas[] = {1, 2, 5, 10};
    const auto* position = std::find(std::begin(k_alphas), std::end(k_alphas), alpha);
    if (position == std::end(k_alphas)) {
        errors.raise(1);
        return 0;
    }
    std::vector<long double> coefficients, critical;
    const TableStatus first = read_row(tables_dir + "wstableA1", n, n / 2, coefficients);
    if (first != TableStatus::Ok || coefficients.size() != n / 2) {
        errors.raise(first == TableStatus::Missing ? 2 : 3);
        return 0;
    }
    std::sort(x.begin(), x.end());
    const long double ss = sumxsq(x) - sumx(x) * sumx(x) / static_cast<long double>(n);
    long double b = 0;
    for (size_t i = 0; i < n / 2; ++i) b += coefficients[i] * (x[n - 1 - i] - x[i]);
    // W, the squared correlation of the data with the normal scores: b^2 over the sum of squares.
    const long double w = ss > 0 ? b * b / ss : 0;

    const auto wanted = static_cast<size_t>(position - std::begin(k_alphas)) + 1;
    const TableStatus second = read_row(tables_dir + "wstableA2", n, wanted, critical);
    if (second != TableStatus::Ok || critical.empty()) {
        errors.raise(second == TableStatus::Missing ? 2 : 3);
        return 0;
    }
    return w <= critical.back() ? 0 : 1;
}

} // namespace quorvex::functions::statistics
