#include "ui/shell/startup.h"

#include "model/datafromdevice.h"
#include "ui/look.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFontDatabase>

#include <cstdlib>

namespace startup {

void prepareScreen()
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
}

void prepareApplication()
{
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
