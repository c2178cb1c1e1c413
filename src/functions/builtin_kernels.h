#pragma once
#include "scalar_kernels.h"
#include "statistics.h"

// What a built-in computes once its parameters are in hand. The entries call these after reading
// the text; the steps of a mapped run call them on the operands of the machine, so both give the
// same value and raise the same messages.
namespace quorvex::functions {

// A scalar function: its recorded step and its kernel; `b` is unused by one-operand rows.
struct ScalarStep {
    int function;
    int instruction;
    int operands; // 1 or 2
    complex (*kernel)(ScalarKernels& kernels, const complex& a, const complex& b, int function);
};
const ScalarStep* scalar_step_for_function(int function);
const ScalarStep* scalar_step_for_instruction(int instruction);

// A data-list function, optionally with one real number after the list. Kernels may sort the list.
struct ListStep {
    int function;
    int instruction;
    bool takes_number;
    long double (*kernel)(DataList& list, long double number, engine::Parser& parser);
};
const ListStep* list_step_for_function(int function);
const ListStep* list_step_for_instruction(int instruction);

// COMB and PERM: real, non-negative integers with N not below R.
complex combinations_value(engine::Parser& parser, int function, const complex& n, const complex& r);

// The distributions from BETACDF to STUDTX: the parameter limits, then the value.
complex distribution_value(engine::Parser& parser, int function, long double x, long double a, long double b);
complex error_function_value(int function, long double x);
// The normal helpers take the mean and spread as numbers, or from a list (mean and spread).
void list_mean_and_spread(const DataList& list, long double& mean, long double& sd);
complex nordist_value(engine::Parser& parser, int function, long double x, long double mean, long double sd);
complex norprob_value(engine::Parser& parser, int function, long double low, long double high,
                      long double mean, long double sd);
complex normx_value(engine::Parser& parser, int function, long double probability, long double mean,
                    long double sd);
complex zscore_value(engine::Parser& parser, int function, long double x, long double mean, long double sd);

// One draw of a deviate after its parameter checks; the standard form takes no parameters.
complex deviate_value(engine::Parser& parser, int function, long double a, long double b);
complex standard_deviate(engine::Parser& parser, int function);
// How many parameters the deviate takes in its parameter form (1 or 2).
int deviate_parameter_count(int function);

// Process capability: how many numbers the numeric shape takes, how many limits follow the list
// in the list shape, and the index from either.
int capability_number_count(int function);
int capability_limit_count(int function);
complex capability_from_numbers(engine::Parser& parser, int function, const long double* numbers);
complex capability_from_list(engine::Parser& parser, int function, const DataList& list,
                             const long double* limits);

// AND, OR, NOT and the condition of IF take exactly 0 or 1 with no imaginary part.
bool is_logical(const complex& z);

} // namespace quorvex::functions
