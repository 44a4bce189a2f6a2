#include "tests/app/InterlockModel.h"

#include "tests/app/FormNames.h"
#include "tests/app/WindowUnderTest.h"

#include <QtGlobal>

namespace {

bool countsAsNonzero(const QString &text)
{
    if (!knownOffsetTexts().contains(text))
        qFatal("the model does not know the offset \"%s\"", qPrintable(text));
    return knownOffsetTexts().value(text);
}

} // namespace

const QMap<QString, bool> &knownOffsetTexts()
{
    static const QMap<QString, bool> texts{{"", false},    {" ", false},   {"0", false},   {"-0", false},
                                           {"0.0", false}, {"abc", false}, {"0,5", false}, {"0x5", false},
                                           {"1", true},    {"0.5", true},  {"-3", true},   {"1e-9", true},
                                           {"nan", true},  {"inf", true},  {"1e400", true}};
    return texts;
}

InterlockModel::InterlockModel()
{
    for (const QString &axis : axes()) {
        m_fields[onAxis("edt?Scale", axis)] = {"1", true};
        m_fields[onAxis("edt?OffsB", axis)] = {"0", true};
        m_fields[onAxis("edt?OffsA", axis)] = {"0", true};
        m_fields[onAxis("edtRotate?", axis)] = {"", false};
        m_fields[onAxis("edt?SetL", axis)] = {"", false};
        m_boxes[onAxis("chbRotate?", axis)] = {};
        m_boxes[onAxis("chb?SetL", axis)] = {};
        m_boxes[onAxis("chb?Set0", axis)] = {};
    }
    for (const QString &box : sameLengthBoxNames())
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
        setTicked(onAxis("chb?SetL", field.mid(3, 1)), false);
}

void InterlockModel::boxChanged(const QString &box, bool on)
{
    if (box.startsWith("chbRotate"))
        enableField(onAxis("edtRotate?", box.right(1)), on);
    else if (box.endsWith("SetL"))
        setLengthChanged(box.mid(3, 1), on);
    else if (box.endsWith("Set0"))
        originChanged(box.mid(3, 1), on);
    else
        sameLengthChanged(box, on);
}

void InterlockModel::setLengthChanged(const QString &axis, bool on)
{
    enableField(onAxis("edt?SetL", axis), on);
    for (const QString &box : sameLengthBoxesOf(axis))
        enableBox(box, !on);
    for (const QString &box : sameLengthBoxesOf(axis))
        setTicked(box, false);
    enableField(onAxis("edt?Scale", axis), !on);
}

void InterlockModel::sameLengthChanged(const QString &box, bool on)
{
    const QString target = box.mid(3, 1);
    for (const QString &other : sameLengthBoxNames()) {
        if (other != box)
            enableBox(other, !on);
    }
    enableField(onAxis("edt?Scale", target), !on);
    setTicked(onAxis("chb?SetL", target), false);
    enableBox(onAxis("chb?SetL", target), !on);
}

void InterlockModel::originChanged(const QString &axis, bool on)
{
    const QString before = onAxis("edt?OffsB", axis);
    const QString after = onAxis("edt?OffsA", axis);
    if (!on) {
        enableField(before, true);
        enableField(after, true);
        return;
    }
    if (countsAsNonzero(m_fields[before].text) || countsAsNonzero(m_fields[after].text)) {
        m_messages << "Unable to set " + axis + " Length to zero while " + axis + " offsets are nonzero.";
        setTicked(onAxis("chb?Set0", axis), false);
        return;
    }
    setText(before, "0");
    enableField(before, false);
    setText(after, "0");
    enableField(after, false);
}

void InterlockModel::reset()
{
    for (const char *pattern : {"edt?Scale", "edt?OffsB", "edt?OffsA"}) {
        for (const QString &axis : axes())
            setText(onAxis(pattern, axis), QString(pattern).endsWith("Scale") ? "1" : "0");
    }
    for (const char *pattern : {"chbRotate?", "chb?SetL"}) {
        for (const QString &axis : axes())
            setTicked(onAxis(pattern, axis), false);
    }
    for (const char *pattern : {"edtRotate?", "edt?SetL"}) {
        for (const QString &axis : axes())
            setText(onAxis(pattern, axis), "");
    }
    for (const QString &axis : axes())
        setTicked(onAxis("chb?Set0", axis), false);
    for (const QString &box : sameLengthBoxNames())
        setTicked(box, false);
}

QStringList differences(const InterlockModel &model, const WindowUnderTest &window)
{
    QStringList found;
    const auto compare = [&found](const QString &what, const auto &expected, const auto &actual) {
        if (expected != actual)
            found << QString("%1 should be %2, is %3").arg(what).arg(expected).arg(actual);
    };
    for (auto box = model.boxes().begin(); box != model.boxes().end(); ++box) {
        compare(box.key() + " ticked", box->ticked, window.isTicked(box.key()));
        compare(box.key() + " enabled", box->enabled, window.isEnabled(box.key()));
    }
    for (auto field = model.fields().begin(); field != model.fields().end(); ++field) {
        compare(field.key() + " text", field->text, window.text(field.key()));
        compare(field.key() + " enabled", field->enabled, window.isEnabled(field.key()));
    }
    return found;
}
