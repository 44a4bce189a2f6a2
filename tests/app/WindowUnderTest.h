// The main window as its user meets it: widgets are found by object name.
#pragma once

#include "app/MeshvaneMainWindow.h"
#include "tests/app/FormNames.h"

#include <QAction>
#include <QByteArray>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QString>
#include <QStringList>
#include <QWidget>

class WindowUnderTest {
public:
    MeshvaneMainWindow window;

    // Ends the process if there is no such object.
    template <typename Object>
    Object *find(const QString &name) const
    {
        QObject *&object = m_found[name];
        if (!object)
            object = window.findChild<Object *>(name);
        Object *result = qobject_cast<Object *>(object);
        if (!result)
            qFatal("no object %s", qPrintable(name));
        return result;
    }

    QLineEdit *field(const QString &name) const { return find<QLineEdit>(name); }
    QCheckBox *box(const QString &name) const { return find<QCheckBox>(name); }
    QPushButton *button(const QString &name) const { return find<QPushButton>(name); }
    QAction *action(const QString &name) const { return find<QAction>(name); }
    QPushButton *standardButton(QDialogButtonBox::StandardButton which) const
    {
        return find<QDialogButtonBox>("buttonBox")->button(which);
    }

    QString text(const QString &fieldName) const { return field(fieldName)->text(); }
    void enter(const QString &fieldName, const QString &text) const { field(fieldName)->setText(text); }
    void tick(const QString &boxName, bool on = true) const { box(boxName)->setChecked(on); }
    bool isTicked(const QString &boxName) const { return box(boxName)->isChecked(); }
    bool isEnabled(const QString &name) const { return find<QWidget>(name)->isEnabled(); }

    QString iconToolTip(const QString &fieldName) const
    {
        const QLabel *icon = field(fieldName)->findChild<QLabel *>();
        return icon->isHidden() ? QString() : icon->toolTip();
    }

    QString statusText() const { return window.statusBar()->currentMessage(); }

    void run() const { standardButton(QDialogButtonBox::Apply)->click(); }
    void reset() const { standardButton(QDialogButtonBox::Reset)->click(); }
    void enterFiles(const QString &input, const QString &output) const
    {
        enter("edtFileIn", input);
        enter("edtFileOut", output);
    }

    // All log viewers made so far.
    QList<QDialog *> viewers() const;

private:
    mutable QHash<QString, QObject *> m_found; // the form's objects live as long as the window
};
