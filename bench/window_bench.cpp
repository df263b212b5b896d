// What it costs to open the window, held against bare widgets. The exit status tells whether it is within its limit.

#include "comparison.h"
#include "standin.h"
#include "ui/shell/mainwindow.h"
#include "ui/shell/startup.h"

#include <QApplication>

#include <memory>
#include <utility>

namespace {

constexpr int rounds = 15;

/// Makes a window and shows it. It is taken down later, which is no part of its cost.
template <typename Window, typename Argument>
std::unique_ptr<QWidget> opened(Argument argument)
{
    auto window = std::make_unique<Window>(std::move(argument));
    window->show();
    QApplication::processEvents();
    return window;
}

}  // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    startup::prepareScreen();
    const QApplication application(argc, argv);
    startup::prepareApplication();

    const PortLister noPorts = [] { return QStringList(); };
    const MainWindow model(noPorts);
    Comparison opening;
    for (int round = 0; round < rounds; ++round) {
        std::unique_ptr<QWidget> window, standIn;
        opening.measure([&] { window = opened<MainWindow>(noPorts); },
                        [&] { standIn = opened<StandIn>(std::cref<const QWidget>(model)); });
    }
    return isWithin("open_window_to_bare_widgets", opening.ratio(), 1.5) ? 0 : 1;
}
