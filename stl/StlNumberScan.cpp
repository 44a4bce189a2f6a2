#include "stl/StlNumberScan.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <system_error>

namespace {

void readByCLibrary(const char *text, char **end, float &value) { value = std::strtof(text, end); }
void readByCLibrary(const char *text, char **end, double &value) { value = std::strtod(text, end); }

// Both read a number within the range: one from the start of the text, and returns its length; the other only
// a decimal number that is the whole text.
//
// libc++ reads no floating-point numbers. For 32-bit x86 the GNU library's function is compiled with the
// 80-bit arithmetic of that processor, and rounds twice.
#if defined(__cpp_lib_to_chars) && !defined(__i386__) && !defined(_M_IX86)

template <typename Number>
std::size_t readByFromChars(std::string_view text, std::chars_format format, Number &value)
{
    const std::from_chars_result read =
        std::from_chars(text.data(), text.data() + text.size(), value, format);
    return read.ec == std::errc() ? static_cast<std::size_t>(read.ptr - text.data()) : 0;
}

template <typename Number>
bool readAll(std::string_view text, Number &value)
{
    return readByFromChars(text, std::chars_format::general, value) == text.size();
}

#else

template <typename Number>
std::size_t readByFromChars(std::string_view, std::chars_format, Number &)
{
    return 0;
}

template <typename Number>
bool readAll(std::string_view text, Number &value)
{
    if (text.front() == '+' || text.find_first_not_of("0123456789.eE+-") != std::string_view::npos)
        return false;
    const std::string terminated(text);
    char *end = nullptr;
    errno = 0;
    readByCLibrary(terminated.c_str(), &end, value);
    return errno == 0 && end == terminated.c_str() + terminated.size();
}

#endif

template <typename Number>
bool readWhole(std::string_view text, Number &value)
{
    // from_chars also reads infinities and NaN.
    if (text.empty() || !(stlIsDigit(text.back()) || text.back() == '.'))
        return false;
    Number result{};
    if (!readAll(text, result))
        return false;
    value = result;
    return true;
}

// Of text without a sign: its longest start that is a number. from_chars leaves it open whether a number
// beyond the range is infinite or zero, which the C library knows.
template <typename Number>
bool readMagnitude(const char *text, Number &value)
{
    const std::string_view digits = text;
    const bool isHexadecimal = digits.substr(0, 2) == "0x";
    if (isHexadecimal ? readByFromChars(digits.substr(2), std::chars_format::hex, value) != 0
                      : readByFromChars(digits, std::chars_format::general, value) != 0)
        return true;
    char *end = nullptr;
    readByCLibrary(text, &end, value);
    return end != text;
}

template <typename Number>
bool convertAny(const std::string &text, Number &value)
{
    using Limits = std::numeric_limits<Number>;
    const bool hasSign = text[0] == '-' || text[0] == '+';
    const char *const unsignedText = text.c_str() + (hasSign ? 1 : 0);
    Number magnitude{};
    if (*unsignedText == 'n')
        magnitude = Limits::quiet_NaN();
    else if (*unsignedText == 'i')
        magnitude = Limits::infinity();
    else if (!readMagnitude(unsignedText, magnitude))
        return false;
    value = std::copysign(magnitude, text[0] == '-' ? Number{-1} : Number{1});
    return true;
}

} // namespace

bool stlReadWholeNumber(std::string_view text, float &value) { return readWhole(text, value); }
bool stlReadWholeNumber(std::string_view text, double &value) { return readWhole(text, value); }

bool stl_number_scan::convert(const std::string &text, float &value) { return convertAny(text, value); }
bool stl_number_scan::convert(const std::string &text, double &value) { return convertAny(text, value); }
