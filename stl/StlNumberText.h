// Numbers as mesh text, both ways. Knows no mesh. Every conversion has the meaning of the C library's printf
// and scanf family in the "C" locale; StlNumberScan says what that is for words that are no ordinary numbers.
#pragma once

#include <string_view>

// Room for any number that the two writers produce: sign, digit, point, eight digits and "E+308", or the
// padding to 15 characters, and a terminating zero.
constexpr int stlMaxNumberText = 24;

// Write value as "% .8E" and as "%15.8E" do. They agree for all finite numbers with two-digit exponents and
// differ for three-digit exponents and infinities. `out` has room for stlMaxNumberText characters; the end of
// the text is returned.
char *stlWriteBlankSigned(char *out, double value);
char *stlWritePadded(char *out, double value);

// Reads a number from the start of the token as sscanf "%lf" does: "1.5abc" is 1.5. Returns false and leaves
// value alone if the token does not start with a number.
bool stlReadNumber(std::string_view token, double &value);
