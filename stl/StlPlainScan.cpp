#include "stl/StlPlainScan.h"

#include "stl/StlExactDecimal.h"
#include "stl/StlFixedNumber.h"
#include "stl/StlNumberScan.h"

namespace {

// A number as "%f" takes it: digits with a point before, between or after them, and an exponent.
struct Decimal {
    std::uint64_t digits = 0;
    int count = 0;    // of significant digits
    int exponent = 0; // of the last digit
    bool negative = false;
};

constexpr int mostDigits = 15; // below 2^53, so a double holds them exactly
constexpr int mostExponentDigits = 4;

class DecimalScan {
public:
    DecimalScan(const char *at, const char *end)
        : m_at(at),
          m_end(end)
    {}

    // True for a decimal number of any length; position() is then right after it.
    bool run(Decimal &decimal)
    {
        readSign(decimal);
        const char *start = m_at;
        readDigits(decimal, false);
        auto digits = m_at - start;
        if (m_at != m_end && *m_at == '.') {
            ++m_at;
            start = m_at;
            readDigits(decimal, true);
            digits += m_at - start;
        }
        if (digits == 0)
            return false;
        return m_at == m_end || (*m_at != 'e' && *m_at != 'E') || readExponent(decimal);
    }

    const char *position() const { return m_at; }

private:
    void readSign(Decimal &decimal)
    {
        if (m_at != m_end && (*m_at == '-' || *m_at == '+')) {
            decimal.negative = *m_at == '-';
            ++m_at;
        }
    }

    void readDigits(Decimal &decimal, bool afterPoint)
    {
        for (; m_at != m_end && stlIsDigit(*m_at); ++m_at) {
            const auto digit = static_cast<unsigned>(*m_at - '0');
            if (decimal.count != 0 || digit != 0)
                ++decimal.count;
            if (decimal.count <= mostDigits)
                decimal.digits = decimal.digits * 10 + digit;
            if (afterPoint)
                --decimal.exponent;
        }
    }

    bool readExponent(Decimal &decimal)
    {
        ++m_at;
        Decimal exponent;
        readSign(exponent);
        const char *start = m_at;
        readDigits(exponent, false);
        if (m_at == start || exponent.count > mostExponentDigits)
            return false;
        const int magnitude = static_cast<int>(exponent.digits);
        decimal.exponent += exponent.negative ? -magnitude : magnitude;
        return true;
    }

    const char *m_at;
    const char *m_end;
};

} // namespace

void StlPlainScanner::skipBlanks()
{
    while (m_at != m_end && stlIsBlank(*m_at))
        ++m_at;
}

bool StlPlainScanner::skipWord()
{
    skipBlanks();
    const char *start = m_at;
    while (m_at != m_end && !stlIsBlank(*m_at))
        ++m_at;
    return m_at != start && m_at != m_end;
}

bool StlPlainScanner::readFloat(float &value)
{
    const char *blanks = m_at;
    skipBlanks();
    // The fixed form has a blank in place of a plus sign.
    const bool signIsBlank = m_at != blanks && m_at[-1] == ' ' && m_at != m_end && *m_at != '-';
    if (signIsBlank)
        --m_at;
    if (readFixedFloat(value))
        return true;
    if (signIsBlank)
        ++m_at;
    return readDecimalFloat(value);
}

bool StlPlainScanner::readFixedFloat(float &value)
{
    double exact = 0.0;
    if (m_end - m_at <= stlFixedNumberSize || !stlIsBlank(m_at[stlFixedNumberSize]) ||
        !stlReadFixedNumber(m_at, exact) || !stlRoundToFloat(exact, value))
        return false;
    m_at += stlFixedNumberSize;
    return true;
}

bool StlPlainScanner::readDecimalFloat(float &value)
{
    Decimal decimal;
    DecimalScan scan(m_at, m_end);
    const bool isDecimal = scan.run(decimal);
    if (!isDecimal || scan.position() == m_end || !stlIsBlank(*scan.position()))
        return false;
    const char *start = *m_at == '+' ? m_at + 1 : m_at; // from_chars knows no plus sign
    m_at = scan.position();

    double exact = 0.0;
    if (decimal.count <= mostDigits && stlScaleExactly(decimal.digits, decimal.exponent, exact) &&
        stlRoundToFloat(decimal.negative ? -exact : exact, value))
        return true;
    return stlReadWholeNumber({start, static_cast<std::size_t>(m_at - start)}, value);
}
