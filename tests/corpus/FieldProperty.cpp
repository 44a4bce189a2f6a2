#include "tests/corpus/FieldProperty.h"

#include "tests/corpus/PlainField.h"
#include "tests/support/Verdict.h"
#include "widgets/LineEditCustom.h"

#include <QLabel>

namespace {

class FieldAndTwin {
public:
    FieldAndTwin()
        : m_icon(m_field.findChild<QLabel *>())
    {}

    void apply(char action, const QString &argument);

    const std::string &findings() const { return m_verdict.text(); }

private:
    void name(const QString &text, bool bold);
    void forbid(int value, bool clearFirst);
    void setState(bool shown, bool enabled);
    void compare(const std::string &situation);

    QWidget m_parent; // never shown; a field without a parent would count as hidden
    LineEditCustom m_field{&m_parent};
    QLabel *m_icon;
    PlainField m_twin;
    Verdict m_verdict;
};

void FieldAndTwin::apply(char action, const QString &argument)
{
    switch (action) {
    case 't':
        m_field.setText(argument);
        m_twin.enter(m_field.text());
        break;
    case 'p':
        m_field.addPolicy(argument.toInt());
        m_twin.addPolicy(argument.toInt());
        break;
    case 'n':
    case 'N':
        name(argument, action == 'N');
        break;
    case 'v':
    case 'V':
        forbid(argument.toInt(), action == 'V');
        break;
    case 'u':
        m_field.setUsedNames(argument.split(','));
        m_twin.usedNames = argument.split(',');
        break;
    case 'c':
        m_field.setInvalidCharacters(argument.split(','));
        m_twin.invalidCharacters = argument.split(',');
        break;
    case '<':
        m_field.setMinimumValue(argument.toFloat());
        m_twin.minimum = argument.toFloat();
        break;
    case '>':
        m_field.setMaximumValue(argument.toFloat());
        m_twin.maximum = argument.toFloat();
        break;
    case 'e':
    case 'd':
        setState(!m_twin.hidden, action == 'e');
        break;
    case 's':
    case 'h':
        setState(action == 's', m_twin.enabled);
        break;
    case 'r':
        m_field.applyModifingPolicies();
        m_twin.finishEditing();
        break;
    case 'a':
        m_field.applyLineEditPolicy();
        m_twin.runChecks();
        break;
    case 'T':
        m_field.setToolTip(argument);
        m_twin.ownToolTip = argument;
        break;
    case '?':
        m_verdict.expectSameText(m_field.errorText().toStdString(), m_twin.askForErrors().toStdString(),
                                 "errors");
        break;
    default:
        return;
    }
    compare(std::string("after ") + action + ": ");
}

void FieldAndTwin::name(const QString &text, bool bold)
{
    m_field.setFieldName(text, bold);
    m_twin.name = bold ? "<b>" + text + "</b>" : text;
}

void FieldAndTwin::forbid(int value, bool clearFirst)
{
    m_field.addInvalidValue(value, clearFirst);
    if (clearFirst)
        m_twin.invalidValues.clear();
    m_twin.invalidValues << QString::number(value);
}

void FieldAndTwin::setState(bool shown, bool enabled)
{
    m_field.setVisible(shown);
    m_twin.hidden = !shown;
    m_field.setEnabled(enabled);
    m_twin.enabled = enabled;
}

void FieldAndTwin::compare(const std::string &situation)
{
    m_verdict.expectSameText(m_field.text().toStdString(), m_twin.text.toStdString(), situation + "text");
    m_verdict.expectSame(!m_icon->isHidden(), m_twin.iconShown, situation + "icon");
    m_verdict.expectSameText(m_icon->toolTip().toStdString(), m_twin.iconToolTip.toStdString(),
                             situation + "icon's tool tip");
    m_verdict.expectSameText(m_field.toolTip().toStdString(), m_twin.ownToolTip.toStdString(),
                             situation + "own tool tip");
}

} // namespace

std::string checkField(std::string_view script)
{
    FieldAndTwin both;
    while (!script.empty()) {
        const std::string_view line = script.substr(0, script.find('\n'));
        script.remove_prefix(std::min(line.size() + 1, script.size()));
        if (!line.empty())
            both.apply(line[0], QString::fromUtf8(line.data() + 1, static_cast<int>(line.size()) - 1));
        if (!both.findings().empty())
            break;
    }
    return both.findings();
}
