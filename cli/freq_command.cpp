// The frequency distribution of a file of values, as the stat plot tabulates it.
#include "command_support.h"

#include "desktop/stat_plot.h"

namespace quorvex::cli {

int run_freq(CommandContext& context) {
    const auto& args = arguments(context, 1, 1);
    refuse_options(context, false, false);
    desktop::StatPlotChoice choice;
    if (context.options.intervals) {
        choice.intervals = desktop::IntervalChoice::SetEqualIntervals;
        choice.count = static_cast<int>(evaluate_count(context, *context.options.intervals, "--intervals",
                                                       desktop::k_fewest_intervals, desktop::k_most_intervals));
    }
    std::string error;
    const std::optional<graph::StrDataPnts> data = desktop::read_stat_values(context.parser, args[0], error);
    if (!data) usage_failure(error);
    // The values are binned as they are written at the answers' precision, as the tool's table
    // shows them.
    const int precision = context.options.precision.value_or(14);
    const std::vector<std::string> shown = desktop::stat_value_texts(context.parser, *data, precision, nullptr);
    const auto frequencies = desktop::frequency_distribution(context.parser, shown, choice, error);
    if (!frequencies) usage_failure(error);
    for (const functions::Frequency& frequency : *frequencies)
        context.out << desktop::interval_text(frequency, precision) << '\t' << frequency.count << '\n';
    return 0;
}

} // namespace quorvex::cli
