// Every text is read as fscanf reads it, and the stream stands at the same place then.
#include "stl/StlNumberScan.h"
#include "tests/support/SameBytes.h"
#include "tests/support/TextFile.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <string_view>

namespace {

class Text {
public:
    explicit Text(std::string_view text)
        : m_text(text)
    {}

    int peek() const { return m_at == m_text.size() ? EOF : static_cast<unsigned char>(m_text[m_at]); }
    void take() { ++m_at; }
    std::size_t position() const { return m_at; }

private:
    std::string_view m_text;
    std::size_t m_at = 0;
};

// A stream whose text can be replaced, which takes less time than a new one.
class Replaceable {
public:
    Replaceable()
        : m_stream(fmemopen(m_text, sizeof m_text, "r"))
    {}

    std::FILE *with(const std::string &text)
    {
        std::memset(m_text, endMark, sizeof m_text);
        text.copy(m_text, sizeof m_text);
        std::rewind(m_stream.get());
        return m_stream.get();
    }

    // No number goes on with this one, so that it is an end as good as that of the stream.
    static constexpr char endMark = '\x01';

private:
    char m_text[64] = {};
    Stream m_stream;
};

template <typename Number>
struct Format;
template <>
struct Format<float> {
    static int scan(std::FILE *in, float &value) { return std::fscanf(in, "%f", &value); }
};
template <>
struct Format<double> {
    static int scan(std::FILE *in, double &value) { return std::fscanf(in, "%lf", &value); }
};

template <typename Number>
bool isReadAlike(std::FILE *in, const std::string &text)
{
    Number expected = Number{7};
    const bool isNumber = Format<Number>::scan(in, expected) == 1;
    Text source(text);
    Number value = Number{7};
    while (stlIsBlank(source.peek()))
        source.take();
    const bool isRead = stlScanNumber(source, value);
    return isRead == isNumber && sameBytes(value, expected) &&
           source.position() == static_cast<std::size_t>(std::ftell(in));
}

void expectReadAlike(const std::string &text)
{
    const Stream in = streamOf(text);
    EXPECT_TRUE(isReadAlike<float>(in.get(), text)) << text << " as a float";
    std::rewind(in.get());
    EXPECT_TRUE(isReadAlike<double>(in.get(), text)) << text << " as a double";
}

constexpr double infinity = std::numeric_limits<double>::infinity();

// Independent of the C library of this machine.
TEST(StlNumberScan, WordsThatAreNoOrdinaryNumbersHaveOneMeaning)
{
    const struct {
        std::string_view text;
        bool isNumber;
        double value;
        std::string_view rest;
    } rows[] = {
        {"1e", true, 1.0, ""},
        {"1e+", true, 1.0, ""},
        {"1e-x", true, 1.0, "x"},
        {"1e+-5", true, 1.0, "-5"},
        {"1.5e3.5", true, 1500.0, ".5"},
        {"100ergs", true, 100.0, "rgs"},
        {"0x10", true, 16.0, ""},
        {"-0X1.8P1", true, -3.0, ""},
        {"0x.8p-3", true, 0.0625, ""},
        {"0x1p", true, 1.0, ""},
        {"0x1p+", true, 1.0, ""},
        {"0x1p2p", true, 4.0, "p"},
        {"0x1e2", true, 482.0, ""},
        {"0x.", true, 0.0, ""},
        {"0x.p1", true, 0.0, "p1"},
        {"0x", false, 0.0, ""},
        {"0xg", false, 0.0, "g"},
        {"1..2", true, 1.0, ".2"},
        {".", false, 0.0, ""},
        {"-.", false, 0.0, ""},
        {".e5", false, 0.0, "e5"},
        {"+", false, 0.0, ""},
        {"- 1", false, 0.0, " 1"},
        {"--1", false, 0.0, "-1"},
        {"e5", false, 0.0, "e5"},
        {"abc", false, 0.0, "abc"},
        {"", false, 0.0, ""},
        {"inf", true, infinity, ""},
        {"-Infinity", true, -infinity, ""},
        {"infx", true, infinity, "x"},
        {"infinit", false, 0.0, ""},
        {"infinitx5", false, 0.0, "5"},
        {"infi ", false, 0.0, ""},
        {"ix5", false, 0.0, "5"},
        {"n", false, 0.0, ""},
        {"nax5", false, 0.0, "5"},
        {"1e39", true, 1e39, ""},
        {"1e309", true, infinity, ""},
        {"-1e99999999999999999999", true, -infinity, ""},
        {"1e-99999999999999999999", true, 0.0, ""},
        {"0e99999999999999999999", true, 0.0, ""},
        {"0x1p1024", true, infinity, ""},
        {"0x1p-1074", true, 0x1p-1074, ""},
        {"4.9406564584124654e-324", true, 0x1p-1074, ""},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        Text source(row.text);
        double value = 7.0;
        EXPECT_EQ(stlScanNumber(source, value), row.isNumber);
        EXPECT_EQ(value, row.isNumber ? row.value : 7.0);
        EXPECT_EQ(row.text.substr(source.position()), row.rest);
    }
}

TEST(StlNumberScan, AFloatIsRoundedOnceAndHasItsOwnRange)
{
    const struct {
        std::string_view text;
        float value;
    } rows[] = {
        {"16777217.0000000000000000000001", 16777218.0F},
        {"0x1000001.00000000000000001p0", 16777218.0F},
        {"3.4028235677973367e38", static_cast<float>(infinity)},
        {"3.4028235677973366e38", std::numeric_limits<float>::max()},
        {"-1e39", -static_cast<float>(infinity)},
        {"1e-45", std::numeric_limits<float>::denorm_min()},
        {"7e-46", 0.0F},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        Text source(row.text);
        float value = 7.0F;
        EXPECT_TRUE(stlScanNumber(source, value));
        EXPECT_EQ(value, row.value);
    }
}

TEST(StlNumberScan, TheSignOfANanIsTheOneThatIsWritten)
{
    const struct {
        std::string_view text;
        bool isNegative;
        std::string_view rest;
    } rows[] = {{"nan", false, ""},           {"-NaN", true, ""},   {"+nan", false, ""},
                {"nan(abc)", false, "(abc)"}, {"nan(", false, "("}, {"-nanx", true, "x"}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        Text source(row.text);
        double value = 7.0;
        EXPECT_TRUE(stlScanNumber(source, value));
        EXPECT_TRUE(std::isnan(value));
        EXPECT_EQ(std::signbit(value), row.isNegative);
        EXPECT_EQ(row.text.substr(source.position()), row.rest);
    }
}

void expectAllReadAlike(std::string_view alphabet, std::size_t longest)
{
    Replaceable stream;
    std::string text;
    std::string wrong;
    const auto go = [&](const auto &self) -> void {
        const std::string ended = text + Replaceable::endMark;
        if (!isReadAlike<float>(stream.with(ended), ended) || !isReadAlike<double>(stream.with(ended), ended))
            wrong = text;
        if (text.size() == longest)
            return;
        for (const char c : alphabet) {
            text += c;
            self(self);
            text.pop_back();
        }
    };
    go(go);
    EXPECT_EQ(wrong, "");
}

TEST(StlNumberScan, EveryShortTextIsReadAsByFscanf)
{
    expectAllReadAlike("01.eE+-xXpafiNny( \n", 4);
    expectAllReadAlike("01.e+-", 7);
    expectAllReadAlike("0x1.ap-", 7);
    expectAllReadAlike("-infty", 6);
}

TEST(StlNumberScan, TheEndOfTheStreamEndsANumberAsForFscanf)
{
    for (const char *text : {"",     " ",  "0",   "-",    "+.",      "1",        "1.",     "1e",    "1e-",
                             "1e-5", "0x", "0x1", "0x1p", "0x1p5",   "0x.",      "n",      "na",    "nan",
                             "i",    "in", "inf", "infi", "infinit", "infinity", "\t-nan", " \n1.5"})
        expectReadAlike(text);
}

// Numbers of all lengths and sizes, some of them spoilt.
std::string anyNumber(std::mt19937 &random)
{
    const auto below = [&random](std::size_t n) { return random() % n; };
    const bool isHexadecimal = below(4) == 0;
    const auto digits = [&](std::size_t most) {
        std::string text(below(8) == 0 ? below(30) : 0, '0');
        for (std::size_t i = below(most + 1); i > 0; --i)
            text += "0123456789abcdefABCDEF"[below(isHexadecimal ? 22 : 10)];
        return text;
    };
    std::string text = below(3) == 0 ? "-" : below(3) == 0 ? "+" : "";
    text += (isHexadecimal ? (below(2) == 0 ? "0x" : "0X") : "") + digits(below(5) == 0 ? 60 : 10);
    if (below(3) != 0)
        text += "." + digits(below(5) == 0 ? 900 : 12);
    if (below(2) == 0) {
        text += isHexadecimal ? "pP"[below(2)] : "eE"[below(2)];
        text += below(3) == 0 ? "-" : below(3) == 0 ? "+" : "";
        text += std::to_string(below(below(3) == 0 ? 1100 : 50));
    }
    if (below(10) == 0)
        text.insert(below(text.size() + 1), 1, "xXpPeEfin+-., _\"'(0\x80\xFF"[below(20)]);
    return text + (below(4) == 0 ? "" : " ") + (below(2) == 0 ? "1" : "");
}

TEST(StlNumberScan, GeneratedNumbersAreReadAsByFscanf)
{
    std::mt19937 random(31415);
    for (int i = 0; i < 20000 && !HasFailure(); ++i)
        expectReadAlike(anyNumber(random));
}

TEST(StlNumberScan, OnlyWholeNumbersWithoutAPlusSignAreReadWhole)
{
    double value = 7.0;
    for (const std::string_view text :
         {"", "+1", " 1", "1 ", "1x", "1e", "0x1", "1e400", "-", ".", "inf", "nan", "nan(1)"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(stlReadWholeNumber(text, value));
        EXPECT_EQ(value, 7.0);
    }
}

} // namespace
