// Random choices that are the same in every run of a test. No two of them in the arguments of one call:
// compilers differ in the order in which they evaluate arguments, except in braces.
#pragma once

#include <QString>
#include <QStringList>

#include <random>

class Dice {
public:
    explicit Dice(unsigned seed)
        : m_generator(seed)
    {}
    template <typename Integer>
    Integer below(Integer count)
    {
        return Integer(m_generator() % unsigned(count));
    }
    bool oneIn(int count) { return below(count) == 0; }
    QString oneOf(const QStringList &choices) { return choices.at(below(choices.size())); }

private:
    std::mt19937 m_generator;
};
