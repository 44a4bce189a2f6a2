#include "stl/StlLines.h"

#include "stl/StlNumberText.h"

#include <algorithm>

bool StlLineReader::next()
{
    std::string_view piece = m_blocks.ahead(stlLongestLine).substr(0, stlLongestLine);
    piece = piece.substr(0, std::min(piece.find('\n'), piece.size() - 1) + 1);
    const bool isWhole = piece.size() == stlLongestLine || (!piece.empty() && piece.back() == '\n');
    m_ranOut = piece.empty() || (!isWhole && m_blocks.error() != 0);
    if (m_ranOut)
        return false;
    m_line = piece.substr(0, piece.find('\0'));
    m_blocks.take(piece.size());
    ++m_number;
    return true;
}

std::string_view StlLineReader::trimmed() const
{
    std::string_view text = m_line;
    for (int i = 0; i < 2; ++i) {
        if (!text.empty() && (text.back() == '\r' || text.back() == '\n'))
            text.remove_suffix(1);
    }
    return text;
}

std::string_view StlWords::next()
{
    m_rest.remove_prefix(std::min(m_rest.find_first_not_of(' '), m_rest.size()));
    const std::string_view word = m_rest.substr(0, m_rest.find(' '));
    m_rest.remove_prefix(word.size());
    return word;
}

void stlReadPoint(StlWords &words, double &x, double &y, double &z)
{
    for (double *value : {&x, &y, &z}) {
        const std::string_view word = words.next();
        if (word.empty() || !stlReadNumber(word, *value))
            return;
    }
}
