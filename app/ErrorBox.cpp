#include "app/ErrorBox.h"

#include <QMessageBox>

void showError(const QString &text)
{
    // Deliberate: the box has no parent, so it blocks every window and appears in the middle of the screen.
    QMessageBox::critical(nullptr, "Error notification", text, QMessageBox::Ok);
}
