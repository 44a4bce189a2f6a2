// The program's only window. It owns the form and connects it once; the slots hand their work to
// FormInterlocks, FormReader and RunPipeline.
#pragma once

#include <QMainWindow>
#include <QString>

#include <memory>

class FormInterlocks;
class MeshvaneLog;
class QAbstractButton;
class QRegExp;
class RunPipeline;
class RunReporter;
struct FormTable;
namespace Ui {
class MeshvaneMainWindow;
}

class MeshvaneMainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MeshvaneMainWindow(QWidget *parent = nullptr);
    ~MeshvaneMainWindow() override;

private slots:
    // Runs with the values of the form, or shows the first complaint about them.
    void slotCalc();
    void slotChbRotateX(bool checked);
    void slotChbRotateY(bool checked);
    void slotChbRotateZ(bool checked);
    void slotChbXSameY(bool checked);
    void slotChbXSameZ(bool checked);
    void slotChbXSet0(bool checked);
    void slotChbXSetL(bool checked);
    void slotChbYSameX(bool checked);
    void slotChbYSameZ(bool checked);
    void slotChbYSet0(bool checked);
    void slotChbYSetL(bool checked);
    void slotChbZSameX(bool checked);
    void slotChbZSameY(bool checked);
    void slotChbZSet0(bool checked);
    void slotChbZSetL(bool checked);
    void slotClearVals();
    void slotEdtXScale(const QString &newText);
    void slotEdtYScale(const QString &newText);
    void slotEdtZScale(const QString &newText);
    void slotGetInputFile();
    void slotGetOutputFile();
    // Opens another viewer, with the current text of the log.
    void slotViewLog();
    void handleButtonBox(QAbstractButton *but);
    void showAbout();

private:
    void wireForm();
    void wireBoxesAndScales();
    void wireCommands();
    void configureFields();
    void showStart();

    Ui::MeshvaneMainWindow *ui;
    QRegExp *numberRegExp; // Deliberate: applied to nothing and never deleted
    QString inputPath;     // as chosen; a different name in the field replaces it when a run starts
    QString outputPath;

    std::unique_ptr<FormTable> form;
    std::unique_ptr<FormInterlocks> interlocks;
    std::unique_ptr<RunReporter> runReporter;
    std::unique_ptr<RunPipeline> runPipeline; // owns the mesh, the log stream and the latest transformer
    MeshvaneLog *logViewer = nullptr;         // the latest; all are children of the window
};
