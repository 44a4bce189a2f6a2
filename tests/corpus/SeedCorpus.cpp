#include "tests/corpus/SeedCorpus.h"

#include "tests/support/MeshFiles.h"
#include "tests/support/OddMeshText.h"
#include "tests/support/PlainTwin.h"

#include <cstring>

namespace {

using namespace std::string_literals;

constexpr std::size_t longestLine = plain::lineCapacity - 1;

const std::string facet = asciiFacet({"0 0 1", "1 2 3", "5 2 3", "1 10 19"});
const std::string writtenFacet = asciiFacet(
    {" 0.00000000E+00 -0.00000000E+00  1.00000000E+00", " 1.00000000E+00 -2.00000000E+00  3.00000000E+00",
     " 1.10000000E+01  1.80000000E+01 -2.70000000E+01", " 7.00000000E+00  7.70000000E+00  7.77000000E+00"});

std::string replaced(std::string text, const std::string &old, const std::string &replacement)
{
    for (std::size_t at = text.find(old); at != std::string::npos;
         at = text.find(old, at + replacement.size()))
        text.replace(at, old.size(), replacement);
    return text;
}

// Blanks after a word bring its line to this length, line feed included.
std::string withLineOf(std::size_t length, const std::string &text, const std::string &word)
{
    const std::size_t at = text.find(word);
    const std::size_t start = text.rfind('\n', at) + 1; // 0 in the first line
    const std::size_t before = text.find('\n', at) + 1 - start;
    return replaced(text, word, word + std::string(length - before, ' '));
}

std::string ascii(const std::string &facets, const std::string &label = "solid part\n")
{
    return label + facets + "endsolid part\n";
}

std::string written(const std::string &facets) { return "solid  (null)\n" + facets + "endsolid  \n"; }

// Facets in the written form whose corners come back: ordinary ones, ones that the number kernels decline and
// words that are no numbers, after each other.
std::string facetsWithSharedCorners()
{
    const std::string n = " 0.00000000E+00  0.00000000E+00  1.00000000E+00";
    const std::string a = " 1.00000000E+00 -2.00000000E+00  3.00000000E+00";
    const std::string b = "-1.50000000E+00  2.50000000E-01 -0.00000000E+00";
    const std::string declined = " 9.99999999E+98  1.00000000E-20  1.00000000E+00";
    const std::string word = " 1.00000000E+00 abcdefghijklmno  1.00000000E+00";
    return asciiFacet({n, a, b, a}) + asciiFacet({n, b, a, b}) + asciiFacet({a, declined, a, b}) +
           asciiFacet({a, a, word, b}) + asciiFacet({n, a, b, word}) + asciiFacet({n, word, a, declined}) +
           asciiFacet({n, a, b, a});
}

// Few different corners, some of which have no common form.
std::vector<BinaryFacet> binaryFacetsWithSharedCorners()
{
    std::vector<BinaryFacet> facets = differentFacets(6);
    for (std::size_t i = 1; i < facets.size(); ++i) {
        for (std::size_t at = 0; at < 12; ++at)
            facets[i].numbers[at] = facets[0].numbers[(at + 3 * i) % 12] * (i == 3 ? 1e-42F : 1.0F);
    }
    return facets;
}

std::string times(int n, const std::string &text)
{
    std::string result;
    for (int i = 0; i < n; ++i)
        result += text;
    return result;
}

// Options as the last bytes (RunOptions): values, then eight flags and the opposite of seven of them.
std::string withOptions(const std::string &file, unsigned flags)
{
    std::string values;
    for (int value = 60; value < 105; value += 3)
        values += static_cast<char>(value);
    return file + values + static_cast<char>(~flags & 0xFFU) + static_cast<char>(flags);
}

template <typename Number>
std::string bytesOfNumber(Number number)
{
    std::string bytes(sizeof number, '\0');
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

void addRandom(std::vector<Seed> &seeds, std::string (OddMeshText::*make)(), const std::string &name)
{
    for (std::uint64_t seed = 1; seed <= 12; ++seed) {
        OddMeshText odd(seed);
        seeds.push_back({name + "-" + std::to_string(seed), (odd.*make)()});
    }
}

} // namespace

std::vector<Seed> inputFileSeeds()
{
    const std::string binary = binaryStl("made by hand", differentFacets(5));
    std::vector<Seed> seeds = {
        {"empty", ""},
        {"one-line-feed", "\n"},
        {"label-without-line-end", "solid"},
        {"label-of-80-characters", ascii(facet, std::string(80, 'x') + "\n")},
        {"label-of-81-characters", ascii(facet, std::string(81, 'x') + "\n")},
        {"label-of-2000-characters", ascii(facet, std::string(2000, 'x') + "\n")},
        {"ascii-one-facet", ascii(facet)},
        {"ascii-three-facets", ascii(times(3, facet))},
        {"ascii-without-endsolid", "solid\n" + facet},
        {"ascii-cut-inside-a-vertex", ("solid part\n" + times(2, facet)).substr(0, 230)},
        {"ascii-cut-inside-a-number", ("solid part\n" + times(2, facet)).substr(0, 222)},
        {"ascii-carriage-returns", replaced(ascii(times(2, facet)), "\n", "\r\n")},
        {"ascii-lone-carriage-returns", replaced(ascii(times(2, facet)), "\n", "\r")},
        {"ascii-blank-lines", replaced(ascii(times(2, facet)), "\n", "\n\n")},
        {"ascii-lines-of-three-and-four", ascii(facet + "abc\nabcd\n" + facet)},
        {"ascii-more-lines-than-facets", ascii(facet + times(30, "a comment line\n"))},
        {"ascii-tabs", replaced(ascii(facet), " ", "\t")},
        {"ascii-all-on-one-line", replaced(ascii(times(3, facet)), "\n", " ") + times(9, "\nabcd")},
        {"ascii-words-for-numbers", replaced(ascii(times(2, facet)), "5 2", "five two")},
        {"ascii-infinite", replaced(ascii(times(2, facet)), "5 2", "inf -INFINITY")},
        {"ascii-not-a-number", replaced(ascii(times(2, facet)), "5 2", "nan NAN(char)")},
        {"ascii-hexadecimal", replaced(ascii(times(2, facet)), "5 2", "0x1.8p3 0xFF")},
        {"ascii-float-overflow", replaced(ascii(times(2, facet)), "5 2", "1e39 -1e400")},
        {"ascii-subnormal", replaced(ascii(times(2, facet)), "5 2", "1e-40 1e-46")},
        {"ascii-comma-for-point", replaced(ascii(times(2, facet)), "5 2", "5,5 2,5")},
        {"ascii-half-exponents", replaced(ascii(times(2, facet)), "5 2", "5e 2e+")},
        {"ascii-numbers-glued-to-words", replaced(ascii(times(2, facet)), "5 2", "5vertex 2facet")},
        {"ascii-number-of-400-digits", replaced(ascii(facet), "10", std::string(400, '9'))},
        {"ascii-zero-bytes", replaced(ascii(times(2, facet)), "outer", "\0\0\0"s)},
        {"ascii-high-byte-in-the-type-block", replaced(ascii(times(2, facet)), "outer", "\xC3\xA4\xC3\xA4")},
        {"ascii-high-byte-before-the-type-block", ascii(times(2, facet), "solid \xC3\xA4\n")},
        {"ascii-percent-signs", replaced(ascii(times(2, facet)), "loop", "%s%n%d")},
        {"ascii-shared-corners", ascii(facetsWithSharedCorners())},
        {"binary-shared-corners", binaryStl("shared", binaryFacetsWithSharedCorners())},
        {"binary-five-facets", binary},
        {"binary-four-facets", binaryStl("", differentFacets(4))},
        {"binary-three-facets", binaryStl("", differentFacets(3))},
        {"binary-no-facets", binaryStl("", {})},
        {"binary-count-of-zero", binaryStl("zero", 0, differentFacets(5))},
        {"binary-count-of-all-ones", binaryStl("ones", 0xFFFFFFFFU, differentFacets(5))},
        {"binary-count-negative", binaryStl("minus", 0x80000000U, differentFacets(5))},
        {"binary-one-byte-short", binary.substr(0, binary.size() - 1)},
        {"binary-one-byte-long", binary + "x"},
        {"binary-header-says-solid", binaryStl("solid part", differentFacets(4))},
        {"binary-header-of-high-bytes", binaryStl(std::string(80, '\xFF'), differentFacets(4))},
        {"binary-without-high-bytes", std::string(284, 'A')},
        {"binary-all-ones", std::string(334, '\xFF')},
        {"binary-infinities", std::string(84, ' ') + times(4, times(12, "\0\0\x80\x7F"s) + "\xFF\xFF")},
        {"prelude-only", std::string(84, '\x80')},
        {"cut-inside-the-type-block", std::string(100, '\x80')},
    };
    for (const unsigned flags : {0x01U, 0x0FU, 0x38U, 0x70U, 0xFFU})
        seeds.push_back(
            {"ascii-with-options-" + std::to_string(flags), withOptions(ascii(times(2, facet)), flags)});
    addRandom(seeds, &OddMeshText::asciiFile, "random-ascii");
    addRandom(seeds, &OddMeshText::binaryFile, "random-binary");
    return seeds;
}

std::vector<Seed> temporaryFileSeeds()
{
    const std::string two = written(times(2, writtenFacet));
    std::vector<Seed> seeds = {
        {"empty", ""},
        {"label-only", "solid  (null)\n"},
        {"label-without-line-end", "solid"},
        {"label-and-endsolid", written("")},
        {"as-written-two-facets", two},
        {"shared-corners", written(facetsWithSharedCorners())},
        {"without-endsolid", "solid\n" + writtenFacet},
        {"last-line-without-line-end", "solid\n" + writtenFacet + "endsolid"},
        {"more-after-endsolid", two + two},
        {"endsolid-with-a-tab", "solid\n" + writtenFacet + "endsolid\tx\n"},
        {"longest-label-line", withLineOf(longestLine, two, "(null)")},
        {"longest-facet-line", withLineOf(longestLine, two, "normal")},
        {"label-line-one-too-long", withLineOf(longestLine + 1, two, "(null)")},
        {"facet-line-one-too-long", withLineOf(longestLine + 1, two, "normal")},
        {"facet-line-longer-than-the-buffer", replaced(two, "normal", "normal" + std::string(1000, ' '))},
        {"label-line-of-3000-characters", replaced(two, "(null)", std::string(3000, 'n'))},
        {"vertex-line-longer-than-the-buffer", replaced(two, "vertex", "vertex" + std::string(1200, ' '))},
        {"carriage-returns", replaced(two, "\n", "\r\n")},
        {"two-carriage-returns", replaced(two, "\n", "\r\r\n")},
        {"lone-carriage-returns", replaced(two, "\n", "\r")},
        {"blank-lines", replaced(two, "\n", "\n\n")},
        {"zero-byte-at-a-line-start", replaced(two, "    outer", "\0   outer"s)},
        {"zero-byte-inside-a-word", replaced(two, "vertex", "ver\0tex"s)},
        {"tab-before-the-keyword", replaced(two, "      vertex", "\tvertex")},
        {"keyword-with-a-tail", replaced(two, "endloop", "endloops")},
        {"keyword-in-capitals", replaced(two, "facet normal", "FACET NORMAL")},
        {"facet-without-normal", replaced(two, "facet normal", "facet")},
        {"vertex-with-two-numbers", replaced(two, " 3.00000000E+00\n", "\n")},
        {"vertex-with-four-numbers", replaced(two, "3.00000000E+00\n", "3.00000000E+00 4\n")},
        {"vertex-with-words", replaced(two, " 1.10000000E+01", "eleven")},
        {"vertex-with-three-digit-exponents", replaced(two, "E+01", "E+301")},
        {"vertex-infinite", replaced(two, " 1.10000000E+01", "inf")},
        {"vertex-not-a-number", replaced(two, " 1.10000000E+01", "-nan(x)")},
        {"vertex-hexadecimal", replaced(two, " 1.10000000E+01", "0x1.8p+4")},
        {"vertex-number-of-300-digits", replaced(two, " 1.10000000E+01", std::string(300, '7'))},
        {"vertex-glued-number", replaced(two, " 1.10000000E+01", "1.5abc")},
        {"vertex-plus-sign", replaced(two, " 1.10000000E+01", "+1.1")},
        {"vertex-short-mantissa", replaced(two, " 1.10000000E+01", " 1.1E+01")},
        {"vertex-capital-and-small-e", replaced(two, "E+01", "e+01")},
        {"percent-signs-in-the-wrong-line", replaced(two, "outer", "%s%n")},
    };
    for (std::size_t lines = 1; lines < 9; ++lines) {
        std::size_t end = 0;
        for (std::size_t i = 0; i < lines; ++i)
            end = two.find('\n', end) + 1;
        seeds.push_back({"ends-after-line-" + std::to_string(lines), two.substr(0, end)});
        seeds.push_back({"ends-inside-line-" + std::to_string(lines + 1), two.substr(0, end + 9)});
    }
    for (const unsigned flags : {0x01U, 0x0FU, 0x38U, 0x70U, 0xFFU})
        seeds.push_back({"with-options-" + std::to_string(flags), withOptions(two, flags)});
    addRandom(seeds, &OddMeshText::temporaryFile, "random");
    return seeds;
}

std::vector<Seed> numberTextSeeds()
{
    std::vector<Seed> seeds;
    for (const char *word : {"0",
                             "-0",
                             "1.5",
                             "-1.50000000E+00",
                             "+7",
                             ".5",
                             "5.",
                             "1e5",
                             "1E+05",
                             "1e",
                             "1e+",
                             "0x10",
                             "0x1.8p-1",
                             "0x",
                             "inf",
                             "-INFINITY",
                             "infinit",
                             "nan",
                             "NaN(1)",
                             "nan(",
                             "1e308",
                             "1e309",
                             "-1e400",
                             "5e-324",
                             "1e-324",
                             "2.2250738585072011e-308",
                             "9007199254740993",
                             "16777217",
                             "1.5abc",
                             "--1",
                             "1,5",
                             "\t7",
                             "\v7",
                             "\r7",
                             "1_0",
                             ".",
                             "-",
                             "e5",
                             "1e0000000005",
                             "1e99999999999",
                             "-1e-99999999999"})
        seeds.push_back({"word " + std::string(word), word});
    seeds.push_back({"word of 600 digits", std::string(600, '3')});
    seeds.push_back({"word of 700 zeros and an exponent", "0." + std::string(700, '0') + "1e701"});
    for (const double value : {0.0, -0.0, 1.0, 0.1, 9.999999995, 9.9999999949999, 0.5, 1e23, 1e22, 5e-324,
                               2.2250738585072014e-308, 1.7976931348623157e308, 1e100, 1e-100, 123456789.5,
                               1234567895.0, 1.0000000005, 3.4028234663852886e38, 1.401298464324817e-45})
        seeds.push_back({"double " + std::to_string(seeds.size()), bytesOfNumber(value)});
    for (const std::uint32_t bits : {0x7F800000U, 0xFF800000U, 0x7FC00000U, 0xFFC00000U, 0x7F800001U, 1U,
                                     0x007FFFFFU, 0x00800000U, 0x7F7FFFFFU, 0x42F6E979U, 0x4B800001U})
        seeds.push_back({"float " + std::to_string(bits), bytesOfNumber(bits) + bytesOfNumber(bits)});
    for (Seed &seed : seeds)
        seed.name = replaced(replaced(seed.name, " ", "-"), "\t", "tab");
    for (Seed &seed : seeds)
        seed.name = replaced(replaced(seed.name, "\v", "vt"), "\r", "cr");
    return seeds;
}

std::vector<Seed> fieldSeeds()
{
    std::vector<Seed> seeds = {
        {"no-policy", "tabc\n?\nt\n?\n"},
        {"number-stays-while-empty", "NX Scale\np1\ntabc\nt\n?\nt5\n?\n"},
        {"scale-as-in-the-window", "NX Scale\np6\np1\nv0\nt0\n?\nt0.0\n?\ntabc\n?\nt1\n?\n"},
        {"input-file-as-in-the-window", "NStl Input File\np9\np2\nt\nt/\n?\ntmissing\n?\nt\n?\n"},
        {"output-file-as-in-the-window", "NStl Output File\np10\np2\nt/no/such/file\n?\nt/tmp/x\n?\nt\n?\n"},
        {"own-name-is-dropped-once", "ua,a,A\np3\nta\n?\nt\nta\n?\nu\nta\n"},
        {"names-in-any-case", "ub,B,c\np4\ntb\n?\ntC\n?\n"},
        {"forbidden-characters", "cx,yy,\np5\ntxyy\n?\nty\n?\nt\n?\n"},
        {"limits", "<1\n>2\np12\np13\nt0\n?\nt1\n?\nt2\n?\nt3\n?\ntabc\n?\n"},
        {"limits-that-are-no-numbers", "<nan\n>inf\np12\np13\nt0\n?\nt1e38\n?\n"},
        {"rounding", "p11\nt2.5\nr\nt-2.5\nr\ntabc\nr\nt1234567\nr\nt0.000015\nr\nt1000000\nr\nt-0.5\nr\n"},
        {"rounding-of-huge-and-infinite", "p11\nt1e38\nr\ntinf\nr\nt-nan\nr\nt99999.5\nr\nt1e39\nr\n"},
        {"ties-of-six-digits",
         "p11\nt100000.5\nr\nt-123456.5\nr\nt1000005\nr\np12\n<1000005\nt1\n?\n<100000.5\nt2\n?\n"},
        {"disabled-drops-errors", "p2\nt1\nt\nd\na\n?\ne\n?\nd\nt1\ne\na\n"},
        {"hidden-drops-errors", "p2\nt1\nt\nh\na\n?\ns\n?\n"},
        {"name-changes-while-messages-stand", "nA\np1\ntx\nnB\nty\n?\nt5\n?\nd\na\ne\na\n"},
        {"policy-codes-out-of-range", "p-1\np7\np14\np99999999999\np0\ntx\n?\n"},
        {"policies-are-dropped", "p2\np1\ntx\np0\nt\n?\n"},
        {"own-tool-tip", "Thello\nt1\np2\nTagain\nt\nt2\n"},
        {"rich-text-name", "n<script>&amp;\np2\nt1\nt\n?\n"},
        {"resource-and-odd-paths", "p8\np9\np10\nt:/pixmaps\n?\nt//\n?\nt/./..\n?\nt~\n?\nt/tmp//\n?\n"},
        {"absolute-path-without-a-separator", "p10\nt:pixmaps\n?\n"},
        {"odd-unicode", "p1\np5\nc\xC3\xA4\nt\xC3\xA4\xF0\x9F\x98\x80\n?\nt\xFF\xFE\n?\n"},
    };
    std::string everything;
    for (int policy = 1; policy <= 13; ++policy)
        everything += "p" + std::to_string(policy) + "\n";
    seeds.push_back({"every-policy", everything + "nall\nv1\nuq\nc-\nt-q\n?\nt1\n?\nt2.5\nr\n?\n"});
    return seeds;
}

std::vector<Seed> runLogSeeds()
{
    const std::string header = "\n\n-------------------------- meshvane output --------------------------\n\n"
                               "    x = xScl * (x + xOfsB) + xOfsA\n\n    y = yScl * (y + yOfsB) + yOfsA\n\n"
                               "    z = zScl * (z + zOfsB) + zOfsA\n\n"
                               "- Rotation about axis is done after all other scale and translation -\n\n";
    const std::string values = "\nCalculation started with following parameters:  \n\n"
                               "xScl = 25.400000     xOfsB = 0.000000     xOfsA = -5.500000\n\n"
                               "yScl = -1.000000     yOfsB = 0.333333     yOfsA = 0.000000\n\n"
                               "zScl = 1.000000     zOfsB = -0.000000     zOfsA = 1000000000.000000\n\n";
    const std::string options = "rotateaboutx = 90.000000     \nrotateaboutz = -30.000000     \n\n\n"
                                "xsetL = 100.000000     \nzsetL = 0.000000     \n\n\n"
                                "Flags:  \n\n   xSet0\n\n   zSet0\n\n";
    const std::string outcome =
        "\n\nNumber lines read from stl file = 16\nNumber triangles read from stl file = 2\n\n"
        "\nCalculation finished successfully.\n\n";
    const std::string plain = header + values + "\n\n" + outcome;
    const std::string full = header + values + options + "\n\n" + outcome;
    return {
        {"empty", ""},
        {"header-alone", header},
        {"plain", plain},
        {"everything", full},
        {"without-an-outcome", header + values + options + "\n\n"},
        {"one-same-length", header + values + "Flags:  \n\n   xSamey\n\n\n\n" + outcome},
        {"six-same-lengths", header + values + "Flags:  \n\n" + times(6, "   xSamey\n\n") + "\n\n" + outcome},
        {"seven-same-lengths",
         header + values + "Flags:  \n\n" + times(7, "   xSamey\n\n") + "\n\n" + outcome},
        {"carriage-returns", replaced(full, "\n", "\r\n")},
        {"two-carriage-returns", replaced(full, "\n", "\r\r\n")},
        {"infinite", replaced(plain, "25.400000", "inf")},
        {"not-a-number", replaced(full, "90.000000", "-nan")},
        {"negative-length", replaced(full, "xsetL = ", "xsetL = -")},
        {"scale-of-zero", replaced(plain, "25.400000", "0.000000")},
        {"scale-of-zero-with-a-length", replaced(full, "25.400000", "0.000000")},
        {"scale-of-minus-zero", replaced(plain, "25.400000", "-0.000000")},
        {"huge-number", replaced(plain, "1000000000.", "1" + std::string(308, '0') + ".")},
        {"number-beyond-the-range", replaced(plain, "1000000000.", "1" + std::string(309, '0') + ".")},
        {"leading-zeros", replaced(plain, "25.4", "0025.4")},
        {"five-decimals", replaced(plain, "25.400000", "25.40000")},
        {"exponent", replaced(plain, "25.400000", "2.54e1")},
        {"flags-in-another-order", replaced(full, "   xSet0\n\n   zSet0\n\n", "   zSet0\n\n   xSet0\n\n")},
        {"count-with-a-leading-zero", replaced(plain, "= 16", "= 016")},
        {"huge-count", replaced(plain, "= 16", "= 99999999999999999999")},
        {"zero-bytes", replaced(plain, "25.4", "25\0004"s)},
        {"twice", plain + plain},
    };
}
