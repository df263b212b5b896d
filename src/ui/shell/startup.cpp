#include "ui/shell/startup.h"

#include "model/datafromdevice.h"
#include "model/qtversions.h"
#include "ui/look.h"
#include "ui/shell/mainwindowform.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFontDatabase>
#include <QScreen>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <vector>

namespace startup {

namespace {

constexpr const char *scaleVariable = "QT_SCALE_FACTOR";
std::optional<QByteArray> outerScale;  // the variable's value for other programs, while this one has its own

/// How much smaller than designed the window has to be drawn for a screen; 1 where it fits.
double fittingScale(const QScreen &screen)
{
    const QSizeF window = MainWindowForm::windowSize, room = screen.availableSize();
    const double scale = std::min({1.0, room.width() / window.width(), room.height() / window.height()});
    return std::max(scale, 1 / screen.devicePixelRatio());  // less than a pixel for a pixel cannot be drawn
}

}  // namespace

void prepareScreen()
{
    followDesktopScale();
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
}

void fitToScreen(int argc, char **argv)
{
    std::vector<char *> arguments(argv, argv + argc + 1);  // what is told to Qt is taken out of them
    const QGuiApplication probe(argc, arguments.data());   // nothing else knows the screen
    const double factor = fittingScale(*QGuiApplication::primaryScreen());
    if (factor >= 1) return;
    outerScale = qgetenv(scaleVariable);
    const double outer = outerScale->isEmpty() ? 1 : outerScale->toDouble();
    qputenv(scaleVariable, QByteArray::number(factor * outer, 'g', 17));
}

void prepareApplication()
{
    // What the editor starts, such as a browser, is not to be drawn smaller.
    if (outerScale) outerScale->isEmpty() ? qunsetenv(scaleVariable) : qputenv(scaleVariable, *outerScale);
    for (const char *name : {"Bold", "Regular", "SemiBold", "ExtraBold", "Light"})
        QFontDatabase::addApplicationFont(QStringLiteral(":/fonts/OpenSans-%1.ttf").arg(QLatin1String(name)));
    QApplication::setApplicationName(QStringLiteral("kora"));  // names the user's data folder
    QApplication::setDesktopFileName(QStringLiteral("kora"));  // of kora.desktop: its icon in the task bar
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setPalette(look::darkPalette());
    QApplication::setFont(look::pixelFont(DataFromDevice::fontTabs));
}

QString fileArgument(QCommandLineParser &options, const QCoreApplication &application)
{
    options.addPositionalArgument(QStringLiteral("FILE"),
                                  QStringLiteral("A file of a unit (.kora), to be worked on instead of a unit."),
                                  QStringLiteral("[FILE]"));
    options.process(application);
    const QStringList files = options.positionalArguments();
    if (files.size() > 1) options.showHelp(EXIT_FAILURE);
    return files.value(0);
}

}  // namespace startup
