// Collects the differences that a comparison finds; empty if there are none. Needs no test framework.
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

    void expectSame(long product, long twin, std::string_view what);

    // The two zeros differ, the NaNs do not.
    void expectSameOrBothNan(double product, double twin, std::string_view what);

    // Of two texts that differ, the surroundings of the first difference are shown, unprintable bytes
    // escaped.
    void expectSameText(std::string_view product, std::string_view twin, std::string_view what);

    bool isEmpty() const { return m_text.empty(); }
    const std::string &text() const { return m_text; } // lines

private:
    std::string m_text;
};
