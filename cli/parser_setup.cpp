#include "parser_setup.h"

namespace quorvex::cli {

void apply_answer_options(engine::Parser& parser, const CliOptions& options) {
    // What the command line gives overrides the settings file; what it leaves out does not.
    if (options.angle_type) parser.set_angle_type(*options.angle_type);
    if (options.precise) parser.set_precise(true);
    engine::PrecformType& format = parser.answer_format();
    if (options.format) format.format = *options.format;
    if (options.precision) format.precision = *options.precision;
    if (options.zero_tolerance) format.zero_precision = *options.zero_tolerance;
    if (options.point) format.dec_point = true;
    if (options.sign) format.lead_sign = true;
}

} // namespace quorvex::cli
