// Compares the number kernels with the C and the C++ library on numbers as meshes hold them. Checks first
// that all of them agree on every number, and ends with a table of ratios.

#include "stl/StlCommonFacet.h"
#include "stl/StlFixedNumber.h"
#include "stl/StlNumberText.h"

#include <benchmark/benchmark.h>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr std::size_t count = std::size_t{12} * 4096;
constexpr std::size_t textSize = stlFixedNumberRoom; // the fixed form and a blank or a terminating zero

std::vector<double> widenedFloats()
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<float> coordinate(-200.0F, 200.0F);
    std::vector<double> numbers(count);
    for (double &number : numbers)
        number = double{coordinate(random)};
    return numbers;
}

std::vector<double> transformedDoubles()
{
    std::vector<double> numbers = widenedFloats();
    for (double &number : numbers)
        number = (number + 1.25) * 2.54 - 0.3;
    return numbers;
}

std::vector<char> textsOf(const std::vector<double> &numbers)
{
    std::vector<char> texts(numbers.size() * textSize);
    for (std::size_t i = 0; i < numbers.size(); ++i)
        std::snprintf(&texts[i * textSize], textSize, "% .8E", numbers[i]);
    return texts;
}

const std::vector<double> &numbersOf(const benchmark::State &state)
{
    static const std::vector<double> floats = widenedFloats();
    static const std::vector<double> doubles = transformedDoubles();
    return state.range(0) == 0 ? floats : doubles;
}

void writeBySnprintf(benchmark::State &state)
{
    char text[64];
    for (auto _ : state) {
        for (const double number : numbersOf(state))
            benchmark::DoNotOptimize(std::snprintf(text, sizeof text, "% .8E", number));
    }
}

void writeByToChars(benchmark::State &state)
{
    char text[64];
    for (auto _ : state) {
        for (const double number : numbersOf(state))
            benchmark::DoNotOptimize(
                std::to_chars(text, text + sizeof text, number, std::chars_format::scientific, 8).ptr);
    }
}

void writeOneByKernel(benchmark::State &state)
{
    char text[textSize];
    benchmark::DoNotOptimize(&text); // as if somebody read it
    for (auto _ : state) {
        for (const double number : numbersOf(state)) {
            benchmark::DoNotOptimize(stlWriteFixedNumber(text, number));
            benchmark::ClobberMemory();
        }
    }
}

// As a facet is written: point by point.
void writeByKernel(benchmark::State &state)
{
    char text[stlCommonPointSize];
    benchmark::DoNotOptimize(&text); // as if somebody read it
    for (auto _ : state) {
        const std::vector<double> &numbers = numbersOf(state);
        for (std::size_t i = 0; i < numbers.size(); i += 3) {
            const double point[3] = {numbers[i], numbers[i + 1], numbers[i + 2]};
            benchmark::DoNotOptimize(stlWriteCommonPoint(text, point));
            benchmark::ClobberMemory();
        }
    }
}

void readBySscanf(benchmark::State &state)
{
    const std::vector<char> texts = textsOf(numbersOf(state));
    for (auto _ : state) {
        for (std::size_t at = 0; at < texts.size(); at += textSize) {
            double number = 0.0;
            benchmark::DoNotOptimize(std::sscanf(&texts[at], "%lf", &number));
            benchmark::DoNotOptimize(number);
        }
    }
}

void readByFromChars(benchmark::State &state)
{
    const std::vector<char> texts = textsOf(numbersOf(state));
    for (auto _ : state) {
        for (std::size_t at = 0; at < texts.size(); at += textSize) {
            double number = 0.0;
            const char *start = &texts[at] + (texts[at] == ' ' ? 1 : 0);
            std::from_chars(start, &texts[at] + stlFixedNumberSize, number);
            benchmark::DoNotOptimize(number);
        }
    }
}

void readByKernel(benchmark::State &state)
{
    const std::vector<char> texts = textsOf(numbersOf(state));
    for (auto _ : state) {
        for (std::size_t at = 0; at < texts.size(); at += textSize) {
            double number = 0.0;
            benchmark::DoNotOptimize(stlReadFixedNumber(&texts[at], number));
            benchmark::DoNotOptimize(number);
        }
    }
}

// Keeps the least time of each benchmark and prints ratios at the end.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            if (run.run_type != Run::RT_Iteration)
                continue;
            const double nanoseconds = run.GetAdjustedCPUTime() / static_cast<double>(count);
            double &least =
                m_nanoseconds.try_emplace(run.run_name.function_name + "/" + run.run_name.args, 1e9)
                    .first->second;
            least = nanoseconds < least ? nanoseconds : least;
        }
    }

    void printRatios() const
    {
        std::printf("| numbers | method | ns per number | kernel is faster by |\n|---|---|---|---|\n");
        for (const char *kind : {"0", "1"}) {
            printRatios(kind, "writeByKernel", {"writeBySnprintf", "writeByToChars", "writeOneByKernel"});
            printRatios(kind, "readByKernel", {"readBySscanf", "readByFromChars"});
        }
    }

private:
    double of(const std::string &name, const char *kind) const { return m_nanoseconds.at(name + "/" + kind); }

    void printRatios(const char *kind, const char *kernel, const std::vector<std::string> &others) const
    {
        const char *numbers = *kind == '0' ? "floats, widened" : "doubles, transformed";
        std::printf("| %s | %s | %.2f | |\n", numbers, kernel, of(kernel, kind));
        for (const std::string &other : others)
            std::printf("| %s | %s | %.2f | %.1f |\n", numbers, other.c_str(), of(other, kind),
                        of(other, kind) / of(kernel, kind));
    }

    std::map<std::string, double> m_nanoseconds;
};

// Counts the numbers that the kernels decline. Ends the program if a kernel writes or reads anything but what
// the C library does.
int declinedAmong(const std::vector<double> &numbers)
{
    int declined = 0;
    for (const double number : numbers) {
        char expected[textSize];
        std::snprintf(expected, sizeof expected, "% .8E", number);
        char text[textSize] = {};
        if (!stlWriteFixedNumber(text, number)) {
            ++declined;
            continue;
        }
        double read = 0.0;
        double expectedRead = 0.0;
        std::sscanf(expected, "%lf", &expectedRead);
        if (std::string(text, stlFixedNumberSize) != expected ||
            (stlReadFixedNumber(text, read) && read != expectedRead)) {
            std::printf("the kernels disagree with the C library about %a\n", number);
            std::exit(EXIT_FAILURE);
        }
    }
    return declined;
}

} // namespace

int main(int argc, char **argv)
{
    std::printf("Nanoseconds of processor time, least of 5 repetitions. The writing kernel declines %d of "
                "%zu widened "
                "floats and %d of %zu transformed doubles.\n\n",
                declinedAmong(widenedFloats()), count, declinedAmong(transformedDoubles()), count);
    const struct {
        const char *name;
        void (*function)(benchmark::State &);
    } benchmarks[] = {{"writeBySnprintf", writeBySnprintf},   {"writeByToChars", writeByToChars},
                      {"writeOneByKernel", writeOneByKernel}, {"writeByKernel", writeByKernel},
                      {"readBySscanf", readBySscanf},         {"readByFromChars", readByFromChars},
                      {"readByKernel", readByKernel}};
    for (const auto &entry : benchmarks)
        benchmark::RegisterBenchmark(entry.name, entry.function)
            ->Arg(0)
            ->Arg(1)
            ->Repetitions(5)
            ->MinTime(0.1);
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    benchmark::Shutdown();
    return EXIT_SUCCESS;
}
