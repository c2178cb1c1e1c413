// The case-blind name index under growth: every name stays findable across rehashes, the first
// position of a name stays, and only ASCII letters fold.
#include "store/no_case_index.h"

#include <gtest/gtest.h>

#include <string>

using quorvex::store::NoCaseIndex;

TEST(NoCaseIndex, KeepsFirstPositionsAcrossGrowthAndFoldsOnlyAsciiLetters) {
    NoCaseIndex index;
    EXPECT_EQ(index.find("anything"), NoCaseIndex::npos);
    for (size_t i = 0; i < 5000; ++i) index.insert("Key" + std::to_string(i), i);
    bool added = true;
    EXPECT_EQ(index.insert("KEY17", 99999, &added), 17u); // a name in another case is the same name
    EXPECT_FALSE(added);
    EXPECT_EQ(index.size(), 5000u);
    for (size_t i = 0; i < 5000; i += 499) EXPECT_EQ(index.find("kEy" + std::to_string(i)), i);
    EXPECT_EQ(index.find("Key5000"), NoCaseIndex::npos);
    EXPECT_EQ(index.find("Key1 "), NoCaseIndex::npos); // no trimming here: callers trim

    index.insert("\xC4rger", 1); // a byte outside ASCII is compared as it is
    EXPECT_EQ(index.find("\xE4rger"), NoCaseIndex::npos);
    EXPECT_EQ(index.find("\xC4RGER"), 1u);
    index.insert("", 7);
    EXPECT_EQ(index.find(""), 7u);

    index.clear();
    EXPECT_EQ(index.size(), 0u);
    EXPECT_EQ(index.find("Key17"), NoCaseIndex::npos);
    index.insert("Key17", 3);
    EXPECT_EQ(index.find("KEY17"), 3u);
}
