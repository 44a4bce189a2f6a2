// Collects what is wrong; empty if nothing is.
#pragma once

#include <string>
#include <string_view>

class Verdict {
public:
    void expect(bool holds, std::string_view what)
    {
        if (!holds)
            m_text.append(what).append("\n");
    }

    template <typename Value>
    void expectSame(const Value &product, const Value &twin, std::string_view what)
    {
        expect(product == twin, what);
    }

    // Texts are shown where they differ, with everything unprintable escaped.
    void expectSameText(std::string_view product, std::string_view twin, std::string_view what);

    const std::string &text() const { return m_text; }

private:
    std::string m_text;
};
