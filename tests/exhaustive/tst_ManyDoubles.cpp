// A billion doubles of many kinds through the writing kernel, against std::to_chars; every hundredth against
// the C library instead. Takes about three minutes on one core.
//
//   tst_ManyDoubles [millions of doubles]

#include "stl/StlFixedNumber.h"
#include "stl/StlNumberText.h"

#include <charconv>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string_view>

namespace {

double doubleOf(std::uint64_t bits)
{
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

class Comparison {
public:
    void run(double value)
    {
        char text[stlMaxNumberText];
        const auto length = static_cast<std::size_t>(stlWriteBlankSigned(text, value) - text);
        const std::string_view written(text, length);
        if (!std::isfinite(value) || ++m_count % 100 == 0) {
            checkAgainstPrintf(written, value, "% .8E");
            char padded[stlMaxNumberText];
            checkAgainstPrintf({padded, static_cast<std::size_t>(stlWritePadded(padded, value) - padded)},
                               value, "%15.8E");
        } else {
            checkAgainstToChars(written, value);
        }
        char fixed[stlFixedNumberRoom];
        m_declined += static_cast<std::uint64_t>(!stlWriteFixedNumber(fixed, value));
    }

    std::uint64_t count() const { return m_count; }

    bool report() const
    {
        std::printf("%" PRIu64 " doubles, %" PRIu64 " of them against the C library, %" PRIu64
                    " mismatches; the kernel left %" PRIu64 " to the exact writer\n",
                    m_count, m_againstPrintf, m_mismatches, m_declined);
        return m_mismatches == 0 && m_count > 0;
    }

private:
    void checkAgainstPrintf(std::string_view written, double value, const char *format)
    {
        char expected[64];
        const int length = format[1] == ' ' ? std::snprintf(expected, sizeof expected, "% .8E", value)
                                            : std::snprintf(expected, sizeof expected, "%15.8E", value);
        ++m_againstPrintf;
        check(written, {expected, static_cast<std::size_t>(length)}, value);
    }

    void checkAgainstToChars(std::string_view written, double value)
    {
        char expected[64];
        char *start = expected;
        if (!std::signbit(value))
            *start++ = ' ';
        char *end =
            std::to_chars(start, expected + sizeof expected, value, std::chars_format::scientific, 8).ptr;
        *std::strchr(expected, 'e') = 'E';
        check(written, {expected, static_cast<std::size_t>(end - expected)}, value);
    }

    void check(std::string_view written, std::string_view expected, double value)
    {
        if (written != expected && ++m_mismatches <= 20)
            std::printf("%a is written %.*s, not %.*s\n", value, static_cast<int>(written.size()),
                        written.data(), static_cast<int>(expected.size()), expected.data());
    }

    std::uint64_t m_count = 0;
    std::uint64_t m_againstPrintf = 0;
    std::uint64_t m_mismatches = 0;
    std::uint64_t m_declined = 0;
};

void withNeighbours(Comparison &comparison, double value)
{
    double below = value;
    double above = value;
    comparison.run(value);
    comparison.run(-value);
    for (int i = 0; i < 50; ++i) {
        below = std::nextafter(below, 0.0);
        above = std::nextafter(above, INFINITY);
        comparison.run(below);
        comparison.run(above);
    }
}

// All powers of ten and of two, including subnormal ones, and the special values.
void runPowers(Comparison &comparison)
{
    for (int exponent = -323; exponent <= 308; ++exponent)
        withNeighbours(comparison, std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr));
    for (int exponent = -1074; exponent <= 1023; ++exponent)
        withNeighbours(comparison, std::ldexp(1.0, exponent));
    for (const double value : {0.0, -0.0, static_cast<double>(INFINITY), -static_cast<double>(INFINITY),
                               static_cast<double>(NAN), -static_cast<double>(NAN)})
        comparison.run(value);
}

// Ties: numbers whose decimal expansion ends with a five in the tenth place.
void runTies(Comparison &comparison, std::mt19937_64 &random, std::uint64_t count)
{
    std::uniform_int_distribution<std::uint64_t> digits(100000000, 999999999);
    for (std::uint64_t i = 0; i < count; ++i) {
        const double tenDigits = static_cast<double>(digits(random) * 10 + 5);
        comparison.run(tenDigits);
        comparison.run(tenDigits * 10.0);
        comparison.run(tenDigits * 1000.0);
        comparison.run(tenDigits / 2.0);
        comparison.run(tenDigits / 1024.0);
        const std::uint64_t whole = digits(random) / 100;
        const double eighths = static_cast<double>(whole) + 0.125 * static_cast<double>(random() % 8);
        withNeighbours(comparison, eighths);
    }
}

} // namespace

int main(int argc, char **argv)
{
    const std::uint64_t wanted = 1000000 * (argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1000);
    std::mt19937_64 random(4711);
    Comparison comparison;
    runPowers(comparison);
    runTies(comparison, random, wanted / 1000);
    std::uniform_real_distribution<double> ordinary(-1000.0, 1000.0);
    std::uniform_real_distribution<float> coordinates(-200.0F, 200.0F);
    std::uniform_int_distribution<int> exponents(-140, 140);
    while (comparison.count() < wanted) {
        comparison.run(doubleOf(random()));
        comparison.run(ordinary(random));
        comparison.run((double{coordinates(random)} + 1.25) * 2.54 - 0.3);
        comparison.run(std::ldexp(ordinary(random), exponents(random)));
    }
    return comparison.report() ? EXIT_SUCCESS : EXIT_FAILURE;
}
