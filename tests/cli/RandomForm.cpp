#include "tests/cli/RandomForm.h"

namespace {

// No number has more than six decimals, so that the log tells all of it.
const QStringList scales{"2",   "25.4", "-1",      "0.5",    ".25",          "1e-3", "+3", "007.5",
                         "1e6", "1",    "0.03937", "-0.001", "12345.678901", "1E+2", "4.", "-25.4"};
const QStringList offsets{"0", "1", "-1", "100", "-0.5", "1e3", "+7.25", "0.000001", "-12345.654321", "1e9"};
const QStringList lengths{"100", "0", "1", "0.5", "25.4", "1e3", "+12", "0.001"};
const QStringList angles{"90", "-90", "0", "45", "30.5", "360", "-720.25", "1e-3", "180"};

const char *const letters[] = {"X", "Y", "Z"};

template <typename Count>
Count below(std::mt19937 &random, Count n)
{
    return static_cast<Count>(random() % static_cast<unsigned>(n));
}

QString oneOf(std::mt19937 &random, const QStringList &texts) { return texts[below(random, texts.size())]; }

class Filler {
public:
    explicit Filler(std::mt19937 &random)
        : m_random(random)
    {}

    RandomForm fill()
    {
        // The form lets one axis at most take the length of another.
        const int axisOfSameLength = oneIn(3) ? below(m_random, 3) : -1;
        for (int axis = 0; axis < 3; ++axis) {
            fillSize(axis, axis == axisOfSameLength);
            fillPlace(axis);
            if (oneIn(3))
                enterAndTick("edtRotate" + name(axis), oneOf(m_random, angles), "chbRotate" + name(axis),
                             "--rotate-" + option(axis));
        }
        return m_form;
    }

private:
    bool oneIn(int n) { return below(m_random, n) == 0; }
    static QString name(int axis) { return letters[axis]; }
    static std::string option(int axis) { return name(axis).toLower().toStdString(); }

    void enter(const QString &field, const QString &text) { m_form.entries.emplace_back(field, text); }

    void give(const std::string &optionName, const QString &value)
    {
        m_form.options.push_back(optionName);
        m_form.options.push_back(value.toStdString());
    }

    void enterAndTick(const QString &field, const QString &text, const QString &box,
                      const std::string &optionName)
    {
        enter(field, text);
        m_form.ticks << box;
        give(optionName, text);
    }

    void fillSize(int axis, bool takesLengthOfAnother)
    {
        const bool hasLength = !takesLengthOfAnother && oneIn(4);
        if (oneIn(2)) {
            const QString scale = oneOf(m_random, scales);
            enter("edt" + name(axis) + "Scale", scale);
            if (takesLengthOfAnother || hasLength)
                m_form.hasScaleThatLosesToALength = true;
            else
                give("--" + option(axis) + "-scale", scale);
        }
        if (hasLength)
            enterAndTick("edt" + name(axis) + "SetL", oneOf(m_random, lengths), "chb" + name(axis) + "SetL",
                         "--" + option(axis) + "-length");
        if (takesLengthOfAnother)
            tickSameLength(axis, (axis + 1 + below(m_random, 2)) % 3);
    }

    // Deliberate: the boxes of Y are crossed; the one that says Z gives the length of X.
    void tickSameLength(int axis, int of)
    {
        const int boxSays = axis == 1 ? 2 - of : of;
        m_form.ticks << "chb" + name(axis) + "same" + name(boxSays);
        give("--" + option(axis) + "-length-of", QString::fromStdString(option(of)));
        m_form.optionsBesideTheLog = {m_form.options.end() - 2, m_form.options.end()};
    }

    void fillPlace(int axis)
    {
        if (oneIn(4)) {
            m_form.ticks << "chb" + name(axis) + "Set0";
            m_form.options.push_back("--" + option(axis) + "-origin-to-zero");
            return;
        }
        for (const auto &[side, optionName] :
             {std::pair{"B", "-offset-before"}, std::pair{"A", "-offset-after"}}) {
            if (oneIn(2))
                continue;
            const QString offset = oneOf(m_random, offsets);
            enter("edt" + name(axis) + "Offs" + side, offset);
            give("--" + option(axis) + optionName, offset);
        }
    }

    std::mt19937 &m_random;
    RandomForm m_form;
};

} // namespace

RandomForm randomForm(std::mt19937 &random) { return Filler(random).fill(); }
