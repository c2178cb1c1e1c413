// The program's settings file: defaults for what is missing or unusable, the number formats of
// [PARSER OPTIONS] into a new engine.
#include "document/app_settings.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

TEST(AppSettings, MissingKeysTakeTheDefaultsAndValuesAreRead) {
    quorvex::store::IniFile empty("");
    const auto defaults = quorvex::document::ReadAppSettings(empty);
    EXPECT_TRUE(defaults.IncrementalVariables);
    EXPECT_FALSE(defaults.PreciseArithmetic);
    EXPECT_EQ(defaults.CalculationMethod, 1);
    EXPECT_FALSE(defaults.UseSquareFunctionBrackets);
    EXPECT_EQ(defaults.AutoCheckVersion, -1);
    EXPECT_EQ(defaults.AutoCheckDays, 7);

    quorvex::store::IniFile ini("");
    ini.SetText("[options]\r\nCalculationMethod=2\r\nUseSquareFunctionBrackets=1\r\nSound=0\r\nPreciseArithmetic=1\r\n"
                "[PARSER OPTIONS]\r\nAnsPrecision=6\r\nVarPrecision=99\r\nAnsFormat=1\r\nAngleType=1\r\n"
                "AnsZeroPrecision=banana\r\n");
    const auto read = quorvex::document::ReadAppSettings(ini);
    EXPECT_EQ(read.CalculationMethod, 2);
    EXPECT_TRUE(read.UseSquareFunctionBrackets);
    EXPECT_FALSE(read.Sound);
    EXPECT_TRUE(read.PreciseArithmetic);
    quorvex::engine::Parser fresh(&quorvex::functions::builtin_functions());
    quorvex::document::ApplyToNewParser(read, fresh);
    EXPECT_TRUE(fresh.precise());
    EXPECT_TRUE(fresh.use_square_brackets());
    ini.SetText("[OPTIONS]\r\nCalculationMethod=7\r\n");
    EXPECT_EQ(quorvex::document::ReadAppSettings(ini).CalculationMethod, 1);

    ini.SetText("[PARSER OPTIONS]\r\nAnsPrecision=6\r\nVarPrecision=99\r\nAnsFormat=1\r\nAngleType=1\r\n"
                "AnsZeroPrecision=banana\r\nVarZeroPrecision=1.0e-05\r\n");
    quorvex::engine::Parser parser(&quorvex::functions::builtin_functions());
    quorvex::document::ReadGlobalSettings(ini, parser);
    EXPECT_EQ(parser.answer_format().precision, 6);
    EXPECT_EQ(parser.variable_format().precision, 14); // 99 digits can not be shown
    EXPECT_EQ(parser.answer_format().format, 1);
    EXPECT_EQ(parser.angle_type(), 1);
    EXPECT_FLOAT_EQ(parser.answer_format().zero_precision, 1.0e-12f);
    EXPECT_FLOAT_EQ(parser.variable_format().zero_precision, 1.0e-05f);
}
