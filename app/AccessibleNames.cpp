#include "app/AccessibleNames.h"

#include "app/FormTable.h"
#include "ui_MeshvaneMainWindow.h"

#include <QTextDocumentFragment>

namespace {

// The label's text without mark-up and without the colon at its end.
QString plainText(const QLabel *label)
{
    QString text = QTextDocumentFragment::fromHtml(label->text()).toPlainText().trimmed();
    if (text.endsWith(':'))
        text.chop(1);
    return text;
}

void nameFileRow(const QLabel *label, LineEditCustom *field, QPushButton *browse)
{
    field->setAccessibleName(plainText(label));
    browse->setAccessibleName("Browse " + plainText(label));
}

} // namespace

void nameForScreenReaders(const Ui::MeshvaneMainWindow &ui, const FormTable &form)
{
    nameFileRow(ui.lblFileIn, ui.edtFileIn, ui.btnBrowseIn);
    nameFileRow(ui.lblFileOut, ui.edtFileOut, ui.btnBrowseOut);
    for (const AxisRow &row : form.axes) {
        row.scale->setAccessibleName(row.letter + ' ' + plainText(ui.lblScale));
        row.offsetBefore->setAccessibleName(row.letter + ' ' + plainText(ui.lblOffsetBefore));
        row.offsetAfter->setAccessibleName(row.letter + ' ' + plainText(ui.lblOffsetAfter));
        row.length->setAccessibleName(row.setLengthBox->text());
        row.angle->setAccessibleName(row.rotateBox->text());
    }
}
