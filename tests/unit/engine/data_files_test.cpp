#include "engine/parser.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
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
    EXPECT_STREQ(parser.GetLastError(), "Data File ' /dev/zero ' Is A Device Or A Pipe, Not A File Of Data!");
    EXPECT_EQ(parser.get_file_data(tokens, QUORVEX_FIXTURES, -1), 0);
    EXPECT_EQ(std::string(parser.GetLastError()), "Data File ' " QUORVEX_FIXTURES " ' Is A Folder, Not A File Of Data!");
    std::vector<quorvex::engine::Point> points;
    EXPECT_FALSE(parser.get_file_points(points, "/dev/zero", -1));
    EXPECT_STREQ(parser.GetLastError(), "Data File ' /dev/zero ' Is A Device Or A Pipe, Not A File Of Data!");
    EXPECT_EQ(parser.get_file_data(tokens, fixture("blank.txt").c_str(), -1), 0);
    EXPECT_EQ(std::string(parser.GetLastError()), "No Data Found In The ' " + fixture("blank.txt") + " ' Data File!");
}

namespace {
struct AnsweringReporter : Reporter {
    std::vector<std::string> asked;
    bool answer = true;
    void report(std::string_view, std::string_view, MessageKind) override {}
    bool ask(std::string_view text, std::string_view) override {
        asked.emplace_back(text);
        return answer;
    }
};
} // namespace

TEST(DataFiles, PointFilesComplainSpecificallyOnceThenGenerallyOnceThenNoMore) {
    Parser parser;
    AnsweringReporter reporter;
    parser.set_reporter(&reporter);
    std::vector<StrPoint> points;
    bool abort = false;
    EXPECT_TRUE(parser.get_file_points(points, fixture("xy_missing.txt").c_str(), -1, abort, true, false));
    ASSERT_EQ(points.size(), 5u);
    EXPECT_EQ(points[1].x, "3");
    EXPECT_EQ(points[1].y, "4");
    EXPECT_EQ(points[2].y, ""); // kept as far as it was read
    ASSERT_EQ(reporter.asked.size(), 2u);
    EXPECT_EQ(reporter.asked[0].rfind("Invalid data found in the ' ", 0), 0u);
    EXPECT_NE(reporter.asked[0].find("at point number 3. There was no y value"), std::string::npos);
    EXPECT_EQ(reporter.asked[1].rfind("It appears there are multiple data points", 0), 0u);
    EXPECT_FALSE(abort);

    // Single values: a y is the fault, and answering No stops the reading.
    reporter.asked.clear();
    reporter.answer = false;
    points.clear();
    EXPECT_FALSE(parser.get_file_points(points, fixture("single_with_y.txt").c_str(), -1, abort, true, true));
    EXPECT_TRUE(abort);
    EXPECT_EQ(points.size(), 1u);
    ASSERT_EQ(reporter.asked.size(), 1u);
    EXPECT_NE(reporter.asked[0].find("There were y value coordinates found."), std::string::npos);
}

TEST(DataFiles, NumericPointsTakeUpToThreeSignedNumbersALine) {
    Parser parser;
    std::vector<Point> points;
    ASSERT_TRUE(parser.get_file_points(points, fixture("numeric_points.txt").c_str(), -1));
    ASSERT_EQ(points.size(), 3u);
    EXPECT_EQ(points[0], (Point{complex(1, 0), complex(2, 0), std::nullopt}));
    EXPECT_EQ(points[1], (Point{complex(-3.5, 0), complex(4, 0), complex(5, 0)})); // the fourth number is dropped
    EXPECT_EQ(points[2], (Point{complex(7, 0), std::nullopt, std::nullopt}));

    points.clear();
    EXPECT_FALSE(parser.get_file_points(points, fixture("unknown_name.txt").c_str(), -1));
    EXPECT_STREQ(parser.GetLastError(),
                 ("Invalid Data Found In The ' " + fixture("unknown_name.txt") + " ' Data File At Point Number 2!").c_str());
    EXPECT_FALSE(parser.get_file_points(points, fixture("blank.txt").c_str(), -1));
    EXPECT_STREQ(parser.GetLastError(), ("No Data Found In The ' " + fixture("blank.txt") + " ' Data File!").c_str());

    // Point arithmetic works on the coordinates both have; ++ steps real and imaginary parts.
    Point sum{complex(1, 0), complex(2, 0), std::nullopt};
    sum += Point{complex(1, 1), std::nullopt, complex(9, 0)};
    ++sum;
    EXPECT_EQ(sum, (Point{complex(3, 2), complex(3, 1), std::nullopt}));
}

TEST(DataFiles, ANulByteIsAnIllegalCharacterNotTheEndOfTheLine) {
    Parser parser;
    parser.eval_exp(std::string("1+2\0+3", 6), true, true, false);
    EXPECT_TRUE(parser.IsAnError());
    EXPECT_STREQ(parser.GetLastError(), "' NUL ' is not a legitimate mathematical character!");
    EXPECT_STREQ(parser.eval_exp(std::string("1+2+3"), true, false, false), "6");
}

TEST(DataFiles, ThePointLimitIsTheOneTheMessageNames) {
    const std::string path = testing::TempDir() + "quorvex-limit-points.txt";
    const auto write_points = [&](int count) {
        std::ofstream out(path, std::ios::binary);
        for (int i = 0; i < count; ++i) out << i << '\n';
    };
    Parser parser;
    std::vector<std::string> tokens;
    write_points(32767);
    EXPECT_EQ(parser.get_file_data(tokens, path.c_str(), -1), 1);
    EXPECT_EQ(tokens.size(), 32767u);
    write_points(32768);
    tokens.clear();
    EXPECT_EQ(parser.get_file_data(tokens, path.c_str(), -1), 0);
    EXPECT_EQ(std::string(parser.GetLastError()),
              "Too Many Data Points Found In The ' " + path + " ' Data File, Limit Is 32767 Points!");
    std::remove(path.c_str());
}
