#include "tests/support/OddMeshText.h"

#include "tests/support/MeshFiles.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <limits>
#include <vector>

namespace {

const char *const oddNumbers[] = {
    "0",
    "-0",
    "+0",
    "1",
    "-1",
    "+1.5",
    ".5",
    "5.",
    "-.5e-1",
    "1e5",
    "1E+05",
    "1e",
    "1e+",
    "1e-x",
    "e5",
    ".",
    "-",
    "+",
    "--1",
    "1.5abc",
    "abc",
    "1,5",
    "1_0",
    "0x",
    "0x10",
    "0x1p4",
    "0x1.8p-1",
    "0xg",
    "0x.p1",
    "inf",
    "-inf",
    "INFINITY",
    "infinit",
    "infx",
    "nan",
    "-nan",
    "NaN(1)",
    "nan(",
    "nanx",
    "1e38",
    "3.5e38",
    "1e39",
    "1e308",
    "1e309",
    "-1e400",
    "1e-40",
    "1e-46",
    "1e-324",
    "1e-400",
    "5\t6",
    "\t7",
    "1..2",
    "0.1",
    "16777217",
    "0.00000000000000000000000000000000000000000000000000000000000001e62",
    "9007199254740993",
    "1e0000000005",
    "i",
    "in",
    "n",
    "na",
    "0x1p",
    "0x1p+",
    "-.",
    "1.17549435E-38",
    "00012",
};

const char *const keywords[] = {"facet",    "normal", "outer", "loop",   "vertex",    "endloop",  "endfacet",
                                "endsolid", "solid",  "Facet", "facets", "outerloop", "\tvertex", "end"};

const char strayCharacters[] = {' ', '\t', '\r', '\n', '\0', 'x', '0', '-', '.', 'e', '\x7F', '\xC3', '%'};

const std::uint32_t oddBits[] = {0x00000000U, 0x80000000U, 0x3F800000U, 0xBF800000U, 0x7F800000U,
                                 0xFF800000U, 0x7FC00000U, 0xFFC00000U, 0x7F800001U, 0x00000001U,
                                 0x80000001U, 0x007FFFFFU, 0x00800000U, 0x7F7FFFFFU, 0xFF7FFFFFU,
                                 0x3DCCCCCDU, 0x42F6E979U, 0x4B800001U};

std::size_t lineStart(const std::string &text, std::size_t position)
{
    const std::size_t before = position == 0 ? std::string::npos : text.rfind('\n', position - 1);
    return before == std::string::npos ? 0 : before + 1;
}

std::size_t nextLine(const std::string &text, std::size_t position)
{
    const std::size_t end = text.find('\n', position);
    return end == std::string::npos ? text.size() : end + 1;
}

void replaceAll(std::string &text, const std::string &old, const std::string &replacement)
{
    for (std::size_t at = text.find(old); at != std::string::npos;
         at = text.find(old, at + replacement.size()))
        text.replace(at, old.size(), replacement);
}

} // namespace

int OddMeshText::below(int n) { return static_cast<int>(m_random() % static_cast<std::uint64_t>(n)); }

std::size_t OddMeshText::positionIn(const std::string &text)
{
    return static_cast<std::size_t>(below(static_cast<int>(text.size()) + 1));
}

double OddMeshText::parameter()
{
    constexpr double odd[] = {0.0,
                              -0.0,
                              1e300,
                              -1e-300,
                              std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()};
    if (oneIn(12))
        return odd[below(static_cast<int>(std::size(odd)))];
    return static_cast<double>(below(2000001) - 1000000) / (oneIn(2) ? 1000.0 : 7.0);
}

plain::Axes OddMeshText::axes()
{
    plain::Axes axes;
    for (double *value : {&axes.x, &axes.y, &axes.z})
        *value = parameter();
    return axes;
}

plain::Rotation OddMeshText::rotation()
{
    plain::Rotation rotation;
    if (oneIn(2))
        return rotation;
    for (auto &row : rotation.m)
        for (double &element : row)
            element = oneIn(3) ? 0.0 : std::sin(parameter());
    return rotation;
}

plain::Placement OddMeshText::placement()
{
    plain::Placement placement;
    if (oneIn(4))
        return placement;
    for (plain::Axes *part : {&placement.scale, &placement.offsetBefore, &placement.offsetAfter})
        *part = axes();
    for (plain::Rotation *part : {&placement.rotX, &placement.rotY, &placement.rotZ})
        *part = rotation();
    return placement;
}

std::string OddMeshText::ordinaryNumber()
{
    char text[40];
    const double value = (static_cast<double>(m_random() >> 12) - 0x1p51) / 0x1p51;
    const int style = below(4);
    if (style == 0)
        std::snprintf(text, sizeof text, "% .8E", value * 100.0);
    else if (style == 1)
        std::snprintf(text, sizeof text, "%g", value * 1000.0);
    else if (style == 2)
        std::snprintf(text, sizeof text, "%.17g", value * 1e-5);
    else
        std::snprintf(text, sizeof text, "%d", below(200) - 100);
    return text;
}

std::string OddMeshText::numberWord()
{
    if (oneIn(8))
        return oddNumbers[below(static_cast<int>(std::size(oddNumbers)))];
    return ordinaryNumber();
}

