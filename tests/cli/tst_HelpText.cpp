#include "cli/CommandLine.h"
#include "cli/HelpText.h"

#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>

namespace {

TEST(HelpText, FitsAScreenWithALineLeftForThePrompt)
{
    std::istringstream text(helpText());
    int lines = 0;
    for (std::string line; std::getline(text, line); ++lines)
        EXPECT_LE(line.size(), 80U) << line;
    EXPECT_LE(lines, 23);
}

TEST(HelpText, ShowsEachOptionInOneRow)
{
    std::map<OptionId, int> rows;
    for (const std::vector<OptionId> &row : helpRows()) {
        for (const OptionId id : row)
            ++rows[id];
    }
    for (const CliOption &option : cliOptions()) {
        EXPECT_EQ(rows[option.id], 1) << option.name;
        EXPECT_NE(helpText().find("--" + nameOf(option)), std::string::npos) << option.name;
        EXPECT_NE(helpText().find(option.brief), std::string::npos) << option.name;
    }
    EXPECT_EQ(rows.size(), cliOptions().size());
}

TEST(HelpText, HasThreeExamplesThatCanBeTyped)
{
    ASSERT_EQ(helpExamples().size(), 3U);
    for (const std::string &example : helpExamples()) {
        EXPECT_NE(helpText().find(example), std::string::npos);
        std::istringstream words(example);
        std::string word;
        std::vector<std::string> arguments;
        words >> word;
        EXPECT_EQ(word, "meshvane-cli");
        while (words >> word)
            arguments.push_back(word);
        EXPECT_NO_THROW(EXPECT_EQ(readCommandLine(arguments).kind, CommandLine::Kind::run)) << example;
    }
}

TEST(OptionTable, NamesAreUsedOnce)
{
    std::set<std::string> names;
    for (const CliOption &option : cliOptions()) {
        for (const std::string &name : namesOf(option))
            EXPECT_TRUE(names.insert(name).second) << name;
        if (option.shortName != '\0') {
            EXPECT_TRUE(names.insert(std::string(1, option.shortName)).second) << option.shortName;
        }
        EXPECT_EQ(&cliOption(option.id), &option);
    }
    EXPECT_EQ(names.size(), 7U * 3U + 11U + 3U);
}

} // namespace
