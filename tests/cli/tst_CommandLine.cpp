#include "cli/CommandLine.h"
#include "cli/Complaints.h"

#include <gtest/gtest.h>

namespace {

using Arguments = std::vector<std::string>;

RunRequest run(Arguments arguments)
{
    arguments.insert(arguments.end(), {"in.stl", "out.stl"});
    const CommandLine line = readCommandLine(arguments);
    EXPECT_EQ(line.kind, CommandLine::Kind::run);
    EXPECT_EQ(line.run.input, "in.stl");
    EXPECT_EQ(line.run.output, "out.stl");
    return line.run;
}

std::string complaintOf(const Arguments &arguments)
{
    try {
        readCommandLine(arguments);
    } catch (const WrongUse &wrong) {
        return wrong.what();
    }
    return {};
}

std::string complaintOfRun(Arguments arguments)
{
    arguments.insert(arguments.end(), {"in.stl", "out.stl"});
    return complaintOf(arguments);
}

TEST(CommandLine, WithoutOptionsAsksForAPlainRun)
{
    const RunRequest request = run({});
    for (const AxisValues &axis : request.values) {
        EXPECT_FALSE(axis.scale || axis.offsetBefore || axis.offsetAfter || axis.length || axis.lengthOf ||
                     axis.angle || axis.originToZero);
    }
    EXPECT_EQ(request.repeatedLog + request.log + request.temporaryFolder, "");
    EXPECT_FALSE(request.keepTemporary || request.allowDegenerate || request.force || request.quiet);
    EXPECT_EQ(request.report, Report::none);
}

TEST(CommandLine, TakesTheNumbersOfEachAxis)
{
    const struct {
        const char *option;
        std::optional<double> AxisValues::*value;
    } options[] = {{"--?-scale", &AxisValues::scale},
                   {"--?-offset-before", &AxisValues::offsetBefore},
                   {"--?-offset-after", &AxisValues::offsetAfter},
                   {"--?-length", &AxisValues::length},
                   {"--rotate-?", &AxisValues::angle}};
    for (const auto &option : options) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            std::string name = option.option;
            name[name.find('?')] = axisLetters[axis];
            for (const Arguments &arguments : {Arguments{name, "25.4"}, Arguments{name + "=25.4"}}) {
                const RunRequest request = run(arguments);
                for (std::size_t other = 0; other < 3; ++other) {
                    const std::optional<double> value = request.values[other].*option.value;
                    EXPECT_EQ(value, other == axis ? std::optional<double>(25.4) : std::nullopt) << name;
                }
            }
        }
    }
}

TEST(CommandLine, ANegativeNumberIsNoOption)
{
    EXPECT_EQ(run({"--x-offset-after", "-5"}).values[0].offsetAfter, -5.0);
    EXPECT_EQ(run({"--rotate-y", "-.5"}).values[1].angle, -0.5);
}

TEST(CommandLine, TakesTheAxisWhoseLengthIsTaken)
{
    EXPECT_EQ(run({"--x-length-of", "y"}).values[0].lengthOf, 1);
    EXPECT_EQ(run({"--y-length-of", "x"}).values[1].lengthOf, 0);
    EXPECT_EQ(run({"--z-length-of", "y"}).values[2].lengthOf, 1);
}

TEST(CommandLine, TakesTheOtherOptions)
{
    EXPECT_TRUE(run({"--z-origin-to-zero"}).values[2].originToZero);
    EXPECT_EQ(run({"--repeat", "a"}).repeatedLog, "a");
    EXPECT_EQ(run({"--log", "b"}).log, "b");
    EXPECT_EQ(run({"--temporary-folder", "c"}).temporaryFolder, "c");
    EXPECT_TRUE(run({"--keep-temporary"}).keepTemporary);
    EXPECT_TRUE(run({"--allow-degenerate"}).allowDegenerate);
    EXPECT_TRUE(run({"--force"}).force);
    EXPECT_TRUE(run({"-f"}).force);
    EXPECT_TRUE(run({"-fq"}).quiet);
    EXPECT_EQ(run({"--summary"}).report, Report::line);
    EXPECT_EQ(run({"--json"}).report, Report::json);
    EXPECT_EQ(run({"--summary", "--json"}).report, Report::json);
    EXPECT_EQ(readCommandLine({"-h"}).kind, CommandLine::Kind::help);
    EXPECT_EQ(readCommandLine({"--version"}).kind, CommandLine::Kind::version);
}

TEST(CommandLine, OfAnOptionGivenTwiceTheLastValueCounts)
{
    EXPECT_EQ(run({"--x-scale", "2", "--x-scale", "3"}).values[0].scale, 3.0);
    EXPECT_NE(complaintOfRun({"--x-scale", "two", "--x-scale", "3"}), "");
}

TEST(CommandLine, NamesKeepTheirBytes)
{
    const std::string input = "one\ntwo k\xC3\xB6rper \xE7\xAB\x8B \xFF\xFE.stl";
    const CommandLine line = readCommandLine({"--log", "\xE4.log", input, "--", "-out.stl"});
    EXPECT_EQ(line.run.input, input);
    EXPECT_EQ(line.run.output, "-out.stl");
    EXPECT_EQ(line.run.log, "\xE4.log");
}

