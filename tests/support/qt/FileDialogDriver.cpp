#include "tests/support/qt/FileDialogDriver.h"

#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>

FileDialogDriver::FileDialogDriver(const QString &name)
    : m_name(name)
{
    qApp->installEventFilter(this);
}

FileDialogDriver::~FileDialogDriver() { qApp->removeEventFilter(this); }

bool FileDialogDriver::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show) {
        if (QPointer<QFileDialog> dialog = qobject_cast<QFileDialog *>(watched)) {
            QTimer::singleShot(0, this, [this, dialog] {
                if (dialog)
                    answer(*dialog);
            });
        }
    }
    return QObject::eventFilter(watched, event);
}

void FileDialogDriver::answer(QFileDialog &dialog)
{
    QLineEdit *nameField = dialog.findChild<QLineEdit *>("fileNameEdit");
    ShownFileDialog shown;
    shown.caption = dialog.windowTitle();
    shown.directory = dialog.directory().path();
    shown.nameFilters = dialog.nameFilters();
    shown.selectedNameFilter = dialog.selectedNameFilter();
    shown.proposedName = nameField->text();
    shown.defaultSuffix = dialog.defaultSuffix();
    shown.acceptMode = dialog.acceptMode();
    shown.fileMode = dialog.fileMode();
    shown.options = dialog.options();
    shown.parent = dialog.parentWidget();
    shown.modal = dialog.isModal();
    m_dialogs << shown;
    if (m_name.isEmpty()) {
        dialog.reject();
        return;
    }
    nameField->setText(m_name);
    QMetaObject::invokeMethod(&dialog, "accept");
    // A dialog that refuses the name would wait forever.
    if (dialog.isVisible())
        dialog.reject();
}
