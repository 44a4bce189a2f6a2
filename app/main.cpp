// Starts the program: font, "C" locale, window, event loop.

#include "app/MeshvaneMainWindow.h"

#include <QApplication>
#include <QFont>
#include <QLocale>
#include <QMessageLogger>

#include <clocale>
#include <locale>

namespace {

// Numbers in files and fields have a decimal point whatever the user's locale.
void useClassicLocale()
{
    if (std::setlocale(LC_ALL, "C") == nullptr)
        QMessageLogger().debug("ERROR: Locale not set to classic.\n");
    std::locale::global(std::locale("C"));
    QLocale::setDefault(QLocale(QLocale::C, QLocale::AnyCountry));
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QFont font = QApplication::font();
    font.setPointSize(10);
    QApplication::setFont(font);
    useClassicLocale();

    MeshvaneMainWindow window;
    window.show();
    return QApplication::exec();
}
