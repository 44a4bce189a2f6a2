#include "cli/StrictNumber.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace {

bool isSpelledInDigits(std::string_view text)
{
    return text.find_first_not_of("0123456789.eE+-") == std::string_view::npos;
}

// from_chars knows no plus sign.
std::string_view withoutPlus(std::string_view text)
{
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    return text;
}

} // namespace

std::optional<double> strictNumber(std::string_view text)
{
    if (!isSpelledInDigits(text))
        return {};
    text = withoutPlus(text);
    const char *const end = text.data() + text.size();
    double value = 0.0;
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || !std::isfinite(value))
        return {};
    return value;
}
