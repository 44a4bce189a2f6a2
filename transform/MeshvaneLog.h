// The viewer of the run log: a small dialog with the text and an Exit button.
#pragma once

#include <QDialog>
#include <QString>

#include <memory>

class MeshvaneLogForm;

// Shows a snapshot: it neither reads the log itself nor follows it. The text can be edited, but edits are not
// saved.
class MeshvaneLog : public QDialog {
    Q_OBJECT

public:
    explicit MeshvaneLog(QWidget *parent = nullptr);
    ~MeshvaneLog() override;

    void setLogText(const QString &text);

private slots:
    // Ends the dialog as accepted.
    void closeClicked();

private:
    std::unique_ptr<MeshvaneLogForm> ui;
};
