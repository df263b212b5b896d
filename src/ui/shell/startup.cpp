#include "ui/shell/startup.h"

#include "model/datafromdevice.h"
#include "ui/look.h"

#include <QApplication>
#include <QFontDatabase>

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

}  // namespace startup
