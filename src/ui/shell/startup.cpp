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
#include <cmath>
#include <cstdlib>
#include <optional>
#include <vector>

namespace startup {

namespace {

constexpr const char *scaleVariable = "QT_SCALE_FACTOR";
std::optional<QByteArray> outerScale;  // the variable's value for other programs, while this one has its own

/// By how much the scale of a screen has to change: smaller where the window does not fit, and a little where the
/// screen is a hair beside a plain scale. One of 96.25 dots an inch means 1; at 1.003 every edge would lie between two
/// pixels.
double fittingScale(const QScreen &screen)
{
    const double ratio = screen.devicePixelRatio(), plain = std::round(ratio * 4) / 4;
    const double wanted = std::abs(ratio - plain) < 0.05 ? plain / ratio : 1;
    const QSizeF window = MainWindowForm::windowSize, room = screen.availableSize();
    const double scale = std::min({wanted, room.width() / window.width(), room.height() / window.height()});
    return std::max(scale, 1 / ratio);  // less than a pixel for a pixel cannot be drawn
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
    if (qFuzzyCompare(factor, 1)) return;
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
