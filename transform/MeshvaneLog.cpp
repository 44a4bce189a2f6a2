#include "transform/MeshvaneLog.h"

#include "transform/MeshvaneLogForm.h"

MeshvaneLog::MeshvaneLog(QWidget *parent)
    : QDialog(parent),
      ui(std::make_unique<MeshvaneLogForm>())
{
    ui->setupUi(this);
    connect(ui->btnExit, SIGNAL(clicked()), this, SLOT(closeClicked()));
}

MeshvaneLog::~MeshvaneLog() = default;

void MeshvaneLog::setLogText(const QString &text) { ui->txtLog->setText(text); }

void MeshvaneLog::closeClicked() { done(QDialog::Accepted); }
