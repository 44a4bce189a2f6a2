// Every text is read as fscanf reads it, and the stream stands at the same place then.
#include "stl/StlNumberScan.h"
#include "tests/stl/ScannedText.h"
#include "tests/support/SameBytes.h"
#include "tests/support/TextFile.h"

#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>

namespace {

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
    ScannedText source(text);
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

TEST(StlNumberScanAgainstFscanf, EveryShortTextIsReadAsByFscanf)
{
    expectAllReadAlike("01.eE+-xXpafiNny( \n", 4);
    expectAllReadAlike("01.e+-", 7);
    expectAllReadAlike("0x1.ap-", 7);
    expectAllReadAlike("-infty", 6);
}

TEST(StlNumberScanAgainstFscanf, TheEndOfTheStreamEndsANumberAsForFscanf)
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

TEST(StlNumberScanAgainstFscanf, GeneratedNumbersAreReadAsByFscanf)
{
    std::mt19937 random(31415);
    for (int i = 0; i < 20000 && !HasFailure(); ++i)
        expectReadAlike(anyNumber(random));
}

} // namespace
