#include "tests/app/InterlockModel.h"

#include <QtGlobal>

namespace {

const QStringList axes{"X", "Y", "Z"};
const QStringList sameLengthBoxes{"chbXsameY", "chbXsameZ", "chbYsameX",
                                  "chbYsameZ", "chbZsameX", "chbZsameY"};

QString name(const char *form, const QString &axis) { return QString(form).replace('?', axis); }

// The two boxes by which an axis takes the length of another.
QStringList takersOf(const QString &axis)
{
    if (axis == "X")
        return {"chbXsameY", "chbXsameZ"};
    if (axis == "Y")
        return {"chbYsameX", "chbYsameZ"};
    return {"chbZsameX", "chbZsameY"};
}

bool countsAsNonzero(const QString &text)
{
    if (!knownOffsetTexts().contains(text))
        qFatal("the model does not know the offset \"%s\"", qPrintable(text));
    return knownOffsetTexts().value(text);
}

} // namespace

const QMap<QString, bool> &knownOffsetTexts()
{
    static const QMap<QString, bool> texts{{"", false},    {"0", false},  {"0.0", false},  {"-0", false},
                                           {"abc", false}, {" ", false},  {"0.5", true},   {"-3", true},
                                           {"nan", true},  {"inf", true}, {"1e400", true}, {"1", true},
                                           {"0,5", false}};
    return texts;
}

InterlockModel::InterlockModel()
{
    for (const QString &axis : axes) {
        m_fields[name("edt?Scale", axis)] = {"1", true};
        m_fields[name("edt?OffsB", axis)] = {"0", true};
        m_fields[name("edt?OffsA", axis)] = {"0", true};
        m_fields[name("edtRotate?", axis)] = {"", false};
        m_fields[name("edt?SetL", axis)] = {"", false};
        m_boxes[name("chbRotate?", axis)] = {};
        m_boxes[name("chb?SetL", axis)] = {};
        m_boxes[name("chb?Set0", axis)] = {};
    }
    for (const QString &box : sameLengthBoxes)
        m_boxes[box] = {};
}

void InterlockModel::setTicked(const QString &box, bool on)
{
    if (m_boxes[box].ticked == on)
        return;
    m_boxes[box].ticked = on;
    boxChanged(box, on);
}

void InterlockModel::setText(const QString &field, const QString &text)
{
    if (m_fields[field].text == text)
        return;
    m_fields[field].text = text;
    if (field.endsWith("Scale"))
        setTicked(name("chb?SetL", field.mid(3, 1)), false);
}

void InterlockModel::boxChanged(const QString &box, bool on)
{
    if (box.startsWith("chbRotate"))
        enableField(name("edtRotate?", box.right(1)), on);
    else if (box.endsWith("SetL"))
        setLengthChanged(box.mid(3, 1), on);
    else if (box.endsWith("Set0"))
        originChanged(box.mid(3, 1), on);
    else
        sameLengthChanged(box, on);
}

void InterlockModel::setLengthChanged(const QString &axis, bool on)
{
    enableField(name("edt?SetL", axis), on);
    for (const QString &taker : takersOf(axis))
        enableBox(taker, !on);
    for (const QString &taker : takersOf(axis))
        setTicked(taker, false);
    enableField(name("edt?Scale", axis), !on);
}

void InterlockModel::sameLengthChanged(const QString &box, bool on)
{
    const QString target = box.mid(3, 1);
    for (const QString &other : sameLengthBoxes) {
        if (other != box)
            enableBox(other, !on);
    }
    enableField(name("edt?Scale", target), !on);
    setTicked(name("chb?SetL", target), false);
    enableBox(name("chb?SetL", target), !on);
}

void InterlockModel::originChanged(const QString &axis, bool on)
{
    const QString before = name("edt?OffsB", axis);
    const QString after = name("edt?OffsA", axis);
    if (!on) {
        enableField(before, true);
        enableField(after, true);
        return;
    }
    if (countsAsNonzero(m_fields[before].text) || countsAsNonzero(m_fields[after].text)) {
        m_messages << "Unable to set " + axis + " Length to zero while " + axis + " offsets are nonzero.";
        setTicked(name("chb?Set0", axis), false);
        return;
    }
    setText(before, "0");
    enableField(before, false);
    setText(after, "0");
    enableField(after, false);
}

void InterlockModel::reset()
{
    for (const char *form : {"edt?Scale", "edt?OffsB", "edt?OffsA"}) {
        for (const QString &axis : axes)
            setText(name(form, axis), QString(form).endsWith("Scale") ? "1" : "0");
    }
    for (const char *form : {"chbRotate?", "chb?SetL"}) {
        for (const QString &axis : axes)
            setTicked(name(form, axis), false);
    }
    for (const char *form : {"edtRotate?", "edt?SetL"}) {
        for (const QString &axis : axes)
            setText(name(form, axis), "");
    }
    for (const QString &axis : axes)
        setTicked(name("chb?Set0", axis), false);
    for (const QString &box : sameLengthBoxes)
        setTicked(box, false);
}
