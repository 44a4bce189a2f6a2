// The form of the log viewer.
#pragma once

#include <QDialog>
#include <QGridLayout>
#include <QPushButton>
#include <QTextEdit>

class MeshvaneLogForm {
public:
    QGridLayout *gridLayout = nullptr;
    QTextEdit *txtLog = nullptr;
    QPushButton *btnExit = nullptr;

    // Fills the dialog, which owns all of it.
    void setupUi(QDialog *dialog);
    void retranslateUi(QDialog *dialog);

private:
    void addText(QDialog *dialog);
    void addExitRow(QDialog *dialog);
};
