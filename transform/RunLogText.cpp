#include "transform/RunLogText.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace {

std::string piece(const std::string &text) { return text + "\n"; }

// As "%f" prints it; the largest double has 309 digits before the point.
std::string decimal(double value)
{
    char text[400];
    std::snprintf(text, sizeof text, "%f", value);
    return text;
}

std::string valueLine(const std::string &axis, double scale, double before, double after)
{
    return piece(axis + "Scl = " + decimal(scale) + "     " + axis + "OfsB = " + decimal(before) + "     " +
                 axis + "OfsA = " + decimal(after) + "\n");
}

struct FlaggedValue {
    int flag;
    const char *name;
    double value;
};

struct Flag {
    int flag;
    const char *text;
};

template <typename Row, std::size_t count>
bool anySet(const Row (&rows)[count])
{
    return std::any_of(std::begin(rows), std::end(rows), [](const Row &row) { return row.flag != 0; });
}

// Nothing where no flag is set.
template <std::size_t count>
std::string valueBlock(const FlaggedValue (&rows)[count])
{
    if (!anySet(rows))
        return {};
    std::string text;
    for (const FlaggedValue &row : rows) {
        if (row.flag != 0)
            text += piece(std::string(row.name) + " = " + decimal(row.value) + "     ");
    }
    return text + piece("\n");
}

template <std::size_t count>
std::string flagBlock(const Flag (&rows)[count])
{
    if (!anySet(rows))
        return {};
    std::string text = piece("Flags:  \n");
    for (const Flag &row : rows) {
        if (row.flag != 0)
            text += piece(row.text);
    }
    return text;
}

} // namespace

std::string runLogHeader()
{
    return piece("\n") + piece("-------------------------- meshvane output --------------------------\n") +
           piece("    x = xScl * (x + xOfsB) + xOfsA\n") + piece("    y = yScl * (y + yOfsB) + yOfsA\n") +
           piece("    z = zScl * (z + zOfsB) + zOfsA\n") +
           piece("- Rotation about axis is done after all other scale and translation -\n");
}

std::string runLogParameters(const TransformParameters &p)
{
    const FlaggedValue rotations[] = {{p.xRotate, "rotateaboutx", p.xAngle},
                                      {p.yRotate, "rotateabouty", p.yAngle},
                                      {p.zRotate, "rotateaboutz", p.zAngle}};
    const FlaggedValue lengths[] = {
        {p.xSetL, "xsetL", p.xLength}, {p.ySetL, "ysetL", p.yLength}, {p.zSetL, "zsetL", p.zLength}};
    // Deliberate: all six same-length flags are logged with one text; readers of old logs know it as it is.
    constexpr const char *sameLength = "   xSamey\n";
    const Flag flags[] = {{p.xSet0, "   xSet0\n"}, {p.ySet0, "   ySet0\n"}, {p.zSet0, "   zSet0\n"},
                          {p.xSameY, sameLength},  {p.xSameZ, sameLength},  {p.ySameX, sameLength},
                          {p.ySameZ, sameLength},  {p.zSameX, sameLength},  {p.zSameY, sameLength}};

    return piece("\nCalculation started with following parameters:  \n") +
           valueLine("x", p.xScl, p.xOfsB, p.xOfsA) + valueLine("y", p.yScl, p.yOfsB, p.yOfsA) +
           valueLine("z", p.zScl, p.zOfsB, p.zOfsA) + valueBlock(rotations) + valueBlock(lengths) +
           flagBlock(flags) + piece("\n");
}

std::string runLogOutcome(const std::string &counts)
{
    return piece(counts) + piece("\nCalculation finished successfully.\n");
}
