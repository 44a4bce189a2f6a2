#include "stl/StlNumberText.h"

#include "stl/StlLines.h"

char *stlWriteBlankSigned(char *out, double value)
{
    return out + std::snprintf(out, stlMaxNumberText, "% .8E", value);
}

char *stlWritePadded(char *out, double value)
{
    return out + std::snprintf(out, stlMaxNumberText, "%15.8E", value);
}

bool stlReadNumber(std::string_view token, double &value)
{
    // A token is a piece of a line, so it fits with its end mark.
    char text[stlLineCapacity];
    text[token.copy(text, sizeof text - 1)] = '\0';
    return std::sscanf(text, "%lf", &value) == 1;
}

// The readers below ignore what fscanf returns: fields that do not convert keep their values, as promised.

void stlScanNormal(std::FILE *in, float &x, float &y, float &z)
{
    static_cast<void>(std::fscanf(in, "%*s %*s %f %f %f\n", &x, &y, &z));
}

void stlScanCorner(std::FILE *in, float &x, float &y, float &z)
{
    static_cast<void>(std::fscanf(in, "%*s %f %f %f\n", &x, &y, &z));
}

void stlSkipWord(std::FILE *in) { static_cast<void>(std::fscanf(in, "%*s")); }

void stlSkipTwoWords(std::FILE *in) { static_cast<void>(std::fscanf(in, "%*s %*s")); }
