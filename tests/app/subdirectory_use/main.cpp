// Uses the window in an outside project: its icons must be there, and our compiler warnings must not be.
#include "app/MeshvaneMainWindow.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const int careless = 3.7; // an error under our own warnings
    MeshvaneMainWindow window;
    window.show();
    int missing = careless - 3;
    for (const char *icon : {"dialog-error22x22", "dialog-warning22x22", "fileopen", "transform-scale"}) {
        if (QPixmap(QString(":/pixmaps/%1.png").arg(icon)).isNull()) {
            std::printf("no icon %s\n", icon);
            ++missing;
        }
    }
    QLineEdit *scale = window.findChild<QLineEdit *>("edtXScale");
    scale->setText("abc");
    if (scale->findChild<QLabel *>()->isHidden()) {
        std::puts("the field does not check its text");
        ++missing;
    }
    return missing;
}
