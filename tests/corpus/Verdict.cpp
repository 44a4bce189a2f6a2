#include "tests/corpus/Verdict.h"

#include <algorithm>
#include <cstdio>

namespace {

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

void Verdict::expectSameText(std::string_view product, std::string_view twin, std::string_view what)
{
    if (product == twin)
        return;
    const auto first = std::mismatch(product.begin(), product.end(), twin.begin(), twin.end()).first;
    const auto at = static_cast<std::size_t>(first - product.begin());
    const std::size_t from = at < 20 ? 0 : at - 20;
    expect(false, std::string(what) + " at byte " + std::to_string(at) + ": \"" +
                      shown(product.substr(from, 60)) + "\" instead of \"" + shown(twin.substr(from, 60)) +
                      "\"");
}
