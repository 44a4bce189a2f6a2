// Counting in texts.
#pragma once

#include <string_view>

// How often `part` occurs in `text`, without overlaps.
inline int occurrences(std::string_view text, std::string_view part)
{
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos;
         at = text.find(part, at + part.size()))
        ++count;
    return count;
}
