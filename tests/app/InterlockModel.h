// The rules of the form's interlocks, written a second time and without widgets, to compare the window with.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

class WindowUnderTest;

class InterlockModel {
public:
    InterlockModel();

    struct Box {
        bool ticked = false;
        bool enabled = true;
    };
    struct Field {
        QString text;
        bool enabled = true;
    };

    // What a user or a program does.
    void setTicked(const QString &box, bool on);
    void setText(const QString &field, const QString &text);
    void reset();

    const QMap<QString, Box> &boxes() const { return m_boxes; }
    const QMap<QString, Field> &fields() const { return m_fields; }
    const QStringList &messages() const { return m_messages; } // of all refusals so far

private:
    void boxChanged(const QString &box, bool on);
    void setLengthChanged(const QString &axis, bool on);
    void sameLengthChanged(const QString &box, bool on);
    void originChanged(const QString &axis, bool on);
    void enableBox(const QString &box, bool on) { m_boxes[box].enabled = on; }
    void enableField(const QString &field, bool on) { m_fields[field].enabled = on; }

    QMap<QString, Box> m_boxes;
    QMap<QString, Field> m_fields;
    QStringList m_messages;
};

// The offset texts that the model knows, and whether each counts as nonzero.
const QMap<QString, bool> &knownOffsetTexts();

// Every text, tick and enabled state in which the window differs from the model.
QStringList differences(const InterlockModel &model, const WindowUnderTest &window);
