// Which answers a change makes out of date: lines recorded as they are computed, a change of a
// variable, a function or a deletion, the stale lines found directly and through lines between,
// and the answers of a document checked against its lines.
#include "document/document_check.h"
#include "document/line_dependencies.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <memory>

using namespace quorvex;
using document::LineRecord;
using document::Staleness;

namespace {

// A worksheet: lines computed as Enter computes them, each keeping its record.
struct Sheet {
    Sheet() : parser(&functions::builtin_functions(), QUORVEX_DATA_DIR), lines(parser) {}

    // Computes line `i` (added when it is one past the end) as `text`.
    void enter(size_t i, const std::string& text) {
        if (i >= records.size()) records.resize(i + 1);
        engine::NameUse use;
        parser.track_names(&use);
        const document::LineOutcome outcome = lines.process(text);
        parser.track_names(nullptr);
        records[i] = outcome.error ? nullptr : std::make_unique<LineRecord>(document::make_record(parser, use, outcome.text));
    }
    std::vector<Staleness> stale() {
        std::vector<const LineRecord*> view;
        for (const auto& record : records) view.push_back(record.get());
        return document::find_stale(parser, view);
    }
    // The stale lines' numbers, from 0.
    std::vector<size_t> stale_lines() {
        std::vector<size_t> found;
        const auto all = stale();
        for (size_t i = 0; i < all.size(); ++i)
            if (all[i].stale) found.push_back(i);
        return found;
    }

    engine::Parser parser;
    document::LineProcessor lines;
    std::vector<std::unique_ptr<LineRecord>> records;
};

using Lines = std::vector<size_t>;
using Names = std::set<std::string>;

} // namespace

TEST(StaleLines, AChangedVariableMarksItsReadersAboveAndBelowAndNoOthers) {
    Sheet sheet;
    sheet.enter(0, "r = 2");
    sheet.enter(1, "area = 3*r^2");
    sheet.enter(2, "q = 7");
    sheet.enter(3, "q*2");
    sheet.enter(4, "r+1");
    EXPECT_TRUE(sheet.stale_lines().empty());

    // The same value again changes nothing.
    sheet.enter(0, "r = 2");
    EXPECT_TRUE(sheet.stale_lines().empty());

    sheet.enter(0, "r = 3");
    EXPECT_EQ(sheet.stale_lines(), (Lines{1, 4}));
    EXPECT_EQ(sheet.stale()[1].changed, Names{"r"});
    EXPECT_FALSE(sheet.stale()[0].stale); // the line that changed it is current

    // Computed again by hand, a line loses its mark; back to the old value, the others do too.
    sheet.enter(1, "area = 3*r^2 = 12");
    EXPECT_EQ(sheet.stale_lines(), Lines{4});
    sheet.enter(0, "r = 2");
    EXPECT_EQ(sheet.stale_lines(), Lines{1});

    // A ranged variable changes with its range.
    sheet.enter(5, "t = 0, 10, 11");
    sheet.enter(6, "t*2");
    sheet.enter(5, "t = 0, 10, 21");
    EXPECT_EQ(sheet.stale()[6].changed, Names{"t"});
}

TEST(StaleLines, ChangesReachReadersThroughFunctionsAndThroughLinesBetween) {
    Sheet sheet;
    sheet.enter(0, "k = 3");
    sheet.enter(1, "f(x) = k*x");
    sheet.enter(2, "g(x) = f(x)+1");
    sheet.enter(3, "g(2)");
    sheet.enter(4, "a = k+1");
    sheet.enter(5, "b = a*2");
    sheet.enter(6, "c = b*2");
    sheet.enter(7, "x = 5");
    sheet.enter(8, "x+1");

    // k reaches g(2) through two function bodies, and c through a and b, which still hold
    // their old values: recomputing a will change them.
    sheet.enter(0, "k = 4");
    EXPECT_EQ(sheet.stale_lines(), (Lines{3, 4, 5, 6}));
    EXPECT_EQ(sheet.stale()[6].changed, Names{"k"});
    // A function's parameter is no read of the variable of its name.
    EXPECT_FALSE(sheet.stale()[1].stale);

    // A redefined function marks its callers, also through another function.
    sheet.enter(3, "g(2)");
    sheet.enter(4, "a = k+1");
    sheet.enter(5, "b = a*2");
    sheet.enter(6, "c = b*2");
    EXPECT_TRUE(sheet.stale_lines().empty());
    sheet.enter(1, "f(x) = k*x^2");
    EXPECT_EQ(sheet.stale_lines(), Lines{3});
    EXPECT_EQ(sheet.stale()[3].changed, Names{"f[]"});
    EXPECT_EQ(document::changed_names_text(sheet.stale()[3].changed), "f");

    // A deletion through a manager is a change too: the name no longer exists.
    sheet.parser.delete_variable(sheet.parser.find_variable("x"));
    EXPECT_EQ(sheet.stale()[8].changed, Names{"x"});
    EXPECT_EQ(document::changed_names_text({"a", "b", "f[]"}), "a, b and f");
}

TEST(StaleLines, StaleWritersReachOnlyTheLinesBelowThem) {
    Sheet sheet;
    sheet.enter(0, "n = 1");
    sheet.enter(1, "m*2");     // fails: no record, never stale
    sheet.enter(2, "m = n+1");
    sheet.enter(3, "m*3");
    sheet.enter(4, "s = m*4");
    sheet.enter(1, "m*2");     // now m exists: above the line that writes it
    sheet.enter(0, "n = 5");
    // Line 1 read m, which line 2 will change, but recomputing in document order reaches it
    // first: it keeps its answer until m itself changes.
    EXPECT_EQ(sheet.stale_lines(), (Lines{2, 3, 4}));
}

TEST(DocumentCheck, ReportsEachStoredAnswerThatDiffersFromTheLinesNow) {
    engine::Parser parser(&functions::builtin_functions(), QUORVEX_DATA_DIR);
    document::LineProcessor lines(parser);
    // A worksheet whose first line was edited by hand: r is 3 now, the answers were made with 2.
    const std::vector<std::string> sheet = {
        "r = 3",
        "area = 3*r^2 = 12",
        "2+2 = 4 // right",
        "r*0 = 0",
        "u = 1/0 = 5",
        "sqrt[r+6] = 2 : -2",
        "w = 4",
        "w*r",
        "// a note = 7",
        "v = 1/0; 2+2 = 4",
    };
    const auto differing = document::check_answers(lines, sheet);
    ASSERT_EQ(differing.size(), 4u);
    EXPECT_EQ(differing[0], (document::DifferingAnswer{2, "12", "27"}));
    EXPECT_EQ(differing[1].line, 5u);
    EXPECT_EQ(differing[1].stored, "5");
    EXPECT_TRUE(differing[1].now.starts_with("error: ")) << differing[1].now;
    EXPECT_EQ(differing[2], (document::DifferingAnswer{6, "2 : -2", "3 : -3"}));
    // A statement ahead of the answered one fails: the stored answer no longer follows.
    EXPECT_EQ(differing[3].line, 10u);
    EXPECT_EQ(differing[3].stored, "4");
    EXPECT_EQ(document::check_summary(differing.size()), "4 answers differ");
    EXPECT_EQ(document::check_summary(1), "1 answer differs");
}
