// Times the start of a process up to the painted window, compared with bare Qt windows in processes that are
// the same otherwise: application, font, locale, window, first paint. All are this program, started again in
// each round.
//
//   bench_StartUp [rounds]

#include "app/MeshvaneMainWindow.h"
#include "benchmarks/CpuTime.h"

#include <QApplication>
#include <QFont>
#include <QLabel>
#include <QLocale>
#include <QMainWindow>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr const char *kinds[] = {"empty", "label", "meshvane"};

std::unique_ptr<QMainWindow> windowOf(const std::string &kind)
{
    if (kind == "meshvane")
        return std::make_unique<MeshvaneMainWindow>();
    auto window = std::make_unique<QMainWindow>();
    if (kind == "label")
        window->setCentralWidget(new QLabel("Bare"));
    return window;
}

int showOnce(int argc, char **argv, const std::string &kind)
{
    const QApplication application(argc, argv);
    QFont font = QApplication::font();
    font.setPointSize(10);
    QApplication::setFont(font);
    std::setlocale(LC_ALL, "C");
    QLocale::setDefault(QLocale(QLocale::C, QLocale::AnyCountry));
    const std::unique_ptr<QMainWindow> window = windowOf(kind);
    window->show();
    while (!window->windowHandle()->isExposed())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QApplication::processEvents(); // paints
    return EXIT_SUCCESS;
}

struct Times {
    std::vector<double> cpu;
    std::vector<double> wall;
};

double medianOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void startOnce(const char *program, const char *kind, Times &times)
{
    const auto start = std::chrono::steady_clock::now();
    const Usage usage = usageOf([&] { execl(program, program, kind, nullptr); });
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
    if (!usage.succeeded)
        std::exit(EXIT_FAILURE);
    times.cpu.push_back(usage.cpuSeconds);
    times.wall.push_back(wall.count());
}

void printRow(const char *what, const std::vector<double> (&values)[3])
{
    const double empty = medianOf(values[0]);
    const double label = medianOf(values[1]);
    const double meshvane = medianOf(values[2]);
    std::printf("| %s | %.4f | %.4f | %.4f | %.2f | %.2f |\n", what, empty, label, meshvane, meshvane / empty,
                meshvane / label);
}

} // namespace

int main(int argc, char **argv)
{
    const std::string first = argc > 1 ? argv[1] : "";
    if (std::find(std::begin(kinds), std::end(kinds), first) != std::end(kinds))
        return showOnce(argc, argv, first);

    const int rounds = first.empty() ? 41 : std::atoi(first.c_str());
    Times times[3];
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < 3; ++i)
            startOnce(argv[0], kinds[i], times[i]);
    }
    std::printf("| median of %d starts | empty window | window with a label | Meshvane | Meshvane / empty | "
                "Meshvane / label |\n"
                "|---|---|---|---|---|---|\n",
                rounds);
    printRow("seconds to the painted window and exit", {times[0].wall, times[1].wall, times[2].wall});
    printRow("CPU seconds", {times[0].cpu, times[1].cpu, times[2].cpu});
    return EXIT_SUCCESS;
}
