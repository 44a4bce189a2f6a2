#include "tests/support/qt/MessageBoxRecorder.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QTimer>

namespace {

// Critical, modal, without parent, with one OK button.
bool isErrorNotification(const ShownBox &box)
{
    return box.title == "Error notification" && box.icon == QMessageBox::Critical && box.parent == nullptr &&
           box.buttons == QMessageBox::Ok && box.buttonCount == 1 && box.modal &&
           box.informativeText.isEmpty();
}

} // namespace

MessageBoxRecorder::MessageBoxRecorder() { qApp->installEventFilter(this); }

MessageBoxRecorder::~MessageBoxRecorder() { qApp->removeEventFilter(this); }

QStringList MessageBoxRecorder::texts() const
{
    QStringList result;
    for (const ShownBox &box : m_boxes)
        result << (isErrorNotification(box) ? box.text : '[' + box.title + "] " + box.text);
    return result;
}

bool MessageBoxRecorder::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show) {
        if (QPointer<QMessageBox> box = qobject_cast<QMessageBox *>(watched)) {
            // The box starts its event loop after it is shown.
            QTimer::singleShot(0, this, [this, box] {
                if (box)
                    answer(*box);
            });
        }
    }
    return QObject::eventFilter(watched, event);
}

void MessageBoxRecorder::answer(QMessageBox &box)
{
    ShownBox shown;
    shown.title = box.windowTitle();
    shown.text = box.text();
    shown.informativeText = box.informativeText();
    shown.icon = box.icon();
    shown.buttons = box.standardButtons();
    shown.buttonCount = box.buttons().size();
    shown.parent = box.parentWidget();
    shown.modal = box.isModal();
    m_boxes << shown;
    if (m_action)
        m_action(shown);
    if (QAbstractButton *yes = box.button(QMessageBox::Yes))
        yes->click();
    else
        box.buttons().constFirst()->click();
}
