// Sines and cosines of angles of all sizes against MPFR. A million take about twenty seconds of one core.
//
//   tst_ManyAngles [thousands of angles]

#include "stl/ExactTrigonometry.h"
#include "tests/support/SameBytes.h"

#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mpfr.h>
#include <random>

namespace {

class Comparison {
public:
    Comparison()
    {
        mpfr_init2(m_angle, 53);
        mpfr_init2(m_result, 53);
    }
    ~Comparison()
    {
        mpfr_clear(m_angle);
        mpfr_clear(m_result);
    }
    Comparison(const Comparison &) = delete;
    Comparison &operator=(const Comparison &) = delete;

    void run(double angle)
    {
        if (!std::isfinite(angle))
            return;
        const SineAndCosine computed = exactSineAndCosine(angle);
        mpfr_set_d(m_angle, angle, MPFR_RNDN);
        mpfr_sin(m_result, m_angle, MPFR_RNDN);
        check("sine", angle, computed.sine, mpfr_get_d(m_result, MPFR_RNDN));
        mpfr_cos(m_result, m_angle, MPFR_RNDN);
        check("cosine", angle, computed.cosine, mpfr_get_d(m_result, MPFR_RNDN));
        ++m_count;
    }

    std::uint64_t count() const { return m_count; }

    bool report() const
    {
        std::printf("%" PRIu64 " angles, %" PRIu64 " mismatches\n", m_count, m_mismatches);
        return m_mismatches == 0 && m_count > 0;
    }

private:
    void check(const char *what, double angle, double computed, double expected)
    {
        if (!sameBytes(computed, expected) && ++m_mismatches <= 20)
            std::printf("the %s of %a is %a, not %a\n", what, angle, computed, expected);
    }

    mpfr_t m_angle;
    mpfr_t m_result;
    std::uint64_t m_count = 0;
    std::uint64_t m_mismatches = 0;
};

double doubleOf(std::uint64_t bits)
{
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

} // namespace

int main(int argc, char **argv)
{
    constexpr double radiansPerDegree = 0.017453293;
    const std::uint64_t wanted = 1000 * (argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1000);
    std::mt19937_64 random(4711);
    std::uniform_real_distribution<double> anyDegrees(-720.0, 720.0);
    std::uniform_int_distribution<int> thousandths(-1000000, 1000000);
    std::uniform_int_distribution<int> exponents(-30, 1023);
    Comparison comparison;
    while (comparison.count() < wanted) {
        comparison.run(doubleOf(random()));
        comparison.run(anyDegrees(random) * radiansPerDegree);
        comparison.run(thousandths(random) / 1000.0 * radiansPerDegree);
        comparison.run(std::ldexp(anyDegrees(random) / 720.0, exponents(random)));
    }
    return comparison.report() ? EXIT_SUCCESS : EXIT_FAILURE;
}
