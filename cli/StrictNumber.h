// Numbers as the command takes them.
#pragma once

#include <optional>
#include <string_view>

// The whole text as a decimal number with a point, such as "25.4", "-3", ".5" or "1e-3". Nothing for anything
// else: blanks, commas, hexadecimal, "inf", "nan", an empty text, a number that is too large or too small.
std::optional<double> strictNumber(std::string_view text);
