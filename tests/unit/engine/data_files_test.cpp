#include "engine/parser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace quorvex::engine;

namespace {
std::string fixture(const char* name) { return std::string(QUORVEX_FIXTURES "data/") + name; }
} // namespace

TEST(DataFiles, TokensSeparatedAnyWayReadTheSame) {
    Parser parser;
    std::vector<std::string> tokens;
    EXPECT_EQ(parser.get_file_data(tokens, fixture("grid.txt").c_str(), -1), 3);
    EXPECT_EQ(tokens, (std::vector<std::string>{"1", "2", "3", "4", "5", "6"}));
    tokens.clear();
    EXPECT_EQ(parser.get_file_data(tokens, fixture("labelled.txt").c_str(), -1), 1);
    EXPECT_EQ(tokens, (std::vector<std::string>{"2.5", "3.5"}));
    tokens.clear();
    EXPECT_EQ(parser.get_file_data(tokens, fixture("ragged.txt").c_str(), -1), 1); // lines of different length

    std::vector<std::string> grid = {"1", "2", "3", "4", "5", "6"};
    EXPECT_TRUE(Parser::rem_data_column(grid, 3, 2));
    EXPECT_EQ(grid, (std::vector<std::string>{"1", "3", "4", "6"}));
    EXPECT_FALSE(Parser::rem_data_column(grid, 0, 1));
}

TEST(DataFiles, PointsAreExpressionsOfTheirOwn) {
    Parser parser;
    std::vector<long double> points;
    EXPECT_TRUE(parser.get_file_data(points, fixture("grid.txt").c_str(), -1));
    EXPECT_EQ(points.size(), 6u);
    parser.eval_exp("x = 100", true, true, false); // the document's variables stay out of the file
    EXPECT_FALSE(parser.get_file_data(points, fixture("unknown_name.txt").c_str(), -1));
    EXPECT_TRUE(points.empty());
    EXPECT_EQ(std::string(parser.GetLastError()),
              "The Following Error Occured While Loading Data Point 1 In File " + fixture("unknown_name.txt") +
                  " : ' x ' could not be identified as a variable or function.");
    EXPECT_FALSE(parser.get_file_data(points, fixture("imaginary.txt").c_str(), -1));
    EXPECT_EQ(std::string(parser.GetLastError()),
              "An Imaginary Number Was Found In Data Point 1 In File " + fixture("imaginary.txt"));
}

TEST(DataFiles, MissingAndEmptyFilesAreReported) {
    Parser parser;
    std::vector<std::string> tokens;
    EXPECT_EQ(parser.get_file_data(tokens, fixture("missing.txt").c_str(), -1), 0);
    EXPECT_EQ(std::string(parser.GetLastError()), "Data File ' " + fixture("missing.txt") + " ' Could Not Be Located!");
    // A device is no data file, however much it would give.
    EXPECT_EQ(parser.get_file_data(tokens, "/dev/zero", -1), 0);
    EXPECT_STREQ(parser.GetLastError(), "Data File ' /dev/zero ' Could Not Be Located!");
    EXPECT_EQ(parser.get_file_data(tokens, fixture("blank.txt").c_str(), -1), 0);
    EXPECT_EQ(std::string(parser.GetLastError()), "No Data Found In The ' " + fixture("blank.txt") + " ' Data File!");
}
