// While it exists, answers every file dialog by entering a name or by cancelling, and records the dialogs. A
// dialog's own question (replace the file?) is left to a MessageBoxRecorder.
#pragma once

#include <QFileDialog>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

struct ShownFileDialog {
    QString caption;
    QString directory;
    QStringList nameFilters;
    QString selectedNameFilter;
    QString proposedName;
    QString defaultSuffix;
    QFileDialog::AcceptMode acceptMode = QFileDialog::AcceptOpen;
    QFileDialog::FileMode fileMode = QFileDialog::AnyFile;
    QFileDialog::Options options;
    const QWidget *parent = nullptr;
    bool modal = false;
};

class FileDialogDriver : public QObject {
public:
    // An empty name cancels.
    explicit FileDialogDriver(const QString &name);
    ~FileDialogDriver() override;

    const QList<ShownFileDialog> &dialogs() const { return m_dialogs; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void answer(QFileDialog &dialog);

    QString m_name;
    QList<ShownFileDialog> m_dialogs;
};
