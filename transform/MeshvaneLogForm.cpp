#include "transform/MeshvaneLogForm.h"

#include <QCoreApplication>
#include <QSpacerItem>

namespace {

QSpacerItem *exitRowSpacer()
{
    return new QSpacerItem(240, 20, QSizePolicy::Expanding, QSizePolicy::Minimum);
}

} // namespace

void MeshvaneLogForm::setupUi(QDialog *dialog)
{
    if (dialog->objectName().isEmpty())
        dialog->setObjectName(QStringLiteral("MeshvaneLog"));
    dialog->resize(596, 349);
    gridLayout = new QGridLayout(dialog);
    gridLayout->setObjectName(QStringLiteral("gridLayout"));
    addText(dialog);
    addExitRow(dialog);
    retranslateUi(dialog);
    QMetaObject::connectSlotsByName(dialog);
}

void MeshvaneLogForm::addText(QDialog *dialog)
{
    txtLog = new QTextEdit(dialog);
    txtLog->setObjectName(QStringLiteral("txtLog"));
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(txtLog->sizePolicy().hasHeightForWidth());
    txtLog->setSizePolicy(policy);
    QFont font;
    font.setPointSize(11);
    txtLog->setFont(font);
    gridLayout->addWidget(txtLog, 0, 0, 1, 3);
}

void MeshvaneLogForm::addExitRow(QDialog *dialog)
{
    gridLayout->addItem(exitRowSpacer(), 1, 0);
    btnExit = new QPushButton(dialog);
    btnExit->setObjectName(QStringLiteral("btnExit"));
    gridLayout->addWidget(btnExit, 1, 1);
    gridLayout->addItem(exitRowSpacer(), 1, 2);
}

void MeshvaneLogForm::retranslateUi(QDialog *dialog)
{
    // Deliberate: the title is just "Dialog".
    dialog->setWindowTitle(QCoreApplication::translate("MeshvaneLog", "Dialog"));
    btnExit->setText(QCoreApplication::translate("MeshvaneLog", "Exit"));
}
