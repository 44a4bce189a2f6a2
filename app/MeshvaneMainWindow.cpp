#include "app/MeshvaneMainWindow.h"

#include "app/AccessibleNames.h"
#include "app/BusyCursor.h"
#include "app/ErrorBox.h"
#include "app/FormInterlocks.h"
#include "app/FormReader.h"
#include "app/FormTable.h"
#include "app/WindowRunReporter.h"
#include "transform/MeshvaneLog.h"
#include "transform/PathText.h"
#include "transform/RunFiles.h"
#include "transform/RunPipeline.h"
#include "ui_MeshvaneMainWindow.h"

#include <QFile>
#include <QMessageBox>
#include <QRegExp>

namespace {

constexpr const char *fileFilter = "STL files (*.stl *.Stl *.STL *.stl2d);;All files (*.*)";

// Deliberate: nothing applies this expression, and it has slashes where backslashes were meant.
QRegExp *makeNumberRegExp() { return new QRegExp("/-?/d* | /-?/d*//.//d+ | /-?/d+//.//d*"); }

// A name typed over the chosen one replaces the whole path.
// Deliberate: the field is compared after conversion to Latin-1, so names with other characters count as
// typed.
void synchronisePath(QString &path, const QString &fieldText)
{
    if (lastPathPart(path) != QString::fromLatin1(fieldText.toLatin1()))
        path = fieldText;
}

} // namespace

MeshvaneMainWindow::MeshvaneMainWindow(QWidget *parent)
    : QMainWindow(parent),
      ui(new Ui::MeshvaneMainWindow)
{
    ui->setupUi(this);
    setWindowTitle("Meshvane - Quillmoret");
    numberRegExp = makeNumberRegExp();

    form = std::make_unique<FormTable>(*ui);
    interlocks = std::make_unique<FormInterlocks>(*form);
    runReporter = std::make_unique<WindowRunReporter>(*this);
    runPipeline = std::make_unique<RunPipeline>(*runReporter);

    wireForm();
    showStart();
    configureFields();
    nameForScreenReaders(*ui, *form);
    resize(minimumSizeHint());
}

MeshvaneMainWindow::~MeshvaneMainWindow() { delete ui; }

void MeshvaneMainWindow::wireForm()
{
    wireBoxesAndScales();
    wireCommands();
    ui->buttonBox->button(QDialogButtonBox::Apply)->setText("Run");
    connect(ui->actionAbout_Meshvane, &QAction::triggered, this, &MeshvaneMainWindow::showAbout);
}

void MeshvaneMainWindow::wireBoxesAndScales()
{
    const struct {
        const QObject *sender;
        const char *signal;
        const char *slot;
    } connections[] = {
        {ui->chbXSet0, SIGNAL(toggled(bool)), SLOT(slotChbXSet0(bool))},
        {ui->chbYSet0, SIGNAL(toggled(bool)), SLOT(slotChbYSet0(bool))},
        {ui->chbZSet0, SIGNAL(toggled(bool)), SLOT(slotChbZSet0(bool))},
        {ui->chbXsameY, SIGNAL(toggled(bool)), SLOT(slotChbXSameY(bool))},
        {ui->chbXsameZ, SIGNAL(toggled(bool)), SLOT(slotChbXSameZ(bool))},
        {ui->chbYsameX, SIGNAL(toggled(bool)), SLOT(slotChbYSameX(bool))},
        {ui->chbYsameZ, SIGNAL(toggled(bool)), SLOT(slotChbYSameZ(bool))},
        {ui->chbZsameX, SIGNAL(toggled(bool)), SLOT(slotChbZSameX(bool))},
        {ui->chbZsameY, SIGNAL(toggled(bool)), SLOT(slotChbZSameY(bool))},
        {ui->chbRotateX, SIGNAL(toggled(bool)), SLOT(slotChbRotateX(bool))},
        {ui->chbRotateY, SIGNAL(toggled(bool)), SLOT(slotChbRotateY(bool))},
        {ui->chbRotateZ, SIGNAL(toggled(bool)), SLOT(slotChbRotateZ(bool))},
        {ui->chbXSetL, SIGNAL(toggled(bool)), SLOT(slotChbXSetL(bool))},
        {ui->chbYSetL, SIGNAL(toggled(bool)), SLOT(slotChbYSetL(bool))},
        {ui->chbZSetL, SIGNAL(toggled(bool)), SLOT(slotChbZSetL(bool))},
        {ui->edtXScale, SIGNAL(textChanged(const QString &)), SLOT(slotEdtXScale(const QString &))},
        {ui->edtYScale, SIGNAL(textChanged(const QString &)), SLOT(slotEdtYScale(const QString &))},
        {ui->edtZScale, SIGNAL(textChanged(const QString &)), SLOT(slotEdtZScale(const QString &))},
    };
    for (const auto &connection : connections)
        connect(connection.sender, connection.signal, this, connection.slot);
}

void MeshvaneMainWindow::wireCommands()
{
    connect(ui->btnViewLog, SIGNAL(clicked()), this, SLOT(slotViewLog()));
    connect(ui->fileOpenAction, &QAction::triggered, this, &MeshvaneMainWindow::slotGetInputFile);
    connect(ui->fileRunAction, &QAction::triggered, this, &MeshvaneMainWindow::slotCalc);
    connect(ui->fileResetAction, &QAction::triggered, this, &MeshvaneMainWindow::slotClearVals);
    connect(ui->fileViewLogAction, &QAction::triggered, this, &MeshvaneMainWindow::slotViewLog);
    connect(ui->fileExitAction, &QAction::triggered, this, &QWidget::close);
    connect(ui->buttonBox, &QDialogButtonBox::clicked, this, &MeshvaneMainWindow::handleButtonBox);
    connect(ui->btnBrowseIn, SIGNAL(clicked()), this, SLOT(slotGetInputFile()));
    connect(ui->btnBrowseOut, SIGNAL(clicked()), this, SLOT(slotGetOutputFile()));
}

