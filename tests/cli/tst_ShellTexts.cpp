#include "cli/OptionTable.h"
#include "cli/ShellTexts.h"

#include <gtest/gtest.h>

namespace {

bool holds(const std::string &text, const std::string &part) { return text.find(part) != std::string::npos; }

TEST(ShellTexts, KnowEveryOptionUnderEachOfItsNames)
{
    for (const CliOption &option : cliOptions()) {
        for (const std::string &name : namesOf(option)) {
            EXPECT_TRUE(holds(bashCompletion(), " --" + name) || holds(bashCompletion(), "'--" + name))
                << name;
            EXPECT_TRUE(holds(zshCompletion(), "--" + name)) << name;
            EXPECT_TRUE(holds(fishCompletion(), "-l " + name + " ")) << name;
            std::string escaped = "\\-\\-";
            for (const char character : name)
                escaped += character == '-' ? std::string("\\-") : std::string(1, character);
            EXPECT_TRUE(holds(manualOptions(), escaped)) << name;
        }
        EXPECT_TRUE(holds(zshCompletion(), option.brief)) << option.brief;
        EXPECT_TRUE(holds(fishCompletion(), option.brief)) << option.brief;
        EXPECT_TRUE(holds(manualOptions(), option.manual)) << option.manual;
    }
}

// They stand between quotes and brackets in the files of the shells.
TEST(ShellTexts, BriefsHaveNoCharactersWithAMeaning)
{
    for (const CliOption &option : cliOptions())
        EXPECT_EQ(std::string(option.brief).find_first_of("'\"[]:\\$`{}\n"), std::string::npos)
            << option.brief;
}

TEST(ShellTexts, ThePageTakesVersionAndOptions)
{
    EXPECT_EQ(manualPage("v@VERSION@\n@OPTIONS@\nend"), "v" MESHVANE_VERSION "\n" + manualOptions() + "end");
    EXPECT_THROW(manualPage("v@VERSION@\n"), std::runtime_error);
}

} // namespace
