#include "tests/bytes/ByteInputs.h"

#include <iterator>

namespace {

// A linear congruential generator, of which the upper half is used. No expression draws more than one number
// from it, since compilers differ in which operand they evaluate first.
class Numbers {
public:
    explicit Numbers(std::uint64_t seed)
        : m_state(seed)
    {}

    std::uint32_t next()
    {
        m_state = m_state * 6364136223846793005U + 1442695040888963407U;
        return static_cast<std::uint32_t>(m_state >> 32U);
    }
    std::uint32_t below(std::uint32_t n) { return next() % n; }

    // 0, 1, 2 and so on, so that no entry of a list is left out.
    std::size_t inTurn() { return m_turns++; }

private:
    std::uint64_t m_state;
    std::size_t m_turns = 0;
};

template <typename Entry, std::uint32_t size>
constexpr std::uint32_t sizeOf(const Entry (&)[size])
{
    return size;
}

// ------------------------------------------------------------------------------------------- binary files

using Bits = std::uint32_t (*)(Numbers &, int number);

constexpr std::uint32_t minusSign = 0x80000000U;

// n / 128 with |n| up to 2^20
std::uint32_t ordinaryBits(Numbers &numbers, int)
{
    std::uint32_t mantissa = 1U + numbers.below(1U << 20U);
    std::uint32_t exponent = 127U + 23U - 7U;
    for (; mantissa < (1U << 23U); mantissa <<= 1U)
        --exponent;
    return (numbers.below(2) != 0 ? minusSign : 0U) | exponent << 23U | (mantissa & 0x7FFFFFU);
}

std::uint32_t anyBits(Numbers &numbers, int) { return numbers.next(); }

std::uint32_t finiteBits(Numbers &numbers, int)
{
    const std::uint32_t signAndFraction = numbers.next() & 0x807FFFFFU;
    return signAndFraction | numbers.below(255) << 23U;
}

// Close to the ends of what a float can hold.
std::uint32_t specialBits(Numbers &numbers, int)
{
    constexpr std::uint32_t bits[] = {0x00000000U, 0x3F800000U, 0x7F800000U, 0x7FC00000U, 0x7F800001U,
                                      0x00000001U, 0x007FFFFFU, 0x00800000U, 0x7F7FFFFFU, 0x3DCCCCCDU};
    const std::uint32_t value = bits[numbers.below(sizeOf(bits))];
    return numbers.below(2) != 0 ? value | minusSign : value;
}

// Every y is -2.
std::uint32_t flatBits(Numbers &numbers, int number)
{
    return number % 3 == 1 ? 0xC0000000U : ordinaryBits(numbers, number);
}

// Whole numbers from -3 to 3, so that corners come back.
std::uint32_t gridBits(Numbers &numbers, int)
{
    constexpr std::uint32_t bits[] = {0xC0400000U, 0xC0000000U, 0xBF800000U, 0x00000000U,
                                      0x3F800000U, 0x40000000U, 0x40400000U};
    return bits[numbers.below(sizeOf(bits))];
}

void append(std::string &bytes, std::uint32_t number)
{
    for (unsigned shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(static_cast<unsigned char>(number >> shift & 0xFFU));
}

std::string binaryFile(std::uint64_t seed, Bits bits)
{
    constexpr std::uint32_t facets = 40;
    Numbers numbers(seed);
    std::string bytes(80, ' ');
    append(bytes, facets);
    for (std::uint32_t facet = 0; facet < facets; ++facet) {
        for (int number = 0; number < 12; ++number)
            append(bytes, bits(numbers, number));
        bytes += "\xFF\xFF"; // marks the file as a binary one
    }
    return bytes;
}

// -------------------------------------------------------------------------------------------- ASCII files

using Word = std::string (*)(Numbers &);

std::string digits(Numbers &numbers, std::uint32_t count)
{
    std::string text;
    for (; count > 0; --count)
        text += static_cast<char>('0' + numbers.below(10));
    return text;
}

std::string oneOf(Numbers &numbers, const char *first, const char *second)
{
    return numbers.below(2) != 0 ? first : second;
}

std::string plainWord(Numbers &numbers)
{
    std::string text = oneOf(numbers, "-", "");
    text += std::to_string(numbers.below(1000)) + ".";
    return text + digits(numbers, 3);
}

std::string fixedWord(Numbers &numbers)
{
    std::string text = oneOf(numbers, "-", " ");
    text += std::to_string(1 + numbers.below(9)) + ".";
    text += digits(numbers, 8);
    text += oneOf(numbers, "E+0", "E-0");
    return text + digits(numbers, 1);
}

std::string longWord(Numbers &numbers)
{
    std::string text = oneOf(numbers, "-", "+");
    text += digits(numbers, 1 + numbers.below(30)) + ".";
    text += digits(numbers, numbers.below(60)) + "e-";
    return text + std::to_string(numbers.below(40));
}

// Beyond what a float can hold, too.
std::string wideWord(Numbers &numbers)
{
    std::string text = digits(numbers, 1 + numbers.below(17));
    text += oneOf(numbers, "e", "E-");
    const std::uint32_t largest = numbers.below(4) != 0 ? 38 : 330;
    return text + std::to_string(numbers.below(largest));
}

std::string oddWord(Numbers &numbers)
{
    static const char *const words[] = {
        "1e",
        "1e+",
        "1e-x",
        "0x10",
        "0x1p4",
        "-0x1.8p-1",
        "0x1p",
        "0x1p+",
        "0x.",
        "0x.p1",
        "0x",
        "0xg",
        "0x1.fffffffp3",
        "inf",
        "-inf",
        "infinity",
        "-INF",
        "infinit",
        "infx",
        "nan",
        "-nan",
        "NaN(1)",
        "nan(",
        "nanx",
        "nax",
        "n",
        "i",
        ".",
        "-.",
        ".5",
        "5.",
        "+",
        "-",
        "--1",
        "1.5abc",
        "1,5",
        "1..2",
        "1e39",
        "-1e400",
        "1e-46",
        "1e-400",
        "1e-40",
        "16777217",
        "007",
        "1e0000000005",
        "0e999999",
        "abc",
        "1_0",
        "1d5",
        "1.5e3.5",
        "0x1p-149",
        "0x1p-150",
        "0x1p128",
        "+nan",
        "+inf",
        "-0",
        "1e+-5",
        "0X1P1",
        "0x1.8",
        "4.9406564584124654e-324",
        "2.2250738585072011e-308",
    };
    return numbers.below(3) != 0 ? plainWord(numbers) : words[numbers.inTurn() % std::size(words)];
}

// Gaps between words, of which the last three are rare.
std::string gap(Numbers &numbers)
{
    static const char *const gaps[] = {" ", "  ", "\t", "\n", " \v", "\r\n", "\n\n \f"};
    return numbers.below(6) != 0 ? " " : gaps[numbers.below(sizeOf(gaps))];
}

std::string point(Numbers &numbers, Word word)
{
    std::string text = word(numbers) + " ";
    text += word(numbers) + " ";
    return text + word(numbers);
}

std::string facet(Numbers &numbers, Word word)
{
    std::string text = "  facet normal " + point(numbers, word) + "\n    outer loop\n";
    for (int corner = 0; corner < 3; ++corner)
        text += "      vertex " + point(numbers, word) + "\n";
    return text + "    endloop\n  endfacet\n";
}

std::string asciiFile(std::uint64_t seed, Word word)
{
    Numbers numbers(seed);
    std::string text = "solid table\n";
    for (int i = 0; i < 40; ++i)
        text += facet(numbers, word);
    return text + "endsolid\n";
}

std::string looseFile(std::uint64_t seed)
{
    Numbers numbers(seed);
    std::string text = "solid table\r\n";
    const auto words = [&](const char *list) {
        for (const char *at = list; *at != '\0'; ++at) {
            if (numbers.below(50) == 0)
                continue; // missing
            text += *at == '#' ? oddWord(numbers) : "word";
            text += gap(numbers);
        }
        text += numbers.below(8) != 0 ? "\n" : "\r\n";
    };
    for (int i = 0; i < 40; ++i) {
        for (const char *line : {"ww###", "ww", "w###", "w###", "w###", "w", "w"})
            words(line);
    }
    return text;
}

// ---------------------------------------------------------------------------------------- temporary files

std::string withLine(std::string text, int line, const std::string &replacement)
{
    std::size_t start = 0;
    for (; line > 1; --line)
        start = text.find('\n', start) + 1;
    return text.replace(start, text.find('\n', start) + 1 - start, replacement);
}

} // namespace

std::vector<NamedText> byteTableMeshes()
{
    return {
        {"binary-ordinary", binaryFile(1, ordinaryBits)},
        {"binary-any-bits", binaryFile(2, anyBits)},
        {"binary-finite", binaryFile(3, finiteBits)},
        {"binary-special", binaryFile(4, specialBits)},
        {"binary-flat", binaryFile(5, flatBits)},
        {"binary-grid", binaryFile(6, gridBits)},
        {"ascii-plain", asciiFile(7, plainWord)},
        {"ascii-fixed", asciiFile(8, fixedWord)},
        {"ascii-long", asciiFile(9, longWord)},
        {"ascii-wide", asciiFile(10, wideWord)},
        {"ascii-odd", asciiFile(11, oddWord)},
        {"ascii-loose", looseFile(12)},
    };
}

std::vector<NamedText> byteTableTemporaryFiles()
{
    Numbers numbers(13);
    std::string good = "solid  (null)\n";
    for (int i = 0; i < 3; ++i)
        good += facet(numbers, fixedWord);
    good += "endsolid  \n";
    return {
        {"text-good", good},
        {"text-empty", ""},
        {"text-label", "solid  (null)\n"},
        {"text-end", "solid  (null)\nendsolid  \n"},
        {"text-odd", asciiFile(14, oddWord)},
        {"text-no-facet", withLine(good, 9, "  facets normal 0 0 1\n")},
        {"text-no-normal", withLine(good, 9, "  facet Normal 0 0 1\n")},
        {"text-no-outer", withLine(good, 10, "\touter loop\n")},
        {"text-no-vertex", withLine(good, 12, "  vortex 1 2 3\n")},
        {"text-no-endloop", withLine(good, 14, "endloops\n")},
        {"text-no-endfacet", withLine(good, 15, "\n")},
        {"text-ends-early", good.substr(0, good.size() - 100)},
        {"text-few-numbers", withLine(withLine(good, 11, "vertex 1 2\n"), 9, "facet normal\n")},
        {"text-long-line", withLine(good, 11, "vertex 1 2 3" + std::string(1500, ' ') + "\n")},
    };
}