void MeshvaneMainWindow::showStart() { statusBar()->showMessage("No input file selected"); }

void MeshvaneMainWindow::configureFields()
{
    ui->edtFileIn->setFieldName("Stl Input File", true);
    ui->edtFileIn->addPolicy(PolicyFileExists);
    ui->edtFileIn->addPolicy(PolicyRequired);
    ui->edtFileOut->setFieldName("Stl Output File", true);
    ui->edtFileOut->addPolicy(PolicyParentDirectoryExists);
    ui->edtFileOut->addPolicy(PolicyRequired);
    for (const AxisRow &row : form->axes) {
        row.scale->setFieldName(row.letter + " Scale", true);
        row.scale->addPolicy(PolicyInvalidValues);
        row.scale->addPolicy(PolicyNumber);
        row.scale->addInvalidValue(0, false);
    }
}

void MeshvaneMainWindow::slotCalc()
{
    synchronisePath(inputPath, ui->edtFileIn->text());
    synchronisePath(outputPath, ui->edtFileOut->text());
    const FormReading reading = readForm(*form);
    if (!reading.complaint.isEmpty()) {
        showError(reading.complaint);
        return;
    }
    const BusyCursor busy;
    runPipeline->run(reading.parameters, inputPath, outputPath);
}

void MeshvaneMainWindow::slotChbRotateX(bool checked) { interlocks->rotateToggled(axisX, checked); }
void MeshvaneMainWindow::slotChbRotateY(bool checked) { interlocks->rotateToggled(axisY, checked); }
void MeshvaneMainWindow::slotChbRotateZ(bool checked) { interlocks->rotateToggled(axisZ, checked); }
void MeshvaneMainWindow::slotChbXSameY(bool checked) { interlocks->sameLengthToggled(xSameY, checked); }
void MeshvaneMainWindow::slotChbXSameZ(bool checked) { interlocks->sameLengthToggled(xSameZ, checked); }
void MeshvaneMainWindow::slotChbXSet0(bool checked) { interlocks->setOriginToggled(axisX, checked); }
void MeshvaneMainWindow::slotChbXSetL(bool checked) { interlocks->setLengthToggled(axisX, checked); }
void MeshvaneMainWindow::slotChbYSameX(bool checked) { interlocks->sameLengthToggled(ySameX, checked); }
void MeshvaneMainWindow::slotChbYSameZ(bool checked) { interlocks->sameLengthToggled(ySameZ, checked); }
void MeshvaneMainWindow::slotChbYSet0(bool checked) { interlocks->setOriginToggled(axisY, checked); }
void MeshvaneMainWindow::slotChbYSetL(bool checked) { interlocks->setLengthToggled(axisY, checked); }
void MeshvaneMainWindow::slotChbZSameX(bool checked) { interlocks->sameLengthToggled(zSameX, checked); }
void MeshvaneMainWindow::slotChbZSameY(bool checked) { interlocks->sameLengthToggled(zSameY, checked); }
void MeshvaneMainWindow::slotChbZSet0(bool checked) { interlocks->setOriginToggled(axisZ, checked); }
void MeshvaneMainWindow::slotChbZSetL(bool checked) { interlocks->setLengthToggled(axisZ, checked); }
void MeshvaneMainWindow::slotClearVals() { interlocks->resetFields(); }
void MeshvaneMainWindow::slotEdtXScale(const QString &newText) { interlocks->scaleEdited(axisX, newText); }
void MeshvaneMainWindow::slotEdtYScale(const QString &newText) { interlocks->scaleEdited(axisY, newText); }
void MeshvaneMainWindow::slotEdtZScale(const QString &newText) { interlocks->scaleEdited(axisZ, newText); }

void MeshvaneMainWindow::slotGetInputFile()
{
    ui->edtFileIn->browseOpenFile(fileFilter, "Open Input File");
    inputPath = ui->edtFileIn->text();
}

void MeshvaneMainWindow::slotGetOutputFile()
{
    // Deliberate: the caption is just "stl".
    ui->edtFileOut->browseSaveFile(".stl", fileFilter, "stl");
    outputPath = ui->edtFileOut->text();
}

void MeshvaneMainWindow::slotViewLog()
{
    if (!runPipeline->logWasOpened()) {
        showError("No log created yet.");
        return;
    }
    // Deliberate: every call makes a viewer, which stays hidden if the log cannot be read.
    logViewer = new MeshvaneLog(this);
    QFile log(logFileName);
    if (!log.open(QIODevice::ReadOnly)) {
        showError("Unable to read log file.");
        return;
    }
    logViewer->setLogText(QString::fromUtf8(log.readAll()));
    log.close();
    logViewer->show();
}

void MeshvaneMainWindow::handleButtonBox(QAbstractButton *but)
{
    switch (ui->buttonBox->buttonRole(but)) {
    case QDialogButtonBox::ApplyRole:
        slotCalc();
        break;
    case QDialogButtonBox::ResetRole:
        slotClearVals();
        break;
    default:
        close();
    }
}

void MeshvaneMainWindow::showAbout()
{
    const QString text =
        QString("Meshvane version: %0 <br>Quillmoret Release: %1").arg("11.0.0.s001").arg("11.0.0");
    QMessageBox::about(this, "About Meshvane", text);
}
