#pragma once

namespace quorvex::engine {

// Thrown by a raised error to abandon an evaluation; caught only at the entry point of the
// evaluation, which restores the visible state. The error text is already stored when it flies.
struct EvaluationAborted {};

} // namespace quorvex::engine