std::string OddMeshText::binaryFile()
{
    std::string header;
    for (int i = 0; i < 80; ++i)
        header += static_cast<char>(static_cast<unsigned char>(oneIn(4) ? below(256) : 'a' + i % 26));
    const int count = 1 + below(12);
    std::string bytes = header;
    appendLittleEndian(bytes, static_cast<std::uint32_t>(oneIn(4) ? below(20) : count));
    const int style = below(3);
    for (int i = 0; i < count; ++i) {
        for (int number = 0; number < 12; ++number) {
            if (oneIn(10))
                appendLittleEndian(bytes, oddBits[below(static_cast<int>(std::size(oddBits)))]);
            else if (style == 0)
                appendLittleEndian(bytes, static_cast<std::uint32_t>(m_random()));
            else
                appendLittleEndian(bytes, static_cast<float>(below(20001) - 10000) / 128.0F);
        }
        bytes += static_cast<char>(static_cast<unsigned char>(below(256)));
        bytes += static_cast<char>(static_cast<unsigned char>(below(256)));
    }
    if (oneIn(10))
        bytes.resize(positionIn(bytes));
    return bytes;
}

std::string OddMeshText::gap()
{
    static const char *const gaps[] = {"\n", "\r\n", "\t", "  ", " \n ", "\n\n", "\r", "\v"};
    return oneIn(6) ? gaps[below(static_cast<int>(std::size(gaps)))] : " ";
}

std::string OddMeshText::lineEnd()
{
    static const char *const ends[] = {"\r\n", "\r\r\n", "\n\n", " ", "", "\nab\n", "\n# a comment\n"};
    return oneIn(20) ? ends[below(static_cast<int>(std::size(ends)))] : "\n";
}

std::string OddMeshText::asciiFile()
{
    static const std::vector<const char *> words[] = {{"facet", "normal", "#", "#", "#"},
                                                      {"outer", "loop"},
                                                      {"vertex", "#", "#", "#"},
                                                      {"vertex", "#", "#", "#"},
                                                      {"vertex", "#", "#", "#"},
                                                      {"endloop"},
                                                      {"endfacet"}};
    std::string text(static_cast<std::size_t>(oneIn(10) ? 70 + below(20) : below(30)), 's');
    text += lineEnd();
    const int count = below(8);
    const bool tidy = oneIn(3);
    for (int i = 0; i < count; ++i) {
        for (const auto &line : words) {
            for (const char *word : line) {
                if (!tidy && oneIn(100))
                    continue;
                text += *word == '#' ? numberWord() : std::string(word);
                text += tidy ? " " : gap();
            }
            text += tidy ? "\n" : lineEnd();
        }
    }
    if (!oneIn(5))
        text += "endsolid" + lineEnd();
    for (int i = oneIn(4) ? below(20) : 0; i > 0; --i)
        text += "more lines\n";
    if (oneIn(5))
        replaceAll(text, "\n", "\r\n");
    for (int i = oneIn(4) ? below(4) : 0; i > 0; --i)
        damage(text);
    return text;
}

std::string OddMeshText::wellFormedText()
{
    std::string text = "solid  (null)\n";
    for (int i = below(5); i > 0; --i) {
        std::string triples[4];
        for (std::string &triple : triples)
            triple = numberWord() + " " + numberWord() + " " + numberWord();
        text += asciiFacet({triples[0], triples[1], triples[2], triples[3]});
    }
    return text + (oneIn(6) ? "" : "endsolid  \n");
}

std::string OddMeshText::temporaryFile()
{
    std::string text = wellFormedText();
    for (int i = below(4); i > 0; --i)
        damage(text);
    if (oneIn(10))
        replaceAll(text, "\n", "\r\n");
    if (oneIn(12))
        text.resize(positionIn(text));
    return text;
}

void OddMeshText::damage(std::string &text)
{
    if (oneIn(3))
        damageCharacter(text);
    else if (oneIn(8))
        lengthenLine(text);
    else
        damageLine(text);
}

void OddMeshText::damageCharacter(std::string &text)
{
    const std::size_t position = positionIn(text);
    const char character = strayCharacters[below(static_cast<int>(std::size(strayCharacters)))];
    const int change = below(3);
    if (change == 0 || position == text.size())
        text.insert(position, 1, character);
    else if (change == 1)
        text.erase(position, 1);
    else
        text[position] = character;
}

void OddMeshText::damageLine(std::string &text)
{
    const std::size_t start = lineStart(text, positionIn(text));
    const std::size_t end = nextLine(text, start);
    const std::string line = text.substr(start, end - start);
    const std::size_t word = line.find_first_not_of(' ');
    const std::size_t wordEnd = line.find_first_of(" \n", word == std::string::npos ? 0 : word);
    switch (below(6)) {
    case 0: // dropped
        text.erase(start, line.size());
        break;
    case 1: // doubled
        text.insert(start, line);
        break;
    case 2: // moved after the next one
        text.insert(nextLine(text, end), line);
        text.erase(start, line.size());
        break;
    case 3: // another keyword
        if (word != std::string::npos && wordEnd != std::string::npos)
            text.replace(start + word, wordEnd - word,
                         keywords[below(static_cast<int>(std::size(keywords)))]);
        break;
    case 4: // fewer words
        if (line.rfind(' ') != std::string::npos)
            text.erase(start + line.rfind(' '),
                       line.size() - line.rfind(' ') - (line.back() == '\n' ? 1 : 0));
        break;
    default: // an additional word
        text.insert(end - (!line.empty() && line.back() == '\n' ? 1 : 0), " " + numberWord());
    }
}

// To a length around the longest that a line can have.
void OddMeshText::lengthenLine(std::string &text)
{
    const std::size_t start = lineStart(text, positionIn(text));
    const std::size_t end = text.find('\n', start);
    const std::size_t length = (end == std::string::npos ? text.size() : end) - start;
    const auto wanted = static_cast<std::size_t>(plain::lineCapacity - 10 + below(20));
    if (length < wanted)
        text.insert(oneIn(2) ? start : start + length, wanted - length, oneIn(3) ? 'x' : ' ');
}
