// Prints where a script can click in the main window and the log viewer: one "name x y" per line, in pixels
// from the upper left corner of the window's contents. The windows are laid out as the program lays them out,
// but not shown.
//
//   click_spots width height     of the main window's contents in pixels; the viewer has its own size

#include "app/MeshvaneMainWindow.h"
#include "transform/MeshvaneLog.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFont>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>

#include <cstdio>
#include <cstdlib>

namespace {

void print(const QString &name, const QWidget &widget, const QPoint &spot)
{
    const QPointF pixels = QPointF(widget.mapTo(widget.window(), spot)) * widget.devicePixelRatioF();
    std::printf("%s %d %d\n", qPrintable(name), qRound(pixels.x()), qRound(pixels.y()));
}

// A check box answers on its mark and its text only, not wherever the layout has made it wide.
QPoint spotOf(const QWidget &widget)
{
    const QPoint center = widget.rect().center();
    return qobject_cast<const QCheckBox *>(&widget) ? QPoint(center.y(), center.y()) : center;
}

void printWidgets(const QWidget &window)
{
    for (const QLineEdit *field : window.findChildren<QLineEdit *>()) {
        print(field->objectName(), *field, spotOf(*field));
        if (const QLabel *icon = field->findChild<QLabel *>())
            print(field->objectName() + ".icon", *icon, QRect({}, icon->sizeHint()).center());
    }
    for (const QAbstractButton *button : window.findChildren<QAbstractButton *>()) {
        const bool isStandard = qobject_cast<const QDialogButtonBox *>(button->parentWidget()) != nullptr;
        const QString name = isStandard ? button->text().remove('&') : button->objectName();
        if (!name.isEmpty())
            print(name, *button, spotOf(*button));
    }
}

void printMenus(const QMenuBar &menuBar)
{
    for (QAction *action : menuBar.actions())
        print(action->menu()->objectName(), menuBar, menuBar.actionGeometry(action).center());
}

void layOut(QWidget &window)
{
    window.setAttribute(Qt::WA_DontShowOnScreen);
    window.show();
    QApplication::processEvents();
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (argc != 3) {
        std::fputs("usage: click_spots width height\n", stderr);
        return 2;
    }
    QFont font = QApplication::font();
    font.setPointSize(10); // as in the program
    QApplication::setFont(font);

    MeshvaneMainWindow window;
    window.resize(qRound(std::atoi(argv[1]) / window.devicePixelRatioF()),
                  qRound(std::atoi(argv[2]) / window.devicePixelRatioF()));
    layOut(window);
    printWidgets(window);
    printMenus(*window.menuBar());

    MeshvaneLog viewer;
    layOut(viewer);
    printWidgets(viewer);
    return EXIT_SUCCESS;
}
