// A text for stlScanNumber.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string_view>

class ScannedText {
public:
    explicit ScannedText(std::string_view text)
        : m_text(text)
    {}

    int peek() const { return m_at == m_text.size() ? EOF : static_cast<unsigned char>(m_text[m_at]); }
    void take() { ++m_at; }
    std::size_t position() const { return m_at; }

private:
    std::string_view m_text;
    std::size_t m_at = 0;
};
