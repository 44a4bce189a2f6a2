// All floats through the number kernels, against the C library: written by both conversions, and the text
// read back. Takes about half an hour on one core.
//
//   tst_AllFloats [first [end [step]]]     bit patterns; all from 0 to 4294967295 if not given

#include "stl/StlFixedNumber.h"
#include "stl/StlNumberText.h"
#include "tests/support/SameBytes.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

float floatOf(std::uint32_t bits)
{
    float value = 0.0F;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

class Comparison {
public:
    void run(std::uint32_t bits)
    {
        const double value{floatOf(bits)};
        char expected[64];
        const auto length =
            static_cast<std::size_t>(std::snprintf(expected, sizeof expected, "% .8E", value));
        expect(bits, {expected, length}, stlWriteBlankSigned);
        char fixed[stlFixedNumberRoom];
        m_declinedWriting += static_cast<std::uint64_t>(!stlWriteFixedNumber(fixed, value));

        expectPadded(bits, value, {expected, length});
        readBack(bits, expected, length);
        ++m_count;
    }

    bool report() const
    {
        std::printf("%" PRIu64 " floats, %" PRIu64 " mismatches; the kernels left %" PRIu64
                    " to the exact writer and %" PRIu64 " to the exact reader\n",
                    m_count, m_mismatches, m_declinedWriting, m_declinedReading);
        return m_mismatches == 0 && m_count > 0;
    }

private:
    void expect(std::uint32_t bits, std::string_view expected, char *(*write)(char *, double))
    {
        char text[stlMaxNumberText];
        const char *end = write(text, double{floatOf(bits)});
        if (std::string_view(text, static_cast<std::size_t>(end - text)) != expected)
            mismatch(bits, "written");
    }

    // Both conversions give the same text if it has the size of the fixed form. For the others, infinities
    // and NaN, the C library is asked again.
    void expectPadded(std::uint32_t bits, double value, std::string_view blankSigned)
    {
        char expected[64];
        std::string_view text = blankSigned;
        if (blankSigned.size() != stlFixedNumberSize)
            text = {expected,
                    static_cast<std::size_t>(std::snprintf(expected, sizeof expected, "%15.8E", value))};
        expect(bits, text, stlWritePadded);
    }

    void readBack(std::uint32_t bits, const char *text, std::size_t length)
    {
        const std::size_t blank = text[0] == ' ' ? 1 : 0;
        double expected = 0.0;
        double read = 0.0;
        const bool expectedRead = std::sscanf(text, "%lf", &expected) == 1;
        if (stlReadNumber({text + blank, length - blank}, read) != expectedRead || !sameBytes(read, expected))
            mismatch(bits, "read");
        double fixed = 0.0;
        if (length != stlFixedNumberSize || !stlReadFixedNumber(text, fixed))
            ++m_declinedReading;
        else if (!sameBytes(fixed, expected))
            mismatch(bits, "read in the fixed form");
    }

    void mismatch(std::uint32_t bits, const char *what)
    {
        if (++m_mismatches <= 20)
            std::printf("float 0x%08" PRIX32 " is not %s as by the C library\n", bits, what);
    }

    std::uint64_t m_count = 0;
    std::uint64_t m_mismatches = 0;
    std::uint64_t m_declinedWriting = 0;
    std::uint64_t m_declinedReading = 0;
};

} // namespace

int main(int argc, char **argv)
{
    constexpr std::uint64_t all = std::uint64_t{1} << 32U;
    const std::uint64_t first = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 0;
    const std::uint64_t end = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : all;
    const std::uint64_t step = argc > 3 ? std::strtoull(argv[3], nullptr, 10) : 1;
    Comparison comparison;
    for (std::uint64_t bits = first; bits < end && bits < all && step > 0; bits += step)
        comparison.run(static_cast<std::uint32_t>(bits));
    return comparison.report() ? EXIT_SUCCESS : EXIT_FAILURE;
}
