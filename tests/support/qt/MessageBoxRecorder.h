// While it exists, answers every message box and records what its user would have seen.
#pragma once

#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

struct ShownBox {
    QString title;
    QString text;
    QString informativeText;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
    qsizetype buttonCount = 0;
    const QWidget *parent = nullptr;
    bool modal = false;
};

class MessageBoxRecorder : public QObject {
public:
    MessageBoxRecorder();
    ~MessageBoxRecorder() override;

    const QList<ShownBox> &boxes() const { return m_boxes; }
    // A box that is not the standard error notification has its title in front: "[About] text".
    QStringList texts() const;
    void clear() { m_boxes.clear(); }

    // Called while a box is shown, before it is answered.
    void whenShown(std::function<void(const ShownBox &)> action) { m_action = std::move(action); }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void answer(QMessageBox &box);

    QList<ShownBox> m_boxes;
    std::function<void(const ShownBox &)> m_action;
};