TEST(CommandLine, InfoTakesAnyNumberOfFiles)
{
    const CommandLine line = readCommandLine({"info", "--json", "a", "info", "c"});
    EXPECT_EQ(line.kind, CommandLine::Kind::info);
    EXPECT_EQ(line.info.files, (Arguments{"a", "info", "c"}));
    EXPECT_TRUE(line.info.json);
    EXPECT_FALSE(readCommandLine({"info", "a"}).info.json);
}

TEST(CommandLine, RefusesWithOptionValueAndWhatWouldBeRight)
{
    const struct {
        Arguments arguments;
        const char *complaint;
    } rows[] = {
        {{"--x-scale", "1,5"}, "--x-scale: \"1,5\" is not a number that can be used; write 25.4, -3 or 1e-3"},
        {{"--y-offset-before", "abc"},
         "--y-offset-before: \"abc\" is not a number that can be used; write 25.4, -3 or 1e-3"},
        {{"--z-offset-after", ""},
         "--z-offset-after: \"\" is not a number that can be used; write 25.4, -3 or 1e-3"},
        {{"--rotate-x", "90deg"},
         "--rotate-x: \"90deg\" is not a number that can be used; write 25.4, -3 or 1e-3"},
        {{"--x-length=inf"}, "--x-length: \"inf\" is not a number that can be used; write 25.4, -3 or 1e-3"},
        {{"--x-scale", "0"}, "--x-scale: \"0\" would make the mesh flat; write a number other than 0"},
        {{"--z-scale", "-0.0"}, "--z-scale: \"-0.0\" would make the mesh flat; write a number other than 0"},
        {{"--y-length", "-1"}, "--y-length: \"-1\" is negative; write a length of 0 or more"},
        {{"--x-length-of", "x"}, "--x-length-of: \"x\" is not another axis; write y or z"},
        {{"--y-length-of", "Z"}, "--y-length-of: \"Z\" is not another axis; write x or z"},
        {{"--z-length-of", ""}, "--z-length-of: \"\" is not another axis; write x or y"},
        {{"--z-length-of", "xy"}, "--z-length-of: \"xy\" is not another axis; write x or y"},
        {{"--log", ""}, "--log: \"\" names nothing; write the name of a file"},
        {{"--repeat="}, "--repeat: \"\" names nothing; write the name of a file"},
        {{"--temporary-folder", ""}, "--temporary-folder: \"\" names nothing; write the name of a folder"},
        {{"--x-scale", "2", "--x-length", "3"},
         "--x-scale and --x-length exclude each other; give one of them"},
        {{"--x-scale", "2", "--x-length-of", "y"},
         "--x-scale and --x-length-of exclude each other; give one of them"},
        {{"--z-length", "2", "--z-length-of", "y"},
         "--z-length and --z-length-of exclude each other; give one of them"},
        {{"--y-offset-before", "2", "--y-origin-to-zero"},
         "--y-offset-before and --y-origin-to-zero exclude each other; give one of them"},
        {{"--force=yes"}, "Unexpected value after '--force'. See meshvane-cli --help."},
        {{"--scale", "2"}, "Unknown option 'scale'. See meshvane-cli --help."},
        {{"--x-scal", "2"}, "Unknown option 'x-scal'. See meshvane-cli --help."},
        {{"-x"}, "Unknown option 'x'. See meshvane-cli --help."},
        {{"third.stl"}, "give one INPUT and one OUTPUT; see meshvane-cli --help"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(complaintOfRun(row.arguments), row.complaint);
}

TEST(CommandLine, RefusesTooFewNames)
{
    const char *const complaint = "give one INPUT and one OUTPUT; see meshvane-cli --help";
    EXPECT_EQ(complaintOf({}), complaint);
    EXPECT_EQ(complaintOf({"in.stl"}), complaint);
    EXPECT_EQ(complaintOf({"in.stl", ""}), complaint);
    EXPECT_EQ(complaintOf({"", "out.stl"}), complaint);
    EXPECT_EQ(complaintOf({"info"}), "info: give at least one FILE; see meshvane-cli --help");
    EXPECT_EQ(complaintOf({"in.stl", "out.stl", "--log"}),
              "Missing value after '--log'. See meshvane-cli --help.");
}

TEST(CommandLine, InfoRefusesTheOptionsOfARun)
{
    for (const CliOption &option : cliOptions()) {
        for (const std::string &name : namesOf(option)) {
            Arguments arguments{"info", "in.stl", "--" + name};
            if (option.kind != ValueKind::none)
                arguments.emplace_back("1");
            EXPECT_EQ(complaintOf(arguments),
                      option.usedBy == UsedBy::run
                          ? "--" + name + " means nothing to info; see meshvane-cli --help"
                          : "");
        }
    }
}

} // namespace
