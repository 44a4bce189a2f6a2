#include "tests/support/Verdict.h"

#include "tests/support/NanSigns.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr std::size_t shownBefore = 80;
constexpr std::size_t shownLength = 160;

std::string shown(std::string_view text)
{
    std::string result;
    for (const char character : text) {
        char escaped[8];
        const auto byte = static_cast<unsigned char>(character);
        std::snprintf(escaped, sizeof escaped, byte >= ' ' && byte < 127 ? "%c" : "\\x%02X", byte);
        result += escaped;
    }
    return result;
}

} // namespace

void Verdict::expectSame(long product, long twin, std::string_view what)
{
    if (product != twin)
        expect(false,
               std::string(what) + ": " + std::to_string(product) + " instead of " + std::to_string(twin));
}

void Verdict::expectSameOrBothNan(double product, double twin, std::string_view what)
{
    if (sameOrBothNan(product, twin))
        return;
    char numbers[80];
    std::snprintf(numbers, sizeof numbers, ": %.17g instead of %.17g", product, twin);
    expect(false, std::string(what) + numbers);
}

void Verdict::expectSameText(std::string_view product, std::string_view twin, std::string_view what)
{
    if (product == twin)
        return;
    const auto first = std::mismatch(product.begin(), product.end(), twin.begin(), twin.end()).first;
    const auto at = static_cast<std::size_t>(first - product.begin());
    const std::size_t from = at < shownBefore ? 0 : at - shownBefore;
    expect(false, std::string(what) + " differs at byte " + std::to_string(at) + ":\n    \"" +
                      shown(product.substr(from, shownLength)) + "\"\ninstead of\n    \"" +
                      shown(twin.substr(from, shownLength)) + "\"");
}
