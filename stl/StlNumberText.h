// Numbers as mesh text, both ways. Knows no mesh. Every conversion has the meaning of the C library's printf
// and scanf family in the "C" locale.
#pragma once

#include <cstdio>
#include <string_view>

// Room for any number that the two writers make: sign, digit, point, eight digits and "E+308", or the padding
// of 15 characters, and an end mark.
constexpr int stlMaxNumberText = 24;

// Write value as "% .8E" and as "%15.8E" do. They agree for all finite numbers with two-digit exponents and
// differ for three-digit exponents and infinities. `out` has room for stlMaxNumberText characters; the end of
// the text is returned.
char *stlWriteBlankSigned(char *out, double value);
char *stlWritePadded(char *out, double value);

// Reads a number from the start of the token as sscanf "%lf" does: "1.5abc" is 1.5. Returns false and leaves
// value alone if the token does not start with a number.
bool stlReadNumber(std::string_view token, double &value);

// Read "%*s %*s %f %f %f\n" (the facet line) and "%*s %f %f %f\n" (a vertex line) with fscanf. A number that
// does not convert, and those after it, keep their values.
void stlScanNormal(std::FILE *in, float &x, float &y, float &z);
void stlScanCorner(std::FILE *in, float &x, float &y, float &z);

// Skip one and two words, as "%*s" and "%*s %*s" do.
void stlSkipWord(std::FILE *in);
void stlSkipTwoWords(std::FILE *in);
