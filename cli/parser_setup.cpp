#include "parser_setup.h"

namespace quorvex::cli {

void apply_answer_options(engine::Parser& parser, const CliOptions& options) {
    parser.set_angle_type(options.angle_type);
    engine::PrecformType& format = parser.answer_format();
    format.format = options.format;
    if (options.precision) format.precision = *options.precision;
    if (options.zero_tolerance) format.zero_precision = *options.zero_tolerance;
    format.dec_point = options.point;
    format.lead_sign = options.sign;
}

} // namespace quorvex::cli
